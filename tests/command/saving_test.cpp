// The subcommands that save: set, reset.
#include <gtest/gtest.h>

#include "command/command_line_text.h"
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

/// Returns what is said where nothing was in the user's home.
std::string madeDirectoryIn(const CommandWorld& world) {
    return "Made the directory " + (world.home().path() / "pcbenv").make_preferred().u8string() + "\n";
}

TEST(Saving, SetGivesValuesToANewProcess) {
    const CommandWorld world;
    const std::string file = world.userFile().u8string();
    expectFine(world.run({"set", "grid=0.125", "DISPLAY::units=a=b"}),
               "display::grids::grid: 0.5 -> 0.125\ndisplay::units: mm -> a=b\n" + madeDirectoryIn(world) +
                   "Saved in " + file + "\n");
    expectFine(world.run({"get", "grid", "units"}), "display::grids::grid=0.125\ndisplay::units=a=b\n");
}

TEST(Saving, SettingTheSameValueAgainWritesNothing) {
    const CommandWorld world;
    ASSERT_EQ(world.run({"set", "grid=0.25"}).exitCode, 0);
    const std::string before = readTextFile(world.userFile());
    expectFine(world.run({"set", "grid=0.25"}),
               "display::grids::grid: 0.25, as before\nNothing changed in " + world.userFile().u8string() + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), before);
}

TEST(Saving, AFileThatGivesTheValueByABareNameStaysAsItIs) {
    const CommandWorld world;
    const std::string user =
        R"({"meta": [{"header": "", "attribute": "display", "overriddensettings": [{"grid": "0.25"}]}]} )";
    world.writeUser(user);
    expectFine(world.run({"set", "grid=0.25"}),
               "display::grids::grid: 0.25, as before\nNothing changed in " + world.userFile().u8string() + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), user);
}

/// Other defaults then leave the value as it is.
TEST(Saving, AValueThatIsTheDefaultTooIsTheUsersFromNowOn) {
    const CommandWorld world;
    const std::string saved = "Saved in " + world.userFile().u8string() + "\n";
    expectFine(world.run({"set", "units=mm", "zoom=3"}),
               "display::units: mm, the default, and the user's own value now\ndisplay::zoom: 2 -> 3\n" +
                   madeDirectoryIn(world) + saved);
    expectFine(world.run({"list", "--changed"}), "display::units=mm\ndisplay::zoom=3\n");
    const std::string before = readTextFile(world.userFile());
    expectFine(world.run({"set", "units=mm"}),
               "display::units: mm, as before\nNothing changed in " + world.userFile().u8string() + "\n");
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
              "    Unset it to have them saved where \"zelutil doctor\" says that they are read.\n");
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
                  file + R"(","madeDirectory":")" + inJson(world.home().path() / "pcbenv") + R"("},"findings":[]})");
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

struct WrongSave {
    std::vector<std::string> arguments;
    const char* text;
};

TEST(Saving, ArgumentsThatMakeNoSenseLeaveAllAsItIs) {
    const WrongSave rows[] = {
        {{"set", "grid"}, "\"grid\" has no equals sign: write NAME=VALUE, such as grid=0.25."},
        {{"set", "=1"}, "\"=1\" names no setting: write NAME=VALUE, such as grid=0.25."},
        {{"set", "grid=1", "display::grids::grid=1"}, "\"grid\" and \"display::grids::grid\" are the same setting."},
        {{"set", "grid=1", "grid=2"}, "\"grid\" and \"grid\" are the same setting."},
        {{"reset"}, "A reset takes either names or --all."},
        {{"reset", "grid", "--all"}, "A reset takes either names or --all."},
    };
    const CommandWorld world;
    for (const WrongSave& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        expectNothingDone(world, world.run(row.arguments), 2,
                          std::string("zelutil: error: ") + row.text + "\n    \"zelutil " + row.arguments.front() +
                              " --help\" says how it is called.\n");
    }
}

/// No directory can be made where a file lies: the doctor says so.
TEST(Saving, TellsWhyAFileCannotBeWritten) {
    const CommandWorld world;
    writeTextFile(world.home() / "pcbenv", "in the way");
    const ChildResult result = world.run({"set", "grid=1"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zelutil: error: Nothing was saved. The file \"" + world.userFile().u8string() +
                              "\" cannot be written, because \"" +
                              (world.home().path() / "pcbenv").make_preferred().u8string() +
                              "\" is no directory.\n    Remove it or give it another name.\n");
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
    const std::string copy = world.userFile().u8string() + ".bad";
    // The first sign that is none of a value is the second one.
    EXPECT_EQ(result.err,
              copy +
                  ":1:2: warning: Nothing of the user's file was in force before this save, which keeps it as this "
                  "copy. A value is missing or is none. There stands: o JSON\n    This checks the copy: zelutil lint " +
                  zelutil::command::quotedForShell(copy) +
                  "\nwarning: What was there could not be taken over whole; it is kept as \"" + copy +
                  "\".\n    Take from it by hand whatever is still wanted.\n");
    EXPECT_EQ(readTextFile(world.userFile().u8string() + ".bad"), "no JSON");
    expectFine(world.run({"get", "grid"}), "display::grids::grid=1\n");
}

TEST(Saving, AnEmptyFileIsToldOfAsItWas) {
    const CommandWorld world;
    world.writeUser("");
    const ChildResult result = world.run({"set", "grid=1"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err,
              world.userFile().u8string() +
                  ": warning: Nothing of the user's file was in force before this save: it held nothing.\n");
}

/// A home that is mistyped is made, and that is said.
TEST(Saving, TellsTheDirectoryThatItMakes) {
    const CommandWorld world;
    const std::string home = zelutil::test::windowsText(world.home() / "mistyped");
    const auto in = zelutil::test::EnvironmentChanges{{"HOMEPATH", home.substr(2)}};
    const auto made = (world.home().path() / "mistyped").make_preferred();
    const auto file = (made / "pcbenv/tessel/tessel_settings.cfg").make_preferred();
    const ChildResult first = world.run({"set", "grid=1"}, in);
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.out, "display::grids::grid: 0.5 -> 1\nMade the directory " + made.u8string() + "\nSaved in " +
                             file.u8string() + "\n");
    EXPECT_EQ(world.run({"set", "grid=2"}, in).out, "display::grids::grid: 1 -> 2\nSaved in " + file.u8string() + "\n");
    std::filesystem::remove_all(made);
    const ChildResult again = world.run({"set", "grid=1", "--json"}, in);
    EXPECT_NE(again.out.find("\"madeDirectory\": \"" + inJson(made) + '"'), std::string::npos) << again.out;
}

/// Files whose path has a blank are nobody's, unless that is asked for.
TEST(Saving, APathWithABlankIsAskedFor) {
    const CommandWorld world;
    const std::string home = zelutil::test::windowsText(world.home() / "my home");
    const auto in = zelutil::test::EnvironmentChanges{{"HOMEPATH", home.substr(2)}};
    const ChildResult refused = world.run({"set", "grid=1"}, in);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.err.find("--paths-with-blanks"), std::string::npos) << refused.err;
    writeTextFile(world.home() / "my home/pcbenv/tessel/tessel_settings.cfg", zelutil::test::kCommandUser);
    constexpr char kAdvice[] =
        "    Its path has a blank: name the option --paths-with-blanks, too, where the applications read such files.\n";
    for (const auto& arguments :
         {std::vector<std::string>{"reset", "--all"}, std::vector<std::string>{"reset", "grid"}}) {
        const ChildResult reset = world.run(arguments, in);
        EXPECT_EQ(reset.exitCode, 3);
        EXPECT_NE(reset.err.find(kAdvice), std::string::npos) << reset.err;
        EXPECT_EQ(reset.err.find("doctor"), std::string::npos) << reset.err;
    }
    std::filesystem::remove_all(world.home() / "my home");
    EXPECT_EQ(world.run({"set", "grid=1", "--paths-with-blanks"}, in).exitCode, 0);
    EXPECT_EQ(world.run({"--paths-with-blanks", "get", "grid"}, in).out, "display::grids::grid=1\n");
    EXPECT_EQ(world.run({"get", "grid"}, in).out, "display::grids::grid=0.5\n");
}

}  // namespace
