#include <gtest/gtest.h>

#include "actions/action_fixture.h"

namespace zelutil::test {
namespace {

TEST(ActionQuery, UnknownIdsAndKeysAnswerNothing) {
    load({action(1, "board", "open", "F1")});
    for (const int id : {0, -1, 2, 2147483647}) {
        const auto [found, item] = manager().getAction(id);
        EXPECT_FALSE(found) << id;
        EXPECT_EQ(0, item.id) << id;
        EXPECT_EQ("", item.command) << id;
        EXPECT_EQ("", manager().getShortcut(id)) << id;
        EXPECT_TRUE(manager().getChildActionIds(id).empty()) << id;
        EXPECT_EQ(0, manager().isShortcutTaken(id, "F1")) << id;
    }
    EXPECT_EQ(0, manager().getActionIdByCommand("board", "shut"));
    EXPECT_EQ(0, manager().getActionIdByCommand("panel", "open"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F2"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("panel", "F1"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", ""));
    EXPECT_EQ(1U, manager().getAllActions().size());
}

TEST(ActionQuery, CommandIsFoundInTheContextOrByFallback) {
    load({action(1, "ucpedit", "edit open", "F1"), action(2, "ucpedit", "edit close", "F2"),
          action(3, "board", "board open", "F1"), action(4, "board", "board zoom", "F4"),
          action(5, "brisk3d", "turn", "F5")});
    struct Row {
        const char* context;
        const char* shortcut;
        bool fallback;
        const char* command;
    };
    constexpr Row kRows[] = {
        // The context's own.
        {"board", "F1", false, "board open"},
        {"board", "F1", true, "board open"},
        {"ucpedit", "F1", false, "edit open"},
        // Held in the fallback context only.
        {"board", "F2", false, ""},
        {"board", "F2", true, "edit close"},
        {"brisk3d", "F2", false, ""},
        {"brisk3d", "F2", true, "edit close"},
        // A context that nobody has.
        {"sheet", "F1", false, ""},
        {"sheet", "F1", true, "edit open"},
        {"", "F1", true, "edit open"},
        // There is no way back from the fallback context.
        {"ucpedit", "F4", true, ""},
        {"ucpedit", "F5", true, ""},
        // Held nowhere.
        {"board", "F9", true, ""},
        {"board", "", true, ""},
        {"ucpedit", "", false, ""},
        // Every byte counts.
        {"board", "f1", true, ""},
        {"Board", "F1", false, ""},
        {"board", "F1 ", true, ""},
        {"board", "F", true, ""},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(row.command, manager().getCommand(row.context, row.shortcut, row.fallback))
            << row.context << " " << row.shortcut << " " << row.fallback;
    }
}

TEST(ActionQuery, ShortcutsThatDifferInCaseAreTwo) {
    load({action(1, "board", "save", "Ctrl+S"), action(2, "board", "skip", "ctrl+s")});
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", "Ctrl+S"));
    EXPECT_EQ(2, manager().getActionIdByShortcut("board", "ctrl+s"));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "CTRL+S"));
    EXPECT_EQ(0, manager().isShortcutTaken(1, "CTRL+S"));
    EXPECT_EQ(2, manager().isShortcutTaken(1, "ctrl+s"));
}

TEST(ActionQuery, ZerosInsideATextCount) {
    load({R"({"id":1,"context":"board","command":"open","shortcut":"F\u00001"})"});
    EXPECT_EQ(1, manager().getActionIdByShortcut("board", std::string("F\0001", 3)));
    EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F"));
    EXPECT_EQ(3U, manager().getShortcut(1).size());
}

TEST(ActionQuery, ListsAreInAscendingId) {
    load({R"({"id":30,"context":"a","command":"x","rmb":true})", R"({"id":4,"context":"a","command":"y"})",
          R"({"id":7,"context":"b","command":"x","rmb":true})"});
    const std::vector<UCPActionItem> all = manager().getAllActions();
    ASSERT_EQ(3U, all.size());
    EXPECT_EQ(4, all[0].id);
    EXPECT_EQ(7, all[1].id);
    EXPECT_EQ(30, all[2].id);
    const std::vector<UCPActionItem> menu = manager().getRMBMenuItems();
    ASSERT_EQ(2U, menu.size());
    EXPECT_EQ(7, menu[0].id);
    EXPECT_EQ(30, menu[1].id);
}

TEST(ActionQuery, MenuItemsAreThoseWhoseFlagIsInForce) {
    load({R"({"id":1,"context":"a","command":"x","rmb":true})", R"({"id":2,"context":"a","command":"y"})"},
         R"({"id":1,"rmb":false},{"id":2,"rmb":true})");
    const std::vector<UCPActionItem> menu = manager().getRMBMenuItems();
    ASSERT_EQ(1U, menu.size());
    EXPECT_EQ(2, menu[0].id);
}

TEST(ActionQuery, AnswersAreCopies) {
    load({action(1, "board", "open", "F1"), child(2, 1, "panel", "shut")});
    std::vector<UCPActionItem> all = manager().getAllActions();
    all[0].command = "changed";
    all[0].shortcut.userValue = "F9";
    all[0].shortcut.overwritten = true;
    std::vector<int> children = manager().getChildActionIds(1);
    children.clear();
    EXPECT_EQ("open", manager().getAction(1).second.command);
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ(1U, manager().getChildActionIds(1).size());
}

}  // namespace
}  // namespace zelutil::test
