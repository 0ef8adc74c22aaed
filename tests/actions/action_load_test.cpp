#include <zelutil/actions/action_manager.h>

#include <gtest/gtest.h>

namespace {

TEST(ActionLoad, LaterOfTwoDefinitionsWithOneIdIsNotIndexed) {
    UCPActionManager& manager = UCPActionManager::instance();
    manager.load(R"({"actions":[
        {"id":5,"context":"ucpedit","command":"open","shortcut":"Ctrl+O"},
        {"id":5,"context":"ucpedit","command":"close","shortcut":"Ctrl+W"}]})",
                 "");
    EXPECT_EQ(1U, manager.getAllActions().size());
    EXPECT_EQ("open", manager.getAction(5).second.command);
    EXPECT_EQ(5, manager.getActionIdByCommand("ucpedit", "open"));
    EXPECT_EQ(0, manager.getActionIdByCommand("ucpedit", "close"));
    EXPECT_EQ(5, manager.getActionIdByShortcut("ucpedit", "Ctrl+O"));
    EXPECT_EQ(0, manager.getActionIdByShortcut("ucpedit", "Ctrl+W"));
    EXPECT_EQ("open", manager.getCommand("brisk3d", "Ctrl+O", true));
    EXPECT_EQ("", manager.getCommand("brisk3d", "Ctrl+O", false));
    EXPECT_EQ("Ctrl+O", manager.getShortcut(5));
    EXPECT_FALSE(manager.isModified());
}

}  // namespace
