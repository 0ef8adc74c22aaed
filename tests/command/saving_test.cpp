// The subcommands that save: set, reset.
#include <gtest/gtest.h>

#include "command/command_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::inJson;
using zelutil::test::readTextFile;
using zelutil::test::writeTextFile;

void expectFine(const ChildResult& result, const std::string& out) {
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
}

void expectNothingDone(const CommandWorld& world, const ChildResult& result, int exitCode, const std::string& err) {
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, err);
    EXPECT_FALSE(std::filesystem::exists(world.userFile()));
}

TEST(Saving, SetGivesValuesToANewProcess) {
    const CommandWorld world;
    const std::string file = world.userFile().u8string();
    expectFine(world.run({"set", "grid=0.125", "DISPLAY::units=a=b"}),
               "display::grids::grid: 0.5 -> 0.125\ndisplay::units: mm -> a=b\nSaved in " + file + "\n");
    expectFine(world.run({"get", "grid", "units"}), "display::grids::grid=0.125\ndisplay::units=a=b\n");
}

TEST(Saving, SettingTheSameValueAgainWritesNothing) {
    const CommandWorld world;
    ASSERT_EQ(world.run({"set", "grid=0.25"}).exitCode, 0);
    const std::string before = readTextFile(world.userFile());
    expectFine(world.run({"set", "grid=0.25"}),
               "display::grids::grid: 0.25, as before\nNothing to do in " + world.userFile().u8string() + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), before);
}

TEST(Saving, AFileThatGivesTheValueByABareNameStaysAsItIs) {
    const CommandWorld world;
    const std::string user =
        R"({"meta": [{"header": "", "attribute": "display", "overriddensettings": [{"grid": "0.25"}]}]} )";
    world.writeUser(user);
    expectFine(world.run({"set", "grid=0.25"}),
               "display::grids::grid: 0.25, as before\nNothing to do in " + world.userFile().u8string() + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), user);
}

/// Other defaults then leave the value as it is.
TEST(Saving, AValueThatIsTheDefaultTooIsTheUsersFromNowOn) {
    const CommandWorld world;
    const std::string saved = "Saved in " + world.userFile().u8string() + "\n";
    expectFine(world.run({"set", "units=mm", "zoom=3"}),
               "display::units: mm, the default, and the user's own value now\ndisplay::zoom: 2 -> 3\n" + saved);
    expectFine(world.run({"list", "--changed"}), "display::units=mm\ndisplay::zoom=3\n");
    const std::string before = readTextFile(world.userFile());
    expectFine(world.run({"set", "units=mm"}),
               "display::units: mm, as before\nNothing to do in " + world.userFile().u8string() + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), before);
    std::string defaults = zelutil::test::kCommandDefaults;
    writeTextFile(world.defaultsFile(), defaults.replace(defaults.find("\"mm\""), 4, "\"inch\""));
    expectFine(world.run({"get", "units"}), "display::units=mm\n");
    writeTextFile(world.defaultsFile(), zelutil::test::kCommandDefaults);
    expectFine(world.run({"reset", "units", "grid"}),
               "display::units: mm, the default, and no longer the user's own value\n"
               "display::grids::grid: 0.5, as before\n" +
                   saved);
    expectFine(world.run({"list", "--changed"}), "display::zoom=3\n");
}

TEST(Saving, SaysThatARegressionTestSavesElsewhere) {
    const CommandWorld world;
    const ChildResult result = world.run({"set", "grid=8"}, {{"regression_testing", "1"}});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "note: The variable regression_testing has files saved in the current directory.\n"
              "    They are read from where \"zelutil doctor\" says.\n");
    EXPECT_TRUE(std::filesystem::exists(world.home().path() / "tessel_settings.cfg"));
    EXPECT_EQ(world.run({"get", "grid", "--value"}).out, "0.5\n");
}

TEST(Saving, AValueMayBeEmptyAndLookLikeAnOption) {
    const CommandWorld world;
    EXPECT_EQ(world.run({"set", "units=", "zoom=--json"}).exitCode, 0);
    expectFine(world.run({"get", "units", "zoom"}), "display::units=\"\"\ndisplay::zoom=--json\n");
}

TEST(Saving, ANameMayHaveEqualsSigns) {
    const CommandWorld world;
    writeTextFile(world.defaultsFile(), R"({"meta":[{"header":"","attribute":"a=b","tclCommand":"t","defaultsettings":[
        {"name":"x","value":"1"},{"name":"y=z","value":"2"},{"name":"u","value":"3"}]}]})");
    EXPECT_EQ(world.run({"set", "a=b::x=4", "y=z=5=6", "u=v=w"}).exitCode, 0);
    expectFine(world.run({"list"}), "a=b::x=4\na=b::y=z=5=6\na=b::u=v=w\n");
    EXPECT_NE(world.run({"set", "q=r=s"}).err.find("There is no setting \"q\"."), std::string::npos);
}

TEST(Saving, ResetBringsTheDefaultBack) {
    const CommandWorld world;
    const std::string saved = "Saved in " + world.userFile().u8string() + "\n";
    ASSERT_EQ(world.run({"set", "grid=1", "zoom=3", "autosave=off"}).exitCode, 0);
    expectFine(world.run({"reset", "Grid"}), "display::grids::grid: 1 -> 0.5\n" + saved);
    expectFine(world.run({"list", "--changed"}), "display::zoom=3\nsaving::autosave=off\n");
    expectFine(world.run({"reset", "--all"}), "display::zoom: 3 -> 2\nsaving::autosave: off -> on\n" + saved);
    expectFine(world.run({"diff"}), "");
}

TEST(Saving, WritesJson) {
    const CommandWorld world;
    const std::string file = inJson(world.userFile());
    EXPECT_EQ(world.json({"set", "grid=1"}),
              R"({"zelutil":{"format":1,"command":"set"},"settings":[{"name":"display::grids::grid","before":"0.5",)"
              R"("value":"1"}],"save":{"status":"saved","file":")" +
                  file + R"("},"findings":[]})");
    EXPECT_EQ(world.json({"set", "grid=1"}),
              R"({"zelutil":{"format":1,"command":"set"},"settings":[{"name":"display::grids::grid","before":"1",)"
              R"("value":"1"}],"save":{"status":"unchanged","file":")" +
                  file + R"("},"findings":[]})");
    EXPECT_EQ(world.json({"reset", "grid"}),
              R"({"zelutil":{"format":1,"command":"reset"},"settings":[{"name":"display::grids::grid","before":"1",)"
              R"("value":"0.5"}],"save":{"status":"saved","file":")" +
                  file + R"("},"findings":[]})");
}

TEST(Saving, AnUnknownNameLeavesAllAsItIs) {
    const CommandWorld world;
    const std::string err = "error: There is no setting \"gird\".\n    Did you mean grid?\nnote: Nothing was done.\n";
    expectNothingDone(world, world.run({"set", "units=inch", "gird=1"}), 1, err);
    expectNothingDone(world, world.run({"reset", "units", "gird"}), 1, err);
    EXPECT_EQ(world.json({"set", "gird=1"}),
              R"({"zelutil":{"format":1,"command":"set"},"findings":[{"severity":"error","text":)"
              R"("There is no setting \"gird\".","advice":"Did you mean grid?"},)"
              R"({"severity":"note","text":"Nothing was done."}]})");
}

struct WrongUse {
    std::vector<std::string> arguments;
    const char* text;
};

TEST(Saving, ArgumentsThatMakeNoSenseLeaveAllAsItIs) {
    const WrongUse rows[] = {
        {{"set", "grid"}, "\"grid\" is no assignment, which is NAME=VALUE."},
        {{"set", "=1"}, "\"=1\" is no assignment, which is NAME=VALUE."},
        {{"set", "grid=1", "display::grids::grid=1"}, "\"grid\" and \"display::grids::grid\" are the same setting."},
        {{"set", "grid=1", "grid=2"}, "\"grid\" and \"grid\" are the same setting."},
        {{"reset"}, "A reset takes either names or --all."},
        {{"reset", "grid", "--all"}, "A reset takes either names or --all."},
    };
    const CommandWorld world;
    for (const WrongUse& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        expectNothingDone(world, world.run(row.arguments), 2,
                          std::string("zelutil: error: ") + row.text + "\n    \"zelutil " + row.arguments.front() +
                              " --help\" says how it is called.\n");
    }
}

/// No directory can be made where a file lies.
TEST(Saving, TellsAFileThatCannotBeWritten) {
    const CommandWorld world;
    writeTextFile(world.home() / "pcbenv", "in the way");
    const ChildResult result = world.run({"set", "grid=1"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "zelutil: error: Nothing was saved, because \"" + world.userFile().u8string() +
                  "\" could not be written.\n"
                  "    See whether the file and its directory may be written and the disk has room, and try again.\n");
    const ChildResult json = world.run({"set", "grid=1", "--json"});
    EXPECT_EQ(json.exitCode, 3);
    EXPECT_NE(json.out.find("\"status\": \"notWritten\""), std::string::npos) << json.out;
    EXPECT_EQ(json.err, result.err);
    EXPECT_EQ(readTextFile(world.home() / "pcbenv"), "in the way");
}

TEST(Saving, TellsTheCopyOfAFileThatWasNoJson) {
    const CommandWorld world;
    world.writeUser("no JSON");
    const ChildResult result = world.run({"set", "grid=1"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("it is kept as \"" + world.userFile().u8string() + ".bad\""), std::string::npos)
        << result.err;
    EXPECT_EQ(readTextFile(world.userFile().u8string() + ".bad"), "no JSON");
    expectFine(world.run({"get", "grid"}), "display::grids::grid=1\n");
}

/// Files whose path has a blank are nobody's, unless that is asked for.
TEST(Saving, APathWithABlankIsAskedFor) {
    const CommandWorld world;
    const std::string home = zelutil::test::windowsText(world.home() / "my home");
    const auto in = zelutil::test::EnvironmentChanges{{"HOMEPATH", home.substr(2)}};
    const ChildResult refused = world.run({"set", "grid=1"}, in);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.err.find("--paths-with-blanks"), std::string::npos) << refused.err;
    EXPECT_EQ(world.run({"set", "grid=1", "--paths-with-blanks"}, in).exitCode, 0);
    EXPECT_EQ(world.run({"--paths-with-blanks", "get", "grid"}, in).out, "display::grids::grid=1\n");
    EXPECT_EQ(world.run({"get", "grid"}, in).out, "display::grids::grid=0.5\n");
}

}  // namespace
