// zelutil explain: what it tells people.
#include <gtest/gtest.h>

#include <string>

#include "command/command_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::kCommandUser;

/// Returns what stands on standard error of an `explain` of both names of "display::units" with this user's text.
std::string errorsAboutUnits(const CommandWorld& world, const std::string& user) {
    world.writeUser(user);
    return world.run({"explain", "units", "display::units"}).err;
}

TEST(Explain, TellsOnceOfAnOverruledEntryAndWhichOneCounts) {
    const CommandWorld world;
    const std::string file = world.userFile().u8string();
    const std::string later = errorsAboutUnits(
        world, R"({"meta":[{"header":"Display","attribute":"display","overriddensettings":[{"units":"a"},)"
               "\n"
               R"({"display::units":"b"}]}]})");
    const std::string warning = file +
                                ":1:75: warning: The entry \"units\" has no effect. A later entry (line 2, column 2) "
                                "sets the same setting, and the last one counts.\n";
    EXPECT_EQ(later.substr(0, warning.size()), warning);
    EXPECT_EQ(later.find("warning", warning.size()), std::string::npos) << later;

    const std::string before = errorsAboutUnits(
        world, R"({"meta":[{"header":"Display","attribute":"display","children":[)"
               "\n"
               R"({"header":"Grid","attribute":"grids","overriddensettings":[{"display::units":"b"}]}],)"
               "\n"
               R"("overriddensettings":[{"units":"a"}]}]})");
    EXPECT_EQ(before.substr(0, before.find('\n')),
              file +
                  ":3:24: warning: The entry \"units\" has no effect. An entry before it (line 2, column 61), which "
                  "is read later because a section is read before its children, sets the same setting, and the last "
                  "one counts.");
    EXPECT_NE(world.json({"explain", "units"}).find(R"("effect":"overruled","overruledBy":{"line":2,"column":61},)"),
              std::string::npos);
}

TEST(Explain, TellsPeople) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    const std::string defaults = world.defaultsFile().u8string();
    const std::string user = world.userFile().u8string();
    const ChildResult result = world.run({"explain", "Grid", "display::units"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    // The places are counted by hand in the texts of command_world.h.
    EXPECT_EQ(result.out,
              "display::grids::grid=0.25\n"
              "  asked for as Grid, its bare name\n"
              "  section: display::grids\n"
              "  default: 0.5, at " +
                  defaults +
                  ":5:30\n"
                  "  user's value: 0.25, at " +
                  user +
                  ":1:98\n"
                  "  get_user_setting: \"0.25\"\n"
                  "  get_default_user_setting: \"0.5\"\n"
                  "  zelutil_read_bool: ZELUTIL_WRONG_TYPE, zelutil_read_int: ZELUTIL_WRONG_TYPE, "
                  "zelutil_read_double: 0.25\n"
                  "  entry display::grids::grid, at " +
                  user +
                  ":1:75: in force, from the section \"display\".\n"
                  "display::units=mm\n"
                  "  asked for as display::units, its full name\n"
                  "  section: display\n"
                  "  default: mm, at " +
                  defaults +
                  ":3:27\n"
                  "  user's value: none\n"
                  "  get_user_setting: \"mm\"\n"
                  "  get_default_user_setting: \"mm\"\n"
                  "  zelutil_read_bool: ZELUTIL_WRONG_TYPE, zelutil_read_int: ZELUTIL_WRONG_TYPE, "
                  "zelutil_read_double: ZELUTIL_WRONG_TYPE\n");
}

TEST(Explain, FindsEntriesWithoutEffectAndUnknownNames) {
    const CommandWorld world;
    world.writeUser(
        "{\"meta\":[\n{\"header\":\"D\",\"attribute\":\"display\",\"overriddensettings\":[{\"zoom\":3}]},\n"
        "{\"header\":\"S\",\"attribute\":\"savign\",\"overriddensettings\":[{\"autosave\":\"off\"}]}]}");
    const std::string user = world.userFile().u8string();
    const std::string defaults = world.defaultsFile().u8string();
    const std::string advice =
        "    This checks the whole file: zelutil lint --defaults " + defaults + ' ' + user + '\n';
    const ChildResult result = world.run({"explain", "zoom", "autosave", "savign::autosav"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "error: There is no setting \"savign::autosav\".\n    Did you mean saving::autosave?\n" +
                              user + ":2:60: warning: The entry \"zoom\" has no effect. Its value is no string.\n" +
                              advice + user +
                              ":3:59: warning: The entry \"autosave\" has no effect. The defaults have no section "
                              "\"savign\".\n" +
                              advice);
    EXPECT_EQ(world.run({"lint", "--defaults", defaults, user}).exitCode, 1);
    EXPECT_EQ(world.run({"explain", "units"}).exitCode, 0);
    EXPECT_EQ(world.run({"explain"}).exitCode, 2);
    EXPECT_EQ(world.run({"explain", "zoom"}, {{"QTXROOT", std::nullopt}, {"PATH", ""}}).exitCode, 3);
}

TEST(Explain, TellsAUsersFileOfWhichNothingIsRead) {
    const CommandWorld world;
    world.writeUser("{\"meta\":\n}");
    const ChildResult result = world.run({"explain", "zoom"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.find(world.userFile().u8string() + ":2:1: warning: Nothing of the user's file is in force."),
              0U)
        << result.err;
}

/// A quoted text ends with the second quote that has no backslash before it.
TEST(Explain, EscapesQuotesAndBackslashesInWhatFunctionsReturn) {
    const CommandWorld world;
    ASSERT_EQ(world.run({"set", R"(units=C:\new "x")"}).exitCode, 0);
    const std::string out = world.run({"explain", "units"}).out;
    EXPECT_NE(out.find(R"(  get_user_setting: "C:\\new \"x\"")"
                       "\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find(R"(  user's value: C:\new "x", at )"), std::string::npos) << out;
}

}  // namespace
