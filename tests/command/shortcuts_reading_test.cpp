// The subcommands that show shortcuts: shortcuts, who, conflicts, free.
#include <gtest/gtest.h>

#include <optional>

#include "command/shortcuts/free_keys.h"
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
    expectPrinted(
        world.run({"shortcuts", "--changed"}),
        "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
        "brisk3d  11  zoom fit  F1                 yes   taken over from action 1, which the user changed\n"
        "ucpedit  1   zoom fit  F1        Home     yes   given by the user\n"
        "ucpedit  3   rotate              R              taken away by the user\n"
        "ucpedit  4   lock                         yes   shipped without a shortcut; put into the menu by the "
        "user\n");
    expectPrinted(world.run({"shortcuts", "--changed", "--context", "brisk3d"}),
                  "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
                  "brisk3d  11  zoom fit  F1                 yes   taken over from action 1, which the user changed\n");
}

/// Action 11 has the shortcut and the menu flag of 1.
TEST(Shortcuts, AChangedMenuFlagIsNamedAlsoWhereAChildFollows) {
    const ShortcutsWorld world;
    world.writeUserActions(R"({"id":1,"rmb":false})");
    expectPrinted(
        world.run({"shortcuts", "--changed"}),
        "CONTEXT  ID  COMMAND   SHORTCUT  SHIPPED  MENU  WHY\n"
        "brisk3d  11  zoom fit  Home                     taken over from action 1; follows it out of the menu\n"
        "ucpedit  1   zoom fit  Home      Home           shipped; taken out of the menu by the user\n");
}

TEST(Shortcuts, WritesJson) {
    const ShortcutsWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"})");
    EXPECT_EQ(world.json({"shortcuts", "--changed", "--context", "ucpedit"}),
              R"({"zelutil":{"format":1,"command":"shortcuts"},"shortcuts":[{"id":1,"context":"ucpedit",)"
              R"("command":"zoom fit","name":"Fit","shortcut":"F1","shippedShortcut":"Home","changedByUser":true,)"
              R"("source":"user","parent":0,"inMenu":true,"shippedInMenu":true,"menuChangedByUser":false,)"
              R"("runs":true,"runsChangedByUser":false,"heldBy":0,"why":"given by the user"}],"findings":[]})");
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
    expectRefused(
        world.run({"shortcuts"}), 1,
        "warning: The shipped defaults have no actions.\n"
        "    See whether they are those of the product that is meant: \"zelutil doctor\" says where they are.\n");
}

TEST(Shortcuts, WithoutDefaultsNoneCanBeShown) {
    const ShortcutsWorld world("{");
    for (const char* const subcommand : {"shortcuts", "conflicts", "roundtrip", "sheet"}) {
        const ChildResult result = world.run({subcommand});
        EXPECT_EQ(result.exitCode, 3) << subcommand;
        EXPECT_EQ(result.out, "") << subcommand;
        EXPECT_EQ(result.err.find("zelutil: error: No action is known, because the shipped defaults "), 0U)
            << subcommand << result.err;
    }
}

TEST(Who, SaysWhatRunsThereByTheFallbackOrNot) {
    const ShortcutsWorld world;
    const ChildResult result = world.run({"who", "M", "Home", "o", "--context", "brisk3d"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "SHORTCUT  ID  COMMAND   WHY\n"
              "M         2   move      no action of brisk3d holds it; ucpedit is the fallback; shipped\n"
              "Home      11  zoom fit  taken over from action 1; action 1 holds it in the linked context\n"
              "o         -             no action of brisk3d holds it\n");
    EXPECT_EQ(result.err, "note: \"o\" is another shortcut than \"O\".\n    Shortcuts are compared byte by byte.\n");
}

TEST(Who, FindsTheKeyThatStandsBeforeItsModifiers) {
    const ShortcutsWorld world(R"({"actions":[{"id":1,"context":"c","command":"save","shortcut":"Ctrl+Shift+S"}]})");
    for (const char* const asked : {"S+Ctrl+Shift", "Ctrl+S+Shift"}) {
        EXPECT_EQ(world.run({"who", asked, "--context", "c"}).err, "note: \"" + std::string(asked) +
                                                                       "\" is another shortcut than \"Ctrl+Shift+S\".\n"
                                                                       "    Shortcuts are compared byte by byte.\n");
    }
}

TEST(Who, FindsTheSpellingOfTheFallback) {
    const ShortcutsWorld world;
    EXPECT_EQ(world.run({"who", "r", "--context", "panel"}).err,
              "note: \"r\" is another shortcut than \"R\".\n    Shortcuts are compared byte by byte.\n");
}

TEST(Who, AnEmptyTextIsNoShortcut) {
    const ShortcutsWorld world;
    expectRefused(world.run({"who", "M", "", "--context", "ucpedit"}), 2,
                  "zelutil: error: \"\" is no shortcut.\n    \"zelutil who --help\" says how it is called.\n");
}

TEST(Who, NamesThoseWhoShowAShortcutAndDoNotRun) {
    const ShortcutsWorld world;
    expectPrinted(world.run({"who", "M", "--context", "panel"}),
                  "SHORTCUT  ID  COMMAND  WHY\n"
                  "M         22  mark     shipped; action 21 shows it and does not run\n");
    expectPrinted(world.run({"who", "O", "--context", "ucpedit"}),
                  "SHORTCUT  ID  COMMAND  WHY\n"
                  "O         -            no action of ucpedit holds it; action 12 holds it in the linked context\n");
}

TEST(Who, WritesJson) {
    const ShortcutsWorld world;
    EXPECT_EQ(world.json({"who", "M", "--context", "panel"}),
              R"({"zelutil":{"format":1,"command":"who"},"answers":[{"shortcut":"M","context":"panel",)"
              R"("command":"mark","action":22,"commandWithFallback":"mark","actionWithFallback":22,)"
              R"("linkedHolder":0,"shownBy":[21],"otherSpellings":[],)"
              R"("why":"shipped; action 21 shows it and does not run"}],"findings":[]})");
}

TEST(Who, TheContextMustBeNamedAndKnown) {
    const ShortcutsWorld world;
    EXPECT_EQ(world.run({"who", "M"}).exitCode, 2);
    expectRefused(world.run({"who", "M", "--context", "pannel"}), 1,
                  "error: There is no context \"pannel\".\n    Did you mean panel?\n");
}

constexpr char kAdvice[] = "    \"zelutil free\" lists shortcuts that are free, and \"zelutil plan\" gives them.\n";

void expectConflicts(const ChildResult& result, const std::string& out) {
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, out + kAdvice);
    EXPECT_EQ(result.err, "");
}

TEST(Conflicts, OneByInheritanceIsFound) {
    const ShortcutsWorld world;
    expectConflicts(world.run({"conflicts"}),
                    "SHORTCUT  CONTEXT  ID  COMMAND  CONFLICT\n"
                    "M         panel    21  move     runs 22 instead, taken over from action 2\n"
                    "warning: There is 1 conflict.\n");
}

/// Three actions of one context share F1, and two of linked contexts F2.
constexpr char kCrowded[] = R"({"actions":[
{"id":1,"context":"c","command":"one","shortcut":"F1"},{"id":2,"context":"c","command":"two","shortcut":"F1"},
{"id":5,"context":"c","command":"five","shortcut":"F1"},{"id":3,"context":"ucpedit","command":"x","shortcut":"F2"},
{"id":4,"context":"brisk3d","command":"y","shortcut":"F2"}]})";

TEST(Conflicts, AllAreFoundAndAPairOnce) {
    const ShortcutsWorld world(kCrowded);
    expectConflicts(world.run({"conflicts"}),
                    "SHORTCUT  CONTEXT  ID  COMMAND  CONFLICT\n"
                    "F2        brisk3d  4   y        also 3 in ucpedit, which is linked\n"
                    "F1        c        2   two      runs 1 instead\n"
                    "F1        c        5   five     runs 1 instead\n"
                    "warning: There are 3 conflicts.\n");
    expectConflicts(world.run({"conflicts", "--context", "ucpedit"}),
                    "SHORTCUT  CONTEXT  ID  COMMAND  CONFLICT\n"
                    "F2        brisk3d  4   y        also 3 in ucpedit, which is linked\n"
                    "warning: There is 1 conflict.\n");
}

/// The shortcut leaves with the action that was bound to it, whoever else shows it.
TEST(Conflicts, AShortcutThatIsShownAndHeldByNobodyIsFound) {
    const ShortcutsWorld world(kCrowded);
    world.writeUserActions(R"({"id":1,"shortcut":"F9"})");
    EXPECT_EQ(world.json({"conflicts", "--context", "c"}),
              R"({"zelutil":{"format":1,"command":"conflicts"},"conflicts":[)"
              R"({"kind":"heldByNobody","shortcut":"F1","action":2,"context":"c","inheritedFrom":0,"other":0,)"
              R"("otherContext":"","otherInheritedFrom":0},)"
              R"({"kind":"heldByNobody","shortcut":"F1","action":5,"context":"c","inheritedFrom":0,"other":0,)"
              R"("otherContext":"","otherInheritedFrom":0}],"findings":[{"severity":"warning",)"
              R"("text":"There are 2 conflicts.","advice":)"
              R"("\"zelutil free\" lists shortcuts that are free, and \"zelutil plan\" gives them."}]})");
}

TEST(Conflicts, AnEntryOfTheUserThatWasRefusedIsFound) {
    const ShortcutsWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},)"
                               R"({"id":2,"context":"c","command":"b"}]})");
    expectPrinted(world.run({"conflicts"}), "No two actions are in each other's way now.\n");
    world.writeUserActions(R"({"id":2,"shortcut":"F1"})");
    const ChildResult result = world.run({"conflicts"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "No two actions are in each other's way now.\n"
              "warning: Action 2 did not get the shortcut \"F1\": action 1 has it.\n"
              "    \"zelutil roundtrip\" says more.\n");
}

/// The holder of the shortcut lies in the context that is asked for, and the action that did not get it in the other.
TEST(Conflicts, AnEntryThatWasRefusedBecauseOfThatContextIsFound) {
    const ShortcutsWorld world;
    world.writeUserActions(R"({"id":12,"shortcut":"R"})");
    const ChildResult result = world.run({"conflicts", "--context", "ucpedit"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "No two actions are in each other's way now.\n"
              "warning: Action 12 did not get the shortcut \"R\": action 3 has it.\n"
              "    \"zelutil roundtrip\" says more.\n");
    EXPECT_EQ(world.run({"conflicts", "--context", "panel"}).out.find("Action 12"), std::string::npos);
}

/// Each of two children shows what the other one holds: neither can follow its parent.
TEST(Conflicts, APairMayHaveTwo) {
    const ShortcutsWorld world(R"({"actions":[
        {"id":1,"parent_id":5,"context":"c","command":"one","shortcut":"F1"},
        {"id":2,"parent_id":6,"context":"c","command":"two","shortcut":"F2"},
        {"id":5,"context":"x","command":"five","shortcut":"F2"},
        {"id":6,"context":"y","command":"six","shortcut":"F1"}]})");
    expectConflicts(world.run({"conflicts"}),
                    "SHORTCUT  CONTEXT  ID  COMMAND  CONFLICT\n"
                    "F2        c        1   one      runs 2 instead, taken over from action 5\n"
                    "F1        c        2   two      runs 1 instead, taken over from action 6\n"
                    "warning: There are 2 conflicts.\n");
}

/// Nobody holds F1 any more, and two actions show it.
TEST(Free, AKeyThatIsShownIsNotFree) {
    const ShortcutsWorld world(kCrowded);
    world.writeUserActions(R"({"id":1,"shortcut":"F9"})");
    const std::string out = world.run({"free", "--context", "c", "--modifiers", "none"}).out;
    EXPECT_EQ(world.run({"free", "--context", "c", "--modifiers", ""}).out, out);
    EXPECT_NE(out.find(" 8 9 F3 F4 F5 F6 F7 F8 F10 F11 F12 "), std::string::npos) << out;
}

TEST(Free, ListsWhatNobodyHoldsThereOrInTheLinkedContext) {
    const ShortcutsWorld world;
    expectPrinted(world.run({"free", "--context", "panel", "--modifiers", ""}),
                  "MODIFIERS  RUN NOW      FREE KEYS\n"
                  "none       nothing      A B C D E F G H I J K L N O P Q S T U V W X Y Z 0 1 2 3 4 5 6 7 8 9 "
                  "F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 Ins Del End PgUp PgDown Up Down Left Right Space Tab "
                  "Return Backspace Esc + -\n"
                  "none       by fallback  R Home\n");
    expectPrinted(world.run({"free", "--context", "brisk3d", "--modifiers", ""}),
                  "MODIFIERS  RUN NOW  FREE KEYS\n"
                  "none       nothing  A B C D E F G H I J K L N P Q S T U V W X Y Z 0 1 2 3 4 5 6 7 8 9 "
                  "F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12 Ins Del End PgUp PgDown Up Down Left Right Space Tab "
                  "Return Backspace Esc + -\n");
}

TEST(Free, AKeyThatIsSpelledOtherwiseIsNotFree) {
    const ShortcutsWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"shift + ctrl+ a"}]})");
    const std::string out = world.run({"free", "--context", "c", "--modifiers", "Ctrl+Shift"}).out;
    EXPECT_NE(out.find("Ctrl+Shift  nothing  B C"), std::string::npos) << out;
}

TEST(Free, ModifiersAreUnderstoodInAnyOrderAndCase) {
    using zelutil::shortcuts::modifierSetNamed;
    for (const char* const same : {"Alt+Shift", "Shift+Alt", "alt+SHIFT", "shift + alt", "Option+Shift"}) {
        EXPECT_EQ(modifierSetNamed(same), "Alt+Shift") << same;
    }
    EXPECT_EQ(modifierSetNamed("Control"), "Ctrl");
    EXPECT_EQ(modifierSetNamed("shift+alt+ctrl"), "Ctrl+Alt+Shift");
    EXPECT_EQ(modifierSetNamed(""), "");
    for (const char* const wrong : {"Alt+Alt", "Alt+", "+", "A", "Meta", "Ctrl+A", " "}) {
        EXPECT_EQ(modifierSetNamed(wrong), std::nullopt) << wrong;
    }
    const ShortcutsWorld world;
    const std::string out = world.run({"free", "--context", "panel", "--modifiers", "shift+alt"}).out;
    EXPECT_NE(out.find("\nAlt+Shift  nothing  A B C"), std::string::npos) << out;
}

TEST(Free, UnknownModifiersAreAWrongCall) {
    const ShortcutsWorld world;
    expectRefused(world.run({"free", "--context", "panel", "--modifiers", "Hyper"}), 2,
                  "zelutil: error: \"Hyper\" is none of the modifiers, as \"Ctrl\", \"Ctrl+Shift\" and \"none\" are.\n"
                  "    \"zelutil free --help\" says how it is called.\n");
}

}  // namespace
