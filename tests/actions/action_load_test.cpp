#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <type_traits>

#include "actions/action_fixture.h"

namespace zelutil::test {
namespace {

using Ids = std::vector<int>;

Ids loadedIds() {
    Ids ids;
    for (const UCPActionItem& item : manager().getAllActions()) {
        ids.push_back(item.id);
    }
    return ids;
}

// --- The manager ----------------------------------------------------------------------------------------------------

TEST(ActionManager, IsOneAndEmptyAtFirst) {
    EXPECT_EQ(&UCPActionManager::instance(), &UCPActionManager::instance());
    EXPECT_TRUE(manager().getAllActions().empty());
    EXPECT_TRUE(manager().getRMBMenuItems().empty());
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ("", manager().getAllUserSettings());
}

TEST(ActionManager, IsTheSameForThreadsThatMeetAtTheFirstCall) {
    std::array<UCPActionManager*, 4> seen{};
    std::array<std::thread, 4> threads;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i] = std::thread([&seen, i] { seen[i] = &UCPActionManager::instance(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const UCPActionManager* const address : seen) {
        EXPECT_EQ(&UCPActionManager::instance(), address);
    }
}

TEST(ActionManager, CannotBeCopied) {
    static_assert(!std::is_copy_constructible_v<UCPActionManager>);
    static_assert(!std::is_default_constructible_v<UCPActionManager>);
}

TEST(ActionManager, WorksThroughTheInterfaceOfSubManagers) {
    IUserSettingsManager& subManager = manager();
    subManager.load(object(action(1, "board", "open", "F1")), wrapped(R"({"id":1,"shortcut":"F2"})"));
    EXPECT_TRUE(subManager.isModified());
    EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":"F2"}]})", subManager.getAllUserSettings());
}

// --- Shipped text ---------------------------------------------------------------------------------------------------

TEST(ActionLoad, ReadsEveryMember) {
    load({R"({"id":7,"parent_id":0,"name":"Save","icon":"save.svg","context":"ucpedit","command":"design save",)"
          R"("shortcut":"Ctrl+S","rmb":true,"tooltip":"unknown keys are ignored"})"});
    const auto [found, item] = manager().getAction(7);
    ASSERT_TRUE(found);
    EXPECT_EQ(7, item.id);
    EXPECT_EQ(0, item.parent_id);
    EXPECT_EQ("Save", item.name);
    EXPECT_EQ("save.svg", item.icon);
    EXPECT_EQ("ucpedit", item.context);
    EXPECT_EQ("design save", item.command);
    EXPECT_EQ("Ctrl+S", item.shortcut.defaultValue);
    EXPECT_TRUE(item.rmb.defaultValue);
    EXPECT_FALSE(item.hasOverwrite());
    EXPECT_EQ(7, manager().getActionIdByCommand("ucpedit", "design save"));
    EXPECT_EQ(7, manager().getActionIdByShortcut("ucpedit", "Ctrl+S"));
    EXPECT_FALSE(manager().isModified());
}

TEST(ActionLoad, KeepsOnlyElementsWithUsableIdParentContextAndCommand) {
    struct Row {
        const char* element;
        bool kept;
    };
    constexpr Row kRows[] = {
        {R"({"id":1,"context":"c","command":"x"})", true},
        // The id.
        {R"({"context":"c","command":"x"})", false},
        {R"({"id":0,"context":"c","command":"x"})", false},
        {R"({"id":-1,"context":"c","command":"x"})", false},
        {R"({"id":1.0,"context":"c","command":"x"})", false},
        {R"({"id":1e0,"context":"c","command":"x"})", false},
        {R"({"id":"1","context":"c","command":"x"})", false},
        {R"({"id":true,"context":"c","command":"x"})", false},
        {R"({"id":null,"context":"c","command":"x"})", false},
        {R"({"ID":1,"context":"c","command":"x"})", false},
        {R"({"id":2147483647,"context":"c","command":"x"})", true},
        {R"({"id":2147483648,"context":"c","command":"x"})", false},
        {R"({"id":-2147483648,"context":"c","command":"x"})", false},
        {R"({"id":18446744073709551615,"context":"c","command":"x"})", false},
        // The parent; one that is no integer is none.
        {R"({"id":1,"parent_id":0,"context":"c","command":"x"})", true},
        {R"({"id":1,"parent_id":-1,"context":"c","command":"x"})", false},
        {R"({"id":1,"parent_id":"2","context":"c","command":"x"})", true},
        {R"({"id":1,"parent_id":-1.0,"context":"c","command":"x"})", true},
        {R"({"id":1,"parent_id":4294967296,"context":"c","command":"x"})", true},
        // The context.
        {R"({"id":1,"command":"x"})", false},
        {R"({"id":1,"context":"","command":"x"})", false},
        {R"({"id":1,"context":3,"command":"x"})", false},
        // The command.
        {R"({"id":1,"context":"c"})", false},
        {R"({"id":1,"context":"c","command":""})", false},
        {R"({"id":1,"context":"c","command":["x"]})", false},
        // Of members with one name the first counts.
        {R"({"id":1,"context":"c","command":"x","id":0})", true},
        {R"({"id":0,"context":"c","command":"x","id":1})", false},
        // No objects.
        {"1", false},
        {"null", false},
        {R"("x")", false},
        {R"([{"id":1,"context":"c","command":"x"}])", false},
        {"{}", false},
    };
    for (const Row& row : kRows) {
        manager().load(object(row.element), "");
        EXPECT_EQ(row.kept ? 1U : 0U, manager().getAllActions().size()) << row.element;
        EXPECT_EQ(row.kept, manager().getActionIdByCommand("c", "x") != 0) << row.element;
    }
}

TEST(ActionLoad, SkippedElementDoesNotEndTheList) {
    load({action(1, "board", "open"), "{}", "7", action(2, "board", "close")});
    EXPECT_EQ((Ids{1, 2}), loadedIds());
}

TEST(ActionLoad, MenuFlagIsOnlyTheLiteralTrue) {
    struct Row {
        const char* flag;
        bool inMenu;
    };
    constexpr Row kRows[] = {{"true", true}, {"false", false}, {R"("true")", false},
                             {"1", false},   {"null", false},  {"[true]", false}};
    for (const Row& row : kRows) {
        load({std::string(R"({"id":1,"context":"c","command":"x","rmb":)") + row.flag + "}"});
        EXPECT_EQ(row.inMenu, manager().getAction(1).second.rmb.defaultValue) << row.flag;
        EXPECT_EQ(row.inMenu ? 1U : 0U, manager().getRMBMenuItems().size()) << row.flag;
    }
}

TEST(ActionLoad, TextOfAnotherTypeIsEmpty) {
    load({R"({"id":1,"context":"c","command":"x","name":5,"icon":null,"shortcut":["F1"]})"});
    const UCPActionItem item = manager().getAction(1).second;
    EXPECT_EQ("", item.name);
    EXPECT_EQ("", item.icon);
    EXPECT_EQ("", item.shortcut.defaultValue);
}

TEST(ActionLoad, TextsMayHoldAnyCharacter) {
    load({R"({"id":1,"context":"c","command":"say \"hi\"","shortcut":"Ctrl+\\","name":"\u00e9\u0000x"})"});
    const UCPActionItem item = manager().getAction(1).second;
    EXPECT_EQ("say \"hi\"", item.command);
    EXPECT_EQ("Ctrl+\\", item.shortcut.defaultValue);
    EXPECT_EQ(std::string("\xC3\xA9\0x", 4), item.name);
    EXPECT_EQ(1, manager().getActionIdByShortcut("c", "Ctrl+\\"));
}

TEST(ActionLoad, ShippedTextOfAnotherShapeHasNoActions) {
    const std::string element = action(1, "board", "open", "F1");
    const std::vector<std::pair<std::string, std::size_t>> rows = {
        {object(element), 1},
        {"\xEF\xBB\xBF" + object(element), 1},
        {" \r\n\t" + object(element) + "\n", 1},
        {R"({"version":2,"actions":[)" + element + R"(],"more":{}})", 1},
        // Of members with one name the first counts.
        {R"({"actions":[)" + element + R"(],"actions":[]})", 1},
        {R"({"actions":[],"actions":[)" + element + "]}", 0},
        {R"({"actions":1,"actions":[)" + element + "]}", 0},
        {"", 0},
        {"{}", 0},
        {"[]", 0},
        {"null", 0},
        {"\"actions\"", 0},
        {R"({"Actions":[)" + element + "]}", 0},
        {R"({"actions":)" + element + "}", 0},
        {R"({"actions":"[]"})", 0},
        {R"({"actions":null})", 0},
        {R"({"meta":{"actions":[)" + element + "]}}", 0},
        {wrapped(element), 0},
        {object(element) + "}", 0},
        {object(element).substr(0, object(element).size() - 1), 0},
    };
    for (const auto& [text, count] : rows) {
        manager().load(text, "");
        EXPECT_EQ(count, manager().getAllActions().size()) << text;
    }
}

TEST(ActionLoad, LaterOfTwoDefinitionsWithOneIdIsNotIndexed) {
    load({action(5, "ucpedit", "open", "Ctrl+O"), action(5, "board", "close", "Ctrl+W", 3)});
    EXPECT_EQ((Ids{5}), loadedIds());
    EXPECT_EQ("open", manager().getAction(5).second.command);
    EXPECT_EQ(5, manager().getActionIdByCommand("ucpedit", "open"));
    EXPECT_EQ(5, manager().getActionIdByShortcut("ucpedit", "Ctrl+O"));
    EXPECT_EQ(0, manager().getActionIdByCommand("board", "close"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "Ctrl+W"));
    EXPECT_EQ((Ids{}), manager().getChildActionIds(3));
}

TEST(ActionLoad, ShortcutThatTwoActionsShipIsHeldByTheFirst) {
    load({action(9, "board", "open", "F1"), action(2, "board", "close", "F1")});
    EXPECT_EQ(9, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ("open", manager().getCommand("board", "F1", false));
    EXPECT_EQ("F1", manager().getAction(9).second.shortcut.defaultValue);
    EXPECT_EQ("F1", manager().getAction(2).second.shortcut.defaultValue);
    EXPECT_EQ("F1", manager().getShortcut(2));
}

TEST(ActionLoad, CommandThatTwoActionsShipIsTheFirsts) {
    load({action(9, "board", "open", "F1"), action(2, "board", "open", "F2")});
    EXPECT_EQ(9, manager().getActionIdByCommand("board", "open"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F2"));
    EXPECT_EQ((Ids{2, 9}), loadedIds());
}

TEST(ActionLoad, SameShortcutAndCommandInAnotherContextIsAnotherActions) {
    load({action(1, "board", "open", "F1"), action(2, "panel", "open", "F1")});
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(1, manager().getActionIdByCommand("board", "open"));
    EXPECT_EQ(2, manager().getActionIdByCommand("panel", "open"));
}

TEST(ActionLoad, ForgetsWhatWasLoadedAndEditedBefore) {
    load({action(1, "board", "open", "F1"), child(2, 1, "panel", "shut")}, R"({"id":1,"shortcut":"F7","rmb":true})");
    ASSERT_TRUE(manager().isModified());
    load({action(3, "board", "close", "F3")});
    EXPECT_EQ((Ids{3}), loadedIds());
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ(0, manager().getActionIdByCommand("board", "open"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F7"));
    EXPECT_EQ((Ids{}), manager().getChildActionIds(1));
    EXPECT_EQ("", manager().getCommand("panel", "F7", true));
    manager().load("", "");
    EXPECT_EQ((Ids{}), loadedIds());
}

// --- User's text ----------------------------------------------------------------------------------------------------

TEST(ActionLoad, UserTextOfAnotherShapeChangesNothingOddity) {
    const std::string entry = R"({"id":1,"shortcut":"F7","rmb":true})";
    const std::vector<std::pair<std::string, bool>> rows = {
        {wrapped(entry), true},
        {R"([{"more":1,"actions":[)" + entry + "]}]", true},
        // The bare object is what the manager writes; wrapping it is the host's task.
        {object(entry), false},
        {"", false},
        {"{}", false},
        {"[]", false},
        {"[{}]", false},
        {"[null]", false},
        {"[" + object(entry) + "," + object(entry) + "]", false},
        {"[" + object(entry) + ",null]", false},
        {"[" + wrapped(entry) + "]", false},
        {R"([{"actions":)" + entry + "}]", false},
        {R"([{"Actions":[)" + entry + "]}]", false},
        {wrapped(entry) + "]", false},
    };
    for (const auto& [text, applied] : rows) {
        manager().load(object(action(1, "board", "open", "F1")), text);
        EXPECT_EQ(applied ? "F7" : "F1", manager().getShortcut(1)) << text;
        EXPECT_EQ(applied ? 1U : 0U, manager().getRMBMenuItems().size()) << text;
        EXPECT_EQ(applied, manager().isModified()) << text;
    }
}

TEST(ActionLoad, ListOfTheUserEndsAtAnElementWithoutAnIdOddity) {
    constexpr const char* kNoIds[] = {R"({"shortcut":"F9"})",
                                      R"({"id":0,"shortcut":"F9"})",
                                      R"({"id":-5,"shortcut":"F9"})",
                                      R"({"id":"5","shortcut":"F9"})",
                                      R"({"id":5.0,"shortcut":"F9"})",
                                      R"({"id":4294967301,"shortcut":"F9"})",
                                      "null",
                                      "[5]"};
    for (const char* const noId : kNoIds) {
        load({action(5, "board", "open", "F1"), action(6, "board", "close", "F2")},
             std::string(R"({"id":5,"rmb":true},)") + noId + R"(,{"id":6,"rmb":true})");
        EXPECT_TRUE(manager().getAction(5).second.rmb.overwritten) << noId;
        EXPECT_FALSE(manager().getAction(6).second.rmb.overwritten) << noId;
        EXPECT_EQ("F1", manager().getShortcut(5)) << noId;
    }
}

TEST(ActionLoad, UserEntryChangesWhatItNames) {
    struct Row {
        const char* entry;
        const char* shortcut;
        bool shortcutOverwritten;
        bool inMenu;
        bool menuOverwritten;
    };
    constexpr Row kRows[] = {
        {R"({"id":1})", "F1", false, true, false},
        {R"({"id":1,"shortcut":"F7"})", "F7", true, true, false},
        {R"({"id":1,"shortcut":"F1"})", "F1", false, true, false},
        {R"({"id":1,"shortcut":""})", "", true, true, false},
        {R"({"id":1,"rmb":false})", "F1", false, false, true},
        {R"({"id":1,"rmb":true})", "F1", false, true, false},
        {R"({"id":1,"shortcut":"F7","rmb":false})", "F7", true, false, true},
        // Another type counts as the empty text, as false.
        {R"({"id":1,"shortcut":7})", "", true, true, false},
        {R"({"id":1,"shortcut":null})", "", true, true, false},
        {R"({"id":1,"rmb":"true"})", "F1", false, false, true},
        {R"({"id":1,"rmb":1})", "F1", false, false, true},
        // Of members with one name the first counts.
        {R"({"id":1,"shortcut":"F7","shortcut":"F8"})", "F7", true, true, false},
    };
    for (const Row& row : kRows) {
        load({R"({"id":1,"context":"board","command":"open","shortcut":"F1","rmb":true})"}, row.entry);
        const UCPActionItem item = manager().getAction(1).second;
        EXPECT_EQ(row.shortcut, manager().getShortcut(1)) << row.entry;
        EXPECT_EQ(row.shortcutOverwritten, item.shortcut.overwritten) << row.entry;
        EXPECT_EQ(row.inMenu ? 1U : 0U, manager().getRMBMenuItems().size()) << row.entry;
        EXPECT_EQ(row.menuOverwritten, item.rmb.overwritten) << row.entry;
        EXPECT_EQ(row.shortcutOverwritten, manager().isModified()) << row.entry;
        EXPECT_EQ(row.shortcutOverwritten ? 0 : 1, manager().getActionIdByShortcut("board", "F1")) << row.entry;
    }
}

TEST(ActionLoad, TakenShortcutAndUnknownIdOfTheUserAreDropped) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F2")},
         R"({"id":1,"shortcut":"F2","rmb":true},{"id":77,"shortcut":"F3","rmb":true},{"id":2,"shortcut":"F4"})");
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_TRUE(manager().getAction(1).second.rmb.overwritten);
    EXPECT_EQ("F4", manager().getShortcut(2));
    EXPECT_EQ((Ids{1, 2}), loadedIds());
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F3"));
}

TEST(ActionLoad, EntriesOfTheUserApplyInOrder) {
    // The first frees F1, so that the second can have it; the third finds its wish taken by then.
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F2"), action(3, "board", "zoom", "F3")},
         R"({"id":1,"shortcut":"F7"},{"id":2,"shortcut":"F1"},{"id":3,"shortcut":"F7"})");
    EXPECT_EQ("F7", manager().getShortcut(1));
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_EQ("F3", manager().getShortcut(3));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F2"));
}

// --- Parents --------------------------------------------------------------------------------------------------------

TEST(ActionLoad, ChildTakesShortcutMenuFlagAndMissingNameOfItsParent) {
    load({R"({"id":2,"parent_id":1,"context":"panel","command":"shut","shortcut":"F5"})",
          R"({"id":1,"name":"Close","context":"board","command":"close","shortcut":"F1","rmb":true})",
          R"({"id":3,"parent_id":1,"name":"Own","context":"sheet","command":"end","shortcut":"F6","rmb":false})"});
    for (const int id : {2, 3}) {
        const UCPActionItem item = manager().getAction(id).second;
        EXPECT_EQ("F1", item.shortcut.defaultValue) << id;
        EXPECT_FALSE(item.hasOverwrite()) << id;
        EXPECT_TRUE(item.rmb.defaultValue) << id;
        EXPECT_EQ(id == 2 ? "Close" : "Own", item.name);
    }
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F5"));
    EXPECT_EQ(3, manager().getActionIdByShortcut("sheet", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("sheet", "F6"));
    EXPECT_EQ(3U, manager().getRMBMenuItems().size());
    EXPECT_TRUE(manager().isModified());
    EXPECT_EQ(R"({"actions":[]})", manager().getAllUserSettings());
}

TEST(ActionLoad, ChildrenKeepTheOrderOfTheText) {
    load({child(9, 1, "a", "x"), child(2, 1, "b", "x"), action(1, "c", "x"), child(5, 1, "d", "x")});
    EXPECT_EQ((Ids{9, 2, 5}), manager().getChildActionIds(1));
}

TEST(ActionLoad, ChildTakesWhatTheUserSetForItsParent) {
    load({action(1, "board", "close", "F1"), child(2, 1, "panel", "shut")}, R"({"id":1,"shortcut":"F7","rmb":true})");
    const UCPActionItem item = manager().getAction(2).second;
    EXPECT_EQ("F1", item.shortcut.defaultValue);
    EXPECT_EQ("F7", item.shortcut.userValue);
    EXPECT_TRUE(item.shortcut.overwritten);
    EXPECT_TRUE(item.rmb.userValue);
    EXPECT_TRUE(item.rmb.overwritten);
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F7"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F1"));
}

TEST(ActionLoad, WhatTheUserSetForAChildGivesWayToItsParent) {
    load({action(1, "board", "close", "F1"), child(2, 1, "panel", "shut")}, R"({"id":2,"shortcut":"F7","rmb":true})");
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_FALSE(manager().getAction(2).second.hasOverwrite());
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F7"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(R"({"actions":[]})", manager().getAllUserSettings());
}

TEST(ActionLoad, ChildInItsParentsContextSharesTheEntryOfTheParent) {
    load({action(1, "board", "close", "F1"), action(2, "board", "shut", "F5", 1)});
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F5"));
}

TEST(ActionLoad, ChildWhoseParentsShortcutIsTakenInItsContextKeepsItsOwnEntryOddity) {
    load({action(1, "board", "close", "F1"), action(2, "panel", "shut", "F5", 1), action(3, "panel", "zoom", "F1")});
    EXPECT_EQ(3, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F5"));
    // The item says what its parent's says all the same.
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_FALSE(manager().isModified());
}

TEST(ActionLoad, ChildOfARefusedActionMayHaveAnotherShortcut) {
    // 2 is refused F1 because of 3 below it. Then 3 takes over what 5 still has.
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), action(5, "sheet", "g", "F5", 2),
          child(3, 5, "view", "v"), action(9, "view", "z", "F1")});
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ("F5", manager().getShortcut(3));
    EXPECT_EQ(3, manager().getActionIdByShortcut("view", "F5"));
    EXPECT_EQ(5, manager().getActionIdByShortcut("sheet", "F5"));
    EXPECT_EQ("F1", manager().getShortcut(5));
}

TEST(ActionLoad, ChildOfARefusedActionMayHaveTheShortcutOnceItIsFree) {
    // 2 is refused F1 because of 4 below it. Then 3, which stands in 4's way, takes over F8.
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), action(8, "board", "q", "F8"),
          action(3, "view", "z", "F1", 8), child(4, 2, "view", "v")});
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(3, manager().getActionIdByShortcut("view", "F8"));
    EXPECT_EQ(4, manager().getActionIdByShortcut("view", "F1"));
    EXPECT_EQ("F1", manager().getShortcut(2));
}

TEST(ActionLoad, ParentsAreTakenOverInOnePassByAscendingIdOddity) {
    // 3 is 2's child and 1's parent: when the pass is at 1, 3 has not taken over anything yet.
    load({R"({"id":2,"name":"Top","context":"a","command":"x","shortcut":"F1","rmb":true})",
          R"({"id":3,"parent_id":2,"context":"b","command":"x"})",
          R"({"id":1,"parent_id":3,"context":"c","command":"x"})"});
    EXPECT_EQ("Top", manager().getAction(3).second.name);
    EXPECT_TRUE(manager().getAction(3).second.rmb.defaultValue);
    EXPECT_EQ("", manager().getAction(1).second.name);
    EXPECT_FALSE(manager().getAction(1).second.rmb.defaultValue);
    // The shortcut gets there, as an edit of 3: to 1 it is the user's, whose default is the one of 3 before.
    EXPECT_EQ("F1", manager().getShortcut(3));
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("", manager().getAction(1).second.shortcut.defaultValue);
    EXPECT_TRUE(manager().getAction(1).second.shortcut.overwritten);
    EXPECT_EQ(1, manager().getActionIdByShortcut("c", "F1"));
}

TEST(ActionLoad, EmptyItemStandsInForAParentThatNoTextDefinesOddity) {
    load({action(2, "board", "shut", "F5", 8)});
    EXPECT_EQ("", manager().getShortcut(2));
    EXPECT_FALSE(manager().getAction(2).second.rmb.defaultValue);
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F5"));
    EXPECT_EQ((Ids{2}), manager().getChildActionIds(8));

    const auto [found, placeholder] = manager().getAction(8);
    EXPECT_TRUE(found);
    EXPECT_EQ(0, placeholder.id);
    EXPECT_EQ("", placeholder.context);
    EXPECT_EQ("", placeholder.command);
    EXPECT_EQ((Ids{2, 0}), loadedIds());
}

TEST(ActionLoad, StandInForAMissingParentIsGoneAfterTheNextLoad) {
    load({child(2, 8, "board", "shut")});
    load({action(2, "board", "shut")});
    EXPECT_FALSE(manager().getAction(8).first);
    EXPECT_EQ((Ids{2}), loadedIds());
}

TEST(ActionLoad, EntryOfTheUserForAParentThatNoTextDefinesIsDropped) {
    // The stand-in comes into being only after the user's text is read.
    load({child(2, 8, "board", "shut")}, R"({"id":8,"shortcut":"F1","rmb":true})");
    EXPECT_EQ("", manager().getShortcut(2));
    EXPECT_FALSE(manager().isModified());
}

// --- Observers ------------------------------------------------------------------------------------------------------

TEST(ActionLoad, ObserversStayAndAreToldOfWhatTheUserAndParentsChange) {
    load({action(1, "board", "close", "F1"), action(2, "panel", "shut", "F5", 1)});
    Recorder ofOne;
    Recorder ofAll;
    ASSERT_TRUE(manager().attachObserver(1, &ofOne));
    ASSERT_TRUE(manager().attachObserver(&ofAll));

    manager().load("", "");
    EXPECT_EQ(Events{}, ofAll.take());

    load({action(1, "board", "close", "F1"), action(2, "panel", "shut", "F5", 1)}, R"({"id":1,"rmb":true})");
    // The user's flag goes down to the child; then the child takes over the shortcut.
    EXPECT_EQ((Events{"2: in menu", "1: in menu", "2: 'F5' -> 'F1'"}), ofAll.take());
    EXPECT_EQ((Events{"1: in menu"}), ofOne.take());
}

}  // namespace
}  // namespace zelutil::test
