// Arguments that are not UTF-8. On Windows they are UTF-16, and reach a program as UTF-8.
#include <gtest/gtest.h>

#include "command/command_world.h"

namespace zelutil::test {
namespace {

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
