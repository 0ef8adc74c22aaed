// Tests that a bundle says of files what its maker could do with them, whoever asks it.
#include <gtest/gtest.h>

#include <filesystem>

#include "command/doctor_world.h"
#include "support/ordinary_user.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

TEST(WorldRights, FileThatItsMakerMayNotReadIsUnreadable) {
    const DoctorWorld world;
    const TempDirectory elsewhere;
    writeTextFile(world.userFile(), kHealthyUser);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(world.work.path())) {
        fs::permissions(entry.path(), fs::perms::all);
    }
    fs::permissions(world.work.path(), fs::perms::all);
    fs::permissions(elsewhere.path(), fs::perms::all);
    fs::permissions(world.userFile(), ::geteuid() == 0 ? fs::perms::owner_read : fs::perms::none);
    const fs::path bundle = elsewhere / "bundle";
    {
        const OrdinaryUser user;
        const ChildResult made =
            run({ZELUTIL_TEST_COMMAND, {"bundle", bundle.u8string()}, world.environment, world.here});
        // The exit code is that of the sanitizer, where there is one: it may not look for leaks in such a process.
        EXPECT_TRUE(fs::exists(bundle / "README.txt")) << made.out << made.err;
        EXPECT_NE(made.out.find(world.userFile().u8string() + " (unreadable)"), std::string::npos) << made.out;
    }
    const ChildResult doctor = run({ZELUTIL_TEST_COMMAND,
                                    {"doctor", "--json", "--world", bundle.u8string()},
                                    withoutProductVariables(),
                                    elsewhere.path()});
    EXPECT_NE(doctor.out.find("\"unreadable\""), std::string::npos) << doctor.out << doctor.err;
    EXPECT_EQ(doctor.out.find("\"malformed\""), std::string::npos) << doctor.out;
}

}  // namespace
}  // namespace zelutil::test
