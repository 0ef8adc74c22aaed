// The text for people that says what was looked for where. Every line is written down by hand.
#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "prefs/preference_world.h"
#include "support/child_process.h"
#include "support/common_library_stand_in.h"
#include "support/printed.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

std::string quoted(const fs::path& path) { return '"' + windowsText(path) + '"'; }

/// The lines that follow a heading, which begins the text or a line, without their indentation.
std::vector<std::string> linesBelow(const std::string& text, const std::string& heading) {
    std::vector<std::string> lines;
    std::size_t at = ("\n" + text).find("\n" + heading);
    EXPECT_NE(at, std::string::npos) << heading << "\n" << text;
    for (at = text.find('\n', at); at != std::string::npos && text.compare(at + 1, 4, "    ") == 0;) {
        const std::size_t end = text.find('\n', at + 1);
        lines.push_back(text.substr(at + 5, end - at - 5));
        at = end;
    }
    return lines;
}

/// The line of a heading, whole.
std::string headingOf(const std::string& text, const std::string& heading) {
    const std::size_t at = ("\n" + text).find("\n" + heading);
    EXPECT_NE(at, std::string::npos) << heading << "\n" << text;
    return at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
}

using Lines = std::vector<std::string>;

constexpr char kRelativeFile[] = "share/qtxsetup/canvas/resources/tessel/";

// --- An installation ------------------------------------------------------------------------------------------------

TEST(Diagnose, OfAnInstallationNamesEveryPlace) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    world.writeUser(userWithValue("2"));
    const fs::path root = world.product().root();
    const std::string text = host::diagnose();
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: " + quoted(root));
    EXPECT_EQ(headingOf(text, "Common library"), "Common library: not there");
    EXPECT_EQ(linesBelow(text, "Common library"), Lines{});
    EXPECT_EQ(headingOf(text, "User environment"), "User environment: " + quoted(world.home() / "pcbenv"));
    const std::string home = windowsText(world.home().path());
    EXPECT_EQ(linesBelow(text, "User environment"),
              (Lines{"It is there.", "HOMEDRIVE is \"" + home.substr(0, 2) + "\".",
                     "HOMEPATH is \"" + home.substr(2) + "\"."}));
    EXPECT_EQ(linesBelow(text, "Shipped defaults"),
              (Lines{quoted(world.defaultsFile()) + ": " + std::to_string(defaultsWithValue("1").size()) + " bytes.",
                     "Sections in force: 1."}));
    EXPECT_EQ(linesBelow(text, "User's file"),
              Lines{'"' + windowsText(world.home() / "pcbenv") +
                    "/tessel/tessel_settings.cfg\": " + std::to_string(userWithValue("2").size()) + " bytes."});
    EXPECT_EQ(linesBelow(text, "Facets"),
              Lines{quoted(root / (std::string(kRelativeFile) + "facet_settings.cfg")) + ": not there."});
}

TEST(Diagnose, SaysWhereTheInstallationWasFound) {
    const PreferenceWorld world;
    const TempDirectory elsewhere;
    setVariable("PATH", systemText(elsewhere.path()));
    const fs::path programs = world.product() / "tools/bin";
    Lines lines = linesBelow(host::diagnose(), "Installation");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], "The common library names no tools directory.");
    // The name of the file depends on the build.
    EXPECT_EQ(lines[1].rfind("This library's file \"", 0), 0U);
    EXPECT_NE(lines[1].find("\" is not in a directory tools*/bin*."), std::string::npos);
    EXPECT_EQ(lines[2], "QTXROOT puts " + quoted(programs) + " before the PATH.");
    EXPECT_EQ(lines[3], "In the PATH:");
    EXPECT_EQ(lines[4],
              quoted(programs) + " has " + libraryFileName() + ", and its tree has share/pcb/zelmgr/zeldict.l.");
}

TEST(Diagnose, SaysWhyADirectoryIsNone) {
    const PreferenceWorld world;
    clearProductVariables();
    const TempDirectory empty;
    const TempDirectory without;
    writeTextFile(without / "tools/bin" / libraryFileName(), "");
    const fs::path programs = world.product() / "tools/bin";
    setVariable("PATH", systemList({systemText(empty.path()), systemText(without / "tools/bin"), systemText(programs),
                                    systemText(empty.path())}));
    Lines lines = linesBelow(host::diagnose(), "Installation");
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[2], "No variable names an installation: QTXROOT QTX_ROOT QTXINSTDIR are not set.");
    EXPECT_EQ(lines[3], "In the PATH:");
    EXPECT_EQ(lines[4], quoted(empty.path()) + " has no " + libraryFileName() + '.');
    EXPECT_EQ(lines[5], quoted(without / "tools/bin") + " has " + libraryFileName() +
                            ", and its tree has no share/pcb/zelmgr/zeldict.l.");
    EXPECT_EQ(lines[6],
              quoted(programs) + " has " + libraryFileName() + ", and its tree has share/pcb/zelmgr/zeldict.l.");
}

TEST(Diagnose, SaysThatASearchWouldFindAnotherOneNow) {
    const PreferenceWorld first;
    first.writeDefaults(defaultsWithValue("1"));
    ASSERT_STREQ(ZelU::File::Hierarchy::GetRoot(), windowsText(first.product().root()).c_str());
    const InstallationTree second;
    second.nameInEnvironment();
    const std::string text = host::diagnose();
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: " + quoted(first.product().root()) +
                                                   ", though a search now finds " + quoted(second.root()));
    EXPECT_EQ(linesBelow(text, "Shipped defaults").front().rfind(quoted(first.defaultsFile()), 0), 0U);
}

TEST(Diagnose, LooksForTheInstallationWhereNothingElseHasNeededIt) {
    const PreferenceWorld world;
    const TempDirectory directory;
    writeTextFile(directory / "defaults.cfg", defaultsWithValue("1"));
    setVariable("tessel_settings", systemText(directory / "defaults.cfg"));
    EXPECT_EQ(headingOf(host::diagnose(), "Installation"), "Installation: " + quoted(world.product().root()));
}

TEST(Diagnose, PrintsNothingWhereThereIsAnInstallation) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    std::string out;
    const std::string err = reportedBy([&] { out = printedBy([] { host::diagnose(); }); });
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "");
}

// --- No installation ------------------------------------------------------------------------------------------------

constexpr char kNotFound[] =
    "ERROR: Vorn Marl hierarchy root could not be located.\n"
    "Make sure <qtxroot>/tools/bin is included in the $PATH\n";

TEST(Diagnose, WithoutAnInstallationSaysSoAndPrintsWhatTheFirstUsePrints) {
    const PreferenceWorld world;
    clearProductVariables();
    world.setHome(world.home().path());
    std::string text;
    std::string out;
    const std::string err = reportedBy([&] { out = printedBy([&] { text = host::diagnose(); }); });
    EXPECT_EQ(out, kNotFound);
    EXPECT_EQ(err, kNotFound);
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: none");
    EXPECT_EQ(linesBelow(text, "Installation").back(), "In the PATH:");
    EXPECT_EQ(linesBelow(text, "Shipped defaults"), (Lines{"\"\": there is no path for it.", "Sections in force: 0."}));
    EXPECT_EQ(linesBelow(text, "Facets"), Lines{"\"\": there is no path for it."});
    // The second one prints nothing, though every search of the library would.
    EXPECT_EQ(reportedBy([] { host::diagnose(); }), "");
}

TEST(Diagnose, SaysThatTheDirectoryTriedLastStandsIn) {
    const PreferenceWorld world;
    clearProductVariables();
    const TempDirectory empty;
    setVariable("PATH", systemText(empty.path()));
    reportedBy([] { printedBy([] { EXPECT_THROW(ZelU::File::Hierarchy::GetRoot(), ZelU::File::Exceptions::Base); }); });
    EXPECT_EQ(headingOf(host::diagnose(), "Installation"),
              "Installation: " + quoted(empty.path()) +
                  ", though a search finds none; a directory tried last stands in for one");
}

TEST(Diagnose, DoesNotSpendTheExceptionOfTheRoot) {
    const PreferenceWorld world;
    clearProductVariables();
    const TempDirectory directory;
    writeTextFile(directory / "defaults.cfg", defaultsWithValue("1"));
    setVariable("tessel_settings", systemText(directory / "defaults.cfg"));
    setVariable("PATH", systemText(directory.path()));
    std::string text;
    EXPECT_EQ(reportedBy([&] { text = host::diagnose(); }), "");
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: none");
    const Lines lines = linesBelow(text, "Shipped defaults");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "The variable tessel_settings names them.");
    EXPECT_EQ(lines[2], "Sections in force: 1.");
    reportedBy([] { printedBy([] { EXPECT_THROW(ZelU::File::Hierarchy::GetRoot(), ZelU::File::Exceptions::Base); }); });
}

// --- Files ----------------------------------------------------------------------------------------------------------

TEST(Diagnose, SaysThatABlankPutsAPathIntoQuotes) {
    const PreferenceWorld world;
    const TempDirectory directory;
    const fs::path home = directory / "two words";
    world.setHome(home);
    EXPECT_EQ(linesBelow(host::diagnose(), "User's file"),
              Lines{"\"\"" + windowsText(home / "pcbenv") +
                    "\"/tessel/tessel_settings.cfg\": not opened, because its path has a blank and so stands in double "
                    "quotes (see Options::pathsWithBlanks)."});
}

TEST(Diagnose, SaysThatAPathWithABlankIsOpenedWhereAHostAskedForIt) {
    ASSERT_TRUE(host::setOptions({true}));
    const PreferenceWorld world;
    const TempDirectory directory;
    const fs::path home = directory / "two words";
    world.setHome(home);
    EXPECT_EQ(linesBelow(host::diagnose(), "User's file"),
              Lines{'"' + windowsText(home / "pcbenv") + "/tessel/tessel_settings.cfg\": not there."});
}

TEST(Diagnose, SaysThatADirectoryIsInTheFilesPlace) {
    const PreferenceWorld world;
    fs::create_directories(world.userFile());
    EXPECT_EQ(linesBelow(host::diagnose(), "User's file"),
              Lines{'"' + windowsText(world.home() / "pcbenv") + "/tessel/tessel_settings.cfg\": a directory."});
}

TEST(Diagnose, SaysThatTheFileWasNoJson) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    world.writeUser("{");
    const std::string file = '"' + windowsText(world.home() / "pcbenv") + "/tessel/tessel_settings.cfg\"";
    EXPECT_EQ(linesBelow(host::diagnose(), "User's file"),
              (Lines{file + ": 1 bytes.", file + " could not be read at the start, or was no JSON."}));
}

TEST(Diagnose, SaysThatTheDefaultsAreNoJson) {
    const PreferenceWorld world;
    world.writeDefaults("{]}");
    EXPECT_EQ(linesBelow(host::diagnose(), "Shipped defaults"),
              (Lines{quoted(world.defaultsFile()) + ": 3 bytes.", "They are no JSON, so nothing of them counts.",
                     "Sections in force: 0."}));
}

TEST(Diagnose, NamesTheDefaultsThatWereReadThoughTheVariableHasChangedSince) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    ASSERT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "1");
    setVariable("tessel_settings", "Z:/nowhere/other.cfg");
    const std::string read =
        quoted(world.defaultsFile()) + ": " + std::to_string(defaultsWithValue("1").size()) + " bytes.";
    EXPECT_EQ(linesBelow(host::diagnose(), "Shipped defaults"),
              (Lines{read, "A process that starts now looks for them elsewhere: \"Z:/nowhere/other.cfg\": not there.",
                     "Sections in force: 1."}));
}

TEST(Diagnose, SaysWhereTheDefaultsAreNowThatTheVariableIsGone) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    const TempDirectory directory;
    writeTextFile(directory / "named.cfg", "{}");
    setVariable("tessel_settings", systemText(directory / "named.cfg"));
    ASSERT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "");
    unsetVariable("tessel_settings");
    const Lines lines = linesBelow(host::diagnose(), "Shipped defaults");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NE(lines[0].find("named.cfg\": 2 bytes."), std::string::npos) << lines[0];
    EXPECT_EQ(lines[1], "A process that starts now looks for them elsewhere: " + quoted(world.defaultsFile()) + ": " +
                            std::to_string(defaultsWithValue("1").size()) + " bytes.");
    EXPECT_EQ(lines[2], "Sections in force: 0.");
}

TEST(Diagnose, SaysThatASaveWritesElsewhere) {
    const PreferenceWorld world;
    const TempDirectory here;
    fs::current_path(here.path());
    setVariable("regression_testing", "");
    const Lines lines = linesBelow(host::diagnose(), "User's file");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "A save writes another one, because regression_testing was set: \"" + windowsText(here.path()) +
                            "/tessel_settings.cfg\": not there.");
}

TEST(Diagnose, SaysWhichVariablesOfTheHomeAreNotSet) {
    const PreferenceWorld world;
    const TempDirectory here;
    fs::current_path(here.path());
    unsetVariable("HOMEDRIVE");
    setVariable("HOMEPATH", "/nowhere");
    const std::string text = host::diagnose();
    EXPECT_EQ(headingOf(text, "User environment"),
              "User environment: \"" + windowsText(here.path()) + "\\\\nowhere\\pcbenv\"");
    EXPECT_EQ(linesBelow(text, "User environment"),
              (Lines{"It is not there.", "HOMEDRIVE is not set.", "HOMEPATH is \"/nowhere\"."}));
}

// --- The common library ---------------------------------------------------------------------------------------------

TEST(Diagnose, NamesWhatTheCommonLibraryNames) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    const PreferenceWorld world;
    commonLibrary.toolsPath = systemText(world.product() / "tools");
    commonLibrary.foundPath = systemText(world.home() / "found.cfg");
    const std::string text = host::diagnose();
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: " + quoted(world.product().root()));
    EXPECT_EQ(linesBelow(text, "Installation"),
              Lines{"The common library names the tools directory " + quoted(world.product() / "tools") + '.'});
    EXPECT_EQ(headingOf(text, "Common library"), "Common library: there");
    EXPECT_EQ(linesBelow(text, "Common library"), Lines{});
    EXPECT_NE(linesBelow(text, "User's file").front().find("found.cfg\": not there."), std::string::npos);
}

TEST(Diagnose, SaysThatTheCommonLibraryIsNotReady) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    const PreferenceWorld world;
    commonLibrary.initDone = false;
    commonLibrary.toolsPath = systemText(world.product() / "tools");
    const std::string text = host::diagnose();
    EXPECT_EQ(headingOf(text, "Installation"), "Installation: " + quoted(world.product().root()));
    EXPECT_EQ(linesBelow(text, "Common library"),
              Lines{"It is not initialised yet, so the installation may still change."});
}

TEST(Diagnose, NamesTheFunctionsThatTheCommonLibraryLacks) {
    loadCommonLibrary("without_functions");
    const PreferenceWorld world;
    EXPECT_EQ(linesBelow(host::diagnose(), "Common library"),
              (Lines{"Its function qtxGetToolsPathInBuf is missing.", "Its function qtxInitDone is missing.",
                     "Its function wemInitialize is missing.", "Its function wemSearch is missing."}));
}

TEST(Diagnose, MayBeAskedFromInsideTheSearchForTheUsersFile) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    std::string text;
    commonLibrary.duringSearch = [&] { text = host::diagnose(); };
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "1");
    EXPECT_EQ(headingOf(text, "User's file"), "User's file: being searched for");
    EXPECT_EQ(linesBelow(text, "Shipped defaults").size(), 1U);
}

}  // namespace
}  // namespace zelutil::test
