// The texts that bring actions back, worked out by hand.
#include "host/action_fixture.h"

namespace zelutil::test {
namespace {

using host::ActionsPlan;
using host::Obstacle;

TEST(ActionRestore, WritesAnEmptyListWhereNothingChanged) {
    const ActionProcess here(kThree);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(""));
    EXPECT_FALSE(plan.anyEntry);
    EXPECT_TRUE(plan.savedActions.empty());
    EXPECT_TRUE(plan.notRestored.empty());
}

TEST(ActionRestore, NamesChangedActionsAscendingWhereThatSuffices) {
    ActionProcess here(kThree);
    here.catalogue.updateShortcut(3, "F9");
    here.catalogue.updateShortcut(1, "");
    here.catalogue.updateMenu(3, true);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":""},{"id":3,"shortcut":"F9","rmb":true})"));
    EXPECT_TRUE(plan.anyEntry);
    EXPECT_EQ(plan.savedActions, (std::vector<int>{1, 3}));
}

TEST(ActionRestore, WritesAMenuFlagThatChangedAlone) {
    ActionProcess here({shippedAction(1, "board", "F1", 0, R"(,"rmb":true)"), shippedAction(2, "board", "F2")});
    here.catalogue.updateMenu(1, false);
    here.catalogue.updateMenu(2, true);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"rmb":false},{"id":2,"rmb":true})"));
    EXPECT_TRUE(plan.notRestored.empty());
}

TEST(ActionRestore, TakesOneShortcutAwayFirstWhereTwoWereSwapped) {
    ActionProcess here(kThree);
    here.swap(1, 2);
    const ActionsPlan plan = here.plan();
    // 1 waits for 2 and 2 for 1, so 2 gives way.
    EXPECT_EQ(plan.text, userText(R"({"id":2,"shortcut":""},{"id":1,"shortcut":"F2"},{"id":2,"shortcut":"F1"})"));
    EXPECT_EQ(plan.savedActions, (std::vector<int>{1, 2}));
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.shortcut(2), "F1");
    EXPECT_EQ(here.shortcut(3), "F3");
    EXPECT_EQ(here.holder("board", "F1"), 2);
    EXPECT_EQ(here.holder("board", "F2"), 1);
}

TEST(ActionRestore, TakesOneShortcutAwayFirstWhereThreeWentRound) {
    ActionProcess here(kThree);
    here.swap(1, 2);
    here.swap(2, 3);
    const ActionsPlan plan = here.plan();
    // 1 has F2, 2 has F3 and 3 has F1: room for 1 is room for all.
    EXPECT_EQ(plan.savedActions, (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(plan.notRestored.empty());
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.shortcut(2), "F3");
    EXPECT_EQ(here.shortcut(3), "F1");
}

TEST(ActionRestore, OrdersTheEntriesWhereOneWaitsForTheOther) {
    ActionProcess here(kThree);
    here.catalogue.updateShortcut(2, "F9");
    here.catalogue.updateShortcut(1, "F2");
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":2,"shortcut":"F9"},{"id":1,"shortcut":"F2"})"));
}

TEST(ActionRestore, SwapsShortcutsOfLinkedContexts) {
    ActionProcess here({shippedAction(7, "ucpedit", "F7"), shippedAction(9, "brisk3d", "F9")});
    here.swap(7, 9);
    const ActionsPlan plan = here.plan();
    EXPECT_TRUE(plan.notRestored.empty());
    here.restart(plan.text);
    EXPECT_EQ(here.holder("ucpedit", "F9"), 7);
    EXPECT_EQ(here.holder("brisk3d", "F7"), 9);
    EXPECT_EQ(here.holder("ucpedit", "F7"), 0);
}

TEST(ActionRestore, SwapsFamilies) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1),
                        shippedAction(3, "board", "F3"), shippedAction(4, "panel", "", 3)});
    here.swap(1, 3);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":3,"shortcut":""},{"id":1,"shortcut":"F3"},{"id":3,"shortcut":"F1"})"));
    here.restart(plan.text);
    EXPECT_EQ(here.holder("panel", "F3"), 2);
    EXPECT_EQ(here.holder("panel", "F1"), 4);
}

TEST(ActionRestore, ClearsTheShippedShortcutOfAChildThatIsInTheWay) {
    // Until all entries are read, the child holds F5; then it follows its parent.
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "F5", 1), shippedAction(3, "panel", "F3")});
    ASSERT_EQ(here.shortcut(2), "F1");
    ASSERT_TRUE(here.catalogue.updateShortcut(3, "F5"));
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":2,"shortcut":""},{"id":3,"shortcut":"F5"})"));
    EXPECT_TRUE(plan.notRestored.empty());
    here.restart(plan.text);
    EXPECT_EQ(here.holder("panel", "F5"), 3);
    EXPECT_EQ(here.holder("panel", "F1"), 2);
}

TEST(ActionRestore, LeavesAShortcutThatIsShippedTwiceWithItsHolder) {
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F1"), shippedAction(3, "board", "F3")});
    // 1 holds F1. When 2 leaves, the entry goes with it.
    here.catalogue.updateShortcut(2, "F2");
    ASSERT_EQ(here.holder("board", "F1"), 0);
    EXPECT_EQ(here.plan().text, userText(R"({"id":2,"shortcut":"F2"})"));
    // 2 comes back and holds it now. After a load 1 does, until 2 leaves and takes the entry along.
    here.catalogue.updateShortcut(2, "F1");
    ASSERT_EQ(here.holder("board", "F1"), 2);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})"));
    EXPECT_TRUE(plan.notRestored.empty());
}

TEST(ActionRestore, NamesAChildThatWasEditedAlone) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1)});
    here.catalogue.updateShortcut(2, "F9");
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(""));
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].action, 2);
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::FollowsParent);
    EXPECT_EQ(plan.notRestored[0].otherAction, 1);
    EXPECT_EQ(plan.notRestored[0].text,
              "Action 2 takes over what action 1 has and starts with the shortcut \"F1\", outside the menu.");
}

TEST(ActionRestore, NamesAChildWhoseMenuFlagWasEditedAlone) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1)});
    here.catalogue.updateMenu(2, true);
    const ActionsPlan plan = here.plan();
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].action, 2);
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::FollowsParent);
}

TEST(ActionRestore, KeepsTheOldFlagOfAGrandchildThatComesBeforeItsParent) {
    // 1 takes over the flag of 5 before 5 takes over that of 9.
    ActionProcess here(
        {shippedAction(9, "board", "F9"), shippedAction(5, "panel", "", 9), shippedAction(1, "sheet", "", 5)});
    here.catalogue.updateMenu(9, true);
    ASSERT_TRUE(here.inMenu(1));
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":9,"rmb":true})"));
    here.catalogue.updateMenu(1, false);
    const ActionsPlan apart = here.plan();
    EXPECT_EQ(apart.text, userText(R"({"id":9,"rmb":true},{"id":5,"rmb":false})"));
    EXPECT_TRUE(apart.notRestored.empty());
    here.restart(apart.text);
    EXPECT_TRUE(here.inMenu(9));
    EXPECT_TRUE(here.inMenu(5));
    EXPECT_FALSE(here.inMenu(1));
}

TEST(ActionRestore, NamesAChildWithoutAParent) {
    ActionProcess here({shippedAction(1, "board", "F1", 77), shippedAction(2, "board", "F2")});
    ASSERT_EQ(here.shortcut(1), "");
    here.catalogue.updateShortcut(1, "F1");
    const ActionsPlan plan = here.plan();
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].action, 1);
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::FollowsParent);
    EXPECT_EQ(plan.notRestored[0].otherAction, 77);
}

TEST(ActionRestore, NamesAnActionThatStandsInForAParent) {
    ActionProcess here({shippedAction(1, "board", "F1", 77)});
    here.catalogue.updateShortcut(77, "F7");
    ASSERT_EQ(here.shortcut(1), "F7");
    const ActionsPlan plan = here.plan();
    ASSERT_EQ(plan.notRestored.size(), 2U);
    EXPECT_EQ(plan.notRestored[0].action, 1);
    EXPECT_EQ(plan.notRestored[1].action, 77);
    EXPECT_FALSE(plan.anyEntry);
}

TEST(ActionRestore, BringsBackAParentThoughAChildCouldNotFollow) {
    // 2 and 3 are in one context: 2 gets what 1 gets, 3 is refused and keeps what it has. A load lets 3 show it too.
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1), shippedAction(3, "panel", "", 1)});
    ASSERT_TRUE(here.catalogue.updateShortcut(1, "F5"));
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":"F5"})"));
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].action, 3);
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::FollowsParent);
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(1), "F5");
    EXPECT_EQ(here.holder("panel", "F5"), 2);
}

TEST(ActionRestore, SavesWhatTheUserChoseForAParentThoughAGrandchildCannotFollow) {
    // 11 is in the context of 1, which has F2 there, so that 10 and 11 keep F1. After a load all show F2.
    ActionProcess here(
        {shippedAction(1, "panel", "F1"), shippedAction(10, "board", "", 1), shippedAction(11, "panel", "", 10)});
    ASSERT_TRUE(here.catalogue.updateShortcut(1, "F2"));
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":"F2"})"));
    ASSERT_EQ(plan.notRestored.size(), 2U);
    EXPECT_EQ(plan.notRestored[0].action, 10);
    EXPECT_EQ(plan.notRestored[0].text,
              "Action 10 takes over what action 1 has and starts with the shortcut \"F2\", outside the menu.");
    EXPECT_EQ(plan.notRestored[1].action, 11);
    EXPECT_EQ(plan.notRestored[1].otherAction, 10);
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.holder("panel", "F2"), 1);
}

TEST(ActionRestore, LeavesTheMenuFlagOfAParentThatTheUserChangedToTheUser) {
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1), shippedAction(3, "sheet", "", 1)});
    ASSERT_TRUE(here.catalogue.updateShortcut(1, "F9"));
    here.catalogue.updateMenu(2, true);
    here.catalogue.updateMenu(3, true);
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":"F9"})"));
    ASSERT_EQ(plan.notRestored.size(), 2U);
    EXPECT_EQ(plan.notRestored[0].action, 2);
    EXPECT_EQ(plan.notRestored[1].action, 3);
}

TEST(ActionRestore, KeepsEntriesForUnknownActionsAfterItsOwn) {
    ActionProcess here(kThree, userText(R"({"id":40,"shortcut":"F4","note":"later"},{"id":1,"shortcut":"F8"})"));
    const ActionsPlan plan = here.plan();
    EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":"F8"},{"id":40,"shortcut":"F4","note":"later"})"));
    EXPECT_EQ(plan.savedActions, (std::vector<int>{1, 40}));
    EXPECT_TRUE(plan.anyEntry);
}

TEST(ActionRestore, DropsElementsWithoutAnIdThatWouldEndTheReading) {
    ActionProcess here(kThree,
                       userText(R"({"id":1,"shortcut":"F8"},{"shortcut":"F4"},{"id":2,"shortcut":"F9"},{"id":40})"));
    ASSERT_EQ(here.shortcut(2), "F2");
    EXPECT_EQ(here.plan().text, userText(R"({"id":1,"shortcut":"F8"},{"id":40})"));
}

TEST(ActionRestore, TakesAShortcutFromAnotherActionOfTheSameCommandByTwoEntries) {
    const auto shared = [](int id, const std::string& shortcut) {
        return "{\"id\":" + std::to_string(id) + R"(,"context":"board","command":"pan","shortcut":")" + shortcut +
               "\"}";
    };
    ActionProcess here({shared(1, "F2"), shared(2, "F3"), shared(3, ""), shared(4, "F1")});
    // The command is bound to the first action's F2. 3 has none, but a change of 3 lets go of what the command is bound
    // to.
    ASSERT_TRUE(here.catalogue.updateShortcut(3, ""));
    ASSERT_TRUE(here.catalogue.updateShortcut(3, "F2"));
    ASSERT_EQ(here.shortcut(1), "F2");
    ASSERT_EQ(here.holder("board", "F2"), 3);
    const ActionsPlan plan = here.plan();
    EXPECT_TRUE(plan.notRestored.empty());
    EXPECT_EQ(plan.text, userText(R"({"id":3,"shortcut":""},{"id":3,"shortcut":"F2"})"));
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.shortcut(3), "F2");
    EXPECT_EQ(here.holder("board", "F2"), 3);
    EXPECT_EQ(here.holder("board", "F3"), 2);
    EXPECT_EQ(here.holder("board", "F1"), 4);
}

TEST(ActionRestore, EndsWhereParentsGoRoundInACircle) {
    ActionProcess here({shippedAction(1, "board", "F1", 3), shippedAction(2, "panel", "F2", 1),
                        shippedAction(3, "sheet", "F3", 2), shippedAction(4, "board", "F4", 4)});
    here.catalogue.updateShortcut(1, "F7");
    here.catalogue.updateShortcut(2, "F8");
    here.catalogue.updateShortcut(4, "F9");
    here.catalogue.updateMenu(2, true);
    const ActionsPlan plan = here.plan();
    const std::string shortcutOfFour = here.shortcut(4);
    here.restart(plan.text);
    EXPECT_EQ(here.shortcut(4), shortcutOfFour);
}

}  // namespace
}  // namespace zelutil::test
