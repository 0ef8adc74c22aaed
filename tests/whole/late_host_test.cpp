// Each case runs a program that still asks the library while its own static objects and exit functions go.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/child_process.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using zelutil::test::ChildResult;
using zelutil::test::systemText;
using zelutil::test::windowsText;

constexpr char kResources[] = "share/qtxsetup/canvas/resources/tessel/";

class LateHost : public testing::Test {
protected:
    LateHost() {
        zelutil::test::makeInstallation(root);
        zelutil::test::writeTextFile(root / (std::string(kResources) + "facet_settings.cfg"),
                                     R"({"meta":[{"header":"Net","facets":[{"name":"Length","type":"Numerical"}]}]})");
        zelutil::test::writeTextFile(root / (std::string(kResources) + "tessel_settings.cfg"),
                                     zelutil::test::defaultsWithValue("shipped"));
        fs::create_directory(temporary);
        environment["QTXROOT"] = systemText(root);
        environment["PATH"] = std::nullopt;
        environment["TMP"] = systemText(temporary);
        const std::string home = windowsText(directory / "home");
        environment["HOMEDRIVE"] = home.substr(0, 2);
        environment["HOMEPATH"] = home.substr(2);
    }

    /// Returns what a host prints that asks so; it must end well.
    std::string outputOf(const std::string& who, const std::vector<std::string>& questions) const {
        std::vector<std::string> arguments = {who};
        arguments.insert(arguments.end(), questions.begin(), questions.end());
        const ChildResult result =
            zelutil::test::run({ZELUTIL_TEST_LATE_HOST, arguments, environment, directory.path()});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    fs::path userFile() const { return directory / "home/pcbenv/tessel/tessel_settings.cfg"; }

    zelutil::test::TempDirectory directory;
    fs::path root = directory / "product";
    fs::path temporary = directory / "temporary";
    zelutil::test::EnvironmentChanges environment = zelutil::test::withoutProductVariables();
};

constexpr const char* kObjectAndFunction[] = {"object", "function"};

std::string twice(const std::string& text) { return text + text; }

TEST_F(LateHost, GetsThePathsItGotBefore) {
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"root"}), twice(windowsText(root) + "\n")) << who;
        EXPECT_EQ(outputOf(who, {"pcbenv"}), twice(windowsText(directory / "home/pcbenv") + "\n")) << who;
        EXPECT_EQ(outputOf(who, {"temporary"}), twice(windowsText(temporary) + "\n")) << who;
    }
}

TEST_F(LateHost, MayEnterTemporaryFilesForDeletion) {
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"entered"}), twice("made\n")) << who;
        EXPECT_TRUE(fs::is_empty(temporary)) << who;
    }
}

TEST_F(LateHost, StillKnowsTheFacets) {
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"facet"}), twice("1\n")) << who;
    }
}

TEST_F(LateHost, StillEditsActionsAndIsTold) {
    const std::string first = "\"a shortcut that needs memory of its own 0\"";
    const std::string second = "\"a shortcut that needs memory of its own 1\"";
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"actions"}), "shortcut \"\" -> " + first + "\nnow " + first + "\nshortcut " + first +
                                                  " -> " + second + "\nnow " + second + "\n")
            << who;
    }
}

TEST_F(LateHost, StillHasItsObserversTold) {
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"server"}), "application 5\napplication 6\n") << who;
        EXPECT_EQ(outputOf(who, {"settings"}), twice("changed a name\n")) << who;
    }
}

TEST_F(LateHost, MayAskForEverythingInAnyOrder) {
    const std::string paths =
        windowsText(root) + "\n" + windowsText(directory / "home/pcbenv") + "\n" + windowsText(temporary) + "\n";
    for (const char* const who : kObjectAndFunction) {
        EXPECT_EQ(outputOf(who, {"server", "facet", "root", "pcbenv", "temporary", "settings"}),
                  "application 5\n1\n" + paths + "changed a name\napplication 6\n1\n" + paths + "changed a name\n")
            << who;
        EXPECT_EQ(outputOf(who, {"settings", "temporary", "facet", "server"}),
                  "changed a name\n" + windowsText(temporary) + "\n1\napplication 5\nchanged a name\n" +
                      windowsText(temporary) + "\n1\napplication 6\n")
            << who;
    }
}

TEST_F(LateHost, MayAskForTheFirstTimeAtTheEnd) {
    EXPECT_EQ(outputOf("end", {"root", "facet", "server", "settings", "entered"}),
              windowsText(root) + "\n1\napplication 5\nchanged a name\nmade\n");
    EXPECT_TRUE(fs::is_empty(temporary));
}

TEST_F(LateHost, MaySaveInAnExitFunctionBeforeTheManagerGoes) {
    const std::string first = "the first value that is saved by this program";
    const std::string last = "the last value that is saved by this program";
    EXPECT_EQ(outputOf("after", {"settings", "save", "value"}), "changed a name\nchanged s::value\nvalue " + first +
                                                                    "\nchanged a name\nchanged s::value\nvalue " +
                                                                    last + "\n");
    EXPECT_EQ(zelutil::test::readTextFile(userFile()), zelutil::test::savedText(last));
}

}  // namespace
