#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::EnvironmentChanges;
using zelutil::test::InstallationTree;
using zelutil::test::systemText;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

constexpr char kDefaults[] = R"({"meta": [
    {"header": "Display", "attribute": "display", "tclCommand": "show", "defaultsettings": [
        {"name": "grid", "value": "0.635"},
        {"name": "units", "value": "mm"},
        {"name": "emptied", "value": "full"}
    ]},
    {"header": "Keys", "attribute": "keys", "tclCommand": "keys", "submanagerId": 100, "defaultsettings": {"actions": [
        {"id": 1, "context": "ucpedit", "command": "file save", "shortcut": "Ctrl+S"},
        {"id": 2, "context": "ucpedit", "command": "file open", "shortcut": "Ctrl+O"}
    ]}}
]})";

constexpr char kUser[] = R"({"meta": [
    {"header": "Display", "attribute": "display", "overriddensettings": [{"grid": "1.27"}, {"emptied": ""}]},
    {"header": "Keys", "attribute": "keys", "overriddensettings": [{"actions": [{"id": 2, "shortcut": "F3"}]}]}
]})";

constexpr char kFacets[] = R"({"meta": [
    {"header": "Net", "facets": [{"name": "Length", "type": "Numerical"}, {"name": "Layer", "type": "Text"}]}
]})";

ChildResult runClient(const EnvironmentChanges& changes) {
    EnvironmentChanges environment = zelutil::test::withoutProductVariables();
    for (const auto& [name, value] : changes) {
        environment[name] = value;
    }
    return zelutil::test::run({ZELUTIL_TEST_C_CLIENT, {}, environment, std::filesystem::temp_directory_path()});
}

TEST(CClient, GetsWhatTheFilesSay) {
    const InstallationTree tree;
    const TempDirectory home;
    writeTextFile(tree / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg", kDefaults);
    writeTextFile(tree / "share/qtxsetup/canvas/resources/tessel/facet_settings.cfg", kFacets);
    writeTextFile(home / "pcbenv/tessel/tessel_settings.cfg", kUser);

    const ChildResult result =
        runClient({{"QTXROOT", systemText(tree.root())}, {"HOMEPATH", windowsText(home.path())}});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "the library is of the headers' version: 1\n"
              "display::grid: \"1.27\"\n"
              "DISPLAY::GRID: \"1.27\"\n"
              "grid: \"1.27\"\n"
              "units: \"mm\"\n"
              "emptied: null\n"
              "unknown: null\n"
              "default of grid: \"0.635\"\n"
              "default of emptied: \"full\"\n"
              "default of unknown: null\n"
              "same text: 1\n"
              "shortcut of 1: \"Ctrl+S\"\n"
              "shortcut of 2: \"F3\"\n"
              "shortcut of 99: \"\"\n"
              "shortcut of 1 in 4 bytes: \"Ctrl**\"\n"
              "observer of 1: a handle\n"
              "observer of 99: null\n"
              "active 0, default 0\n"
              "before 7: 0\n"
              "before 8: 7\n"
              "before 8 again: 8\n"
              "active 8, default 0\n"
              "Net Length: 1\n"
              "Net Layer: 0\n"
              "Net Width: -1\n"
              "net Length: -1\n"
              "Net Layer defined: 1\n"
              "Net layer defined: 0\n");
}

TEST(CClient, GetsNothingWithoutAnInstallation) {
    const std::string notFound =
        "ERROR: Vorn Marl hierarchy root could not be located.\n"
        "Make sure <qtxroot>/tools/bin is included in the $PATH\n";
    const ChildResult result = runClient({{"HOMEPATH", "Z:\\none"}, {"PATH", ""}});
    EXPECT_EQ(result.exitCode, 0);
    // The preferences and the facets each look for the root once.
    EXPECT_EQ(result.err, notFound + notFound);
    EXPECT_EQ(result.out, "the library is of the headers' version: 1\n" + notFound +
                              "display::grid: null\n"
                              "DISPLAY::GRID: null\n"
                              "grid: null\n"
                              "units: null\n"
                              "emptied: null\n"
                              "unknown: null\n"
                              "default of grid: null\n"
                              "default of emptied: null\n"
                              "default of unknown: null\n"
                              "same text: 1\n"
                              "shortcut of 1: \"\"\n"
                              "shortcut of 2: \"\"\n"
                              "shortcut of 99: \"\"\n"
                              "shortcut of 1 in 4 bytes: \"\"\n"
                              "observer of 1: null\n"
                              "observer of 99: null\n"
                              "active 0, default 0\n"
                              "before 7: 0\n"
                              "before 8: 7\n"
                              "before 8 again: 8\n"
                              "active 8, default 0\n" +
                              notFound +
                              "Net Length: -1\n"
                              "Net Layer: -1\n"
                              "Net Width: -1\n"
                              "net Length: -1\n"
                              "Net Layer defined: 0\n"
                              "Net layer defined: 0\n");
}

}  // namespace
