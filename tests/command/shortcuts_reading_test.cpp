// The subcommands that show shortcuts: shortcuts.
#include <gtest/gtest.h>

#include "command/shortcuts_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::ShortcutsWorld;

void expectPrinted(const ChildResult& result, const std::string& out) {
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
}

void expectRefused(const ChildResult& result, int exitCode, const std::string& err) {
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, err);
}

TEST(Shortcuts, AreShownByContextWithWhereTheyComeFrom) {
    const ShortcutsWorld world;
    expectPrinted(world.run({"shortcuts"}),
                  "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
                  "brisk3d  11  zoom fit  Home               yes   taken over from action 1\n"
                  "brisk3d  12  orbit     O         O              shipped\n"
                  "panel    21  move      M                        taken over from action 2; runs action 22 instead\n"
                  "panel    22  mark      M         M              shipped\n"
                  "ucpedit  1   zoom fit  Home      Home     yes   shipped\n"
                  "ucpedit  2   move      M         M              shipped\n"
                  "ucpedit  3   rotate    R         R              shipped\n"
                  "ucpedit  4   lock                               shipped without a shortcut\n");
}

TEST(Shortcuts, TheUsersChangesAreNamedAlsoWhereAChildFollowsOne) {
    const ShortcutsWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":3,"shortcut":""},{"id":4,"rmb":true})");
    expectPrinted(world.run({"shortcuts", "--changed"}),
                  "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
                  "brisk3d  11  zoom fit  F1                 yes   taken over from action 1, which the user changed\n"
                  "ucpedit  1   zoom fit  F1        Home     yes   given by the user\n"
                  "ucpedit  3   rotate              R              taken away by the user\n"
                  "ucpedit  4   lock                         yes   shipped without a shortcut\n");
    expectPrinted(world.run({"shortcuts", "--changed", "--context", "brisk3d"}),
                  "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
                  "brisk3d  11  zoom fit  F1                 yes   taken over from action 1, which the user changed\n");
}

TEST(Shortcuts, WritesJson) {
    const ShortcutsWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"})");
    EXPECT_EQ(world.json({"shortcuts", "--changed", "--context", "ucpedit"}),
              R"({"zelutil":{"format":1,"command":"shortcuts"},"shortcuts":[{"id":1,"context":"ucpedit",)"
              R"("command":"zoom fit","name":"Fit","shortcut":"F1","shippedShortcut":"Home","changedByUser":true,)"
              R"("source":"user","parent":0,"inMenu":true,"shippedInMenu":true,"menuChangedByUser":false,)"
              R"("runs":true,"heldBy":0,"why":"given by the user"}],"findings":[]})");
}

TEST(Shortcuts, AnUnknownContextIsAFinding) {
    const ShortcutsWorld world;
    expectRefused(world.run({"shortcuts", "--context", "ucpedti"}), 1,
                  "error: There is no context \"ucpedti\".\n    Did you mean ucpedit?\n");
    expectRefused(world.run({"shortcuts", "--context", "xyz"}), 1,
                  "error: There is no context \"xyz\".\n    \"zelutil shortcuts\" shows all contexts.\n");
}

TEST(Shortcuts, AMissingParentIsShownAsAStandIn) {
    const ShortcutsWorld world(R"({"actions":[{"id":5,"parent_id":9,"context":"c","command":"x","shortcut":"F1"}]})");
    expectPrinted(world.run({"shortcuts"}),
                  "CONTEXT  ID  COMMAND  SHORTCUT  SHIPPED  MENU  WHY\n"
                  "         9                                     stands in for a parent that is missing\n"
                  "c        5   x                  F1             taken over from action 9\n");
}

TEST(Shortcuts, WithoutActionsThereIsNothingToShow) {
    const ShortcutsWorld world(R"({"actions":[]})");
    expectRefused(world.run({"shortcuts"}), 1,
                  "warning: The shipped defaults were not read, or have no actions.\n"
                  "    \"zelutil doctor\" says where they were looked for.\n");
}

}  // namespace
