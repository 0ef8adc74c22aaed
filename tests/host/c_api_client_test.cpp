#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/c_api_fixture.h"
#include "support/child_process.h"

namespace zelutil::test {
namespace {

ChildResult runClient(const PreferenceWorld& world, const std::string& what) {
    EnvironmentChanges environment = withoutProductVariables();
    const std::string home = windowsText(world.home().path());
    environment["QTXROOT"] = systemText(world.product().root());
    environment["HOMEDRIVE"] = home.substr(0, 2);
    environment["HOMEPATH"] = home.substr(2);
    return run({ZELUTIL_TEST_C_API_CLIENT, {what}, environment, std::filesystem::temp_directory_path()});
}

TEST_F(CApi, AHostInCSwapsTwoShortcutsAndANewProcessHasThemSwapped) {
    const ChildResult saved = runClient(world, "save");
    EXPECT_EQ(saved.out,
              "refused because of 2\n"
              "heard of display::colors::grid\n"
              "heard of display::grid\n"
              "written 1, actions 2, not restored 0\n");
    EXPECT_EQ(saved.err, "");
    EXPECT_EQ(saved.exitCode, 0);

    const ChildResult read = runClient(world, "read");
    EXPECT_EQ(read.out,
              "grid 0.25\n"
              "display::grid 0.25 (user)\n"
              "display::rats true\n"
              "display::layers 4\n"
              "display::units mm\n"
              "display::colors::grid blue (user)\n"
              "1 Ctrl+O -\n"
              "2 Ctrl+S -\n"
              "3 Ctrl+O -\n");
    EXPECT_EQ(read.err, "");
    EXPECT_EQ(read.exitCode, 0);
}

TEST_F(CApi, AHostInCMayAskInItsExitFunctions) {
    const ChildResult asked = runClient(world, "late");
    EXPECT_EQ(asked.out, "asked late\n");
    EXPECT_EQ(asked.err, "");
    EXPECT_EQ(asked.exitCode, 0);
}

}  // namespace
}  // namespace zelutil::test
