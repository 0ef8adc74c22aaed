#include <gtest/gtest.h>

#include "actions/action_fixture.h"
#include "actions/steal_shortcut.h"

namespace zelutil::test {
namespace {

bool steal(int id, const std::string& shortcut) { return UCPActionManagerTestPeer::steal(id, shortcut); }

TEST(ActionSteal, HolderLosesItsShortcutAndIsToldFirst) {
    load({action(1, "board", "a", "F1"), action(2, "board", "b", "F2")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(steal(2, "F1"));
    EXPECT_EQ((Events{"1: 'F1' -> ''", "2: 'F2' -> 'F1'"}), all.take());
    EXPECT_EQ("", manager().getShortcut(1));
    EXPECT_EQ("F1", manager().getShortcut(2));
    EXPECT_EQ("b", manager().getCommand("board", "F1", false));
    EXPECT_EQ("", manager().getCommand("board", "F2", false));
    EXPECT_TRUE(manager().isModified());
    EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":""},{"id":2,"shortcut":"F1"}]})", manager().getAllUserSettings());
}

TEST(ActionSteal, FreeShortcutIsTakenAndEmptyTextGivesItUp) {
    load({action(1, "board", "a", "F1")});
    EXPECT_TRUE(steal(1, "F5"));
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F5"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
    EXPECT_TRUE(steal(1, ""));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F5"));
    EXPECT_EQ("", manager().getShortcut(1));
}

TEST(ActionSteal, SameShortcutIsTrueAndUnknownActionFalseAndNobodyIsTold) {
    load({action(1, "board", "a", "F1")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(steal(1, "F1"));
    EXPECT_FALSE(steal(2, "F1"));
    EXPECT_FALSE(steal(0, "F1"));
    EXPECT_FALSE(steal(-1, ""));
    EXPECT_EQ(Events{}, all.take());
    EXPECT_FALSE(manager().isModified());
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F1"));
}

TEST(ActionSteal, ChildGetsItThroughItsTopLevelAction) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), child(3, 2, "sheet", "g"),
          action(4, "board", "z", "F4")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(steal(3, "F4"));
    EXPECT_EQ((Events{"4: 'F4' -> ''", "3: 'F1' -> 'F4'", "2: 'F1' -> 'F4'", "1: 'F1' -> 'F4'"}), all.take());
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "F4"));
    EXPECT_EQ(3, manager().getActionIdByShortcut("sheet", "F4"));
}

TEST(ActionSteal, ChildThatHoldsItLosesItWithItsParent) {
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), action(4, "panel", "z", "F4")});
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(steal(4, "F1"));
    EXPECT_EQ((Events{"2: 'F1' -> ''", "1: 'F1' -> ''", "4: 'F4' -> 'F1'"}), all.take());
    EXPECT_EQ(4, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F1"));
}

TEST(ActionSteal, LooksOnlyAtItsOwnContext) {
    load({action(7, "ucpedit", "e", "E"), action(9, "brisk3d", "d", "D"), child(8, 7, "panel", "c"),
          action(3, "panel", "z", "D")});
    EXPECT_TRUE(steal(7, "D"));
    EXPECT_EQ(7, manager().getActionIdByShortcut("ucpedit", "D"));
    EXPECT_EQ(9, manager().getActionIdByShortcut("brisk3d", "D"));
    EXPECT_EQ("D", manager().getShortcut(9));
    // The child's context is another's: it does not follow.
    EXPECT_EQ(3, manager().getActionIdByShortcut("panel", "D"));
    EXPECT_EQ("E", manager().getShortcut(8));
}

/// Gives a shortcut to an action as soon as another action is told of a change.
class Giver final : public IUCPActionObserver {
public:
    Giver(int when, int to, std::string gift) : when_(when), to_(to), gift_(std::move(gift)) {
        manager().attachObserver(this);
    }
    Giver(const Giver&) = delete;
    Giver& operator=(const Giver&) = delete;
    ~Giver() { manager().detachObserver(this); }

    void onShortcutChanged(int actionId, const std::string& /*oldShortcut*/,
                           const std::string& /*newShortcut*/) override {
        if (actionId == when_) {
            given = manager().updateShortcut(to_, gift_);
        }
    }
    void onRMBMenuChanged(int /*actionId*/, bool /*inMenu*/) override {}

    bool given = false;

private:
    int when_;
    int to_;
    std::string gift_;
};

TEST(ActionSteal, WhatTheThiefGaveUpMayBeGivenAwayDuringTheTheft) {
    load({action(1, "board", "a", "F1"), action(2, "board", "b", "F2"), action(3, "board", "c")});
    const Giver giver(1, 3, "F2");
    EXPECT_TRUE(steal(2, "F1"));
    EXPECT_TRUE(giver.given);
    EXPECT_EQ("F2", manager().getShortcut(3));
    EXPECT_EQ(3, manager().getActionIdByShortcut("board", "F2"));
    EXPECT_EQ("c", manager().getCommand("board", "F2", false));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "F1"));
}

TEST(ActionSteal, EntryOfAChildWhoseParentHasNothingToLoseStaysOddity) {
    load({action(1, "board", "p"), child(2, 1, "panel", "c"), action(4, "panel", "z")});
    ASSERT_TRUE(manager().updateShortcut(2, "F5"));
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(steal(4, "F5"));
    EXPECT_EQ((Events{"4: '' -> 'F5'"}), all.take());
    EXPECT_EQ("F5", manager().getShortcut(4));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F5"));
}

TEST(ActionSteal, CircleOfParentsHasNobodyToGiveItTo) {
    load({action(1, "a", "x", "", 2), action(2, "b", "x", "", 1), child(3, 1, "c", "x"), action(4, "a", "y", "F4"),
          action(5, "a", "z", "", 5)});
    Recorder all;
    manager().attachObserver(&all);
    for (const int id : {1, 2, 3, 5}) {
        EXPECT_FALSE(steal(id, "F4")) << id;
    }
    EXPECT_EQ(Events{}, all.take());
    EXPECT_EQ(4, manager().getActionIdByShortcut("a", "F4"));
}

}  // namespace
}  // namespace zelutil::test
