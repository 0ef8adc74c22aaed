// Going back to what is shipped.
#include "host/action_reset.h"
#include "host/action_fixture.h"
#include "host/action_worlds.h"

namespace zelutil::test {
namespace {

using host::ActionsReset;

/// Returns the actions that keep what they have, each with the one in the way, such as "1 by 2, 4 by 3".
std::string namedBy(const ActionsReset& reset) {
    std::string text;
    for (const host::NotRestored& refused : reset.refused) {
        text +=
            (text.empty() ? "" : ", ") + std::to_string(refused.action) + " by " + std::to_string(refused.otherAction);
    }
    return text;
}

TEST(ActionReset, GivesTheShippedShortcutAndFlagBack) {
    ActionProcess here(kThree);
    here.catalogue.updateShortcut(1, "F9");
    here.catalogue.updateMenu(1, true);
    here.catalogue.updateShortcut(2, "F8");
    const ActionsReset reset = host::resetActions(here.catalogue, {1});
    EXPECT_TRUE(reset.refused.empty());
    EXPECT_EQ(reset.touched, std::set<int>{1});
    EXPECT_EQ(here.shortcut(1), "F1");
    EXPECT_FALSE(here.inMenu(1));
    EXPECT_EQ(here.shortcut(2), "F8");
}

TEST(ActionReset, UndoesASwapOfActionsThatAreBothReset) {
    ActionProcess here(kThree);
    here.swap(1, 2);
    EXPECT_TRUE(host::resetActions(here.catalogue, {1, 2}).refused.empty());
    EXPECT_EQ(here.holder("board", "F1"), 1);
    EXPECT_EQ(here.holder("board", "F2"), 2);
}

TEST(ActionReset, NamesAnActionWhoseShortcutAnotherHolds) {
    ActionProcess here(kThree);
    here.swap(1, 2);
    const ActionsReset reset = host::resetActions(here.catalogue, {1});
    ASSERT_EQ(reset.refused.size(), 1U);
    EXPECT_EQ(reset.refused[0].action, 1);
    EXPECT_EQ(reset.refused[0].otherAction, 2);
    EXPECT_EQ(reset.refused[0].text,
              "Action 1 (board, run1) does not get back the shortcut \"F1\": action 2 (board, run2) has it.");
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.shortcut(2), "F1");
}

TEST(ActionReset, TakesChildrenAlong) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1)});
    here.catalogue.updateShortcut(1, "F9");
    here.catalogue.updateShortcut(2, "F8");
    here.catalogue.updateMenu(2, true);
    const ActionsReset reset = host::resetActions(here.catalogue, {1});
    EXPECT_EQ(reset.touched, (std::set<int>{1, 2}));
    EXPECT_EQ(here.shortcut(2), "F1");
    EXPECT_FALSE(here.inMenu(2));
    EXPECT_EQ(here.holder("panel", "F1"), 2);
}

TEST(ActionReset, GivesAChildWhatItsParentHas) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1)});
    here.catalogue.updateShortcut(1, "F9");
    here.catalogue.updateShortcut(2, "F8");
    EXPECT_TRUE(host::resetActions(here.catalogue, {2}).refused.empty());
    EXPECT_EQ(here.shortcut(1), "F9");
    EXPECT_EQ(here.shortcut(2), "F9");
}

TEST(ActionReset, DoesNothingForUnknownIds) {
    ActionProcess here(kThree);
    here.catalogue.updateShortcut(1, "F9");
    const ActionsReset reset = host::resetActions(here.catalogue, {0, -1, 70});
    EXPECT_TRUE(reset.touched.empty());
    EXPECT_TRUE(reset.refused.empty());
    EXPECT_EQ(here.shortcut(1), "F9");
}

TEST(ActionReset, ResetsAnActionThatStandsInForAParent) {
    ActionProcess here({shippedAction(1, "board", "F1", 77)});
    here.catalogue.updateShortcut(77, "F7");
    here.catalogue.updateMenu(77, true);
    ASSERT_EQ(here.shortcut(1), "F7");
    EXPECT_TRUE(host::resetAllActions(here.catalogue).refused.empty());
    EXPECT_EQ(here.shortcut(77), "");
    EXPECT_EQ(here.shortcut(1), "");
    EXPECT_FALSE(here.inMenu(1));
}

/// After all were reset, what queries return is what a load of the shipped text alone gives.
void expectAllBack(const Kind& kind) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        ActionRandom random(seed);
        const std::vector<Shipped> shipped = randomShipped(random, kind);
        SCOPED_TRACE(testing::Message() << "seed " << seed << " " << shippedText(shipped));
        const actions::ObserverRegistry nobody;
        actions::ActionCatalogue here(nobody);
        here.load(shippedText(shipped), "");
        const Answers before = answersOf(here, shipped);
        editAtRandom(random, here, shipped, kind, 10);
        ASSERT_TRUE(host::resetAllActions(here).refused.empty());
        ASSERT_EQ(answersOf(here, shipped), before);
    }
}

TEST(ActionReset, BringsAllFlatActionsBack) {
    Kind kind;
    kind.linked = true;
    kind.contexts = 3;
    expectAllBack(kind);
}

TEST(ActionReset, BringsAllActionsOfOneContextBack) {
    Kind kind;
    kind.actions = 12;
    kind.contexts = 1;
    kind.shortcuts = 11;
    expectAllBack(kind);
}

TEST(ActionReset, NamesTheSecondOfTwoThatAreShippedWithOneShortcut) {
    // Both show F1 after a load, and 1 holds it. Of edits, only one can get it.
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F1"), shippedAction(3, "board", "F3")});
    here.catalogue.updateShortcut(2, "F9");
    here.catalogue.updateShortcut(1, "F8");
    const ActionsReset reset = host::resetAllActions(here.catalogue);
    ASSERT_EQ(reset.refused.size(), 1U);
    EXPECT_EQ(reset.refused[0].action, 2);
    EXPECT_EQ(reset.refused[0].otherAction, 1);
    EXPECT_EQ(reset.refused[0].obstacle, host::Obstacle::ShippedTwice);
    EXPECT_EQ(here.holder("board", "F1"), 1);
    EXPECT_EQ(here.shortcut(2), "F9");
}

TEST(ActionReset, NamesTheFirstOfTwoThatAreShippedWithOneShortcutWhereTheOtherHoldsIt) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "board", "F1")});
    here.catalogue.updateShortcut(2, "F9");
    here.catalogue.updateShortcut(2, "F1");
    ASSERT_EQ(here.holder("board", "F1"), 2);
    // Nor if both are reset: an edit that gives F1 to 1 has to take it from 2 first, and then cannot give it back.
    for (const std::vector<int>& ids : {std::vector<int>{1}, {1, 2}}) {
        EXPECT_EQ(namedBy(host::resetActions(here.catalogue, ids)), "1 by 2");
        EXPECT_EQ(here.holder("board", "F1"), 2);
        EXPECT_EQ(here.shortcut(1), "F1");
    }
}

/// Actions of two linked contexts that are shipped with one shortcut. Only a load can give it to both.
const std::vector<std::string> kLinkedTwins = {shippedAction(1, "ucpedit", "F1"), shippedAction(2, "brisk3d", "F1")};

TEST(ActionReset, TakesNothingFromAnActionThatCannotHaveItsShippedShortcut) {
    for (const int id : {1, 2}) {
        ActionProcess here(kLinkedTwins, userText("{\"id\":" + std::to_string(id) + ",\"shortcut\":\"F9\"}"));
        const ActionsReset reset = host::resetActions(here.catalogue, {id});
        EXPECT_EQ(namedBy(reset), id == 1 ? "1 by 2" : "2 by 1");
        EXPECT_TRUE(reset.touched.empty());
        EXPECT_EQ(here.shortcut(id), "F9");
        EXPECT_EQ(here.shortcut(3 - id), "F1");
        EXPECT_EQ(here.holder(id == 1 ? "ucpedit" : "brisk3d", "F9"), id);
    }
}

TEST(ActionReset, GivesOneOfTwoOfLinkedContextsBackWhatBothAreShippedWith) {
    ActionProcess here(kLinkedTwins, userText(R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F9"})"));
    const ActionsReset reset = host::resetActions(here.catalogue, {1, 2});
    EXPECT_EQ(namedBy(reset), "2 by 1");
    EXPECT_EQ(reset.touched, std::set<int>{1});
    EXPECT_EQ(here.holder("ucpedit", "F1"), 1);
    EXPECT_EQ(here.holder("brisk3d", "F9"), 2);
}

TEST(ActionReset, GivesAnActionWhatNobodyRunsByThoughAnotherIsShippedWithItFirst) {
    const std::vector<std::string> twins = {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F1")};
    ActionProcess here(twins, userText(R"({"id":1,"shortcut":"F9"})"));
    ASSERT_EQ(here.holder("board", "F1"), 0);
    EXPECT_EQ(namedBy(host::resetActions(here.catalogue, {2})), "");
    EXPECT_EQ(here.holder("board", "F1"), 2);
    EXPECT_EQ(here.shortcut(1), "F9");
}

/// Action 7 has two children, and 35 has what is shipped for 7.
TEST(ActionReset, LeavesTheChildrenOfAnActionThatKeepsWhatItHas) {
    ActionProcess here({shippedAction(7, "board", "F1"), shippedAction(301, "panel", "", 7),
                        shippedAction(401, "sheet", "", 7), shippedAction(35, "board", "F3")},
                       userText(R"({"id":7,"shortcut":"F5"},{"id":35,"shortcut":"F1"})"));
    std::string file = userText(R"({"id":7,"shortcut":"F5"},{"id":35,"shortcut":"F1"})");
    const std::string before = file;
    const ActionsReset reset = host::resetActions(here.catalogue, {7});
    EXPECT_EQ(namedBy(reset), "7 by 35");
    for (const int id : {7, 301, 401}) {
        EXPECT_EQ(here.shortcut(id), "F5");
    }
    EXPECT_EQ(here.holder("panel", "F5"), 301);
    EXPECT_TRUE(here.save(file, reset.touched).notRestored.empty());
    EXPECT_EQ(file, before);
}

}  // namespace
}  // namespace zelutil::test
