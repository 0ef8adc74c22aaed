// Tests what a start says of the user's list of actions.
#include "host/action_warnings.h"
#include "host/action_fixture.h"

namespace zelutil::test {
namespace {

using host::StartWarning;
using Kinds = std::vector<StartWarning::Kind>;

const std::vector<std::string> kTwo = {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F2")};

std::vector<StartWarning> warningsOf(const std::string& user) {
    const ActionProcess here(kTwo, user);
    return host::actionWarnings(here.catalogue);
}

TEST(ActionWarnings, SaysNothingWhereAllIsWell) {
    EXPECT_TRUE(warningsOf("").empty());
    EXPECT_TRUE(warningsOf("[]").empty());
    EXPECT_TRUE(warningsOf(userText("")).empty());
    EXPECT_TRUE(warningsOf(userText(R"({"id":2,"shortcut":""},{"id":1,"shortcut":"F2","rmb":true})")).empty());
}

TEST(ActionWarnings, NamesTheHolderOfARefusedShortcut) {
    const std::vector<StartWarning> warnings = warningsOf(userText(R"({"id":1,"shortcut":"F2"})"));
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].kind, StartWarning::Kind::ShortcutRefused);
    EXPECT_EQ(warnings[0].action, 1);
    EXPECT_EQ(warnings[0].holder, 2);
    EXPECT_EQ(warnings[0].text, "Action 1 did not get the shortcut \"F2\": action 2 has it.");
}

TEST(ActionWarnings, NamesEntriesWithoutEffectInTheirOrder) {
    const std::vector<StartWarning> warnings = warningsOf(
        userText(R"({"id":9,"shortcut":"F9"},{"id":1,"shortcut":7,"rmb":"true"},{"id":2},{"rmb":true},{"id":8})"));
    ASSERT_EQ(warnings.size(), 5U);
    EXPECT_EQ(warnings[0].action, 9);
    EXPECT_EQ(warnings[0].text, "The entry for action 9 is for none of the shipped actions.");
    EXPECT_EQ(warnings[1].action, 1);
    EXPECT_EQ(warnings[1].text, "The entry for action 1 has a shortcut that is no text and counts as none.");
    EXPECT_EQ(warnings[2].action, 1);
    EXPECT_EQ(warnings[2].text,
              "The entry for action 1 has a menu flag that is neither true nor false and counts as false.");
    EXPECT_EQ(warnings[3].action, 2);
    EXPECT_EQ(warnings[3].text, "The entry for action 2 has neither a shortcut nor a menu flag.");
    EXPECT_EQ(warnings[4].action, 0);
    EXPECT_EQ(warnings[4].text,
              "Element 4 of the list of the changed actions has no id; it and all after it are not read.");
}

/// Action 2 follows action 1, and action 3 has its own context's F9.
const std::vector<std::string> kFamily = {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1),
                                          shippedAction(3, "panel", "F9"), shippedAction(4, "board", "F4")};

std::vector<StartWarning> warningsOfFamily(const std::string& user) {
    const ActionProcess here(kFamily, user);
    return host::actionWarnings(here.catalogue);
}

TEST(ActionWarnings, NamesWhatAChildIsGivenInVainBetweenTheOthers) {
    const std::vector<StartWarning> warnings = warningsOfFamily(
        userText(R"({"id":9},{"id":2,"shortcut":"F8","rmb":true},{"id":4,"shortcut":"F1"},{"id":1,"rmb":false})"));
    ASSERT_EQ(warnings.size(), 4U);
    EXPECT_EQ(warnings[0].action, 9);
    EXPECT_EQ(warnings[1].kind, StartWarning::Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[1].action, 2);
    EXPECT_EQ(warnings[1].text,
              "The shortcut \"F8\" that action 2 is given has no effect, because it follows its parent, action 1.");
    EXPECT_EQ(warnings[2].action, 2);
    EXPECT_EQ(warnings[2].text,
              "The menu flag that action 2 is given has no effect, because it follows its parent, action 1.");
    EXPECT_EQ(warnings[3].action, 4);
    EXPECT_EQ(warnings[3].kind, StartWarning::Kind::ShortcutRefused);
}

TEST(ActionWarnings, SaysNothingOfAChildThatHasWhatItIsGiven) {
    EXPECT_TRUE(warningsOfFamily(userText(R"({"id":2,"shortcut":"F1","rmb":false},{"id":2,"shortcut":""})")).empty());
    EXPECT_TRUE(warningsOfFamily(userText(R"({"id":1,"shortcut":"F8","rmb":true})")).empty());
}

// Action 2 does not keep F7, but as long as it has it action 3 does not get it; and the flag of action 4 comes to
// action 2, which the pass over the children meets before action 4 follows action 1.
TEST(ActionWarnings, SaysNothingOfWhatDecidesAboutOthers) {
    const std::vector<StartWarning> warnings =
        warningsOfFamily(userText(R"({"id":2,"shortcut":"F7"},{"id":3,"shortcut":"F7"})"));
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].kind, StartWarning::Kind::ShortcutRefused);
    EXPECT_EQ(warnings[0].action, 3);
    const ActionProcess chain({shippedAction(1, "a", "F1"), shippedAction(2, "b", "", 4), shippedAction(4, "c", "", 1)},
                              userText(R"({"id":4,"rmb":true,"shortcut":"F6"})"));
    EXPECT_TRUE(chain.inMenu(2));
    const std::vector<StartWarning> ofChain = host::actionWarnings(chain.catalogue);
    ASSERT_EQ(ofChain.size(), 1U);
    EXPECT_EQ(ofChain[0].text.substr(0, 19), "The shortcut \"F6\" t");
}

TEST(ActionWarnings, NamesATextOfAnotherForm) {
    for (const char* const text : {R"({"actions":[{"id":1,"shortcut":"F9"}]})", "nonsense", R"([{"actions":7}])"}) {
        const std::vector<StartWarning> warnings = warningsOf(text);
        ASSERT_EQ(warnings.size(), 1U) << text;
        EXPECT_EQ(warnings[0].kind, StartWarning::Kind::EntryWithoutEffect);
        EXPECT_EQ(warnings[0].action, 0);
    }
}

}  // namespace
}  // namespace zelutil::test
