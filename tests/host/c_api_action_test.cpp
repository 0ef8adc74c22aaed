#include <string>
#include <tuple>
#include <vector>

#include "host/c_api_fixture.h"

namespace zelutil::test {
namespace {

using CApiActions = CApi;

std::string shortcutOf(int id) {
    return handedOut<const zelutil_action_list>([&](auto** out) { return zelutil_find_action(id, out); })
        ->items[0]
        ->shortcut;
}

TEST_F(CApiActions, AllAreThereWithoutAnEarlierUseOfThePreferences) {
    const auto list = handedOut<const zelutil_action_list>([](auto** out) { return zelutil_get_actions(out); });
    ASSERT_EQ(list->count, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(list->items[i]->id, i + 1);
    }
}

TEST_F(CApiActions, OneIsFoundWithAllThatIsKnownOfIt) {
    const auto list = handedOut<const zelutil_action_list>([](auto** out) { return zelutil_find_action(1, out); });
    ASSERT_EQ(list->count, 1);
    const zelutil_action& save = *list->items[0];
    EXPECT_EQ(save.id, 1);
    EXPECT_EQ(save.parentId, 0);
    EXPECT_STREQ(save.name, "Save");
    EXPECT_STREQ(save.icon, "save.svg");
    EXPECT_STREQ(save.context, "ucpedit");
    EXPECT_STREQ(save.command, "file save");
    EXPECT_STREQ(save.shortcut, "Ctrl+S");
    EXPECT_STREQ(save.shippedShortcut, "Ctrl+S");
    EXPECT_FALSE(save.inMenu);
    EXPECT_FALSE(save.shippedInMenu);
    EXPECT_EQ(save.shortcutSource, ZELUTIL_SHORTCUT_SHIPPED);
    EXPECT_TRUE(save.runs);
    EXPECT_EQ(save.heldBy, 0);
}

TEST_F(CApiActions, AChildFollowsItsParentAndSaysSo) {
    EXPECT_EQ(zelutil_set_shortcut(1, "F2", nullptr), ZELUTIL_OK);
    const auto list = handedOut<const zelutil_action_list>([](auto** out) { return zelutil_find_action(3, out); });
    EXPECT_STREQ(list->items[0]->shortcut, "F2");
    EXPECT_EQ(list->items[0]->parentId, 1);
    EXPECT_EQ(list->items[0]->shortcutSource, ZELUTIL_SHORTCUT_OF_PARENT);
    EXPECT_STREQ(list->items[0]->name, "Save");
}

TEST_F(CApiActions, AnUnknownIdFindsNoneAndIsNotEdited) {
    int holder = 7;
    handedOut<const zelutil_action_list>(ZELUTIL_UNKNOWN, [](auto** out) { return zelutil_find_action(99, out); });
    EXPECT_EQ(zelutil_set_shortcut(99, "F2", &holder), ZELUTIL_UNKNOWN);
    EXPECT_EQ(holder, 0);
    EXPECT_EQ(zelutil_set_in_menu(99, true), ZELUTIL_UNKNOWN);
}

TEST_F(CApiActions, AShortcutThatAnotherHoldsIsRefusedAndTheHolderNamed) {
    int holder = 0;
    EXPECT_EQ(zelutil_set_shortcut(1, "Ctrl+O", &holder), ZELUTIL_REFUSED);
    EXPECT_EQ(holder, 2);
    EXPECT_EQ(shortcutOf(1), "Ctrl+S");
    EXPECT_EQ(zelutil_set_shortcut(1, "F2", &holder), ZELUTIL_OK);
    EXPECT_EQ(holder, 0);
    EXPECT_EQ(shortcutOf(1), "F2");
    EXPECT_EQ(zelutil_set_shortcut(1, "", &holder), ZELUTIL_OK);
    EXPECT_EQ(shortcutOf(1), "");
}

TEST_F(CApiActions, AMenuFlagIsInForceAtOnce) {
    EXPECT_EQ(zelutil_set_in_menu(1, true), ZELUTIL_OK);
    const auto list = handedOut<const zelutil_action_list>([](auto** out) { return zelutil_find_action(1, out); });
    EXPECT_TRUE(list->items[0]->inMenu);
    EXPECT_FALSE(list->items[0]->shippedInMenu);
}

TEST_F(CApiActions, AShortcutRunsACommandInItsContextOrByFallback) {
    const auto command = [](const char* context, const char* shortcut, bool fallback) {
        return textOf([&](auto** out) { return zelutil_get_command(context, shortcut, fallback, out); });
    };
    EXPECT_EQ(command("panel", "Ctrl+S", false), "panel save");
    EXPECT_EQ(command("panel", "Ctrl+O", false), "");
    EXPECT_EQ(command("panel", "Ctrl+O", true), "file open");
}

}  // namespace
}  // namespace zelutil::test
