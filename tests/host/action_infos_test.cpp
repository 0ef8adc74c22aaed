// The list of all actions, through the library's own door.
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/actions.h>
#include <zelutil/host/save.h>

#include <gtest/gtest.h>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::ActionInfo;
using host::ShortcutSource;

UCPActionManager& manager() { return UCPActionManager::instance(); }

void load() {
    manager().load(R"({"actions":[
        {"id":1,"name":"Save","context":"board","command":"save","shortcut":"F1","rmb":true},
        {"id":2,"context":"panel","command":"save","shortcut":"F8","parent_id":1},
        {"id":3,"context":"board","command":"open","shortcut":"F1"},
        {"id":4,"context":"board","command":"lone","parent_id":70}]})",
                   R"([{"actions":[{"id":1,"rmb":false}]}])");
}

TEST(ActionInfos, ListsAllActionsAscending) {
    load();
    std::vector<int> ids;
    for (const ActionInfo& info : host::actions()) {
        ids.push_back(info.id);
        EXPECT_EQ(host::action(info.id)->shippedShortcut, info.shippedShortcut);
    }
    EXPECT_EQ(ids, (std::vector<int>{1, 2, 3, 4, 70}));
}

TEST(ActionInfos, TellsWhatIsInForceAndWhatIsShipped) {
    load();
    const ActionInfo shipped = *host::action(1);
    EXPECT_EQ(shipped.shortcut, "F1");
    EXPECT_EQ(shipped.shippedShortcut, "F1");
    EXPECT_EQ(shipped.source, ShortcutSource::Shipped);
    EXPECT_FALSE(shipped.inMenu);
    EXPECT_TRUE(shipped.shippedInMenu);
    EXPECT_TRUE(shipped.runs);
    EXPECT_EQ(shipped.heldBy, 0);
    EXPECT_EQ(shipped.item.name, "Save");
    manager().updateShortcut(1, "F5");
    EXPECT_EQ(host::action(1)->source, ShortcutSource::User);
    EXPECT_EQ(host::action(1)->shippedShortcut, "F1");
}

TEST(ActionInfos, TellsWhatAChildIsShippedWithThoughItFollowsItsParent) {
    load();
    const ActionInfo child = *host::action(2);
    EXPECT_EQ(child.shortcut, "F1");
    EXPECT_EQ(child.shippedShortcut, "F8");
    EXPECT_EQ(child.source, ShortcutSource::Parent);
}

TEST(ActionInfos, TellsOfAChildThatIsEditedAloneThatTheUserGaveIt) {
    load();
    ASSERT_TRUE(manager().updateShortcut(2, "F7"));
    for (const ActionInfo& child : {*host::action(2), host::actions()[1]}) {
        EXPECT_EQ(child.source, ShortcutSource::User);
        EXPECT_EQ(child.shortcut, "F7");
        EXPECT_EQ(child.shippedShortcut, "F8");
    }
    // With its parent's it follows again.
    ASSERT_TRUE(manager().updateShortcut(2, "F1"));
    EXPECT_EQ(host::action(2)->source, ShortcutSource::Parent);
    EXPECT_EQ(host::action(4)->source, ShortcutSource::Parent);
}

TEST(ActionInfos, TellsOfAChildThatCouldNotFollowThatItsParentDecides) {
    manager().load(R"({"actions":[
        {"id":1,"context":"board","command":"one","shortcut":"F1"},
        {"id":2,"context":"panel","command":"two","parent_id":1},
        {"id":3,"context":"panel","command":"three","parent_id":1}]})",
                   "");
    // The first child has its parent's shortcut in their context, so that the second cannot follow.
    ASSERT_TRUE(manager().updateShortcut(1, "F2"));
    ASSERT_EQ(host::action(3)->shortcut, "F1");
    EXPECT_EQ(host::action(2)->source, ShortcutSource::Parent);
    EXPECT_EQ(host::action(3)->source, ShortcutSource::Parent);
}

TEST(ActionInfos, TellsOfAGrandchildWhoseParentIsNotBoundThatTheUserDidNothing) {
    manager().load(R"({"actions":[
        {"id":1,"context":"sheet","command":"one","parent_id":5},
        {"id":5,"context":"panel","command":"five","parent_id":10},
        {"id":10,"context":"board","command":"ten","shortcut":"F1"},
        {"id":20,"context":"panel","command":"twenty","shortcut":"F1"}]})",
                   "");
    ASSERT_NE(host::action(1)->shortcut, host::action(5)->shortcut);
    EXPECT_EQ(host::action(1)->source, ShortcutSource::Parent);
}

TEST(ActionInfos, TellsWhoHoldsTheShortcutInstead) {
    load();
    const ActionInfo second = *host::action(3);
    EXPECT_EQ(second.shortcut, "F1");
    EXPECT_FALSE(second.runs);
    EXPECT_EQ(second.heldBy, 1);
    manager().updateShortcut(3, "");
    EXPECT_FALSE(host::action(3)->runs);
    EXPECT_EQ(host::action(3)->heldBy, 0);
}

TEST(ActionInfos, KnowsAnActionThatStandsInForAParent) {
    load();
    EXPECT_EQ(host::action(70)->source, ShortcutSource::StandIn);
    EXPECT_EQ(host::action(70)->item.id, 0);
}

TEST(ActionInfos, KnowsNoOtherIds) {
    load();
    EXPECT_FALSE(host::action(0));
    EXPECT_FALSE(host::action(5));
    EXPECT_FALSE(host::action(-1));
}

TEST(ActionInfos, GivesTheTextThatBringsTheManagersActionsBack) {
    load();
    ASSERT_TRUE(manager().updateShortcut(3, "F2"));
    ASSERT_TRUE(manager().updateShortcut(1, "F6"));
    const host::RestorableText text = host::restorableActionsText(manager());
    EXPECT_EQ(text.text, R"([{"actions":[{"id":1,"shortcut":"F6","rmb":false},{"id":3,"shortcut":"F2"}]}])");
    EXPECT_TRUE(text.notRestored.empty());
}

// --- The first use --------------------------------------------------------------------------------------------------

constexpr char kDefaults[] = R"({"meta":[{"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"",
    "defaultsettings":{"actions":[{"id":7,"context":"board","command":"zoom","shortcut":"F7"}]}}]})";

TEST(ActionInfos, TheListMakesTheFirstUseOfThePreferences) {
    const PreferenceWorld world;
    world.writeDefaults(kDefaults);
    const std::vector<ActionInfo> infos = host::actions();
    ASSERT_EQ(infos.size(), 1U);
    EXPECT_EQ(infos[0].shippedShortcut, "F7");
}

TEST(ActionInfos, OneActionMakesTheFirstUseOfThePreferences) {
    const PreferenceWorld world;
    world.writeDefaults(kDefaults);
    EXPECT_FALSE(host::action(8));
    ASSERT_TRUE(host::action(7));
    EXPECT_EQ(host::action(7)->shortcut, "F7");
}

TEST(ActionInfos, WhatAHostHasLoadedIsNotReplaced) {
    const PreferenceWorld world;
    world.writeDefaults(kDefaults);
    load();
    EXPECT_TRUE(host::action(1));
    EXPECT_EQ(host::actions().size(), 5U);
}

}  // namespace
}  // namespace zelutil::test
