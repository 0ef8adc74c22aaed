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
    // Its maker packs the bundle.
    const fs::path inBundle = bundle / "files" / world.userFile().relative_path();
    EXPECT_NE(fs::status(inBundle).permissions() & fs::perms::owner_read, fs::perms::none);
}

TEST(WorldRights, ABundleThatTheUserMayNotReadIsToldAsSuch) {
    const TempDirectory elsewhere;
    fs::permissions(elsewhere.path(), fs::perms::all);
    const fs::path bundle = elsewhere / "bundle";
    const DoctorWorld world;
    ASSERT_EQ(run({ZELUTIL_TEST_COMMAND, {"bundle", bundle.u8string()}, world.environment, world.here}).exitCode, 0);
    fs::permissions(bundle, ::geteuid() == 0 ? fs::perms::owner_all : fs::perms::none);
    const auto ask = [&] {
        const OrdinaryUser user;
        return run({ZELUTIL_TEST_COMMAND,
                    {"doctor", "--world", bundle.u8string()},
                    withoutProductVariables(),
                    elsewhere.path()});
    };
    const ChildResult doctor = ask();
    fs::permissions(bundle, fs::perms::all);
    EXPECT_EQ(doctor.out, "");
    EXPECT_EQ(doctor.err.find("zelutil: error: The bundle in \"" + bundle.u8string() +
                              "\" may not be read by this user.\n"
                              "    Ask it as the user who has it, or have that user give the right to read it.\n"),
              0U)
        << doctor.err;
}

TEST(WorldLinks, ABundleHasTheLinkThatLeadsRoundInACircle) {
    const DoctorWorld world;
    fs::create_directories(world.userFile().parent_path());
    fs::create_symlink(world.userFile().filename(), world.userFile());
    const std::string bundle = world.work / "bundle";
    const ChildResult made = run({ZELUTIL_TEST_COMMAND, {"bundle", bundle}, world.environment, world.here});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    const ChildResult here = run({ZELUTIL_TEST_COMMAND, {"doctor"}, world.environment, world.here});
    EXPECT_NE(here.out.find("leads round in a circle"), std::string::npos) << here.out;
    EXPECT_EQ(run({ZELUTIL_TEST_COMMAND, {"doctor", "--world", bundle}, withoutProductVariables(), world.home}).out,
              here.out);
}

}  // namespace
}  // namespace zelutil::test
