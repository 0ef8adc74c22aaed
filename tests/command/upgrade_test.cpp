// Compares what an upgrade is said to do to a user's file with what loads of that file show: each version is really
// loaded, by the library's own start, and asked through its queries.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "command/command_world.h"
#include "command/progress.h"
#include "command/upgrade/comparison.h"
#include "command/upgrade/upgrade.h"
#include "command/upgrade/user_files.h"
#include "json/document.h"
#include "prefs/preferences.h"
#include "support/environment.h"
#include "support/symbolic_link.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using command::Progress;
using command::upgrade::Comparison;
using command::upgrade::Effect;

constexpr int kAllThreadsStart = 1'000'000;

/// Counts how many threads the system has left; it is -1 once the system has refused one.
std::atomic<int> threadsThatStart{kAllThreadsStart};

}  // namespace
}  // namespace zelutil::test

// The start of every std::thread, by the name that the linker knows. The state is passed by its address.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker gives these names.
extern "C" {
void __real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(void* thread,
                                                                                                  void* state,
                                                                                                  void (*depend)());

void __wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(void* thread,
                                                                                                  void* state,
                                                                                                  void (*depend)()) {
    if (--zelutil::test::threadsThatStart < 0) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    __real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE(thread, state, depend);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace zelutil::test {
namespace {

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
    /// Holds the commands that run by context and shortcut, also those that the fallback finds.
    std::map<std::pair<std::string, std::string>, std::string> commands;
    /// The sections and names of what has no effect in the user's file.
    std::set<std::pair<std::string, std::string>> withoutEffect;
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
        for (const prefs::EntryFinding& finding : preferences.catalogue.findings()) {
            if (finding.kind != prefs::EntryFinding::Kind::AnotherSection) {
                loaded.withoutEffect.emplace(finding.section, finding.name);
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
                if (const std::string command = manager.getCommand(context, key, true); !command.empty()) {
                    loaded.commands[{context, key}] = command;
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
        // One that stands in for a missing parent has no id.
        const bool isThere = now != after.actions.end() && now->second.id != 0;
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

int holderIn(const Loaded& loaded, const std::pair<std::string, std::string>& place) {
    const auto found = loaded.holders.find(place);
    return found == loaded.holders.end() ? 0 : found->second;
}

/// Returns the action that a key runs by the fallback at the latest, with its command.
std::string ownerIn(const Loaded& loaded, const std::pair<std::string, std::string>& place) {
    const int own = holderIn(loaded, place);
    return std::to_string(own != 0 ? own : holderIn(loaded, {"ucpedit", place.second})) + loaded.commands.at(place);
}

void expectedOfKeys(const Loaded& before, const Loaded& after, Lines& lines) {
    for (const auto& [place, command] : before.commands) {
        const bool isOwn = holderIn(before, place) != 0 || holderIn(after, place) != 0;
        const std::string now = after.commands.count(place) != 0 ? ownerIn(after, place) : "nothing";
        if (isOwn && ownerIn(before, place) != now) {
            lines.insert("key " + place.first + " " + place.second + " " + ownerIn(before, place) + " now " + now);
        }
    }
}

Lines expectedLines(const Loaded& before, const Loaded& after) {
    Lines lines;
    expectedOfSettings(before, after, lines);
    expectedOfActions(before, after, lines);
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
    return lines;
}

std::string keyLine(const command::upgrade::ChangedKey& key) {
    return "key " + key.context + " " + key.shortcut + " " + std::to_string(key.before.action) + key.before.command +
           " now " + (key.now ? std::to_string(key.now->action) + key.now->command : "nothing");
}

/// Returns a line for each key that changes for the user: those of the shipped defaults that are neither spared nor
/// told in another way, and the user's own.
Lines keyLines(const Effect& effect, const std::vector<command::upgrade::ChangedKey>& shipped) {
    std::set<std::pair<std::string, std::string>> others;
    Lines lines;
    for (const auto& one : effect.keys) {
        others.emplace(one.context, one.shortcut);
        lines.insert(keyLine(one));
    }
    for (const auto& one : effect.sparedKeys) {
        EXPECT_TRUE(others.emplace(one.context, one.shortcut).second) << "spared and changed: " << one.shortcut;
    }
    for (const auto& one : shipped) {
        if (others.count({one.context, one.shortcut}) == 0) {
            lines.insert(keyLine(one));
        }
    }
    return lines;
}

Lines keyLines(const std::vector<command::upgrade::ChangedKey>& shipped) { return keyLines({}, shipped); }

/// Expects that what is called meaningless had an effect before, and that every entry that lost its effect is named.
void expectMeaninglessHolds(const Effect& effect, const Loaded& before, const Loaded& after) {
    std::set<std::pair<std::string, std::string>> named;
    for (const auto& one : effect.meaningless) {
        const std::pair<std::string, std::string> place(one.section, one.name);
        if (one.action != 0) {
            EXPECT_EQ(before.actions.count(one.action), 1U) << one.text;
            continue;
        }
        named.insert(place);
        EXPECT_EQ(after.withoutEffect.count(place), 1U) << one.section << " " << one.name;
        EXPECT_EQ(before.withoutEffect.count(place), 0U) << one.section << " " << one.name;
        EXPECT_EQ(before.withoutEffect.count({one.section, ""}), 0U) << one.section << " " << one.name;
    }
    for (const auto& [section, name] : after.withoutEffect) {
        const bool hadEffect =
            before.withoutEffect.count({section, name}) == 0 && before.withoutEffect.count({section, ""}) == 0;
        if (hadEffect && !name.empty()) {
            EXPECT_EQ(named.count({section, name}), 1U) << section << " " << name;
        }
    }
}

/// Expects of each refusal that both versions have such an action and that the text says all.
void expectRefusalsHold(const Effect& effect, const Loaded& before, const Loaded& after) {
    for (const auto& refused : effect.refused) {
        EXPECT_EQ(before.actions.count(refused.action), 1U) << refused.text;
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
        Lines shipped;
        expectedOfKeys(starts.start(oldDefaults, ""), starts.start(newDefaults, ""), shipped);
        EXPECT_EQ(keyLines(comparison.shippedKeys()), shipped);
        for (int number = 0; number < 3; ++number) {
            const std::string user = random.user();
            SCOPED_TRACE("old " + oldDefaults + "\nnew " + newDefaults + "\nuser " + user);
            const Loaded before = starts.start(oldDefaults, user);
            const Loaded after = starts.start(newDefaults, user);
            const Effect effect = comparison.effectOn(json::Document(user).root());
            EXPECT_EQ(linesOf(effect), expectedLines(before, after));
            Lines keys;
            expectedOfKeys(before, after, keys);
            EXPECT_EQ(keyLines(effect, comparison.shippedKeys()), keys);
            // Nothing is told of a user that holds for everybody.
            const Lines shippedToo = keyLines(comparison.shippedKeys());
            for (const auto& one : effect.keys) {
                EXPECT_TRUE(shippedToo.count(keyLine(one)) == 0 || one.before.byFallback ||
                            (one.now && one.now->byFallback))
                    << keyLine(one);
            }
            expectRefusalsHold(effect, before, after);
            expectMeaninglessHolds(effect, before, after);
            for (const std::string& line : linesOf(effect)) {
                ++kinds[line.substr(0, line.find(' '))];
            }
            kinds["key"] += effect.keys.empty() ? 0 : 1;
            kinds["spared"] += effect.sparedKeys.empty() ? 0 : 1;
            kinds["shipped"] += shipped.empty() ? 0 : 1;
            kinds["refused"] += effect.refused.empty() ? 0 : 1;
            kinds["meaningless"] += effect.meaningless.empty() ? 0 : 1;
        }
    }
    for (const char* const kind :
         {"dropped", "gained", "masked", "shortcut", "menu", "key", "spared", "shipped", "refused", "meaningless"}) {
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
    ASSERT_TRUE(effect.keys[0].now);
    EXPECT_EQ(effect.keys[0].now->command, "copy");
}

/// Both entries are for one action. The later one gives it the same shortcut in both versions.
TEST(Upgrade, RefusedEntryThatALaterOneMakesGoodIsNoLoss) {
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "M")),
                          defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "copy", "F9")));
    const json::Document user(R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[)"
                              R"({"id":1,"shortcut":"F9"},{"id":1,"shortcut":"F8"}]}]}]})");
    const Effect effect = comparison.effectOn(user.root());
    ASSERT_EQ(effect.refused.size(), 1U);
    EXPECT_EQ(effect.refused[0].holder, 2);
    EXPECT_FALSE(effect.losesAnything());
    EXPECT_FALSE(effect.isNothing());
}

/// Returns a version with a section "s" of these settings, and one of the actions where some are given.
std::string sectionOf(const std::string& settings, const std::string& more = "") {
    return R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[)" + settings + "]" + more +
           "}]}";
}

std::string childOf(int parent, int id, const std::string& shortcut) {
    return R"({"id":)" + std::to_string(id) + R"(,"parent_id":)" + std::to_string(parent) +
           R"(,"name":"","icon":"","context":"board","command":"child","shortcut":")" + shortcut + R"(","rmb":false})";
}

constexpr char kFlagOfTwo[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":2,"rmb":true}]}]}]})";
constexpr char kTwoLists[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":2,"shortcut":"F9"}]}]},)"
    R"({"header":"B","attribute":"b","overriddensettings":[{"actions":[{"id":2,"shortcut":"F8"}]}]}]})";
constexpr char kSecondList[] =
    R"(,{"header":"B","attribute":"b","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[]}}]})";

struct UpgradeRow {
    const char* name;
    std::string oldDefaults;
    std::string newDefaults;
    const char* user;
    /// The section and name, or the action, of each entry that is called meaningless or refused.
    Lines told;
};

const std::string kElsewhere = R"({"meta":[{"header":"O","attribute":"o","tclCommand":"t","defaultsettings":[]}]})";
constexpr char kGridAndZoom[] =
    R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"grid":"7","zoom":"8"}]}]})";
constexpr char kKeyOfTwo[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":2,"shortcut":"F9"}]}]}]})";
constexpr char kKeyAndFlagOfTwo[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":2,"shortcut":"F9","rmb":true}]}]}]})";

constexpr char kNoKeyOfTwo[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":2,"shortcut":""}]}]}]})";
constexpr char kKeysOfBoth[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":1,"shortcut":"F7"},)"
    R"({"id":2,"shortcut":"F9"}]}]}]})";

const std::vector<UpgradeRow>& meaninglessRows() {
    static const std::vector<UpgradeRow> rows = {
        {"section that comes, without the names", kElsewhere, sectionOf(""), kGridAndZoom, {}},
        {"section that goes, all names unknown before", sectionOf(""), kElsewhere, kGridAndZoom, {}},
        {"section that goes, one name known before",
         sectionOf(R"({"name":"zoom","value":"1"})"),
         kElsewhere,
         kGridAndZoom,
         {"s "}},
        {"name that goes, the other unknown before",
         sectionOf(R"({"name":"zoom","value":"1"})"),
         sectionOf(""),
         kGridAndZoom,
         {"s zoom"}},
        // Nobody reads such a member, and it is told unless the defaults have it, too.
        {"member that the defaults lose",
         sectionOf(R"({"name":"grid","value":"1"},{"name":"zoom","value":"1"})", R"(,"children":"none")"),
         sectionOf(R"({"name":"grid","value":"1"},{"name":"zoom","value":"1"})"),
         R"({"meta":[{"header":"S","attribute":"s","children":"none","overriddensettings":[{"grid":"7"}]}]})",
         {}},
        // The name means the first section's setting before, which sets it.
        {"name of another section that goes",
         R"({"meta":[{"header":"O","attribute":"o","tclCommand":"t","defaultsettings":[{"name":"grid","value":"1"}]},)"
         R"({"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[]}]})",
         sectionOf(""),
         R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"grid":"7"}]}]})",
         {"s grid"}},
        {"section that the actions had",
         R"({"meta":[{"header":"A","attribute":"a","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[)" +
             shippedAction(2, "copy", "C") + "]}}]}",
         kElsewhere,
         kKeyOfTwo,
         {"a "}},
        {"section that the actions had, with no action of the user's",
         R"({"meta":[{"header":"A","attribute":"a","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[)" +
             shippedAction(1, "move", "M") + "]}}]}",
         kElsewhere,
         kKeyOfTwo,
         {}},
        {"actions that come without the user's",
         kElsewhere,
         defaultsWith("", shippedAction(1, "move", "M")),
         kKeyOfTwo,
         {}},
        {"action that goes", defaultsWith("", shippedAction(2, "copy", "C")), defaultsWith(""), kKeyOfTwo, {"2"}},
        {"action that comes, with a holder of the key",
         defaultsWith("", shippedAction(1, "move", "F9")),
         defaultsWith("", shippedAction(1, "move", "F9") + "," + shippedAction(2, "copy", "C")),
         kKeyOfTwo,
         {}},
        {"action that had its key refused and goes",
         defaultsWith("", shippedAction(1, "move", "F9") + "," + shippedAction(2, "copy", "C")),
         defaultsWith(""),
         kKeyOfTwo,
         {}},
        {"child that had its key refused and follows its parent",
         defaultsWith("", shippedAction(1, "move", "F9") + "," + shippedAction(2, "copy", "C")),
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "C")),
         kKeyOfTwo,
         {}},
        {"child whose flag was in vain and that goes",
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "C")),
         defaultsWith(""),
         kFlagOfTwo,
         {}},
        {"second list of the user's, which was not read",
         [] {
             const std::string one = defaultsWith("", shippedAction(2, "copy", "C"));
             return one.substr(0, one.size() - 2) + kSecondList;
         }(),
         defaultsWith("", shippedAction(2, "copy", "C")),
         kTwoLists,
         {}},
        {"action that becomes a child",
         defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "c", "")),
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "C")),
         kKeyOfTwo,
         {"2"}},
        {"action that becomes a child, with a refused key",
         defaultsWith("", shippedAction(1, "move", "F9") + "," + shippedAction(2, "copy", "C")),
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "C")),
         kKeyAndFlagOfTwo,
         {"2"}},
        {"action that becomes a child and had its key taken away",
         defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "copy", "C")),
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "")),
         kNoKeyOfTwo,
         {"2"}},
        // By its entry it comes to hold the key of its parent, though it does not keep its own.
        {"action that becomes the child of one with an entry",
         defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "copy", "C")),
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "")),
         kKeysOfBoth,
         {"2"}},
        {"child that stays one",
         defaultsWith("", shippedAction(1, "move", "M") + "," + childOf(1, 2, "")),
         defaultsWith("", shippedAction(1, "copy", "M") + "," + childOf(1, 2, "")),
         kKeysOfBoth,
         {}},
        {"key that is refused now",
         defaultsWith("", shippedAction(2, "copy", "C")),
         defaultsWith("", shippedAction(1, "move", "F9") + "," + shippedAction(2, "copy", "C")),
         kKeyOfTwo,
         {"refused 2"}},
    };
    return rows;
}

TEST(Upgrade, MeaninglessAndRefusedIsWhatHadAnEffectBefore) {
    for (const UpgradeRow& row : meaninglessRows()) {
        SCOPED_TRACE(row.name);
        const json::Document user(row.user);
        Comparison comparison(row.oldDefaults, row.newDefaults);
        const Effect effect = comparison.effectOn(user.root());
        Lines told;
        for (const auto& one : effect.meaningless) {
            told.insert(one.action != 0 ? std::to_string(one.action) : one.section + " " + one.name);
        }
        for (const auto& one : effect.refused) {
            told.insert("refused " + std::to_string(one.action));
        }
        EXPECT_EQ(told, row.told);
    }
}

/// The context had an action of its own for the key; now the key runs that of "ucpedit".
TEST(Upgrade, KeyThatFallsBackToAnotherActionIsTold) {
    std::string everywhere = shippedAction(2, "copy", "F5");
    everywhere.replace(everywhere.find("board"), 5, "ucpedit");
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "F5") + "," + everywhere),
                          defaultsWith("", shippedAction(1, "move", "F6") + "," + everywhere));
    const Effect effect = comparison.effectOn(json::Document("{}").root());
    ASSERT_EQ(comparison.shippedKeys().size(), 1U);
    EXPECT_EQ(comparison.shippedKeys()[0].context, "board");
    EXPECT_EQ(comparison.shippedKeys()[0].shortcut, "F5");
    EXPECT_EQ(comparison.shippedKeys()[0].before.action, 1);
    EXPECT_FALSE(comparison.shippedKeys()[0].before.byFallback);
    ASSERT_TRUE(comparison.shippedKeys()[0].now);
    EXPECT_EQ(comparison.shippedKeys()[0].now->action, 2);
    EXPECT_EQ(comparison.shippedKeys()[0].now->command, "copy");
    EXPECT_TRUE(comparison.shippedKeys()[0].now->byFallback);
}

TEST(Upgrade, KeyThatRunsNothingAnyMoreIsTold) {
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "F5")),
                          defaultsWith("", shippedAction(1, "move", "F6")));
    const Effect effect = comparison.effectOn(json::Document("{}").root());
    ASSERT_EQ(comparison.shippedKeys().size(), 1U);
    EXPECT_EQ(comparison.shippedKeys()[0].shortcut, "F5");
    EXPECT_EQ(comparison.shippedKeys()[0].before.action, 1);
    EXPECT_FALSE(comparison.shippedKeys()[0].now);
    EXPECT_TRUE(effect.isNothing());
}

/// The new defaults swap the keys of both actions. Who has given the first one a key of its own has the second one's
/// key changed alone.
TEST(Upgrade, KeysThatChangeForEverybodyAreNotTheUsers) {
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "M") + "," + shippedAction(2, "copy", "C")),
                          defaultsWith("", shippedAction(1, "move", "C") + "," + shippedAction(2, "copy", "M")));
    ASSERT_EQ(comparison.shippedKeys().size(), 2U);
    EXPECT_EQ(comparison.shippedKeys()[0].shortcut, "C");
    EXPECT_EQ(comparison.shippedKeys()[1].shortcut, "M");
    EXPECT_TRUE(comparison.effectOn(json::Document("{}").root()).isNothing());
    const Effect effect = comparison.effectOn(json::Document(kOneUser).root());
    // C ran copy and runs nothing, as move has F9; nobody had M, which runs copy.
    ASSERT_EQ(effect.keys.size(), 1U);
    EXPECT_EQ(effect.keys[0].shortcut, "C");
    EXPECT_EQ(effect.keys[0].before.command, "copy");
    EXPECT_FALSE(effect.keys[0].now);
    ASSERT_EQ(effect.sparedKeys.size(), 1U);
    EXPECT_EQ(effect.sparedKeys[0].context, "board");
    EXPECT_EQ(effect.sparedKeys[0].shortcut, "M");
}

TEST(Upgrade, ActionThatGetsAnotherIdIsNamed) {
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "M")),
                          defaultsWith("", shippedAction(77, "move", "M")));
    const json::Document user(R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[)"
                              R"({"id":1,"shortcut":"F9","rmb":true}]}]}]})");
    const Effect effect = comparison.effectOn(user.root());
    ASSERT_EQ(effect.shortcuts.size(), 1U);
    EXPECT_EQ(effect.shortcuts[0].successor, 77);
    ASSERT_EQ(effect.menuFlags.size(), 1U);
    EXPECT_EQ(effect.menuFlags[0].successor, 77);
    ASSERT_EQ(effect.keys.size(), 1U);
    EXPECT_EQ(effect.keys[0].shortcut, "F9");
    EXPECT_EQ(effect.keys[0].successor, 77);
    EXPECT_FALSE(effect.keys[0].now);
}

TEST(Upgrade, ActionThatIsOnlyAMissingParentAnyMoreIsGone) {
    const std::string child =
        R"({"id":5,"parent_id":1,"name":"","icon":"","context":"panel","command":"turn","shortcut":"","rmb":false})";
    Comparison comparison(defaultsWith("", shippedAction(1, "move", "M") + "," + child),
                          defaultsWith("", shippedAction(77, "move", "M") + "," + child));
    const json::Document user(R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"actions":[)"
                              R"({"id":1,"shortcut":"F9","rmb":true}]}]}]})");
    const Effect effect = comparison.effectOn(user.root());
    ASSERT_EQ(effect.shortcuts.size(), 1U);
    EXPECT_FALSE(effect.shortcuts[0].now) << *effect.shortcuts[0].now;
    EXPECT_EQ(effect.shortcuts[0].successor, 77);
    ASSERT_EQ(effect.menuFlags.size(), 1U);
    EXPECT_FALSE(effect.menuFlags[0].now);
    EXPECT_EQ(effect.menuFlags[0].successor, 77);
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

    std::vector<std::string> found(const std::vector<fs::path>& arguments) const {
        command::upgrade::UserFiles files;
        for (const fs::path& argument : arguments) {
            files.add(argument);
        }
        std::vector<std::string> names;
        for (const fs::path& file : files.files()) {
            names.push_back(file.lexically_relative(homes()).generic_u8string());
        }
        return names;
    }

    std::vector<std::string> found(const fs::path& argument) const { return found(std::vector<fs::path>{argument}); }

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

TEST_F(UpgradeFiles, CountOnceWhateverWaysLeadToThem) {
    const std::vector<std::string> expected{nameFor("bob"), nameFor("ann"), nameFor("eve")};
    EXPECT_EQ(found({userFile("bob"), homes(), homes() / "*", homes() / "ann" / ".." / "eve" / "pcbenv"}), expected);
    if (makeFileLink(homes() / "ann", directory_ / "also_ann")) {
        EXPECT_EQ(found({userFile("bob"), homes(), directory_ / "also_ann"}), expected);
    }
}

/// The stars of the pattern can be matched in a million ways; each directory is looked at once for each star.
TEST_F(UpgradeFiles, AreFoundByManyStarsInADeepDirectory) {
    fs::path deep = homes() / "ann";
    for (int depth = 0; depth < 60; ++depth) {
        deep /= "d";
    }
    writeTextFile(deep / "tessel_settings.cfg", kOneUser);
    EXPECT_EQ(found(homes() / "ann" / "d" / "**" / "**" / "d" / "**" / "**" / "**"),
              std::vector<std::string>{(deep / "tessel_settings.cfg").lexically_relative(homes()).generic_u8string()});
}

TEST_F(UpgradeFiles, DirectoryInThePlaceOfOneIsNotPassedOver) {
    fs::remove(userFile("bob"));
    fs::create_directories(userFile("bob"));
    const std::vector<std::string> expected{nameFor("ann"), nameFor("bob"), nameFor("eve")};
    EXPECT_EQ(found(homes()), expected);
    EXPECT_EQ(found(homes() / "**" / "tessel_settings.cfg"), expected);
    std::atomic<std::size_t> done{0};
    const auto results = command::upgrade::compareAll("{}", "{}", {userFile("bob")}, 1, done);
    EXPECT_STREQ(command::upgrade::nameOf(results.users[0].status), "unread");
}

TEST_F(UpgradeFiles, LinksAreFollowedByPatternsOnlyAndNoted) {
    writeTextFile(directory_ / "data/zoe/pcbenv/tessel/tessel_settings.cfg", kOneUser);
    if (!makeFileLink(directory_ / "data/zoe", homes() / "zoe")) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    makeFileLink(homes() / "ann/nothing", homes() / "ann/lock");
    command::upgrade::UserFiles searched;
    EXPECT_TRUE(searched.add(homes()));
    EXPECT_EQ(searched.files().size(), 3U);
    EXPECT_EQ(searched.linksPassedOver(), (std::vector<fs::path>{homes() / "ann/lock", homes() / "zoe"}));
    EXPECT_TRUE(searched.notSeen().empty());
    command::upgrade::UserFiles matched;
    EXPECT_TRUE(matched.add(homes() / "**" / "tessel_settings.cfg"));
    EXPECT_EQ(matched.files(), searched.files());
    EXPECT_EQ(matched.linksPassedOver(), (std::vector<fs::path>{homes() / "ann/lock", homes() / "zoe"}));
    EXPECT_TRUE(matched.notSeen().empty());
    EXPECT_EQ(found(homes() / "*").back(), nameFor("zoe"));
    EXPECT_EQ(found(homes() / "*").size(), 4U);
}

TEST_F(UpgradeFiles, LinksThatLeadNowhereAreNotSeen) {
    const fs::path dead = homes() / "zoe";
    if (!makeFileLink(directory_ / "nothing", dead)) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    for (const fs::path& argument : {homes(), homes() / "*", homes() / "**" / "tessel_settings.cfg",
                                     homes() / "z*" / "pcbenv", homes() / "z*" / "p*", homes() / "zoe" / "pcbenv"}) {
        SCOPED_TRACE(argument.u8string());
        command::upgrade::UserFiles files;
        EXPECT_TRUE(files.add(argument));
        EXPECT_TRUE(files.add(argument));
        ASSERT_EQ(files.notSeen().size(), 1U);
        EXPECT_EQ(files.notSeen()[0].path, dead);
        EXPECT_EQ(files.notSeen()[0].why, command::upgrade::NotSeen::Why::LeadsNowhere);
    }
    command::upgrade::UserFiles none;
    EXPECT_FALSE(none.add(homes() / "nobody" / "pcbenv"));
    EXPECT_FALSE(none.add(userFile("ann") / "pcbenv" / "*"));
    EXPECT_TRUE(none.notSeen().empty());
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
    EXPECT_EQ(result.out,
              userFile("ann").u8string() +
                  "\n  dropped: s::grid=7, there is no such setting\n"
                  "  meaningless: grid in the section s\n"
                  "  meaningless: The entry for action 1 is for none of the shipped actions.\n"
                  "  shortcut: action 1 had \"F9\", there is no such action\n"
                  "  key: \"F9\" in board ran m (action 1), now nothing\n" +
                  "For every user who has not set them, the new defaults change these keys:\n"
                  "  key: \"M\" in board ran m (action 1), now nothing\n"
                  "Users: 3. Losing something: 1. With a value over a changed default: 0. With another changed key: 1. "
                  "Not read: 1. Not a user's file: 0. Not seen: 0.\n" +
                  userFile("ann").u8string() +
                  ": warning: The upgrade takes from this user: values 1, shortcuts 1, menu flags 0.\n"
                  "    Tell the user, or have the new defaults keep these names and shortcuts.\n" +
                  userFile("eve").u8string() +
                  ": warning: The file cannot be read or is no JSON, so nothing of it counts.\n"
                  "    This shows where it is wrong: zelutil lint " +
                  userFile("eve").u8string() + '\n');
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

TEST_F(UpgradeCommand, UserThatCannotBeSeenIsAFinding) {
    for (const char* const user : {"ann", "bob", "eve"}) {
        writeTextFile(userFile(user), "{}");
    }
    if (!makeFileLink(directory_ / "nothing", homes() / "zoe")) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    const std::string pattern = (homes() / "*" / "pcbenv").u8string();
    const ChildResult result = upgrade({pattern});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "For every user who has not set them, the new defaults change these keys:\n"
              "  key: \"M\" in board ran m (action 1), now nothing\n"
              "Users: 3. Losing something: 0. With a value over a changed default: 0. With another changed key: 0. "
              "Not read: 0. Not a user's file: 0. Not seen: 1.\n" +
                  (homes() / "zoe").u8string() +
                  ": warning: This link leads nowhere, so that users' files behind it do not count.\n"
                  "    See whether what it leads to has to be mounted first.\n");
    const ChildResult asJson = upgrade({pattern, "--json"});
    const json::Document document(asJson.out);
    ASSERT_EQ(document.root().member("notSeen").elements().size(), 1U);
    const json::View notSeen = *document.root().member("notSeen").elements().begin();
    EXPECT_EQ(notSeen.member("path").text(), (homes() / "zoe").u8string());
    EXPECT_EQ(notSeen.member("why").text(), "leads-nowhere");
    EXPECT_EQ(document.root().member("summary").member("notSeen").integer(), 1);
    const ChildResult lines = upgrade({pattern, "--json-lines"});
    EXPECT_EQ(lines.exitCode, 1);
    EXPECT_NE(lines.out.find(R"({"format":1,"notSeen":{"path":")" + inJson(homes() / "zoe") + "\""), std::string::npos)
        << lines.out;
}

TEST_F(UpgradeCommand, SameUserNamedTwiceCountsOnce) {
    const ChildResult result = upgrade({homes().u8string(), (homes() / "*").u8string(), "--json"});
    EXPECT_EQ(json::Document(result.out).root().member("summary").member("users").integer(), 3);
}

TEST_F(UpgradeCommand, PathsMayHaveBlanks) {
    fs::rename(directory_ / "new", directory_ / "the new one");
    fs::rename(directory_ / "old.cfg", directory_ / "the old one.cfg");
    fs::rename(homes(), directory_ / "all homes");
    const ChildResult result =
        world_.run({"upgrade", (directory_ / "the old one.cfg").u8string(), (directory_ / "the new one").u8string(),
                    (directory_ / "all homes").u8string(), "--json"});
    const json::Document document(result.out);
    EXPECT_EQ(document.root().member("summary").member("losing").integer(), 3) << result.out << result.err;
    EXPECT_EQ(document.root().member("summary").member("unread").integer(), 0);
}

// --- Threads --------------------------------------------------------------------------------------------------------

TEST_F(UpgradeFiles, AreComparedByTheThreadsThatStart) {
    const std::string oldDefaults = defaultsWith(R"({"name":"grid","value":"1"})");
    const std::string newDefaults = defaultsWith(R"({"name":"zoom","value":"1"})");
    const std::vector<fs::path> files{userFile("ann"), userFile("bob"), userFile("eve")};
    for (const int starting : {0, 1, 2, 3}) {
        SCOPED_TRACE(starting);
        threadsThatStart = starting;
        std::atomic<std::size_t> done{0};
        const auto results = command::upgrade::compareAll(oldDefaults, newDefaults, files, 3, done);
        EXPECT_EQ(done, 3U);
        EXPECT_EQ(threadsThatStart, starting == 3 ? 0 : -1) << "the system refused no thread";
        threadsThatStart = kAllThreadsStart;
        ASSERT_EQ(results.users.size(), 3U);
        for (const auto& result : results.users) {
            EXPECT_EQ(result.status, command::upgrade::UserResult::Status::Compared);
            EXPECT_EQ(result.effect.dropped.size(), 1U);
        }
    }
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

TEST_F(UpgradeCommand, AUsersFileInThePlaceOfDefaultsIsNamedAsSuch) {
    writeTextFile(directory_ / "old.cfg",
                  R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"a":"1"}]}]})");
    EXPECT_NE(upgrade({homes().u8string()})
                  .err.find("\" holds no shipped defaults, but user's preferences.\n"
                            "    Name the old shipped defaults, then the new ones, and then the users' files.\n"),
              std::string::npos);
    writeTextFile(directory_ / "old.cfg", "{");
    EXPECT_NE(upgrade({homes().u8string()}).err.find("\" holds no shipped defaults, because it is no JSON.\n"),
              std::string::npos);
}

TEST_F(UpgradeCommand, DefaultsInThePlaceOfAUsersFileAreNamedAsSuch) {
    const std::string old = (directory_ / "old.cfg").u8string();
    const ChildResult result = upgrade({old});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(
        result.out.find(old + ": warning: The file holds shipped defaults and is no user's, so it is not compared.\n"
                              "    Name OLD and NEW first, and users' files behind them.\n"),
        std::string::npos)
        << result.out;
    EXPECT_NE(upgrade({old, "--json"}).out.find("\"status\": \"defaults\""), std::string::npos);
}

TEST_F(UpgradeCommand, ArgumentThatMeansNoFileIsAFinding) {
    fs::create_directories(directory_ / "none" / "below");
    const std::string pattern = (homes() / "x*").u8string();
    const std::string directory = (directory_ / "none").u8string();
    const std::string nothing = (directory_ / "gone").u8string();
    const ChildResult result = upgrade({pattern, directory, nothing});
    EXPECT_EQ(result.exitCode, 1);
    for (const std::string& text :
         {"The pattern \"" + pattern + "\" matches no user's file.\n",
          "The directory \"" + directory + "\" holds no tessel_settings.cfg, neither itself nor in its directories.\n",
          '"' + nothing + "\" is not there.\n"}) {
        EXPECT_NE(result.out.find("warning: " + text), std::string::npos) << text << result.out;
    }
}

TEST_F(UpgradeCommand, EmptyArgumentIsAWrongCall) {
    EXPECT_EQ(upgrade({homes().u8string(), ""}).exitCode, 2);
    EXPECT_EQ(upgrade({""}).exitCode, 2);
    EXPECT_EQ(world_.run({"upgrade", "", "new.cfg", homes().u8string()}).exitCode, 2);
}

TEST_F(UpgradeCommand, FileThatIsNoUsersIsNamedAndCountedApart) {
    struct Row {
        const char* text;
        const char* holds;
    };
    for (const Row& row :
         {Row{R"({"hello":1})", "nothing that is read"}, Row{"[]", "nothing that is read"},
          Row{R"({"meta":{}})", "nothing that is read"},
          Row{R"({"zelutilProfile":1,"actions":[{"id":1,"context":"c","command":"x"}]})", "a profile of shortcuts"},
          Row{R"({"actions":[{"id":1,"shortcut":"F5"}]})", "user's actions"},
          Row{R"({"meta":[{"header":"N","facets":[]}]})", "facets"}}) {
        SCOPED_TRACE(row.text);
        writeTextFile(userFile("bob"), row.text);
        const ChildResult result = upgrade({userFile("bob").u8string()});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out.substr(result.out.find("Users: ")),
                  "Users: 0. Losing something: 0. With a value over a changed default: 0. With another changed key: 0. "
                  "Not read: 0. Not a user's file: 1. Not seen: 0.\n" +
                      userFile("bob").u8string() + ": warning: This is not a user's file, but holds " + row.holds +
                      ", so it is not compared.\n"
                      "    Name the files that the application saves, tessel_settings.cfg.\n");
    }
    const ChildResult asJson = upgrade({homes().u8string(), "--json"});
    const json::Document document(asJson.out);
    EXPECT_EQ(document.root().member("summary").member("users").integer(), 2);
    EXPECT_EQ(document.root().member("summary").member("notUsers").integer(), 1);
    EXPECT_EQ(document.root().member("shippedKeys").elements().size(), 1U);
    EXPECT_NE(asJson.out.find("\"status\": \"not-a-users-file\""), std::string::npos);
}

TEST_F(UpgradeCommand, UsersFileThatIsALinkToNothingIsNamedAsSuch) {
    fs::remove(userFile("bob"));
    if (!makeFileLink(directory_ / "nothing", userFile("bob"))) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    const ChildResult result = upgrade({homes().u8string()});
    EXPECT_NE(result.out.find(userFile("bob").u8string() +
                              ": warning: This link leads nowhere, so that users' files behind it do not count.\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("Not read: 0. Not a user's file: 0. Not seen: 1.\n"), std::string::npos) << result.out;
}

TEST_F(UpgradeFiles, WhosePathTheLibraryCannotSpellAreNotCalledMissing) {
    std::atomic<std::size_t> done{0};
    const auto results = command::upgrade::compareAll("{}", "{}", {homes() / "a|b", homes() / "none"}, 1, done);
    EXPECT_STREQ(command::upgrade::nameOf(results.users[0].status), "not-spellable");
    EXPECT_STREQ(command::upgrade::nameOf(results.users[1].status), "missing");
}

TEST_F(UpgradeCommand, ActionThatGetsAnotherIdIsNamed) {
    writeTextFile(directory_ / "new" / kShipped,
                  defaultsWith(R"({"name":"grid","value":"1"})", shippedAction(77, "m", "M")));
    const ChildResult result = upgrade({userFile("ann").u8string()});
    EXPECT_EQ(result.out.substr(0, result.out.find("Users: ")),
              userFile("ann").u8string() +
                  "\n  meaningless: The entry for action 1 is for none of the shipped actions.\n"
                  "  shortcut: action 1 had \"F9\", there is no such action, and its command is action 77 now\n"
                  "  key: \"F9\" in board ran m (action 1), now nothing, and m is action 77 now\n"
                  "For every user who has not set them, the new defaults change these keys:\n"
                  "  key: \"M\" in board ran m (action 1), now m (action 77)\n");
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

/// The clock goes on by a second with each look.
TEST_F(ProgressBar, IsShownWhileTheWorkGoesOnAndGoesBeforeItsErrorDoes) {
    std::atomic<bool> isShown{false};
    const command::ProgressPlace place{[&](std::string_view text) {
                                           written_ += text;
                                           isShown = true;
                                       },
                                       [this] { return start_ += std::chrono::seconds(1); }};
    const auto work = [&](std::atomic<std::size_t>& steps) {
        steps += 2;
        while (!isShown) {
            std::this_thread::yield();
        }
        throw std::runtime_error("no more");
    };
    EXPECT_THROW(command::workWithProgress(4, 2, place, work), std::runtime_error);
    const std::string line = "\r[##########..............................]  25 %  1 of 4, ";
    EXPECT_EQ(written_.substr(0, line.size()), line);
    EXPECT_EQ(written_.back(), '\r');
}

TEST_F(ProgressBar, NeedsNoThreadOfItsOwnWhereNothingIsShown) {
    const std::thread::id here = std::this_thread::get_id();
    std::thread::id there;
    command::workWithProgress(1, 1, {}, [&](std::atomic<std::size_t>&) { there = std::this_thread::get_id(); });
    EXPECT_EQ(there, here);
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
