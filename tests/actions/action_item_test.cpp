#include <zelutil/actions/action_item.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

TEST(ActionItem, IsEmptyByDefault) {
    const UCPActionItem item;
    EXPECT_EQ(0, item.id);
    EXPECT_EQ(0, item.parent_id);
    for (const std::string* text : {&item.name, &item.icon, &item.context, &item.command, &item.shortcut.defaultValue,
                                    &item.shortcut.userValue, &item.shortcut.resetValue}) {
        EXPECT_EQ("", *text);
    }
    EXPECT_FALSE(item.rmb.defaultValue);
    EXPECT_FALSE(item.rmb.userValue);
    EXPECT_FALSE(item.rmb.resetValue);
    EXPECT_FALSE(item.rmb.overwritten);
    EXPECT_FALSE(item.shortcut.overwritten);
}

TEST(ActionItem, MadeFromValuesHasThemAsDefaults) {
    const UCPActionItem item(7, 3, "Save", "save.svg", "ucpedit", "design save", "Ctrl+S", true);
    EXPECT_EQ(7, item.id);
    EXPECT_EQ(3, item.parent_id);
    EXPECT_EQ("Save", item.name);
    EXPECT_EQ("save.svg", item.icon);
    EXPECT_EQ("ucpedit", item.context);
    EXPECT_EQ("design save", item.command);
    EXPECT_EQ("Ctrl+S", item.shortcut.defaultValue);
    EXPECT_EQ("", item.shortcut.userValue);
    EXPECT_EQ("", item.shortcut.resetValue);
    EXPECT_FALSE(item.shortcut.overwritten);
    EXPECT_TRUE(item.rmb.defaultValue);
    EXPECT_FALSE(item.rmb.userValue);
    EXPECT_FALSE(item.rmb.resetValue);
    EXPECT_FALSE(item.rmb.overwritten);
}

TEST(ActionItem, HasOverwriteWhenOnePropertyIsOverwritten) {
    struct Row {
        bool shortcut;
        bool rmb;
        bool overwrite;
    };
    constexpr Row kRows[] = {{false, false, false}, {true, false, true}, {false, true, true}, {true, true, true}};
    for (const Row& row : kRows) {
        UCPActionItem item;
        item.shortcut.overwritten = row.shortcut;
        item.rmb.overwritten = row.rmb;
        EXPECT_EQ(row.overwrite, item.hasOverwrite()) << row.shortcut << " " << row.rmb;
    }
}

TEST(ActionItem, ValueWithoutTheOverwrittenFlagIsNoOverwrite) {
    UCPActionItem item;
    item.shortcut.userValue = "F1";
    item.rmb.userValue = true;
    EXPECT_FALSE(item.hasOverwrite());
}

TEST(ActionItem, CopiesAreIndependent) {
    UCPActionItem first(1, 0, "Open", "", "board", "open", "F1", false);
    const UCPActionItem second = first;
    first.name = "Close";
    first.shortcut.userValue = "F2";
    EXPECT_EQ("Open", second.name);
    EXPECT_EQ("", second.shortcut.userValue);
    first = second;
    EXPECT_EQ("Open", first.name);
}

TEST(ActionItem, MovesCarryTheTexts) {
    static_assert(std::is_nothrow_move_constructible_v<UCPActionItem>);
    UCPActionItem first(1, 0, "A name that is longer than any small buffer", "", "board", "open", "F1", true);
    UCPActionItem second = std::move(first);
    EXPECT_EQ("A name that is longer than any small buffer", second.name);
    UCPActionItem third;
    third = std::move(second);
    EXPECT_EQ("A name that is longer than any small buffer", third.name);
    EXPECT_EQ("F1", third.shortcut.defaultValue);
    EXPECT_TRUE(third.rmb.defaultValue);
}

}  // namespace
