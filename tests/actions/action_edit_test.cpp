#include <gtest/gtest.h>

#include "actions/action_fixture.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

// --- Conflicts ------------------------------------------------------------------------------------------------------

TEST(ActionConflict, TakenIsWhatAnotherActionHoldsInAContextThatMatters) {
    // 1 > 10 > 20 are parent, child and grandchild.
    load({action(1, "board", "p", "P"), action(10, "panel", "c", "", 1), action(20, "sheet", "g", "", 10),
          action(2, "board", "b2", "B"), action(3, "panel", "c3", "C"), action(4, "sheet", "g4", "G"),
          action(7, "ucpedit", "e7", "E"), action(9, "brisk3d", "d9", "D"), action(5, "other", "o5", "O")});
    struct Row {
        int id;
        const char* shortcut;
        int taken;
    };
    constexpr Row kRows[] = {
        // In the action's own context.
        {1, "B", 2},
        {2, "P", 1},
        {2, "B", 0},
        // In the context of a child, of a grandchild.
        {1, "C", 3},
        {1, "G", 4},
        {10, "G", 4},
        // Not the other way round.
        {20, "B", 0},
        {20, "C", 0},
        {3, "B", 0},
        // Between the two linked contexts.
        {7, "D", 9},
        {9, "E", 7},
        {7, "O", 0},
        {9, "B", 0},
        {5, "E", 0},
        {5, "D", 0},
        // By its own family.
        {1, "P", 0},
        {10, "P", 0},
        // Held by nobody; no shortcut at all; an action that is not there.
        {1, "X", 0},
        {1, "b", 0},
        {1, "", 0},
        {2, "", 0},
        {99, "B", 0},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(row.taken, manager().isShortcutTaken(row.id, row.shortcut)) << row.id << " " << row.shortcut;
    }
}

TEST(ActionConflict, FirstConflictInTheOrderOfChildrenIsTheAnswer) {
    load({action(1, "board", "p"), child(5, 1, "a", "x"), child(4, 1, "b", "x"), child(8, 5, "c", "x"),
          action(21, "a", "y", "A"), action(22, "b", "y", "B"), action(23, "c", "y", "B"), action(24, "c", "z", "A")});
    // 5 comes before 4, and 5's child before 5's sibling.
    EXPECT_EQ(21, manager().isShortcutTaken(1, "A"));
    EXPECT_EQ(23, manager().isShortcutTaken(1, "B"));
    EXPECT_EQ(22, manager().isShortcutTaken(4, "B"));
}

TEST(ActionConflict, LinkCountsForChildrenToo) {
    load({action(1, "board", "p"), child(2, 1, "ucpedit", "c"), action(9, "brisk3d", "d", "D")});
    EXPECT_EQ(9, manager().isShortcutTaken(1, "D"));
    EXPECT_FALSE(manager().updateShortcut(1, "D"));
    EXPECT_EQ("", manager().getShortcut(1));
}

TEST(ActionConflict, ParentAndChildInLinkedContextsShareAShortcut) {
    load({action(1, "ucpedit", "p", "F1"), child(2, 1, "brisk3d", "c")});
    EXPECT_EQ(2, manager().getActionIdByShortcut("brisk3d", "F1"));
    EXPECT_EQ(0, manager().isShortcutTaken(2, "F1"));
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ(1, manager().getActionIdByShortcut("ucpedit", "F2"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("brisk3d", "F2"));
}

TEST(ActionConflict, AskingChangesNothing) {
    load({action(1, "board", "p", "F1"), action(2, "board", "q", "F2")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_EQ(2, manager().isShortcutTaken(1, "F2"));
    EXPECT_EQ(0, manager().isShortcutTaken(1, "F3"));
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ(Events{}, all.take());
}

// --- Shortcuts ------------------------------------------------------------------------------------------------------

TEST(ActionEdit, NewShortcutReplacesTheOldEverywhere) {
    load({action(1, "board", "open", "F1")});
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ("F2", manager().getShortcut(1));
    EXPECT_EQ("open", manager().getCommand("board", "F2", false));
    EXPECT_EQ("", manager().getCommand("board", "F1", false));
    EXPECT_EQ(1, manager().getActionIdByCommand("board", "open"));
    EXPECT_TRUE(manager().isModified());
    const OverwritableValue<std::string> shortcut = manager().getAction(1).second.shortcut;
    EXPECT_EQ("F1", shortcut.defaultValue);
    EXPECT_EQ("F2", shortcut.userValue);
    EXPECT_EQ("", shortcut.resetValue);
    EXPECT_TRUE(shortcut.overwritten);
}

TEST(ActionEdit, FreedShortcutCanBeGivenToAnother) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F2")});
    EXPECT_FALSE(manager().updateShortcut(2, "F1"));
    EXPECT_TRUE(manager().updateShortcut(1, "F3"));
    EXPECT_TRUE(manager().updateShortcut(2, "F1"));
    EXPECT_EQ("close", manager().getCommand("board", "F1", false));
    EXPECT_EQ("", manager().getCommand("board", "F2", false));
}

TEST(ActionEdit, BackToTheDefaultIsNoOverwrite) {
    load({action(1, "board", "open", "F1")}, R"({"id":1,"shortcut":"F2"})");
    ASSERT_TRUE(manager().getAction(1).second.hasOverwrite());
    EXPECT_TRUE(manager().updateShortcut(1, "F1"));
    const UCPActionItem item = manager().getAction(1).second;
    EXPECT_FALSE(item.hasOverwrite());
    EXPECT_EQ("", item.shortcut.userValue);
    EXPECT_TRUE(manager().isModified());
    EXPECT_EQ(R"({"actions":[]})", manager().getAllUserSettings());
}

TEST(ActionEdit, SameShortcutAgainIsTrueAndTellsNobody) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(manager().updateShortcut(1, "F1"));
    EXPECT_TRUE(manager().updateShortcut(2, ""));
    EXPECT_EQ(Events{}, all.take());
    EXPECT_FALSE(manager().isModified());
    EXPECT_FALSE(manager().getAction(1).second.hasOverwrite());
}

TEST(ActionEdit, RefusedShortcutChangesNothingAndTellsNobody) {
    load({action(7, "ucpedit", "e", "E"), action(9, "brisk3d", "d", "D")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_FALSE(manager().updateShortcut(7, "D"));
    EXPECT_FALSE(manager().updateShortcut("ucpedit", "e", "D"));
    EXPECT_FALSE(manager().updateShortcut(9, "E"));
    EXPECT_EQ("E", manager().getShortcut(7));
    EXPECT_EQ(7, manager().getActionIdByShortcut("ucpedit", "E"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("ucpedit", "D"));
    EXPECT_EQ(9, manager().getActionIdByShortcut("brisk3d", "D"));
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ("", manager().getAllUserSettings());
    EXPECT_EQ(Events{}, all.take());
}

TEST(ActionEdit, UnknownActionIsRefused) {
    load({action(1, "board", "open", "F1")});
    EXPECT_FALSE(manager().updateShortcut(2, "F2"));
    EXPECT_FALSE(manager().updateShortcut(0, "F2"));
    EXPECT_FALSE(manager().updateShortcut(-1, ""));
    EXPECT_FALSE(manager().updateShortcut("board", "close", "F2"));
    EXPECT_FALSE(manager().updateShortcut("panel", "open", "F2"));
    EXPECT_FALSE(manager().updateShortcut("", "", "F2"));
    EXPECT_FALSE(manager().isModified());
}

TEST(ActionEdit, ActionIsFoundByContextAndCommand) {
    load({action(1, "board", "open", "F1"), action(2, "panel", "open", "F1")});
    EXPECT_TRUE(manager().updateShortcut("panel", "open", "F2"));
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("F2", manager().getShortcut(2));
    EXPECT_TRUE(manager().updateShortcut("panel", "open", "F2"));
}

TEST(ActionEdit, EmptyTextTakesTheShortcutAway) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close")}, R"({"id":2,"shortcut":"F2"})");
    EXPECT_TRUE(manager().updateShortcut(1, ""));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", ""));
    EXPECT_TRUE(manager().getAction(1).second.shortcut.overwritten);
    EXPECT_EQ("", manager().getAction(1).second.shortcut.userValue);
    // An empty text is the way back to the default where the default is empty.
    EXPECT_TRUE(manager().updateShortcut(2, ""));
    EXPECT_FALSE(manager().getAction(2).second.shortcut.overwritten);
    EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":""}]})", manager().getAllUserSettings());
}

TEST(ActionEdit, EveryActionMayBeWithoutAShortcut) {
    load({action(1, "board", "open"), action(2, "board", "close"), action(3, "board", "zoom", "F3")});
    EXPECT_TRUE(manager().updateShortcut(3, ""));
    EXPECT_EQ("", manager().getShortcut(3));
}

// --- Families -------------------------------------------------------------------------------------------------------

TEST(ActionFamily, ChildrenFollowTheirParent) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), child(3, 2, "sheet", "g")});
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    for (const char* const context : {"board", "panel", "sheet"}) {
        EXPECT_NE(0, manager().getActionIdByShortcut(context, "F2")) << context;
        EXPECT_EQ(0, manager().getActionIdByShortcut(context, "F1")) << context;
    }
    EXPECT_EQ("F2", manager().getShortcut(3));
    EXPECT_TRUE(manager().updateShortcut(1, ""));
    EXPECT_EQ("", manager().getShortcut(3));
    EXPECT_EQ(0, manager().getActionIdByShortcut("sheet", "F2"));
}

TEST(ActionFamily, ChildMayBeGivenAShortcutOfItsOwn) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c")});
    EXPECT_TRUE(manager().updateShortcut(2, "F5"));
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("F5", manager().getShortcut(2));
    // Only top-level actions are written.
    EXPECT_EQ(R"({"actions":[]})", manager().getAllUserSettings());
}

TEST(ActionFamily, ParentMayTakeTheShortcutOfItsChild) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c")});
    ASSERT_TRUE(manager().updateShortcut(2, "F5"));
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_EQ(0, manager().isShortcutTaken(1, "F5"));
    EXPECT_TRUE(manager().updateShortcut(1, "F5"));
    EXPECT_EQ("F5", manager().getShortcut(1));
    EXPECT_EQ("F5", manager().getShortcut(2));
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F5"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F5"));
    EXPECT_EQ((Events{"1: 'F1' -> 'F5'"}), all.take());
}

TEST(ActionFamily, ParentIsRefusedWhatAnotherHoldsInAChildsContext) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), action(3, "panel", "z", "F3")});
    EXPECT_EQ(3, manager().isShortcutTaken(1, "F3"));
    EXPECT_FALSE(manager().updateShortcut(1, "F3"));
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("F1", manager().getShortcut(2));
}

TEST(ActionFamily, ParentFollowsWhereItsChildHoldsTheEntryOddity) {
    // In one context the entry that is there stays, so the shortcut runs the child's command.
    load({action(1, "board", "p", "F1"), child(2, 1, "board", "c")});
    ASSERT_TRUE(manager().updateShortcut(2, "F5"));
    EXPECT_TRUE(manager().updateShortcut(1, "F5"));
    EXPECT_EQ("F5", manager().getShortcut(1));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F5"));
    EXPECT_EQ("c", manager().getCommand("board", "F5", false));
}

TEST(ActionFamily, GrandchildInTheSameContextHoldsItsParentBackOddity) {
    // To 3 the new holder 1 is a stranger, neither parent nor child, so 2 is refused and 3 not asked.
    load({action(1, "board", "p"), child(2, 1, "board", "c"), child(3, 2, "board", "g")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(manager().updateShortcut(1, "F9"));
    EXPECT_EQ("F9", manager().getShortcut(1));
    EXPECT_EQ("", manager().getShortcut(2));
    EXPECT_EQ("", manager().getShortcut(3));
    EXPECT_EQ((Events{"1: '' -> 'F9'"}), all.take());
}

TEST(ActionFamily, ActionIsRefusedItsOwnShortcutBecauseOfItsGrandchildOddity) {
    load({action(1, "board", "b", "F1"), child(2, 1, "panel", "p"), child(3, 2, "board", "g")});
    EXPECT_EQ(manager().isShortcutTaken(1, "F1"), 1);
    EXPECT_FALSE(manager().updateShortcut(1, "F1"));
    EXPECT_EQ(manager().getShortcut(1), "F1");
    EXPECT_EQ(manager().getActionIdByShortcut("board", "F1"), 1);
}

TEST(ActionFamily, ChildIsTrueToBeBoundWhileItShowsItsParentsShortcutOddity) {
    load({action(1, "board", "b", "F1"), action(2, "panel", "p", "F2", 1), action(4, "panel", "other", "F1")});
    ASSERT_EQ(manager().getShortcut(2), "F1");
    EXPECT_TRUE(manager().updateShortcut(2, "F2"));
    EXPECT_EQ(manager().getShortcut(2), "F1");
    EXPECT_EQ(manager().getActionIdByShortcut("panel", "F2"), 2);
}

TEST(ActionFamily, OfTwoChildrenInOneContextTheFirstIsInTheWayOddity) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "a"), child(3, 1, "panel", "b")});
    // Both report the parent's shortcut after the load, and the first has it.
    EXPECT_EQ("F1", manager().getShortcut(3));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F1"));
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ((Events{"2: 'F1' -> 'F2'", "1: 'F1' -> 'F2'"}), all.take());
    EXPECT_EQ("F1", manager().getShortcut(3));
    // To the second child the first is a stranger, so even what the parent has is refused to it.
    EXPECT_EQ(2, manager().isShortcutTaken(1, "F2"));
    EXPECT_FALSE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ("F2", manager().getShortcut(1));
    EXPECT_EQ(Events{}, all.take());
}

TEST(ActionEdit, ShortcutShippedTwiceIsLostToBothWhenOneChangesOddity) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F1")});
    EXPECT_TRUE(manager().updateShortcut(2, "F2"));
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("", manager().getCommand("board", "F1", false));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
}

TEST(ActionEdit, ShortcutShippedTwiceRunsNothingWhenTheSecondIsSetToItAgainOddity) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F1")});
    Recorder all;
    manager().attachObserver(&all);
    // 2 reports it, but 1 holds it.
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_EQ(1, manager().isShortcutTaken(2, "F1"));
    EXPECT_FALSE(manager().updateShortcut(2, "F1"));
    EXPECT_TRUE(manager().updateShortcut(1, "F3"));
    EXPECT_EQ((Events{"1: 'F1' -> 'F3'"}), all.take());
    // Now it is free, and 2 has it already, so there is nothing to change.
    EXPECT_TRUE(manager().updateShortcut(2, "F1"));
    EXPECT_EQ(Events{}, all.take());
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_TRUE(manager().updateShortcut(2, ""));
    EXPECT_TRUE(manager().updateShortcut(2, "F1"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F1"));
}

TEST(ActionEdit, ActionsWithOneCommandShareWhatTheCommandIsBoundToOddity) {
    load({action(1, "board", "open", "F1"), action(2, "board", "open", "F2")});
    // Action 2 gives up the first's shortcut; its own shipped one stays indexed.
    EXPECT_TRUE(manager().updateShortcut(2, "F3"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F2"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F3"));
    EXPECT_EQ("F1", manager().getShortcut(1));
    // By its command only the first is found, and the second stands in its way.
    EXPECT_EQ(1, manager().getActionIdByCommand("board", "open"));
    EXPECT_FALSE(manager().updateShortcut(1, "F3"));
    EXPECT_TRUE(manager().updateShortcut("board", "open", "F4"));
    EXPECT_EQ("F4", manager().getShortcut(1));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F3"));
}

TEST(ActionEdit, EditedStandInForAMissingParentIsWrittenWithItsIdOddity) {
    load({child(2, 8, "board", "shut")});
    EXPECT_TRUE(manager().updateShortcut(8, "F1"));
    EXPECT_EQ("F1", manager().getShortcut(8));
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_EQ(8, manager().getActionIdByShortcut("", "F1"));
    EXPECT_EQ("", manager().getCommand("", "F1", false));
    EXPECT_EQ(R"({"actions":[{"id":0,"shortcut":"F1"}]})", manager().getAllUserSettings());
}

// --- Menu flags -----------------------------------------------------------------------------------------------------

TEST(ActionMenu, FlagGoesDownToChildrenWhichAreToldFirst) {
    load({action(1, "board", "p"), child(2, 1, "panel", "c"), child(3, 2, "sheet", "g"), child(4, 1, "view", "c")});
    Recorder all;
    manager().attachObserver(&all);
    manager().updateRMBMenu(1, true);
    EXPECT_EQ((Events{"3: in menu", "2: in menu", "4: in menu", "1: in menu"}), all.take());
    EXPECT_EQ(4U, manager().getRMBMenuItems().size());
    manager().updateRMBMenu(2, false);
    EXPECT_EQ((Events{"3: out of menu", "2: out of menu"}), all.take());
    EXPECT_EQ(2U, manager().getRMBMenuItems().size());
}

TEST(ActionMenu, ChildThatHasTheFlagKeepsItsOwnChildrenFromBeingTold) {
    load({action(1, "board", "p"), child(2, 1, "panel", "c"), child(3, 2, "sheet", "g")});
    manager().updateRMBMenu(2, true);
    manager().updateRMBMenu(3, false);
    Recorder all;
    manager().attachObserver(&all);
    manager().updateRMBMenu(1, true);
    EXPECT_EQ((Events{"1: in menu"}), all.take());
    EXPECT_EQ(2U, manager().getRMBMenuItems().size());
}

TEST(ActionMenu, SameFlagAndUnknownIdDoNothing) {
    load({R"({"id":1,"context":"board","command":"p","rmb":true})"});
    Recorder all;
    manager().attachObserver(&all);
    manager().updateRMBMenu(1, true);
    manager().updateRMBMenu(2, true);
    manager().updateRMBMenu(0, true);
    manager().updateRMBMenu(-1, false);
    EXPECT_EQ(Events{}, all.take());
    EXPECT_FALSE(manager().getAction(1).second.rmb.overwritten);
    EXPECT_EQ(1U, manager().getAllActions().size());
}

TEST(ActionMenu, FlagBackAtItsDefaultIsNoOverwrite) {
    load({R"({"id":1,"context":"board","command":"p","rmb":true})"});
    manager().updateRMBMenu(1, false);
    EXPECT_TRUE(manager().getAction(1).second.rmb.overwritten);
    EXPECT_FALSE(manager().getAction(1).second.rmb.userValue);
    manager().updateRMBMenu(1, true);
    EXPECT_FALSE(manager().getAction(1).second.hasOverwrite());
    EXPECT_FALSE(manager().getAction(1).second.rmb.userValue);
}

TEST(ActionMenu, FlagAloneIsNoModificationOddity) {
    load({action(1, "board", "p", "F1")});
    manager().updateRMBMenu(1, true);
    EXPECT_TRUE(manager().getAction(1).second.rmb.overwritten);
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ("", manager().getAllUserSettings());
    // With a shortcut's change it is written too.
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":"F2","rmb":true}]})", manager().getAllUserSettings());
}

// --- User's text ----------------------------------------------------------------------------------------------------

TEST(ActionUserText, HoldsTheOverwrittenPropertiesOfTopLevelActionsInAscendingId) {
    load({action(30, "board", "a", "F1"), R"({"id":4,"context":"board","command":"b","rmb":true})",
          action(7, "board", "c", "F3"), action(5, "board", "d", "F4"), child(31, 30, "panel", "e")});
    EXPECT_TRUE(manager().updateShortcut(30, "F9"));
    manager().updateRMBMenu(4, false);
    EXPECT_TRUE(manager().updateShortcut(7, ""));
    manager().updateRMBMenu(7, true);
    EXPECT_EQ(R"({"actions":[{"id":4,"rmb":false},{"id":7,"shortcut":"","rmb":true},{"id":30,"shortcut":"F9"}]})",
              manager().getAllUserSettings());
    EXPECT_TRUE(manager().isModified());
}

TEST(ActionUserText, EscapesWhatJsonMustEscape) {
    load({action(1, "board", "open", "F1")});
    EXPECT_TRUE(manager().updateShortcut(1, "Ctrl+\"\\\n/\xC3\xA9"));
    EXPECT_EQ("{\"actions\":[{\"id\":1,\"shortcut\":\"Ctrl+\\\"\\\\\\n/\xC3\xA9\"}]}", manager().getAllUserSettings());
}

TEST(ActionUserText, WrappedInAnArrayItIsReadBack) {
    const std::string shipped = object(list({action(1, "board", "open", "F1"), action(2, "board", "close", "F2"),
                                             child(3, 1, "panel", "shut"), action(4, "board", "zoom", "F4")}));
    manager().load(shipped, "");
    EXPECT_TRUE(manager().updateShortcut(1, "Ctrl+\"1\""));
    EXPECT_TRUE(manager().updateShortcut(2, ""));
    manager().updateRMBMenu(4, true);
    const std::string text = manager().getAllUserSettings();

    manager().load(shipped, "[" + text + "]");
    EXPECT_EQ("Ctrl+\"1\"", manager().getShortcut(1));
    EXPECT_EQ("", manager().getShortcut(2));
    EXPECT_EQ("Ctrl+\"1\"", manager().getShortcut(3));
    EXPECT_EQ(1U, manager().getRMBMenuItems().size());
    EXPECT_EQ(text, manager().getAllUserSettings());
}

// --- Circles and long chains ----------------------------------------------------------------------------------------

TEST(ActionCircle, ActionThatIsItsOwnParentCanBeEdited) {
    load({action(1, "board", "a", "F1", 1), action(2, "board", "b", "F2")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_EQ(2, manager().isShortcutTaken(1, "F2"));
    EXPECT_FALSE(manager().updateShortcut(1, "F2"));
    EXPECT_TRUE(manager().updateShortcut(1, "F3"));
    manager().updateRMBMenu(1, true);
    EXPECT_EQ((Events{"1: 'F1' -> 'F3'", "1: in menu"}), all.take());
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F3"));
    // It has a parent, so it is not written.
    EXPECT_EQ(R"({"actions":[]})", manager().getAllUserSettings());
}

TEST(ActionCircle, ParentsInACircleAreAskedAndEditedOnce) {
    load({action(1, "a", "x", "F1", 3), action(2, "b", "x", "", 1), action(3, "c", "x", "", 2),
          action(4, "c", "y", "F4"), action(5, "d", "x", "F5", 2)});
    Recorder all;
    manager().attachObserver(&all);
    for (const int id : {1, 2, 3}) {
        EXPECT_EQ(4, manager().isShortcutTaken(id, "F4")) << id;
        EXPECT_EQ(0, manager().isShortcutTaken(id, "F7")) << id;
    }
    EXPECT_EQ(0, manager().isShortcutTaken(5, "F4"));
    EXPECT_TRUE(manager().updateShortcut(2, "F7"));
    for (const int id : {1, 2, 3, 5}) {
        EXPECT_EQ("F7", manager().getShortcut(id)) << id;
    }
    // 2's children are 3 and 5, 3's is 1, whose child 2 has it already.
    EXPECT_EQ(4U, all.events.size());
    EXPECT_EQ("1", all.events[0].substr(0, 1));
    EXPECT_EQ("3", all.events[1].substr(0, 1));
    EXPECT_EQ("5", all.events[2].substr(0, 1));
    EXPECT_EQ("2", all.events[3].substr(0, 1));
    all.take();
    manager().updateRMBMenu(3, true);
    EXPECT_EQ((Events{"5: in menu", "2: in menu", "1: in menu", "3: in menu"}), all.take());
}

/// Whenever action 3 gets the change, takes it back from action 1.
class TakingBack final : public IUCPActionObserver {
public:
    TakingBack() = default;
    TakingBack(const TakingBack&) = delete;
    TakingBack& operator=(const TakingBack&) = delete;
    ~TakingBack() { manager().detachObserver(this); }

    void onShortcutChanged(int, const std::string&, const std::string& newShortcut) override {
        if (newShortcut == "F2") {
            EXPECT_TRUE(manager().updateShortcut(1, "F1"));
        }
    }

    void onRMBMenuChanged(int, bool inMenu) override {
        if (inMenu) {
            manager().updateRMBMenu(1, false);
        }
    }
};

TEST(ActionCircle, ChangeThatAnObserverTakesBackGoesRoundOnce) {
    // 1 and 2 are each other's parent; 3 is 1's first child.
    load({action(3, "c", "x", "", 1), action(1, "a", "x", "F1", 2), action(2, "b", "x", "", 1)});
    ASSERT_TRUE(manager().updateShortcut(1, "F1"));
    ASSERT_TRUE(manager().updateShortcut(1, "F7"));
    TakingBack ofThree;
    Recorder all;
    ASSERT_TRUE(manager().attachObserver(3, &ofThree));
    manager().attachObserver(&all);

    // 3 has changed, which takes back 3 and 1; then it is the turn of 2, whose child 1 is where the change comes from.
    manager().updateRMBMenu(1, true);
    EXPECT_EQ((Events{"3: out of menu", "1: out of menu", "3: in menu", "2: in menu", "1: in menu"}), all.take());
    ASSERT_EQ(1U, manager().getRMBMenuItems().size());
    EXPECT_EQ(2, manager().getRMBMenuItems()[0].id);

    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ((Events{"3: 'F2' -> 'F1'", "2: 'F7' -> 'F1'", "1: 'F2' -> 'F1'", "3: 'F7' -> 'F2'", "2: 'F1' -> 'F2'",
                      "1: 'F7' -> 'F2'"}),
              all.take());
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ("F2", manager().getShortcut(2));
    EXPECT_EQ("F1", manager().getShortcut(3));
}

/// 1 > 2 > ... > `length`, each in the context that `context` gives.
template <typename Context>
std::vector<std::string> chain(int length, Context context) {
    std::vector<std::string> definitions;
    for (int id = 1; id <= length; ++id) {
        definitions.push_back(action(id, context(id), "command " + std::to_string(id), "", id - 1));
    }
    return definitions;
}

TEST(ActionChain, ThousandNestedActionsNeedNoDeepStack) {
    runOnSmallStack([] {
        constexpr int kLength = 1000;
        std::vector<std::string> definitions = chain(kLength, [](int id) { return "context " + std::to_string(id); });
        definitions.push_back(action(5000, "context 1000", "other", "F5"));
        load(definitions);
        Recorder all;
        manager().attachObserver(&all);

        EXPECT_EQ(5000, manager().isShortcutTaken(1, "F5"));
        EXPECT_FALSE(manager().updateShortcut(1, "F5"));
        EXPECT_EQ(Events{}, all.take());

        EXPECT_TRUE(manager().updateShortcut(1, "F1"));
        ASSERT_EQ(static_cast<std::size_t>(kLength), all.events.size());
        EXPECT_EQ("1000: '' -> 'F1'", all.events.front());
        EXPECT_EQ("1: '' -> 'F1'", all.events.back());
        all.take();
        EXPECT_EQ(kLength, manager().getActionIdByShortcut("context 1000", "F1"));

        manager().updateRMBMenu(1, true);
        EXPECT_EQ(static_cast<std::size_t>(kLength), all.events.size());
        EXPECT_EQ(static_cast<std::size_t>(kLength), manager().getRMBMenuItems().size());
    });
}

TEST(ActionChain, CircleOfAThousandNeedsNoDeepStack) {
    runOnSmallStack([] {
        std::vector<std::string> definitions = chain(1000, [](int id) { return "context " + std::to_string(id); });
        definitions[0] = action(1, "context 1", "command 1", "F1", 1000);
        load(definitions);
        EXPECT_EQ(0, manager().isShortcutTaken(500, "F9"));
        EXPECT_TRUE(manager().updateShortcut(500, "F9"));
        EXPECT_EQ("F9", manager().getShortcut(499));
        EXPECT_EQ("F9", manager().getShortcut(501));
        manager().updateRMBMenu(1, true);
        EXPECT_EQ(1000U, manager().getRMBMenuItems().size());
    });
}

TEST(ActionChain, TwentyThousandNestedActionsNeedNoDeepStack) {
    runOnSmallStack([] {
        constexpr int kLength = 20000;
        load(chain(kLength, [](int) { return std::string("board"); }));
        manager().updateRMBMenu(1, true);
        EXPECT_EQ(static_cast<std::size_t>(kLength), manager().getRMBMenuItems().size());
        EXPECT_EQ(0, manager().isShortcutTaken(1, "F1"));
        // In one context the grandchild is in the way.
        EXPECT_TRUE(manager().updateShortcut(1, "F1"));
        EXPECT_EQ("", manager().getShortcut(2));
    });
}

}  // namespace
}  // namespace zelutil::test
