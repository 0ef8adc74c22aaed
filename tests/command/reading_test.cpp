// The subcommands that read: get, list, diff.
#include <gtest/gtest.h>

#include "command/command_world.h"

namespace {

/// Returns the path as the command prints it.
std::string nativeTextOf(std::filesystem::path path) { return path.make_preferred().u8string(); }

using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::kCommandUser;
using Words = std::vector<std::string>;

struct Row {
    Words arguments;
    int exitCode;
    const char* out;
    const char* err;
};

constexpr char kNone[] = "";

const Row kRows[] = {
    {{"get", "grid"}, 0, "display::grids::grid=0.25\n", kNone},
    {{"get", "ZOOM", "display::grids::GRID"}, 0, "display::zoom=2\ndisplay::grids::grid=0.25\n", kNone},
    {{"get", "units", "grid", "--value"}, 0, "mm\n0.25\n", kNone},
    // The known settings are printed, whatever else is asked for.
    {{"get", "gird", "units"},
     1,
     "display::units=mm\n",
     "error: There is no setting \"gird\".\n    Did you mean grid?\n"},
    {{"get", "entirely-else"},
     1,
     kNone,
     "error: There is no setting \"entirely-else\".\n    \"zelutil list\" shows all names.\n"},
    // The parser's own notation for lists and the names of subcommands are texts like others.
    {{"get", "[grid,units]"},
     1,
     kNone,
     "error: There is no setting \"[grid,units]\".\n    \"zelutil list\" shows all names.\n"},
    // The name stands behind its section.
    {{"get", "display::grid"},
     1,
     kNone,
     "error: There is no setting \"display::grid\".\n    Did you mean display::grids::grid?\n"},
    {{"get", "Display::grids", "display"},
     1,
     kNone,
     "error: \"Display::grids\" is a section of settings, and no setting.\n"
     "    \"zelutil list --section Display::grids\" lists what is in it.\n"
     "error: \"display\" is a section of settings, and no setting.\n"
     "    \"zelutil list --section display\" lists what is in it.\n"},
    {{"get", "saving::zoom"},
     1,
     kNone,
     "error: There is no setting \"saving::zoom\".\n    Did you mean display::zoom?\n"},
    {{"get", "{}"}, 1, kNone, "error: There is no setting \"{}\".\n    \"zelutil list\" shows all names.\n"},
    {{"get", "diff"}, 1, kNone, "error: There is no setting \"diff\".\n    \"zelutil list\" shows all names.\n"},

    {{"list"},
     0,
     "display::units=mm\ndisplay::zoom=2\ndisplay::grids::grid=0.25\ndisplay::grids::visible=true\n"
     "saving::autosave=on\n",
     kNone},
    {{"list", "GRID"}, 0, "display::grids::grid=0.25\ndisplay::grids::visible=true\n", kNone},
    {{"list", "*::grid"}, 0, "display::grids::grid=0.25\n", kNone},
    {{"list", "display::????"}, 0, "display::zoom=2\n", kNone},
    {{"list", "--changed"}, 0, "display::grids::grid=0.25\n", kNone},
    {{"list", "--section", "Display::Grids"}, 0, "display::grids::grid=0.25\ndisplay::grids::visible=true\n", kNone},
    {{"list", "--section", "display", "--changed"}, 0, "display::grids::grid=0.25\n", kNone},
    {{"list", "--section", "disp"},
     1,
     kNone,
     "error: There is no section \"disp\".\n    \"zelutil list\" shows all settings with their sections.\nnote: No "
     "setting is as asked for.\n"},
    {{"list", "--section", "savin"},
     1,
     kNone,
     "error: There is no section \"savin\".\n    Did you mean saving?\nnote: No setting is as asked for.\n"},
    {{"list", "nothing"}, 0, kNone, "note: No setting is as asked for.\n"},

    {{"diff"}, 0, "display::grids::grid: 0.5 -> 0.25\n", kNone},
};

TEST(Reading, PrintsWhatIsInForce) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const ChildResult result = world.run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode);
        EXPECT_EQ(result.out, row.out);
        EXPECT_EQ(result.err, row.err);
    }
}

constexpr char kGridObject[] =
    R"({"name":"display::grids::grid","bareNames":["grid"],"section":"display::grids","default":"0.5","value":"0.25",)"
    R"("setByUser":true})";

TEST(Reading, WritesJson) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    const std::string grid = kGridObject;
    EXPECT_EQ(world.json({"get", "grid"}),
              R"({"zelutil":{"format":1,"command":"get"},"settings":[)" + grid + R"(],"findings":[]})");
    EXPECT_EQ(world.json({"list", "--changed"}),
              R"({"zelutil":{"format":1,"command":"list"},"settings":[)" + grid + R"(],"findings":[]})");
    EXPECT_EQ(world.json({"diff"}),
              R"({"zelutil":{"format":1,"command":"diff"},"settings":[)" + grid + R"(],"findings":[]})");
    EXPECT_EQ(world.json({"get", "gird"}),
              R"({"zelutil":{"format":1,"command":"get"},"settings":[],"findings":[{"severity":"error",)"
              R"("text":"There is no setting \"gird\".","advice":"Did you mean grid?"}]})");
}

/// No system has a file with a question mark in its path as the library writes it.
TEST(Reading, TellsAHomeInWhichNoFileCanBeLookedFor) {
    const CommandWorld world;
    const zelutil::test::EnvironmentChanges nowhere{{"HOMEPATH", "\\a?b"}};
    for (const auto& arguments : {Words{"get", "grid"}, Words{"list"}, Words{"diff"}, Words{"set", "grid=1"}}) {
        SCOPED_TRACE(arguments.front());
        const ChildResult result = world.run(arguments, nowhere);
        EXPECT_EQ(result.exitCode, arguments.front() == "set" ? 3 : 1);
        EXPECT_NE(
            result.err.find("warning: The user's file could not be looked for: the home directory's path is none.\n"),
            std::string::npos)
            << result.err;
        EXPECT_NE(result.err.find("    Name the home directory by the variables HOMEDRIVE and HOMEPATH"),
                  std::string::npos)
            << result.err;
    }
}

TEST(Reading, TellsAUsersFileThatIsNoJson) {
    const CommandWorld world;
    world.writeUser("{");
    const ChildResult result = world.run({"get", "grid"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "display::grids::grid=0.5\n");
    EXPECT_EQ(
        result.err.find(nativeTextOf(world.userFile()) + ":1:2: warning: Nothing of the user's file is in force. "), 0U)
        << result.err;
    EXPECT_NE(result.err.find("\n    \"zelutil doctor\" says more of it.\n"), std::string::npos) << result.err;
}

TEST(Reading, NamesTheSubcommandForASectionOfActions) {
    const CommandWorld world;
    zelutil::test::writeTextFile(
        world.defaultsFile(),
        R"({"meta":[{"header":"D","attribute":"d","tclCommand":"t","defaultsettings":[{"name":"a","value":""}]},)"
        R"({"header":"Keys","attribute":"Keys","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[]}}]})");
    for (const char* const subcommand : {"get", "explain", "reset"}) {
        EXPECT_EQ(world.run({subcommand, "keys"})
                      .err.find("error: \"keys\" is the section of the actions, and no setting.\n"
                                "    \"zelutil shortcuts\" shows them.\n"),
                  0U)
            << subcommand;
    }
}

TEST(Reading, TellsAUsersFileWithoutASection) {
    const CommandWorld world;
    const auto expectTold = [&](const std::vector<std::string>& arguments, int exitCode) {
        const ChildResult result = world.run(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << arguments.front();
        EXPECT_NE(result.err.find(nativeTextOf(world.userFile()) +
                                  ": warning: Nothing of the user's file is in force. It is JSON that holds no "
                                  "section.\n    \"zelutil doctor\" says more of it.\n"),
                  std::string::npos)
            << result.err;
    };
    for (const char* const text : {"[]", "\"x\"", "null", R"({"meta":{}})"}) {
        SCOPED_TRACE(text);
        world.writeUser(text);
        expectTold({"get", "grid"}, 1);
    }
    expectTold({"list", "--changed"}, 1);
    expectTold({"explain", "grid"}, 1);
    // Nothing is lost where nothing is there.
    for (const char* const text : {"{}", R"({"meta":[]})"}) {
        world.writeUser(text);
        EXPECT_EQ(world.run({"get", "grid"}).err, "") << text;
    }
}

TEST(Reading, TellsAUsersFileWhosePathHasABlank) {
    const CommandWorld world;
    const std::filesystem::path home = world.home().path() / "mary ann";
    const std::string drive = zelutil::test::windowsText(home);
    const zelutil::test::EnvironmentChanges there = {{"HOMEPATH", drive.substr(2)}};
    for (const bool isThere : {false, true}) {
        if (isThere) {
            zelutil::test::writeTextFile(home / "pcbenv/tessel/tessel_settings.cfg", zelutil::test::kCommandUser);
        }
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"get", "grid"}, {"diff"}}) {
            const ChildResult result = world.run(arguments, there);
            EXPECT_EQ(result.exitCode, isThere ? 1 : 0) << arguments.front();
            EXPECT_EQ(result.err.find("because its path has a blank") != std::string::npos, isThere) << result.err;
        }
    }
}

TEST(Reading, SaysThatTheShippedDefaultsCannotBeUsed) {
    const CommandWorld world;
    zelutil::test::writeTextFile(world.defaultsFile(), "{");
    const ChildResult result = world.run({"list"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "zelutil: error: No setting is known, because the shipped defaults \"" +
                              nativeTextOf(world.defaultsFile()) +
                              "\" are not there, cannot be read or hold none.\n"
                              "    \"zelutil doctor\" says what is wrong with the file.\n");
}

TEST(Reading, WhatTheLibraryPrintsItselfStandsOnStandardError) {
    const CommandWorld world;
    const ChildResult result = world.run({"get", "grid", "--json"}, {{"QTX_ZELUTIL_DEBUG", "1"}});
    EXPECT_EQ(result.out, world.run({"get", "grid", "--json"}).out);
    EXPECT_NE(result.err.find("Searching PATH for installation root..."), std::string::npos) << result.err;
}

/// A text from a file neither moves the terminal's cursor nor ends the line.
TEST(Reading, ShowsAnEmptyValue) {
    const CommandWorld world;
    world.writeUser(R"({"meta":[{"header":"D","attribute":"display","overriddensettings":[{"units":""}]}]})");
    EXPECT_EQ(world.run({"get", "units"}).out, "display::units=\"\"\n");
    EXPECT_EQ(world.run({"get", "units", "--value"}).out, "\n");
    EXPECT_EQ(world.run({"diff"}).out, "display::units: mm -> \"\"\n");
    EXPECT_NE(world.json({"get", "units"}).find(R"("value":"")"), std::string::npos);
    const std::string explained = world.run({"explain", "units"}).out;
    EXPECT_NE(explained.find("  user's value: \"\", at "), std::string::npos) << explained;
    EXPECT_EQ(world.run({"set", "units=mm"}).out.find("display::units: \"\" -> mm\n"), 0U);
}

TEST(Reading, SpellsOutControlCharacters) {
    const CommandWorld world;
    world.writeUser(
        R"({"meta":[{"header":"D","attribute":"display","overriddensettings":[{"units":"a\u001b[31m\nb\tc\u0085"}]}]})");
    EXPECT_EQ(world.run({"get", "units"}).out, "display::units=a\\x1b[31m\\nb\\tc\\x85\n");
    EXPECT_NE(world.json({"get", "units"}).find(R"("value":"a\u001B[31m\nb\tc)"), std::string::npos)
        << world.json({"get", "units"});
}

TEST(Reading, ReplacesWhatIsNoUtf8) {
    const CommandWorld world;
    world.writeUser(
        "{\"meta\":[{\"header\":\"D\",\"attribute\":\"display\",\"overriddensettings\":[{\"units\":"
        "\"\xC3\xB6\xFF\xC3\"}"
        "]}]}");
    EXPECT_EQ(world.run({"get", "units"}).out, "display::units=\xC3\xB6\xEF\xBF\xBD\xEF\xBF\xBD\n");
    EXPECT_NE(world.json({"get", "units"}).find("\"value\":\"\xC3\xB6\xEF\xBF\xBD\xEF\xBF\xBD\""), std::string::npos);
}

TEST(Reading, SaysWhatToDoWithoutAnInstallation) {
    const CommandWorld world;
    for (const char* const subcommand : {"list", "diff"}) {
        SCOPED_TRACE(subcommand);
        const ChildResult result = world.run({subcommand}, {{"QTXROOT", std::nullopt}, {"PATH", ""}});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(
            result.err,
            "zelutil: error: No setting is known, because no shipped defaults were read.\n"
            "    Name the installation by the variable QTXROOT, or run the command that lies in its tools/bin.\n");
    }
}

TEST(Reading, SaysThatAnInstallationHasNoDefaults) {
    const CommandWorld world;
    std::filesystem::remove(world.defaultsFile());
    const ChildResult result = world.run({"list"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err,
              "zelutil: error: No setting is known, because no shipped defaults were read.\n"
              "    \"zelutil doctor\" says where they are looked for.\n");
}

TEST(Reading, SaysWhichVariableLeadsToNoInstallation) {
    const CommandWorld world;
    const std::string nowhere = zelutil::test::systemText(world.home() / "nowhere");
    for (const char* const subcommand : {"list", "shortcuts"}) {
        const ChildResult result = world.run({subcommand}, {{"QTXROOT", nowhere}, {"PATH", ""}});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_NE(result.err.find("    Let the variable QTXROOT name an installation: it is \"" + nowhere +
                                  "\", and \"zelutil doctor\" says why that is none.\n"),
                  std::string::npos)
            << result.err;
        const ChildResult empty = world.run({subcommand}, {{"QTXROOT", ""}, {"PATH", ""}});
        EXPECT_EQ(empty.exitCode, 3);
        EXPECT_NE(empty.err.find("    Set the variable QTXROOT, which is set but empty, to the installation's "
                                 "directory, or unset it.\n"),
                  std::string::npos)
            << empty.err;
    }
}

TEST(Reading, WritesAFailureIntoTheJsonToo) {
    const CommandWorld world;
    const ChildResult result = world.run({"list", "--json"}, {{"QTXROOT", std::nullopt}, {"PATH", ""}});
    EXPECT_EQ(result.exitCode, 3);
    const auto json = zelutil::test::readTwinJson(result.out);
    ASSERT_TRUE(json);
    EXPECT_EQ(
        zelutil::test::compactText(*json),
        R"({"zelutil":{"format":1,"command":"list"},"findings":[],"error":{)"
        R"("text":"No setting is known, because no shipped defaults were read.",)"
        R"("advice":"Name the installation by the variable QTXROOT, or run the command that lies in its tools/bin."}})");
}

int countOf(const std::string& part, const std::string& text) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// The search among ten thousand names takes milliseconds, and a script may have thousands of wrong ones.
TEST(Reading, NearNamesAreLookedForAHundredTimes) {
    const CommandWorld world;
    for (const char* const subcommand : {"get", "reset", "explain"}) {
        std::vector<std::string> arguments = {subcommand};
        arguments.insert(arguments.end(), 103, "gird");
        const std::string told = world.run(arguments).err;
        EXPECT_EQ(countOf("Did you mean", told), 100) << subcommand << told;
        EXPECT_EQ(countOf("shows all names", told), 3) << subcommand << told;
    }
}

}  // namespace
