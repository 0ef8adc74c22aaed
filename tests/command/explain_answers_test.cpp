// zelutil explain and list: for random and real-sized installations every field beside what the library returns to a
// host in a new process, and the lenders and repetitions beside the text.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "command/command_world.h"
#include "command/text.h"
#include "prefs/random_preferences.h"
#include "support/letter_case.h"
#include "support/prefs_twin.h"

namespace {

using zelutil::command::validUtf8;
using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::lowered;
using zelutil::test::memberOf;
using zelutil::test::PrefsTwin;
using zelutil::test::RandomPreferences;
using zelutil::test::readTextFile;
using zelutil::test::TwinJson;
using zelutil::test::TwinSettingDefinition;

/// Holds what the library returns for a name; a member is empty where the library returns nothing.
struct Answer {
    std::optional<std::string> text;
    std::optional<std::string> defaultText;
    std::optional<std::string> truth;
    std::optional<std::string> integer;
    std::optional<std::string> decimal;
    std::optional<std::string> fullName;
    std::optional<std::string> section;
    std::optional<std::string> defaultValue;
    std::optional<std::string> value;
    std::optional<std::string> setByUser;
    std::optional<std::string> foundByFullName;
    std::vector<std::string> bareNames;
};

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
        fields.emplace_back(validUtf8(text));
    }
    return fields;
}

Answer answerOf(const std::string& line) {
    std::vector<std::optional<std::string>> fields = fieldsOf(line);
    constexpr std::size_t kBareNamesFrom = 11;
    fields.resize(std::max(fields.size(), kBareNamesFrom));
    Answer answer{fields[0], fields[1], fields[2], fields[3], fields[4],  fields[5],
                  fields[6], fields[7], fields[8], fields[9], fields[10], {}};
    for (std::size_t i = kBareNamesFrom; i < fields.size(); ++i) {
        answer.bareNames.push_back(fields[i].value());
    }
    return answer;
}

std::optional<std::string> textIn(const TwinJson& object, const char* name) {
    const TwinJson* const member = memberOf(object, name);
    if (member == nullptr) {
        return std::nullopt;
    }
    return member->is(TwinJson::Kind::True) ? "true" : member->is(TwinJson::Kind::False) ? "false" : member->text;
}

std::vector<std::string> bareNamesIn(const TwinJson& setting) {
    std::vector<std::string> names;
    for (const TwinJson& name : memberOf(setting, "bareNames")->values) {
        names.push_back(name.text);
    }
    return names;
}

/// Returns the names of the settings in a list of an object.
std::vector<std::string> namesIn(const TwinJson& object, const char* list) {
    std::vector<std::string> names;
    for (const TwinJson& one : memberOf(object, list)->values) {
        names.push_back(*textIn(one, "name"));
    }
    return names;
}

bool isSameName(const std::string& one, const std::string& other) { return lowered(one) == lowered(other); }

/// The definitions of a text in the order of the reading, as a twin of the library's reader finds them.
class Definitions {
public:
    explicit Definitions(const std::string& defaults) : all_(PrefsTwin(defaults, "").definitions()) {}

    const std::vector<TwinSettingDefinition>& all() const { return all_; }

    /// Returns the one that a name finds: the first that has it in full or lends it.
    const TwinSettingDefinition& find(const std::string& name) const {
        return *std::find_if(all_.begin(), all_.end(), [&](const TwinSettingDefinition& one) {
            return isSameName(one.fullName, name) || (one.lendsBareName && isSameName(one.name, name));
        });
    }

    std::vector<std::string> lendersLike(const TwinSettingDefinition& one) const {
        return fullNamesFrom(all_.begin(), [&](const TwinSettingDefinition& other) {
            return other.lendsBareName && isSameName(other.name, one.name);
        });
    }

    std::vector<std::string> repetitionsOf(const TwinSettingDefinition& one) const {
        return fullNamesFrom(all_.begin() + (&one - all_.data()) + 1, [&](const TwinSettingDefinition& other) {
            return isSameName(other.fullName, one.fullName);
        });
    }

private:
    template <typename Takes>
    std::vector<std::string> fullNamesFrom(std::vector<TwinSettingDefinition>::const_iterator begin,
                                           Takes takes) const {
        std::vector<std::string> names;
        for (; begin != all_.end(); ++begin) {
            if (takes(*begin)) {
                names.push_back(validUtf8(begin->fullName));
            }
        }
        return names;
    }

    std::vector<TwinSettingDefinition> all_;
};

void expectMembers(const TwinJson& setting, const Answer& answer) {
    EXPECT_EQ(textIn(setting, "name"), answer.fullName);
    EXPECT_EQ(textIn(setting, "section"), answer.section);
    EXPECT_EQ(textIn(setting, "default"), answer.defaultValue);
    EXPECT_EQ(textIn(setting, "value"), answer.value);
    EXPECT_EQ(textIn(setting, "setByUser"), answer.setByUser);
    EXPECT_EQ(bareNamesIn(setting), answer.bareNames);
}

/// Returns whether the name is the full one of what it finds, by what the library returned.
bool isFullName(const std::string& name, const Answer& answer) {
    return answer.foundByFullName == "true" && isSameName(name, *answer.fullName);
}

class ExplainBesideLibrary : public testing::Test {
protected:
    void write(const std::string& defaults, const std::string& user) {
        zelutil::test::writeTextFile(world_.defaultsFile(), defaults);
        world_.writeUser(user);
    }

    /// Expects of each name what a host gets, and returns how many settings were found.
    std::size_t expectExplained(const std::vector<std::string>& names) {
        std::vector<std::string> arguments = {"explain", "--json", "--"};
        arguments.insert(arguments.end(), names.begin(), names.end());
        const ChildResult explained = world_.run(arguments);
        const auto json = zelutil::test::readTwinJson(explained.out);
        const auto answers = probe(names);
        if (!json || memberOf(*json, "settings") == nullptr) {
            expectNothingKnown(answers, explained);
            return 0;
        }
        const Definitions definitions(readTextFile(world_.defaultsFile()));
        const std::vector<TwinJson>& settings = memberOf(*json, "settings")->values;
        std::size_t next = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i]);
            if (!answers[i].fullName) {
                continue;
            }
            if (next >= settings.size()) {
                ADD_FAILURE() << "not explained";
                break;
            }
            expectFunctions(settings[next], names[i], answers[i]);
            expectNamesakes(settings[next++], names[i], definitions);
        }
        EXPECT_EQ(next, settings.size());
        return next;
    }

    /// Expects that a list has every setting with what a host gets for it, and that each bare name is listed with the
    /// setting that it finds, and with no other. Returns how many are listed.
    std::size_t expectListed() {
        const auto json = zelutil::test::readTwinJson(world_.run({"list", "--json"}).out);
        if (!json || memberOf(*json, "settings") == nullptr) {
            return 0;
        }
        const std::vector<TwinJson>& settings = memberOf(*json, "settings")->values;
        std::map<std::string, int> listedWith;
        std::vector<std::string> names;
        for (const TwinJson& setting : settings) {
            const std::vector<std::string> bareNames = bareNamesIn(setting);
            names.push_back(bareNames.empty() ? *textIn(setting, "name") : bareNames.front());
            for (const std::string& name : bareNames) {
                ++listedWith[lowered(name)];
            }
        }
        const std::vector<Answer> answers = probe(names);
        for (std::size_t i = 0; i < settings.size(); ++i) {
            SCOPED_TRACE(names[i]);
            expectMembers(settings[i], answers[i]);
        }
        expectBareNames(listedWith);
        return settings.size();
    }

    CommandWorld world_;

private:
    /// Returns what the library returns for each name in a new process.
    std::vector<Answer> probe(const std::vector<std::string>& names) const {
        std::vector<Answer> answers;
        for (std::size_t begin = 0; begin < names.size(); begin += kMostNames) {
            const std::size_t end = std::min(begin + kMostNames, names.size());
            const std::vector<std::string> some(names.begin() + static_cast<std::ptrdiff_t>(begin),
                                                names.begin() + static_cast<std::ptrdiff_t>(end));
            std::istringstream lines(world_.runProgram(ZELUTIL_TEST_EXPLAIN_PROBE, some).out);
            for (std::string line; std::getline(lines, line);) {
                answers.push_back(answerOf(line));
            }
        }
        EXPECT_EQ(answers.size(), names.size());
        answers.resize(names.size());
        return answers;
    }

    static void expectNothingKnown(const std::vector<Answer>& answers, const ChildResult& explained) {
        EXPECT_EQ(explained.exitCode, 3);
        for (const Answer& answer : answers) {
            EXPECT_FALSE(answer.fullName);
        }
    }

    static void expectFunctions(const TwinJson& setting, const std::string& name, const Answer& answer) {
        const TwinJson& functions = *memberOf(setting, "functions");
        EXPECT_EQ(textIn(setting, "asked"), name);
        EXPECT_EQ(textIn(setting, "foundBy"), isFullName(name, answer) ? "full-name" : "bare-name");
        EXPECT_EQ(textIn(functions, "get_user_setting"), answer.text);
        EXPECT_EQ(textIn(functions, "get_default_user_setting"), answer.defaultText);
        EXPECT_EQ(textIn(functions, "zelutil_read_bool"), answer.truth);
        EXPECT_EQ(textIn(functions, "zelutil_read_int"), answer.integer);
        EXPECT_EQ(textIn(functions, "zelutil_read_double"), answer.decimal);
        expectMembers(setting, answer);
    }

    static void expectNamesakes(const TwinJson& setting, const std::string& name, const Definitions& definitions) {
        const TwinSettingDefinition& found = definitions.find(name);
        EXPECT_EQ(namesIn(setting, "lenders"), definitions.lendersLike(found));
        EXPECT_EQ(namesIn(setting, "repetitions"), definitions.repetitionsOf(found));
    }

    /// Asks for every bare name in the text, of which a section may lend none or too late.
    void expectBareNames(const std::map<std::string, int>& listedWith) const {
        std::map<std::string, int> expected;
        std::vector<std::string> names;
        const Definitions definitions(readTextFile(world_.defaultsFile()));
        for (const TwinSettingDefinition& definition : definitions.all()) {
            if (expected.emplace(validUtf8(lowered(definition.name)), 0).second) {
                names.push_back(definition.name);
            }
        }
        const std::vector<Answer> answers = probe(names);
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (answers[i].fullName && !isFullName(names[i], answers[i])) {
                ++expected[validUtf8(lowered(names[i]))];
            }
        }
        for (const auto& [name, count] : expected) {
            const auto listed = listedWith.find(name);
            EXPECT_EQ(listed == listedWith.end() ? 0 : listed->second, count) << name;
        }
        for (const auto& [name, count] : listedWith) {
            EXPECT_EQ(expected.count(name), 1U) << name;
        }
    }

protected:
    /// As many as one line of arguments takes on every system.
    static constexpr std::size_t kMostNames = 300;
};

TEST_F(ExplainBesideLibrary, RandomFilesAreExplainedAsTheyAreRead) {
    constexpr unsigned kWorlds = 8;
    std::size_t found = 0;
    std::size_t listed = 0;
    for (unsigned seed = 0; seed < kWorlds && !HasFailure(); ++seed) {
        RandomPreferences random(seed);
        const std::string defaults = random.defaultsText();
        const std::string user = random.userText();
        SCOPED_TRACE(defaults + "\n" + user);
        write(defaults, user);
        std::vector<std::string> names;
        for (const std::string& name : zelutil::test::kRandomNames) {
            for (const char* const prefix : {"", "a::", "b::", "a::b::", "a::a::", "::"}) {
                names.push_back(random.inAnotherCase(prefix + name));
            }
        }
        found += expectExplained(names);
        listed += expectListed();
    }
    EXPECT_GT(found, kWorlds);
    EXPECT_GT(listed, kWorlds);
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
    write(R"({"meta":[)" + sections + "]}", R"({"meta":[)" + users + "]}");
    EXPECT_GT(expectExplained(names), 150U);
    EXPECT_EQ(expectListed(), 3000U);
}

}  // namespace
