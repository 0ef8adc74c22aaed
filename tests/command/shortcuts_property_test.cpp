// Every field that shortcuts, who and conflicts print is what the manager of the actions answers after the same texts
// are loaded, as in a fresh process.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/actions.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "command/json_writer.h"
#include "command/shortcuts/key_answer.h"
#include "command/shortcuts/key_conflicts.h"
#include "command/shortcuts/shortcut_table.h"
#include "command/shortcuts_world.h"
#include "host/action_worlds.h"
#include "json/document.h"

namespace {

using namespace zelutil::test;
using zelutil::json::Document;
using zelutil::json::View;

std::string textIn(View object, const char* member) { return std::string(object.member(member).text().value_or("?")); }

int numberIn(View object, const char* member) { return object.member(member).integer().value_or(-1); }

bool truthIn(View object, const char* member) {
    EXPECT_TRUE(object.member(member).isTruth()) << member;
    return object.member(member).isTrue();
}

std::string linkedWith(const std::string& context) {
    return context == "ucpedit" ? "brisk3d" : context == "brisk3d" ? "ucpedit" : "";
}

/// Holds what the manager returns after these texts are loaded, asked by its public interface alone.
class Expected {
public:
    Expected(const std::vector<Shipped>& shipped, const std::string& user) {
        for (const Shipped& action : shipped) {
            shipped_[action.id] = action;
            ids_.insert(action.id);
            if (action.parent > 0) {
                ids_.insert(action.parent);
            }
        }
        manager_.load(shippedText(shipped), "");
        for (const int id : ids_) {
            shownWithoutUser_[id] = manager_.getShortcut(id);
            menuWithoutUser_[id] = inMenu(id);
            runsWithoutUser_[id] = runs(id);
        }
        manager_.load(shippedText(shipped), user);
        for (const zelutil::host::ActionInfo& info : zelutil::host::actions()) {
            sources_[info.id] = info.source;
        }
    }

    /// The ids of all actions, stand-ins for missing parents included.
    const std::set<int>& ids() const { return ids_; }

    std::set<std::string> contexts() const {
        std::set<std::string> contexts;
        for (const auto& [id, action] : shipped_) {
            contexts.insert(action.context);
        }
        return contexts;
    }

    void compareRow(View row) const {
        const int id = numberIn(row, "id");
        const auto [found, item] = manager_.getAction(id);
        ASSERT_TRUE(found) << id;
        const std::string shortcut = manager_.getShortcut(id);
        const auto shipped = shipped_.find(id);
        EXPECT_EQ(textIn(row, "context"), item.context);
        EXPECT_EQ(textIn(row, "command"), item.command);
        EXPECT_EQ(textIn(row, "name"), item.name);
        EXPECT_EQ(numberIn(row, "parent"), item.parent_id);
        EXPECT_EQ(textIn(row, "shortcut"), shortcut);
        EXPECT_EQ(truthIn(row, "inMenu"), inMenu(id));
        EXPECT_EQ(textIn(row, "shippedShortcut"), shipped == shipped_.end() ? "" : shipped->second.shortcut);
        EXPECT_EQ(truthIn(row, "shippedInMenu"), shipped != shipped_.end() && shipped->second.inMenu);
        EXPECT_EQ(truthIn(row, "changedByUser"), shortcut != shownWithoutUser_.at(id));
        EXPECT_EQ(truthIn(row, "menuChangedByUser"), inMenu(id) != menuWithoutUser_.at(id));
        const int holder = shortcut.empty() ? 0 : manager_.getActionIdByShortcut(item.context, shortcut);
        EXPECT_EQ(truthIn(row, "runs"), holder == id);
        EXPECT_EQ(truthIn(row, "runsChangedByUser"),
                  shortcut == shownWithoutUser_.at(id) && runs(id) != runsWithoutUser_.at(id));
        EXPECT_EQ(numberIn(row, "heldBy"), holder == id ? 0 : holder);
        EXPECT_EQ(textIn(row, "source"), zelutil::shortcuts::nameOf(sources_.at(id)));
    }

    void compareRows(View rows) const {
        std::set<int> told;
        for (const View row : rows.elements()) {
            SCOPED_TRACE("action " + std::to_string(numberIn(row, "id")));
            compareRow(row);
            told.insert(numberIn(row, "id"));
        }
        EXPECT_EQ(rows.elements().size(), manager_.getAllActions().size());
        EXPECT_EQ(told, ids_);
    }

    void compareAnswer(View answer) const {
        const std::string context = textIn(answer, "context");
        const std::string key = textIn(answer, "shortcut");
        SCOPED_TRACE(key + " in " + context);
        EXPECT_EQ(textIn(answer, "command"), manager_.getCommand(context, key, false));
        EXPECT_EQ(textIn(answer, "commandWithFallback"), manager_.getCommand(context, key, true));
        const int holder = manager_.getActionIdByShortcut(context, key);
        EXPECT_EQ(numberIn(answer, "action"), holder);
        EXPECT_EQ(numberIn(answer, "actionWithFallback"),
                  holder != 0 ? holder : manager_.getActionIdByShortcut("ucpedit", key));
        EXPECT_EQ(numberIn(answer, "linkedHolder"), manager_.getActionIdByShortcut(linkedWith(context), key));
        std::set<int> shownBy;
        for (const int id : ids_) {
            if (id != holder && manager_.getShortcut(id) == key && manager_.getAction(id).second.context == context) {
                shownBy.insert(id);
            }
        }
        std::set<int> told;
        for (const View id : answer.member("shownBy").elements()) {
            told.insert(id.integer().value_or(-1));
        }
        EXPECT_EQ(told, shownBy);
    }

    /// Pairs of one shortcut, and 0 for nobody who holds it.
    using Pairs = std::set<std::tuple<std::string, int, int>>;

    /// Asks for each action who holds its shortcut in its context and in the linked one.
    Pairs conflicts() const {
        Pairs pairs;
        for (const int id : ids_) {
            const UCPActionItem item = manager_.getAction(id).second;
            const std::string key = manager_.getShortcut(id);
            if (key.empty()) {
                continue;
            }
            if (manager_.getActionIdByShortcut(item.context, key) == 0) {
                pairs.emplace(key, 0, id);
            }
            for (const std::string& context : {item.context, linkedWith(item.context)}) {
                const int holder = manager_.getActionIdByShortcut(context, key);
                if (holder != 0 && holder != id && !areParentAndChild(id, holder)) {
                    pairs.emplace(key, std::min(id, holder), std::max(id, holder));
                }
            }
        }
        return pairs;
    }

    void compareConflicts(View conflicts) const {
        Pairs told;
        for (const View conflict : conflicts.elements()) {
            const int action = numberIn(conflict, "action");
            const int other = numberIn(conflict, "other");
            const std::string key = textIn(conflict, "shortcut");
            EXPECT_TRUE(told.emplace(key, std::min(action, other), std::max(action, other)).second);
            EXPECT_EQ(textIn(conflict, "shortcut"), manager_.getShortcut(action));
            EXPECT_EQ(textIn(conflict, "context"), manager_.getAction(action).second.context);
            EXPECT_EQ(textIn(conflict, "otherContext"), other == 0 ? "" : manager_.getAction(other).second.context);
            EXPECT_EQ(textIn(conflict, "kind"), other == 0 ? "heldByNobody"
                                                : textIn(conflict, "context") == textIn(conflict, "otherContext")
                                                    ? "sameContext"
                                                    : "linkedContext");
        }
        EXPECT_EQ(told, this->conflicts());
    }

private:
    /// Returns whether the action holds the shortcut that it shows.
    bool runs(int id) const {
        return id == manager_.getActionIdByShortcut(manager_.getAction(id).second.context, manager_.getShortcut(id));
    }

    bool inMenu(int id) const {
        const UCPActionItem item = manager_.getAction(id).second;
        return item.rmb.overwritten ? item.rmb.userValue : item.rmb.defaultValue;
    }

    bool areParentAndChild(int one, int other) const {
        return manager_.getAction(one).second.parent_id == other || manager_.getAction(other).second.parent_id == one;
    }

    UCPActionManager& manager_ = UCPActionManager::instance();
    std::map<int, Shipped> shipped_;
    std::set<int> ids_;
    std::map<int, std::string> shownWithoutUser_;
    std::map<int, bool> menuWithoutUser_;
    std::map<int, bool> runsWithoutUser_;
    std::map<int, zelutil::host::ShortcutSource> sources_;
};

constexpr int kKeyCount = 4;

std::vector<std::string> keysOf(int count) {
    std::vector<std::string> keys;
    for (int number = 1; number <= count; ++number) {
        keys.push_back("F" + std::to_string(number));
    }
    return keys;
}

/// A user's entries as they may stand in a file: some are refused.
std::string randomEntries(ActionRandom& random, const std::vector<Shipped>& shipped, int keys, int count) {
    std::string entries;
    for (int number = 0; number < count; ++number) {
        const Shipped& action =
            shipped[static_cast<std::size_t>(numberBelow(random, static_cast<int>(shipped.size())))];
        const int key = numberBelow(random, keys + 1);
        entries += (entries.empty() ? "{\"id\":" : ",{\"id\":") + std::to_string(action.id) + ",\"shortcut\":\"" +
                   (key == 0 ? "" : "F" + std::to_string(key)) + "\"" +
                   (numberBelow(random, 4) == 0 ? ",\"rmb\":true}" : "}");
    }
    return entries;
}

Kind oddKind() {
    Kind kind;
    kind.actions = 12;
    kind.contexts = 3;
    kind.shortcuts = kKeyCount;
    kind.linked = true;
    kind.withParent = 35;
    kind.withMissingParent = 10;
    kind.withSharedCommand = 15;
    kind.shippedTwice = true;
    kind.mixedIds = true;
    return kind;
}

template <typename List, typename Write>
std::string listText(const List& list, Write write) {
    zelutil::command::JsonWriter json;
    json.beginObject();
    json.objects("list", list, [&](const auto& element) { write(json, element); });
    json.endObject();
    return json.take().value_or("");
}

/// Compares what the subcommands are made of, for many catalogues in one process.
TEST(ShortcutsProperty, TheTableTheAnswersAndTheConflictsAreTheManagers) {
    int conflicts = 0;
    for (unsigned seed = 0; seed < 150 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        ActionRandom random(seed);
        const std::vector<Shipped> shipped = randomShipped(random, oddKind());
        const Expected expected(shipped, "[{\"actions\":[" + randomEntries(random, shipped, kKeyCount, 6) + "]}]");
        const auto rows = zelutil::shortcuts::shortcutTable();
        expected.compareRows(Document(listText(rows, zelutil::shortcuts::writeRow)).root().member("list"));
        const auto found = zelutil::shortcuts::keyConflicts(rows);
        conflicts += static_cast<int>(found.size());
        expected.compareConflicts(Document(listText(found, zelutil::shortcuts::writeConflict)).root().member("list"));
        for (const std::string& context : expected.contexts()) {
            std::vector<zelutil::shortcuts::KeyAnswer> answers;
            for (const std::string& key : keysOf(kKeyCount + 1)) {
                answers.push_back(zelutil::shortcuts::answerOf(key, context, rows));
            }
            const Document told(listText(answers, zelutil::shortcuts::writeAnswer));
            for (const View answer : told.root().member("list").elements()) {
                expected.compareAnswer(answer);
            }
        }
    }
    std::printf("%d conflicts in 150 worlds\n", conflicts);
    EXPECT_GT(conflicts, 300);
}

/// Compares what the command itself prints in a world, a process for each subcommand and context.
void compareProcess(const std::vector<Shipped>& shipped, const std::string& entries, int keys, std::size_t contexts) {
    const ShortcutsWorld world(shippedText(shipped));
    world.writeUserActions(entries);
    const Expected expected(shipped, "[{\"actions\":[" + entries + "]}]");
    const Document table(world.run({"shortcuts", "--json"}).out);
    expected.compareRows(table.root().member("shortcuts"));
    const Document conflicts(world.run({"conflicts", "--json"}).out);
    expected.compareConflicts(conflicts.root().member("conflicts"));
    for (const std::string& context : expected.contexts()) {
        if (contexts-- == 0) {
            break;
        }
        std::vector<std::string> arguments = keysOf(keys);
        arguments.insert(arguments.begin(), {"who", "--json", "--context", context});
        const Document who(world.run(arguments).out);
        EXPECT_EQ(who.root().member("answers").elements().size(), static_cast<std::size_t>(keys));
        for (const View answer : who.root().member("answers").elements()) {
            expected.compareAnswer(answer);
        }
    }
}

TEST(ShortcutsProperty, TheCommandPrintsWhatTheManagerAnswersInRandomWorlds) {
    for (unsigned seed = 1000; seed < 1006; ++seed) {
        SCOPED_TRACE(seed);
        ActionRandom random(seed);
        const std::vector<Shipped> shipped = randomShipped(random, oddKind());
        compareProcess(shipped, randomEntries(random, shipped, kKeyCount, 6), kKeyCount + 1, 3);
    }
}

/// 1,105 actions in 238 contexts, as a whole product has.
TEST(ShortcutsProperty, TheCommandPrintsWhatTheManagerAnswersInARealSizedWorld) {
    constexpr int kActions = 1105;
    constexpr int kContexts = 238;
    constexpr int kManyKeys = 30;
    ActionRandom random(7);
    std::vector<Shipped> shipped;
    for (int id = 1; id <= kActions; ++id) {
        const int context = numberBelow(random, kContexts);
        Shipped action;
        action.id = id;
        action.parent = id > 1 && numberBelow(random, 6) == 0 ? 1 + numberBelow(random, id - 1) : 0;
        action.context = context == 0 ? "brisk3d" : context == 1 ? "ucpedit" : "editor" + std::to_string(context);
        action.command = "command" + std::to_string(id);
        action.shortcut = numberBelow(random, 3) == 0 ? "" : "F" + std::to_string(1 + numberBelow(random, kManyKeys));
        action.inMenu = numberBelow(random, 5) == 0;
        shipped.push_back(action);
    }
    compareProcess(shipped, randomEntries(random, shipped, kManyKeys, 100), kManyKeys, 4);
}

}  // namespace
