// Compares what an upgrade is said to do to a user's file with what loads of that file show: each version is really
// loaded, by the library's own start, and asked through its queries.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "command/command_world.h"
#include "command/progress.h"
#include "command/upgrade/comparison.h"
#include "command/upgrade/user_files.h"
#include "json/document.h"
#include "prefs/preferences.h"
#include "support/environment.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using command::Progress;
using command::upgrade::Comparison;
using command::upgrade::Effect;

// --- Random versions and users --------------------------------------------------------------------------------------

const std::vector<std::string> kSections = {"a", "b", "a::c", "d"};
const std::vector<std::string> kNames = {"n0", "n1", "n2", "n3", "a::c::n0"};
const std::vector<std::string> kContexts = {"board", "panel", "ucpedit", "brisk3d"};
const std::vector<std::string> kKeys = {"", "F1", "F2", "F3", "F4"};
constexpr int kMostActions = 7;

class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : random_(seed) {}

    /// A version of shipped defaults. The sections "a" and "d" are always there, so that no version is empty.
    std::string defaults() {
        std::string text = "{\"meta\":[" + section("a", chance(3, 4) ? section("c", "") : "");
        text += chance(3, 4) ? "," + section("b", "") : "";
        return text + "," + section("d", "") + "," + actions() + "]}";
    }

    std::string user() {
        std::string text = "{\"meta\":[";
        for (const char* const section : {"a", "b", "gone"}) {
            text += userSection(section, std::string(section) == "a" ? userSection("c", "") : "") + ",";
        }
        return text + userSection("d", "") + userActions() + "]}";
    }

private:
    unsigned upTo(std::size_t count) { return static_cast<unsigned>(random_() % count); }
    bool chance(unsigned some, unsigned all) { return upTo(all) < some; }
    std::string oneOf(const std::vector<std::string>& texts) { return texts[upTo(texts.size())]; }
    std::string value() { return "v" + std::to_string(upTo(3)); }

    std::string section(const std::string& attribute, const std::string& children) {
        std::string settings;
        for (const std::string& name : kNames) {
            if (chance(2, 3)) {
                settings += settings.empty() ? "" : ",";
                settings += R"({"name":")" + name + R"(","value":")" + value() + "\"}";
            }
        }
        return R"({"header":"H","attribute":")" + attribute + R"(","tclCommand":"t","unique":)" +
               (chance(1, 2) ? "true" : "false") + R"(,"defaultsettings":[)" + settings + R"(],"children":[)" +
               children + "]}";
    }

    std::string action(int id) {
        const unsigned parent = chance(1, 3) ? upTo(kMostActions + 1) : 0;
        return R"({"id":)" + std::to_string(id) + R"(,"parent_id":)" + std::to_string(parent) +
               R"(,"name":"A","icon":"","context":")" + oneOf(kContexts) + R"(","command":"c)" +
               std::to_string(upTo(4)) + R"(","shortcut":")" + oneOf(kKeys) + R"(","rmb":)" +
               (chance(1, 2) ? "true" : "false") + "}";
    }

    std::string actions() {
        std::string list;
        for (int id = 1; id <= kMostActions; ++id) {
            list += chance(4, 5) ? (list.empty() ? "" : ",") + action(id) : "";
        }
        return R"({"header":"A","attribute":"actions","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[)" +
               list + "]}}";
    }

    std::string userSection(const std::string& attribute, const std::string& children) {
        std::string entries;
        for (const std::string name : {"n0", "n1", "n2", "n3", "a::n1", "b::n2", "unknown"}) {
            if (chance(1, 3)) {
                entries += (entries.empty() ? "\"" : ",\"") + name + "\":\"" + value() + "\"";
            }
        }
        return R"({"header":"H","attribute":")" + attribute + R"(","overriddensettings":[{)" + entries +
               R"(}],"children":[)" + children + "]}";
    }

    std::string userActions() {
        if (chance(1, 4)) {
            return "";
        }
        std::string list;
        for (unsigned count = upTo(5); count != 0; --count) {
            list += (list.empty() ? "" : ",") + std::string(R"({"id":)") + std::to_string(1 + upTo(kMostActions + 1));
            list += chance(3, 4) ? R"(,"shortcut":")" + oneOf(kKeys) + "\"" : "";
            list += chance(1, 3) ? std::string(R"(,"rmb":)") + (chance(1, 2) ? "true" : "false") : "";
            list += "}";
        }
        return R"(,{"header":"A","attribute":"actions","overriddensettings":[{"actions":[)" + list + "]}]}";
    }

    std::mt19937 random_;
};

// --- Loads ----------------------------------------------------------------------------------------------------------

/// Holds what the queries return after a start.
struct Loaded {
    std::map<std::string, std::string> values;
    /// The settings that the user's file sets.
    std::set<std::string> byUser;
    std::map<std::string, std::string> defaults;
    std::map<int, UCPActionItem> actions;
    std::map<int, std::string> shortcuts;
    std::map<std::pair<std::string, std::string>, int> holders;
};

/// Starts the library's preferences anew with other files. The variables name them before the first start.
class Starts {
public:
    Starts() {
        clearProductVariables();
        setVariable("tessel_settings", systemText(directory_ / "defaults.cfg"));
        const std::string home = windowsText(directory_.path());
        setVariable("HOMEDRIVE", home.substr(0, 2));
        setVariable("HOMEPATH", home.substr(2));
    }

    Loaded start(const std::string& defaults, const std::string& user) const {
        writeTextFile(directory_ / "defaults.cfg", defaults);
        writeTextFile(directory_ / "pcbenv/tessel/tessel_settings.cfg", user);
        const prefs::Preferences preferences;
        Loaded loaded;
        for (const std::string& section : kSections) {
            for (const std::string& name : kNames) {
                readSetting(preferences.catalogue, section, name, loaded);
            }
        }
        readActions(loaded);
        return loaded;
    }

private:
    /// A name may mean another setting; what no name means is no setting.
    static void readSetting(const prefs::Catalogue& catalogue, const std::string& section, const std::string& name,
                            Loaded& loaded) {
        const std::string fullName = section + "::" + name;
        for (const std::string& spelling : {fullName, name}) {
            const prefs::Setting* const setting = catalogue.find(spelling);
            if (setting == nullptr || setting->key != prefs::keyOf(fullName)) {
                continue;
            }
            loaded.values[fullName] = setting->valueInForce();
            loaded.defaults[fullName] = setting->defaultValue;
            if (setting->hasUserValue) {
                loaded.byUser.insert(fullName);
            }
        }
    }

    static void readActions(Loaded& loaded) {
        const UCPActionManager& manager = UCPActionManager::instance();
        for (int id = 1; id <= kMostActions + 1; ++id) {
            const auto [found, item] = manager.getAction(id);
            if (found) {
                loaded.actions.emplace(id, item);
                loaded.shortcuts[id] = manager.getShortcut(id);
            }
        }
        for (const std::string& context : kContexts) {
            for (const std::string& key : kKeys) {
                if (const int holder = manager.getActionIdByShortcut(context, key)) {
                    loaded.holders[{context, key}] = holder;
                }
            }
        }
    }

    TempDirectory directory_;
};

// --- What they show -------------------------------------------------------------------------------------------------

using Lines = std::multiset<std::string>;

std::string shownOr(const std::optional<std::string>& text) { return text ? *text : "-"; }

std::string valueIn(const std::map<std::string, std::string>& values, const std::string& name) {
    const auto found = values.find(name);
    return found == values.end() ? "-" : found->second;
}

bool inMenu(const UCPActionItem& item) { return item.rmb.overwritten ? item.rmb.userValue : item.rmb.defaultValue; }

void expectedOfSettings(const Loaded& before, const Loaded& after, Lines& lines) {
    for (const std::string& name : before.byUser) {
        if (valueIn(after.values, name) != before.values.at(name)) {
            lines.insert("dropped " + name + "=" + before.values.at(name) + " now " + valueIn(after.values, name));
        }
    }
    for (const std::string& name : after.byUser) {
        const std::string& value = after.values.at(name);
        if (before.byUser.count(name) == 0 || before.values.at(name) != value) {
            lines.insert("gained " + name + "=" + value);
        }
        const std::string oldDefault = valueIn(before.defaults, name);
        const std::string newDefault = after.defaults.at(name);
        if (oldDefault != "-" && oldDefault != newDefault && value != newDefault) {
            lines.insert("masked " + name + "=" + value + " " + oldDefault + " " + newDefault);
        }
    }
}

void expectedOfActions(const Loaded& before, const Loaded& after, Lines& lines) {
    for (const auto& [id, item] : before.actions) {
        const auto now = after.actions.find(id);
        const bool isThere = now != after.actions.end();
        const bool isTop = item.parent_id < 1;
        if (isTop && item.shortcut.overwritten && (!isThere || after.shortcuts.at(id) != before.shortcuts.at(id))) {
            lines.insert("shortcut " + std::to_string(id) + " " + before.shortcuts.at(id) + " now " +
                         (isThere ? after.shortcuts.at(id) : "-"));
        }
        if (isTop && item.rmb.overwritten && (!isThere || inMenu(now->second) != inMenu(item))) {
            lines.insert("menu " + std::to_string(id));
        }
    }
}

void expectedOfKeys(const Loaded& before, const Loaded& after, Lines& lines) {
    for (const auto& [place, id] : before.holders) {
        const auto now = after.holders.find(place);
        if (now == after.holders.end()) {
            continue;
        }
        const std::string oldOwner = std::to_string(id) + before.actions.at(id).command;
        const std::string newOwner = std::to_string(now->second) + after.actions.at(now->second).command;
        if (oldOwner != newOwner) {
            lines.insert("key " + place.first + " " + place.second + " " + oldOwner + " now " + newOwner);
        }
    }
}

Lines expectedLines(const Loaded& before, const Loaded& after) {
    Lines lines;
    expectedOfSettings(before, after, lines);
    expectedOfActions(before, after, lines);
    expectedOfKeys(before, after, lines);
    return lines;
}

Lines linesOf(const Effect& effect) {
    Lines lines;
    for (const auto& one : effect.dropped) {
        lines.insert("dropped " + one.name + "=" + one.value + " now " + shownOr(one.now));
    }
    for (const auto& one : effect.gained) {
        lines.insert("gained " + one.name + "=" + one.value);
    }
    for (const auto& one : effect.masked) {
        lines.insert("masked " + one.name + "=" + one.value + " " + one.oldDefault + " " + one.newDefault);
    }
    for (const auto& one : effect.shortcuts) {
        lines.insert("shortcut " + std::to_string(one.action) + " " + one.shortcut + " now " + shownOr(one.now));
    }
    for (const auto& one : effect.menuFlags) {
        lines.insert("menu " + std::to_string(one.action));
    }
    for (const auto& one : effect.keys) {
        lines.insert("key " + one.context + " " + one.shortcut + " " + std::to_string(one.before.action) +
                     one.before.command + " now " + std::to_string(one.now.action) + one.now.command);
    }
    return lines;
}

/// Expects of each refusal that there is such an action and that the text says all.
void expectRefusalsHold(const Effect& effect, const Loaded& after) {
    for (const auto& refused : effect.refused) {
        EXPECT_EQ(after.actions.count(refused.action), 1U) << refused.text;
        const std::string key = refused.text.substr(refused.text.find('"') + 1, 2);
        EXPECT_EQ(refused.text, "Action " + std::to_string(refused.action) + " did not get the shortcut \"" + key +
                                    "\": action " + std::to_string(refused.holder) + " has it.");
    }
}

TEST(Upgrade, SaysWhatLoadsOfBothVersionsShow) {
    const Starts starts;
    std::map<std::string, int> kinds;
    for (unsigned seed = 0; seed < 200 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomTexts random(seed);
        const std::string oldDefaults = random.defaults();
        const std::string newDefaults = random.defaults();
        Comparison comparison(oldDefaults, newDefaults);
        for (int number = 0; number < 3; ++number) {
            const std::string user = random.user();
            SCOPED_TRACE("old " + oldDefaults + "\nnew " + newDefaults + "\nuser " + user);
            const Loaded before = starts.start(oldDefaults, user);
            const Loaded after = starts.start(newDefaults, user);
            const Effect effect = comparison.effectOn(json::Document(user).root());
            EXPECT_EQ(linesOf(effect), expectedLines(before, after));
            expectRefusalsHold(effect, after);
            for (const std::string& line : linesOf(effect)) {
                ++kinds[line.substr(0, line.find(' '))];
            }
            kinds["refused"] += effect.refused.empty() ? 0 : 1;
            kinds["meaningless"] += effect.meaningless.empty() ? 0 : 1;
        }
    }
    for (const char* const kind :
         {"dropped", "gained", "masked", "shortcut", "menu", "key", "refused", "meaningless"}) {
        EXPECT_GE(kinds[kind], 20) << kind << ": the random upgrades hardly show it";
    }
}

// --- Single upgrades, worked out by hand ----------------------------------------------------------------------------

std::string defaultsWith(const std::string& settings, const std::string& actions = "") {
    return R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[)" + settings +
           R"(]},{"header":"A","attribute":"a","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[)" +
           actions + "]}}]}";
}

std::string shippedAction(int id, const std::string& command, const std::string& shortcut) {
    return R"({"id":)" + std::to_string(id) + R"(,"parent_id":0,"name":"","icon":"","context":"board","command":")" +
           command + R"(","shortcut":")" + shortcut + R"(","rmb":false})";
}

constexpr char kOneUser[] =
    R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"grid":"7","odd":"1"}]},)"
    R"({"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":1,"shortcut":"F9"}]}]}]})";

TEST(Upgrade, SettingThatGoesIsDroppedAndItsEntryMeansNothing) {
    Comparison comparison(defaultsWith(R"({"name":"grid","value":"1"})"),
                          defaultsWith(R"({"name":"zoom","value":"1"})"));
    const Effect effect = comparison.effectOn(json::Document(kOneUser).root());
    ASSERT_EQ(effect.dropped.size(), 1U);
    EXPECT_EQ(effect.dropped[0].name, "s::grid");
    EXPECT_EQ(effect.dropped[0].value, "7");
    EXPECT_FALSE(effect.dropped[0].now);
    // "odd" means nothing in both.
    ASSERT_EQ(effect.meaningless.size(), 1U);
    EXPECT_EQ(effect.meaningless[0].section, "s");
    EXPECT_EQ(effect.meaningless[0].name, "grid");
    EXPECT_TRUE(effect.losesAnything());
}

TEST(Upgrade, NewDefaultUnderAUsersValueIsMaskedAndNotLost) {
    Comparison comparison(defaultsWith(R"({"name":"grid","value":"1"})"),
                          defaultsWith(R"({"name":"grid","value":"2"})"));
    const Effect effect = comparison.effectOn(json::Document(kOneUser).root());
    ASSERT_EQ(effect.masked.size(), 1U);
    EXPECT_EQ(effect.masked[0].oldDefault, "1");
    EXPECT_EQ(effect.masked[0].newDefault, "2");
    EXPECT_FALSE(effect.losesAnything());
}

TEST(Upgrade, NewActionWithTheUsersKeyRefusesItAndOwnsIt) {
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "M")),
                          defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "copy", "F9")));
    const Effect effect = comparison.effectOn(json::Document(kOneUser).root());
    ASSERT_EQ(effect.refused.size(), 1U);
    EXPECT_EQ(effect.refused[0].action, 1);
    EXPECT_EQ(effect.refused[0].holder, 2);
    ASSERT_EQ(effect.shortcuts.size(), 1U);
    EXPECT_EQ(effect.shortcuts[0].shortcut, "F9");
    EXPECT_EQ(effect.shortcuts[0].now, "M");
    ASSERT_EQ(effect.keys.size(), 1U);
    EXPECT_EQ(effect.keys[0].before.command, "move");
    EXPECT_EQ(effect.keys[0].now.command, "copy");
}

TEST(Upgrade, SameVersionDoesNothing) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        RandomTexts random(seed);
        const std::string defaults = random.defaults();
        Comparison comparison(defaults, defaults);
        EXPECT_TRUE(comparison.effectOn(json::Document(random.user()).root()).isNothing()) << seed;
    }
}

// --- Files ----------------------------------------------------------------------------------------------------------

class UpgradeFiles : public testing::Test {
protected:
    void SetUp() override {
        for (const char* const user : {"ann", "bob", "eve"}) {
            writeTextFile(userFile(user), kOneUser);
        }
        writeTextFile(homes() / "ann/notes.cfg", "");
    }

    fs::path homes() const { return directory_ / "homes"; }
    fs::path userFile(const std::string& user) const {
        return (homes() / user / "pcbenv/tessel/tessel_settings.cfg").make_preferred();
    }

    std::vector<std::string> found(const fs::path& argument) const {
        std::vector<std::string> names;
        for (const fs::path& file : command::upgrade::usersFiles(argument)) {
            names.push_back(file.lexically_relative(homes()).generic_u8string());
        }
        return names;
    }

    static std::string nameFor(const std::string& user) { return user + "/pcbenv/tessel/tessel_settings.cfg"; }

    TempDirectory directory_;
};

TEST_F(UpgradeFiles, AreFoundByFileDirectoryAndPattern) {
    const std::vector<std::string> all{nameFor("ann"), nameFor("bob"), nameFor("eve")};
    EXPECT_EQ(found(homes()), all);
    EXPECT_EQ(found(homes() / "*"), all);
    EXPECT_EQ(found(homes() / "**" / "tessel_settings.cfg"), all);
    EXPECT_EQ(found(homes() / "?n?" / "pcbenv"), std::vector<std::string>{nameFor("ann")});
    EXPECT_EQ(found(userFile("bob")), std::vector<std::string>{nameFor("bob")});
    EXPECT_EQ(found(homes() / "ann/notes.cfg"), std::vector<std::string>{"ann/notes.cfg"});
    EXPECT_EQ(found(homes() / "nobody"), std::vector<std::string>{});
    EXPECT_EQ(found(homes() / "x*"), std::vector<std::string>{});
}

// --- The command ----------------------------------------------------------------------------------------------------

class UpgradeCommand : public UpgradeFiles {
protected:
    void SetUp() override {
        UpgradeFiles::SetUp();
        writeTextFile(directory_ / "old.cfg",
                      defaultsWith(R"({"name":"grid","value":"1"})", shippedAction(1, "m", "M")));
        writeTextFile(directory_ / "new" / kShipped, defaultsWith(R"({"name":"zoom","value":"1"})"));
    }

    ChildResult upgrade(std::vector<std::string> options) const {
        options.insert(options.begin(),
                       {"upgrade", (directory_ / "old.cfg").u8string(), (directory_ / "new").u8string()});
        return world_.run(options);
    }

    static constexpr char kShipped[] = "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg";
    CommandWorld world_;
};

constexpr char UpgradeCommand::kShipped[];

TEST_F(UpgradeCommand, TellsEachUserAndTheSummary) {
    writeTextFile(userFile("bob"), "{}");
    writeTextFile(userFile("eve"), "{");
    const ChildResult result = upgrade({homes().u8string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(
        result.out,
        userFile("ann").u8string() +
            "\n  dropped: s::grid=7, there is no such setting\n"
            "  meaningless: grid in the section s\n"
            "  meaningless: The entry for action 1 is for none of the shipped actions.\n"
            "  shortcut: action 1 had \"F9\", there is no such action\n"
            "Users: 3. Losing something: 1. With a value over a changed default: 0. With a key of another action: 0. "
            "Not read: 1.\n" +
            userFile("ann").u8string() +
            ": warning: The upgrade takes from this user: values 1, shortcuts 1, menu flags 0.\n" +
            userFile("eve").u8string() +
            ": warning: The file cannot be read or is no JSON, so nothing of it counts.\n"
            "    \"zelutil lint\" shows where it is wrong.\n");
}

TEST_F(UpgradeCommand, NothingLostIsFine) {
    writeTextFile(userFile("bob"), "{}");
    const ChildResult result = upgrade({userFile("bob").u8string()});
    EXPECT_EQ(result.exitCode, 0) << result.out;
}

TEST_F(UpgradeCommand, PrintsALineForEachUser) {
    const ChildResult result = upgrade({homes().u8string(), "--json-lines", "--jobs", "2"});
    EXPECT_EQ(result.exitCode, 1);
    std::vector<std::string> files;
    std::size_t from = 0;
    for (std::size_t end = result.out.find('\n'); end != std::string::npos; end = result.out.find('\n', from)) {
        const json::Document line(std::string_view(result.out).substr(from, end - from));
        EXPECT_EQ(line.root().member("format").integer(), 1);
        files.emplace_back(line.root().member("file").text().value_or("the summary"));
        if (files.back() != "the summary") {
            EXPECT_TRUE(line.root().member("loses").isTrue());
            EXPECT_EQ(line.root().member("dropped").elements().size(), 1U);
        } else {
            EXPECT_EQ(line.root().member("summary").member("losing").integer(), 3);
        }
        from = end + 1;
    }
    EXPECT_EQ(files, (std::vector<std::string>{userFile("ann").u8string(), userFile("bob").u8string(),
                                               userFile("eve").u8string(), "the summary"}));
}

TEST_F(UpgradeCommand, ManyFilesGiveTheSameWithEveryNumberOfThreads) {
    for (int number = 0; number < 200; ++number) {
        writeTextFile(userFile("user" + std::to_string(number)), RandomTexts(static_cast<unsigned>(number)).user());
    }
    const ChildResult one = upgrade({homes().u8string(), "--json", "--jobs", "1"});
    EXPECT_EQ(upgrade({homes().u8string(), "--json", "--jobs", "7"}).out, one.out);
    const json::Document result(one.out);
    EXPECT_EQ(result.root().member("users").elements().size(), 203U);
    EXPECT_EQ(result.root().member("summary").member("users").integer(), 203);
}

TEST_F(UpgradeCommand, DefaultsThatAreNoneAreAFailure) {
    for (const char* const text : {"", "{", "{}", "{\"meta\":[]}"}) {
        SCOPED_TRACE(text);
        writeTextFile(directory_ / "old.cfg", text);
        const ChildResult result = upgrade({homes().u8string()});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_NE(result.err, "");
    }
    fs::remove(directory_ / "old.cfg");
    EXPECT_EQ(upgrade({homes().u8string()}).exitCode, 3);
    EXPECT_EQ(upgrade({}).exitCode, 2);
    EXPECT_EQ(upgrade({homes().u8string(), "--jobs", "0"}).exitCode, 2);
}

TEST_F(UpgradeCommand, ArgumentThatMeansNoFileIsAFinding) {
    const ChildResult result = upgrade({(homes() / "x*").u8string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.out.find("means no user's file"), std::string::npos) << result.out;
}

// --- The progress bar -----------------------------------------------------------------------------------------------

class ProgressBar : public testing::Test {
protected:
    Progress progress(std::size_t total) {
        return Progress(total, start_, [this](std::string_view text) { written_ += text; });
    }

    Progress::Time after(int milliseconds) const { return start_ + std::chrono::milliseconds(milliseconds); }

    std::string take() { return std::exchange(written_, std::string()); }

    Progress::Time start_{};
    std::string written_;
};

TEST_F(ProgressBar, AppearsAfterASecondAndGoesAtTheEnd) {
    Progress bar = progress(1000);
    bar.update(10, after(999));
    EXPECT_EQ(take(), "");
    bar.update(260, after(1000));
    const std::string line = "[##########..............................]  26 %  260 of 1000, 3 s left";
    EXPECT_EQ(take(), "\r" + line);
    bar.finish();
    EXPECT_EQ(take(), "\r" + std::string(line.size(), ' ') + "\r");
    bar.finish();
    EXPECT_EQ(take(), "");
}

TEST_F(ProgressBar, IsWrittenTenTimesASecondAtMost) {
    Progress bar = progress(10);
    int written = 0;
    for (int time = 1000; time < 2000; ++time) {
        bar.update(5, after(time));
        written += take().empty() ? 0 : 1;
    }
    EXPECT_EQ(written, 10);
}

TEST_F(ProgressBar, ShorterLineCoversALongerOne) {
    Progress bar = progress(10);
    bar.update(1, after(60000));
    const std::size_t length = take().size();
    bar.update(10, after(60100));
    const std::string line = take();
    EXPECT_EQ(line.size(), length);
    EXPECT_NE(line.find("100 %  10 of 10, 0 s left"), std::string::npos) << line;
}

TEST_F(ProgressBar, NothingToDoAndNoTerminalShowNothing) {
    progress(0).update(0, after(5000));
    Progress(10, start_, nullptr).update(5, after(5000));
    EXPECT_EQ(take(), "");
}

TEST_F(ProgressBar, NothingDoneTellsNoTimeLeft) {
    Progress bar = progress(10);
    bar.update(0, after(1500));
    EXPECT_EQ(take(), "\r[........................................]   0 %  0 of 10");
}

}  // namespace
}  // namespace zelutil::test
