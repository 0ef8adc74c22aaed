// zelutil explain, and for random and real-sized installations every field beside what the library returns to a host in
// a new process.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "command/command_world.h"
#include "command/text.h"
#include "prefs/random_preferences.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::kCommandUser;
using zelutil::test::memberOf;
using zelutil::test::RandomPreferences;
using zelutil::test::readTextFile;
using zelutil::test::TwinJson;

/// Returns what stands on standard error of an `explain` of both names of "display::units" with this user's text.
std::string errorsAboutUnits(const CommandWorld& world, const std::string& user) {
    world.writeUser(user);
    return world.run({"explain", "units", "display::units"}).err;
}

TEST(Explain, TellsOnceOfAnOverruledEntryAndWhichOneCounts) {
    const CommandWorld world;
    const std::string file = world.userFile().u8string();
    const std::string later = errorsAboutUnits(
        world, R"({"meta":[{"header":"Display","attribute":"display","overriddensettings":[{"units":"a"},)"
               "\n"
               R"({"display::units":"b"}]}]})");
    const std::string warning = file +
                                ":1:75: warning: The entry \"units\" has no effect. A later entry (line 2, column 2) "
                                "sets the same setting, and the last one counts.\n";
    EXPECT_EQ(later.substr(0, warning.size()), warning);
    EXPECT_EQ(later.find("warning", warning.size()), std::string::npos) << later;

    const std::string before = errorsAboutUnits(
        world, R"({"meta":[{"header":"Display","attribute":"display","children":[)"
               "\n"
               R"({"header":"Grid","attribute":"grids","overriddensettings":[{"display::units":"b"}]}],)"
               "\n"
               R"("overriddensettings":[{"units":"a"}]}]})");
    EXPECT_EQ(before.substr(0, before.find('\n')),
              file +
                  ":3:24: warning: The entry \"units\" has no effect. An entry before it (line 2, column 61), which "
                  "is read later because a section is read before its children, sets the same setting, and the last "
                  "one counts.");
    EXPECT_NE(world.json({"explain", "units"}).find(R"("effect":"overruled","overruledBy":{"line":2,"column":61},)"),
              std::string::npos);
}

TEST(Explain, TellsPeople) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    const std::string defaults = world.defaultsFile().u8string();
    const std::string user = world.userFile().u8string();
    const ChildResult result = world.run({"explain", "Grid", "display::units"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    // The places are counted by hand in the texts of command_world.h.
    EXPECT_EQ(result.out,
              "display::grids::grid=0.25\n"
              "  asked for as Grid, its bare name\n"
              "  section: display::grids\n"
              "  default: 0.5, at " +
                  defaults +
                  ":5:30\n"
                  "  user's value: 0.25, at " +
                  user +
                  ":1:98\n"
                  "  get_user_setting: \"0.25\"\n"
                  "  get_default_user_setting: \"0.5\"\n"
                  "  zelutil_read_bool: ZELUTIL_WRONG_TYPE, zelutil_read_int: ZELUTIL_WRONG_TYPE, "
                  "zelutil_read_double: 0.25\n"
                  "  entry display::grids::grid, at " +
                  user +
                  ":1:75: in force, from the section \"display\".\n"
                  "display::units=mm\n"
                  "  asked for as display::units, its full name\n"
                  "  section: display\n"
                  "  default: mm, at " +
                  defaults +
                  ":3:27\n"
                  "  user's value: none\n"
                  "  get_user_setting: \"mm\"\n"
                  "  get_default_user_setting: \"mm\"\n"
                  "  zelutil_read_bool: ZELUTIL_WRONG_TYPE, zelutil_read_int: ZELUTIL_WRONG_TYPE, "
                  "zelutil_read_double: ZELUTIL_WRONG_TYPE\n");
}

TEST(Explain, FindsEntriesWithoutEffectAndUnknownNames) {
    const CommandWorld world;
    world.writeUser(
        "{\"meta\":[\n{\"header\":\"D\",\"attribute\":\"display\",\"overriddensettings\":[{\"zoom\":3}]},\n"
        "{\"header\":\"S\",\"attribute\":\"savign\",\"overriddensettings\":[{\"autosave\":\"off\"}]}]}");
    const std::string user = world.userFile().u8string();
    const std::string defaults = world.defaultsFile().u8string();
    const std::string advice =
        "    This checks the whole file: zelutil lint --defaults " + defaults + ' ' + user + '\n';
    const ChildResult result = world.run({"explain", "zoom", "autosave", "savign::autosav"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "error: There is no setting \"savign::autosav\".\n    Did you mean saving::autosave?\n" +
                              user + ":2:60: warning: The entry \"zoom\" has no effect. Its value is no string.\n" +
                              advice + user +
                              ":3:59: warning: The entry \"autosave\" has no effect. The defaults have no section "
                              "\"savign\".\n" +
                              advice);
    EXPECT_EQ(world.run({"lint", "--defaults", defaults, user}).exitCode, 1);
    EXPECT_EQ(world.run({"explain", "units"}).exitCode, 0);
    EXPECT_EQ(world.run({"explain"}).exitCode, 2);
    EXPECT_EQ(world.run({"explain", "zoom"}, {{"QTXROOT", std::nullopt}, {"PATH", ""}}).exitCode, 3);
}

TEST(Explain, TellsAUsersFileOfWhichNothingIsRead) {
    const CommandWorld world;
    world.writeUser("{\"meta\":\n}");
    const ChildResult result = world.run({"explain", "zoom"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.find(world.userFile().u8string() + ":2:1: warning: Nothing of the user's file is in force."),
              0U)
        << result.err;
}

// --- Beside the library
// -----------------------------------------------------------------------------------------------

/// Returns the fields of a line of the probe.
std::vector<std::optional<std::string>> fieldsOf(const std::string& line) {
    std::vector<std::optional<std::string>> fields;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
        if (word == "-") {
            fields.emplace_back();
            continue;
        }
        std::string text;
        for (std::size_t at = 1; at + 1 < word.size(); at += 2) {
            text += static_cast<char>(std::stoi(word.substr(at, 2), nullptr, 16));
        }
        fields.emplace_back(zelutil::command::validUtf8(text));
    }
    return fields;
}

std::optional<std::string> textIn(const TwinJson& object, const char* name) {
    const TwinJson* const member = memberOf(object, name);
    if (member == nullptr) {
        return std::nullopt;
    }
    return member->is(TwinJson::Kind::True) ? "true" : member->is(TwinJson::Kind::False) ? "false" : member->text;
}

class ExplainBesideLibrary : public testing::Test {
protected:
    /// Expects of each name what a host gets, and returns how many settings were found.
    std::size_t expectEqual(const std::vector<std::string>& names) {
        std::vector<std::string> arguments = {"explain", "--json", "--"};
        arguments.insert(arguments.end(), names.begin(), names.end());
        const ChildResult explained = world_.run(arguments);
        const auto json = zelutil::test::readTwinJson(explained.out);
        const auto lines = probe(names);
        if (!json || memberOf(*json, "settings") == nullptr) {
            expectNothingKnown(lines, explained);
            return 0;
        }
        const std::vector<TwinJson>& settings = memberOf(*json, "settings")->values;
        std::size_t next = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i]);
            const auto fields = fieldsOf(lines[i]);
            if (!fields[5]) {
                continue;
            }
            if (next >= settings.size()) {
                ADD_FAILURE() << "not explained";
                break;
            }
            expectSetting(settings[next++], names[i], fields);
        }
        EXPECT_EQ(next, settings.size());
        expectListed();
        return next;
    }

    CommandWorld world_;

private:
    std::vector<std::string> probe(const std::vector<std::string>& names) const {
        const ChildResult result = world_.runProgram(ZELUTIL_TEST_EXPLAIN_PROBE, names);
        std::vector<std::string> lines;
        std::istringstream all(result.out);
        for (std::string line; std::getline(all, line);) {
            lines.push_back(line);
        }
        lines.resize(names.size());
        return lines;
    }

    static void expectNothingKnown(const std::vector<std::string>& lines, const ChildResult& explained) {
        EXPECT_EQ(explained.exitCode, 3);
        for (const std::string& line : lines) {
            EXPECT_FALSE(fieldsOf(line)[5]);
        }
    }

    static void expectSetting(const TwinJson& setting, const std::string& name,
                              const std::vector<std::optional<std::string>>& fields) {
        const TwinJson& functions = *memberOf(setting, "functions");
        EXPECT_EQ(textIn(setting, "asked"), name);
        EXPECT_EQ(textIn(functions, "get_user_setting"), fields[0]);
        EXPECT_EQ(textIn(functions, "get_default_user_setting"), fields[1]);
        EXPECT_EQ(textIn(functions, "zelutil_read_bool"), fields[2]);
        EXPECT_EQ(textIn(functions, "zelutil_read_int"), fields[3]);
        EXPECT_EQ(textIn(functions, "zelutil_read_double"), fields[4]);
        EXPECT_EQ(textIn(setting, "name"), fields[5]);
        EXPECT_EQ(textIn(setting, "section"), fields[6]);
        EXPECT_EQ(textIn(setting, "default"), fields[7]);
        EXPECT_EQ(textIn(setting, "value"), fields[8]);
        EXPECT_EQ(textIn(setting, "setByUser"), fields[9]);
        std::vector<std::optional<std::string>> bare(fields.begin() + 11, fields.end());
        for (const TwinJson& one : memberOf(setting, "bareNames")->values) {
            ASSERT_FALSE(bare.empty());
            EXPECT_EQ(one.text, bare.front());
            bare.erase(bare.begin());
        }
        EXPECT_TRUE(bare.empty());
    }

    /// Every field that a list prints is that of the library for the name.
    void expectListed() const {
        const auto json = zelutil::test::readTwinJson(world_.run({"list", "--json"}).out);
        ASSERT_TRUE(json);
        std::vector<std::string> names;
        std::vector<TwinJson> asked;
        for (const TwinJson& setting : memberOf(*json, "settings")->values) {
            const TwinJson& bare = *memberOf(setting, "bareNames");
            const std::string name = bare.values.empty() ? *textIn(setting, "name") : bare.values.front().text;
            if (names.size() < kMostNames && !name.empty()) {
                names.push_back(name);
                asked.push_back(setting);
            }
        }
        const auto lines = probe(names);
        for (std::size_t i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i]);
            const auto fields = fieldsOf(lines[i]);
            ASSERT_GE(fields.size(), 11U);
            EXPECT_EQ(textIn(asked[i], "name"), fields[5]);
            EXPECT_EQ(textIn(asked[i], "section"), fields[6]);
            EXPECT_EQ(textIn(asked[i], "default"), fields[7]);
            EXPECT_EQ(textIn(asked[i], "value"), fields[8]);
            EXPECT_EQ(textIn(asked[i], "setByUser"), fields[9]);
        }
    }

protected:
    /// As many as one line of arguments takes on every system.
    static constexpr std::size_t kMostNames = 300;
};

TEST_F(ExplainBesideLibrary, RandomFilesAreExplainedAsTheyAreRead) {
    constexpr unsigned kWorlds = 8;
    std::size_t found = 0;
    for (unsigned seed = 0; seed < kWorlds && !HasFailure(); ++seed) {
        RandomPreferences random(seed);
        const std::string defaults = random.defaultsText();
        const std::string user = random.userText();
        SCOPED_TRACE(defaults + "\n" + user);
        zelutil::test::writeTextFile(world_.defaultsFile(), defaults);
        world_.writeUser(user);
        std::vector<std::string> names;
        for (const std::string& name : zelutil::test::kRandomNames) {
            for (const char* const prefix : {"", "a::", "b::", "a::b::", "a::a::", "::"}) {
                names.push_back(random.inAnotherCase(prefix + name));
            }
        }
        found += expectEqual(names);
    }
    EXPECT_GT(found, kWorlds);
}

/// 3,000 settings in 150 sections, of which some lend no bare names; many names are in several sections.
TEST_F(ExplainBesideLibrary, AnInstallationOfRealSizeIsExplainedAsItIsRead) {
    std::string sections;
    std::string users;
    std::vector<std::string> names;
    for (int section = 0; section < 150; ++section) {
        const std::string path = "section_" + std::to_string(section);
        std::string settings;
        std::string entries;
        for (int i = 0; i < 20; ++i) {
            const std::string name = "value_" + std::to_string((section * 7 + i * 13) % 900);
            settings += std::string(i == 0 ? "" : ",\n") + R"({"name":")" + name + R"(","value":")" +
                        std::to_string(i % 3) + "\"}";
            if ((section + i) % 11 == 0) {
                entries += std::string(entries.empty() ? "" : ", ") + "{\"" + name + R"(": "user )" +
                           std::to_string(i) + "\"}";
            }
            if ((section * 20 + i) % 13 == 0) {
                names.push_back(i % 2 == 0 ? name : path + "::" + name);
            }
        }
        const std::string unique = section % 9 == 4 ? R"("unique":false,)" : "";
        sections += std::string(section == 0 ? "" : ",") + R"({"header":"S","tclCommand":"t",)" + unique +
                    R"("attribute":")" + path + R"(","defaultsettings":[)" + settings + "]}\n";
        users += std::string(section == 0 ? "" : ",") + R"({"header":"S","attribute":")" + path +
                 R"(","overriddensettings":[)" + entries + "]}\n";
    }
    names.resize(std::min(names.size(), kMostNames));
    zelutil::test::writeTextFile(world_.defaultsFile(), R"({"meta":[)" + sections + "]}");
    world_.writeUser(R"({"meta":[)" + users + "]}");
    EXPECT_GT(expectEqual(names), 150U);
}

/// A quoted text ends with the second quote that has no backslash before it.
TEST(Explain, EscapesQuotesAndBackslashesInWhatFunctionsReturn) {
    const CommandWorld world;
    ASSERT_EQ(world.run({"set", R"(units=C:\new "x")"}).exitCode, 0);
    const std::string out = world.run({"explain", "units"}).out;
    EXPECT_NE(out.find(R"(  get_user_setting: "C:\\new \"x\"")"
                       "\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find(R"(  user's value: C:\new "x", at )"), std::string::npos) << out;
}

}  // namespace
