// The subcommand reset with --shortcuts: what a new process finds afterwards, and what stands in the way.
#include <gtest/gtest.h>

#include <utility>

#include "actions/action_catalogue.h"
#include "actions/observer_registry.h"
#include "command/explain/setting_account.h"
#include "command/shortcuts/action_reset.h"
#include "command/shortcuts_world.h"
#include "host/action_state.h"
#include "json/writer.h"

namespace {

using zelutil::command::SettingAccounts;
using zelutil::shortcuts::planEntriesCut;
using zelutil::test::ChildResult;
using zelutil::test::defaultsWithActions;
using zelutil::test::inJson;
using zelutil::test::readTextFile;
using zelutil::test::ShortcutsWorld;
using zelutil::test::userWithActions;
using zelutil::test::writeTextFile;

class ResetWorld : public ShortcutsWorld {
public:
    using ShortcutsWorld::ShortcutsWorld;

    std::string userText() const { return readTextFile(userFile()); }
    std::string saved() const { return "Saved in " + userFile().u8string() + "\n"; }
    std::string unchanged() const { return "Nothing changed in " + userFile().u8string() + "\n"; }

    /// Returns all that a new process knows of the actions.
    std::string table() const { return json({"shortcuts"}); }
};

void expectReset(const ChildResult& result, const std::string& out, const std::string& err = "") {
    EXPECT_EQ(result.exitCode, err.empty() ? 0 : 1);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, err);
}

void expectNoReset(const ChildResult& result, int exitCode, const std::string& err) {
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, err);
}

TEST(ResetShortcuts, GivesActionsWhatIsShippedAndTakesTheirEntriesOut) {
    const ResetWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1","rmb":false},{"id":3,"shortcut":"F3"},{"id":4,"shortcut":"F4"})");
    expectReset(world.run({"reset", "--shortcuts", "1", "3"}),
                "11 brisk3d zoom fit: F1 -> Home, into the menu\n"
                "1 ucpedit zoom fit: F1 -> Home, into the menu\n"
                "3 ucpedit rotate: F3 -> R\n" +
                    world.saved());
    EXPECT_EQ(world.userText().find("F1"), std::string::npos) << world.userText();
    EXPECT_NE(world.userText().find("F4"), std::string::npos) << world.userText();
    const std::string text = world.userText();
    expectReset(world.run({"reset", "--shortcuts", "1", "3"}), world.unchanged());
    EXPECT_EQ(world.userText(), text);
    expectReset(world.run({"reset", "--shortcuts", "--all"}), "4 ucpedit lock: F4 -> none\n" + world.saved());
    EXPECT_EQ(world.run({"shortcuts", "--changed"}).out, "");
    EXPECT_EQ(world.json({"reset", "--shortcuts", "--all"}),
              R"({"zelutil":{"format":1,"command":"reset"},"changes":[],"settings":[],"save":{"status":"unchanged",)"
              R"("file":")" +
                  inJson(world.userFile()) + R"("},"findings":[]})");
}

/// Action 4 has R, which is shipped for 3.
TEST(ResetShortcuts, WhatAnotherActionHasIsNotGiven) {
    const ResetWorld world;
    world.writeUserActions(R"({"id":3,"shortcut":""},{"id":4,"shortcut":"R"})");
    const ChildResult result = world.run({"reset", "--shortcuts", "3"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err,
              "warning: Action 3 (ucpedit, rotate) does not get back the shortcut \"R\": action 4 (ucpedit, lock) has "
              "it.\n    \"zelutil reset --shortcuts 3 4\" resets both.\n");
    EXPECT_EQ(world.run({"who", "R", "--context", "ucpedit"}).out.find("R         4   lock"), 27U);
    EXPECT_EQ(world.run({"reset", "--shortcuts", "3", "4"}).exitCode, 0);
    EXPECT_EQ(world.run({"who", "R", "--context", "ucpedit"}).out.find("R         3   rotate"), 27U);
}

TEST(ResetShortcuts, DoesNothingWhereAnIdIsNone) {
    const ResetWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"})");
    const std::string text = world.userText();
    expectNoReset(world.run({"reset", "--shortcuts", "1", "99"}), 1,
                  "error: There is no action 99.\n    \"zelutil shortcuts\" shows all.\nnote: Nothing was done.\n");
    expectNoReset(world.run({"reset", "--shortcuts", "1", "11"}), 1,
                  "error: Action 11 (brisk3d, zoom fit) follows its parent and has nothing of its own to reset.\n"
                  "    Name its parent, action 1 (ucpedit, zoom fit).\nnote: Nothing was done.\n");
    constexpr char kHelp[] = "    \"zelutil reset --help\" says how it is called.\n";
    expectNoReset(world.run({"reset", "--shortcuts", "F1"}), 2,
                  std::string("zelutil: error: \"F1\" is no id of an action.\n") + kHelp);
    for (const auto& arguments : {std::vector<std::string>{"reset", "--shortcuts"},
                                  std::vector<std::string>{"reset", "--shortcuts", "--all", "1"}}) {
        expectNoReset(
            world.run(arguments), 2,
            std::string("zelutil: error: A reset of shortcuts takes either ids of actions or --all.\n") + kHelp);
    }
    EXPECT_EQ(world.userText(), text);
}

/// Settings beside the shortcuts would go with the file, if only into its copy.
TEST(ResetShortcuts, LeavesAFileThatIsNoJsonAlone) {
    const ResetWorld world;
    constexpr char kDamaged[] = R"({"meta":[{"header":"A",,}]})";
    writeTextFile(world.userFile(), kDamaged);
    for (const char* const which : {"--all", "1"}) {
        const ChildResult result = world.run({"reset", "--shortcuts", which});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("Nothing can be taken out of the user's file, because it is not read."),
                  std::string::npos)
            << result.err;
        EXPECT_EQ(world.userText(), kDamaged);
    }
}

/// Actions 1 and 2 of one context are shipped with F1, and so are 3 and 4 of linked contexts with M.
constexpr char kShippedTwice[] = R"({"actions":[
{"id":1,"context":"c","command":"a","shortcut":"F1"},
{"id":2,"context":"c","command":"b","shortcut":"F1","rmb":true},
{"id":3,"context":"ucpedit","command":"move","shortcut":"M"},
{"id":4,"context":"brisk3d","command":"bend","shortcut":"M"},
{"id":5,"context":"c","command":"e","shortcut":"F5"}
]})";

/// Each of them leaves F1 or M to somebody else than a fresh installation does.
const char* const kUsersOfF1AndM[] = {
    R"({"id":1,"shortcut":"F9"})",
    R"({"id":2,"shortcut":"F9"})",
    R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F9","rmb":false})",
    R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})",
    R"({"id":1,"shortcut":"F9"},{"id":5,"shortcut":"F1"})",
    R"({"id":3,"shortcut":"F9"})",
    R"({"id":4,"shortcut":"F9"})",
    R"({"id":3,"shortcut":"F8"},{"id":4,"shortcut":"F9"})",
    R"({"id":4,"rmb":true},{"shortcut":"F2"},{"id":3,"shortcut":"F7"})",
    R"({"id":5,"shortcut":"F1"},{"id":77,"shortcut":"F7"})",
};

/// Returns what a start with these texts finds.
zelutil::host::ActionState startWith(const SettingAccounts& accounts) {
    const zelutil::actions::ObserverRegistry nobody;
    zelutil::actions::ActionCatalogue catalogue(nobody);
    catalogue.load(accounts.shippedActions(), zelutil::json::compactText(accounts.userActions()).value_or(""));
    return zelutil::host::stateOf(catalogue);
}

TEST(ResetShortcuts, ACutOfAllGivesWhatAFreshInstallationHas) {
    const std::string defaults = defaultsWithActions(kShippedTwice);
    const auto fresh = startWith(SettingAccounts(defaults, ""));
    for (const char* const entries : kUsersOfF1AndM) {
        SCOPED_TRACE(entries);
        const auto cut = planEntriesCut(SettingAccounts(defaults, userWithActions(entries)), {1, 2, 3, 4, 5});
        EXPECT_TRUE(cut.isEnough);
        const SettingAccounts rest(defaults, cut.file.value());
        EXPECT_EQ(startWith(rest).values, fresh.values);
        EXPECT_EQ(startWith(rest).holders, fresh.holders);
        EXPECT_EQ(cut.userActions, zelutil::json::compactText(rest.userActions()));
        EXPECT_FALSE(planEntriesCut(rest, {1, 2, 3, 4, 5}).file);
    }
}

TEST(ResetShortcuts, OfAllGivesANewProcessWhatAFreshInstallationHas) {
    const ResetWorld world(kShippedTwice);
    const std::string fresh = world.table();
    world.writeUserActions(R"({"id":2,"shortcut":"F9"},{"id":4,"shortcut":"F8"},{"id":1,"rmb":true})");
    EXPECT_NE(world.table(), fresh);
    EXPECT_EQ(world.run({"reset", "--shortcuts", "--all"}).exitCode, 1);
    EXPECT_EQ(world.table(), fresh);
    expectReset(world.run({"reset", "--shortcuts", "--all"}), world.unchanged());
}

/// Each row is a user's list, and whether the cut of the entries of action 1 brings it back and leaves the others.
TEST(ResetShortcuts, ACutIsEnoughWhereNobodyElseHasWhatIsShipped) {
    const std::pair<const char*, bool> rows[] = {
        {R"({"id":1,"shortcut":"F9"})", true},
        {R"({"id":1,"shortcut":"F9"},{"id":5,"shortcut":"F8"})", true},
        {R"({"id":5,"shortcut":"F8"})", true},
        // Action 5 would lose F1, which it was given.
        {R"({"id":1,"shortcut":"F9"},{"id":5,"shortcut":"F1"})", false},
        // The user's changes of action 2 have taken F1 from action 1.
        {R"({"id":2,"shortcut":"F9"})", false},
        {R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})", false},
        // Action 5 would come to have F9, which was refused to it.
        {R"({"id":1,"shortcut":"F9"},{"id":5,"shortcut":"F9"})", false},
    };
    const std::string defaults = defaultsWithActions(kShippedTwice);
    for (const auto& [entries, isEnough] : rows) {
        EXPECT_EQ(planEntriesCut(SettingAccounts(defaults, userWithActions(entries)), {1}).isEnough, isEnough)
            << entries;
    }
}

TEST(ResetShortcuts, LeavesEveryOtherByteAlone) {
    const ResetWorld world;
    world.writeUserActions(
        "\t{\"id\": 1 ,\"shortcut\":\"F1\"},\r\n  {\"id\":77, \"x\": 1.50}, { \"id\":4,\"rmb\":true }\n");
    const std::string rest = userWithActions("\t{\"id\":77, \"x\": 1.50}, { \"id\":4,\"rmb\":true }\n");
    EXPECT_NE(world.run({"reset", "--shortcuts", "1"}).out.find(world.saved()), std::string::npos);
    EXPECT_EQ(world.userText(), rest);
    expectReset(world.run({"reset", "--shortcuts", "--all"}), "4 ucpedit lock: out of the menu\n" + world.saved());
    EXPECT_EQ(world.userText(), userWithActions("\t{\"id\":77, \"x\": 1.50}\n"));
}

/// Action 9 stands in for a parent that is missing, and has no id of its own.
TEST(ResetShortcuts, LeavesAnElementWithoutAnIdAlone) {
    const ResetWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},)"
                           R"({"id":5,"parent_id":9,"context":"c","command":"b"}]})");
    world.writeUserActions(R"({"id":1,"shortcut":"F9"},{"rmb":true})");
    EXPECT_EQ(world.run({"reset", "--shortcuts", "--all"}).out, "1 c a: F9 -> F1\n" + world.saved());
    EXPECT_EQ(world.userText(), userWithActions(R"({"rmb":true})"));
}

/// A fresh installation has F1 for action 1, and action 2 only shows it.
TEST(ResetShortcuts, NamesWhoDoesNotRunByItsShortcutAndWhoDoesAgain) {
    const ResetWorld world(kShippedTwice);
    world.writeUserActions(R"({"id":2,"shortcut":"F9"})");
    expectReset(world.run({"reset", "--shortcuts", "2"}), "2 c b: F9 -> F1\n" + world.saved(),
                "note: Action 1 (c, a) runs by \"F1\" again.\n"
                "warning: Action 2 (c, b) does not run by \"F1\": action 1 (c, a) has it, as it is shipped.\n"
                "    Give one of the two another shortcut; \"zelutil free\" lists some.\n");
    EXPECT_NE(world.run({"who", "F1", "--context", "c"}).out.find("F1        1   a"), std::string::npos);
}

/// The user has given F1 to action 2, which keeps it, as it is not reset.
TEST(ResetShortcuts, NamesWhoHasItWhereAnActionIsNotAsShipped) {
    const ResetWorld world(kShippedTwice);
    world.writeUserActions(R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})");
    const std::string text = world.userText();
    expectReset(world.run({"reset", "--shortcuts", "1"}), world.unchanged(),
                "warning: Action 1 (c, a) does not run by \"F1\": action 2 (c, b) has it.\n"
                "    Give one of the two another shortcut; \"zelutil free\" lists some.\n");
    EXPECT_EQ(world.userText(), text);
}

/// Action 2 is shipped with F1 too, and was given another one, which took F1 from action 1.
TEST(ResetShortcuts, GivesBackWhatAnotherActionsEntryHasTaken) {
    const ResetWorld world(kShippedTwice);
    world.writeUserActions(R"({"id":2,"shortcut":"F9"})");
    const ChildResult result = world.run({"reset", "--shortcuts", "1"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, world.saved());
    EXPECT_EQ(result.err, "note: Action 1 (c, a) runs by \"F1\" again.\n");
    EXPECT_EQ(world.run({"who", "F1", "F9", "--context", "c"}).out,
              "SHORTCUT  ID  COMMAND  WHY\n"
              "F1        1   a        shipped\n"
              "F9        2   b        given by the user\n");
}

/// The cut of an entry takes nothing from another action that has it by an entry of its own.
TEST(ResetShortcuts, TakesNothingFromAnActionThatIsNotReset) {
    const ResetWorld world;
    world.writeUserActions(R"({"id":3,"shortcut":"F3"},{"id":4,"shortcut":"R"},{"id":12,"shortcut":"F3"})");
    const ChildResult result = world.run({"reset", "--shortcuts", "3"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find(
                  "Action 3 (ucpedit, rotate) does not get back the shortcut \"R\": action 4 (ucpedit, lock) has it."),
              std::string::npos)
        << result.err;
    EXPECT_NE(world.run({"who", "R", "--context", "ucpedit"}).out.find("R         4   lock"), std::string::npos);
}

/// Expects a reset that nothing comes of: the file stays, byte for byte.
void expectKept(const ResetWorld& world, const char* id, const std::string& err) {
    const std::string text = world.userText();
    expectReset(world.run({"reset", "--shortcuts", id}), world.unchanged(), err);
    EXPECT_EQ(world.userText(), text);
}

/// The cut of the entry of action 2 would leave it with F1, by which 5 runs.
TEST(ResetShortcuts, CutsNoEntryByWhichAnActionRunsForAKeyThatAnotherHas) {
    const ResetWorld world(kShippedTwice);
    world.writeUserActions(R"({"id":1,"shortcut":"F9"},{"id":2,"shortcut":"F8"},{"id":5,"shortcut":"F1"})");
    expectKept(world, "2",
               "warning: Action 2 (c, b) does not get back the shortcut \"F1\": action 5 (c, e) has it.\n"
               "    \"zelutil reset --shortcuts 2 5\" resets both.\n");
    expectKept(world, "1",
               "warning: Action 1 (c, a) does not get back the shortcut \"F1\": action 5 (c, e) has it.\n"
               "    \"zelutil reset --shortcuts 1 5\" resets both.\n");
}

/// The cut of the entry of action 2 would leave it with F1, which nobody runs by: action 1 took it away by leaving.
TEST(ResetShortcuts, HasAnActionRunByWhatAnotherOneIsShippedWithFirst) {
    const ResetWorld world(kShippedTwice);
    world.writeUserActions(R"({"id":1,"shortcut":"F9"},{"id":2,"shortcut":"F8"})");
    expectReset(world.run({"reset", "--shortcuts", "2"}), "2 c b: F8 -> F1\n" + world.saved());
    EXPECT_EQ(world.run({"who", "F1", "F9", "--context", "c"}).out,
              "SHORTCUT  ID  COMMAND  WHY\n"
              "F1        2   b        shipped\n"
              "F9        1   a        given by the user\n");
}

/// The cut of the entry of action 1 would leave it without M, which action 2 takes away by leaving, and 3 of the linked
/// context keeps it from being given.
TEST(ResetShortcuts, TakesNothingFromAnActionThatCannotHaveItsShippedKey) {
    const ResetWorld world(R"({"actions":[{"id":1,"context":"ucpedit","command":"a","shortcut":"M"},)"
                           R"({"id":2,"context":"ucpedit","command":"b","shortcut":"M"},)"
                           R"({"id":3,"context":"brisk3d","command":"c","shortcut":"M"}]})");
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":2,"shortcut":"F2"})");
    expectKept(world, "1",
               "warning: Action 1 (ucpedit, a) does not get back the shortcut \"M\": action 3 (brisk3d, c) has it.\n"
               "    Give one of the two another shortcut; \"zelutil free\" lists some.\n");
    EXPECT_NE(world.run({"who", "F1", "--context", "ucpedit"}).out.find("F1        1   a"), std::string::npos);
}

/// Action 11 follows action 1.
TEST(ResetShortcuts, LeavesTheChildrenOfAnActionThatKeepsWhatItHas) {
    const ResetWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":4,"shortcut":"Home"})");
    expectKept(
        world, "1",
        "warning: Action 1 (ucpedit, zoom fit) does not get back the shortcut \"Home\": action 4 (ucpedit, lock) "
        "has it.\n    \"zelutil reset --shortcuts 1 4\" resets both.\n");
}

TEST(ResetShortcuts, NamesWhoDoesNotRunByItsShortcutWhereNothingIsToBeDone) {
    constexpr char kTwoWant[] = "    Give one of the two another shortcut; \"zelutil free\" lists some.\n";
    const ResetWorld world(kShippedTwice);
    world.writeUserActions("");
    expectKept(world, "2",
               std::string("warning: Action 2 (c, b) does not run by \"F1\": action 1 (c, a) has it, as it is "
                           "shipped.\n") +
                   kTwoWant);
    world.writeUserActions(R"({"id":1,"shortcut":"F9"},{"id":5,"shortcut":"F1"})");
    expectKept(world, "2",
               std::string("warning: Action 2 (c, b) does not run by \"F1\": action 5 (c, e) has it.\n") + kTwoWant);
}

/// Saves go into the current directory then, and the file that is read stays.
TEST(ResetShortcuts, WritesNothingForARegressionTest) {
    const ResetWorld world;
    const auto saved = world.home() / "tessel_settings.cfg";
    const zelutil::test::EnvironmentChanges redirected{{"regression_testing", "1"}};
    world.writeUserActions(R"({"id":3,"shortcut":"F3"})");
    const std::string text = world.userText();
    for (const char* const nothing : {"1", "4"}) {
        const ChildResult result = world.run({"reset", "--shortcuts", nothing}, redirected);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.out.find("Nothing changed in "), 0U) << result.out;
        EXPECT_FALSE(std::filesystem::exists(saved));
    }
    for (const char* const something : {"3", "--all"}) {
        const ChildResult result = world.run({"reset", "--shortcuts", something}, redirected);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_NE(result.err.find("the variable regression_testing sends saves elsewhere"), std::string::npos)
            << result.err;
        EXPECT_FALSE(std::filesystem::exists(saved));
    }
    EXPECT_EQ(world.userText(), text);
}

}  // namespace
