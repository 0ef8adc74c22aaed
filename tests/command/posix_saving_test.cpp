// Arguments that are not UTF-8, which on Windows are UTF-16 and reach a program as UTF-8, rights, and drives.
#include <gtest/gtest.h>

#include <filesystem>

#include "command/command_world.h"
#include "support/ordinary_user.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

constexpr fs::perms kReading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms kEntering = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

/// Lets everybody have the file and enter the test's directories above it.
void letAllEnter(const fs::path& file) {
    for (fs::path path = file; path != fs::temp_directory_path(); path = path.parent_path()) {
        fs::permissions(path, fs::perms::all);
    }
}

TEST(SavingPosix, AValueThatIsNotUtf8IsRefused) {
    const CommandWorld world;
    const ChildResult result = world.run({"set", "units=\xff"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "zelutil: error: \"units=\xEF\xBF\xBD\" is not in UTF-8, as the user's file is.\n"
              "    \"zelutil set --help\" says how it is called.\n");
    EXPECT_FALSE(std::filesystem::exists(world.userFile()));
}

}  // namespace
/// Neither can the file be written into nor another one be put in its place.
TEST(SavingPosix, AResetOfAFileThatMayNotBeWrittenSaysSo) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    for (const fs::path& path : {world.userFile(), world.defaultsFile()}) {
        letAllEnter(path);
    }
    fs::permissions(world.userFile(), kReading);
    fs::permissions(world.userFile().parent_path(), kReading | kEntering);
    ChildResult result;
    {
        const OrdinaryUser user;
        result = world.run({"reset", "grid"});
    }
    fs::permissions(world.userFile().parent_path(), fs::perms::all);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.find("zelutil: error: Nothing was saved. The file \"" + world.userFile().u8string() +
                              "\" is read-only, so that nothing can be saved.\n"
                              "    Give the user the right to write it.\n"),
              0U)
        << result.err;
    EXPECT_EQ(readTextFile(world.userFile()), kCommandUser);
}

/// The only drive is Z:, so there is nothing to be read.
TEST(Reading, TellsAHomeOnAnotherDrive) {
    const CommandWorld world;
    const ChildResult result = world.run({"get", "grid"}, {{"HOMEDRIVE", "C:"}, {"HOMEPATH", "\\home"}});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "display::grids::grid=0.5\n");
    EXPECT_NE(result.err.find("warning: The user's file could not be looked for: no file has this path.\n"
                              "    The only drive is Z:, "),
              std::string::npos)
        << result.err;
}

}  // namespace zelutil::test
