// Tests that a bundle says of files and links what its maker could do with them, whoever asks it.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

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

/// A link to nothing, and whether a save gets past it.
struct LinkRow {
    const char* name;
    const char* link;  ///< Below the world's directory, as are the others.
    const char* target;
    const char* end;  ///< The target behind all links.
    bool canSave;
};
constexpr char kFileInHome[] = "home/pcbenv/tessel/tessel_settings.cfg";
constexpr LinkRow kDeadLinks[] = {
    {"Home", "home", "gone", "gone", false},
    {"Environment", "home/pcbenv", "gone/pcbenv", "gone/pcbenv", false},
    {"EnvironmentInADirectoryThatIsThere", "home/pcbenv", "here/pcbenv", "here/pcbenv", false},
    {"DirectoryOfTheFile", "home/pcbenv/tessel", "here/tessel", "here/tessel", false},
    {"FileInADirectoryThatIsGone", kFileInHome, "gone/mine.cfg", "gone/mine.cfg", false},
    {"FileInADirectoryThatIsThere", kFileInHome, "here/mine.cfg", "here/mine.cfg", true},
    {"FileBehindTwoLinks", kFileInHome, "here/second", "here/mine.cfg", true},
};

/// Asks a machine, and the bundle of it, on another one.
class MachineAndBundle {
public:
    explicit MachineAndBundle(const DoctorWorld& world) : world_(world), made_(here({"bundle", bundle().string()})) {}

    fs::path bundle() const { return elsewhere_ / "bundle"; }
    const ChildResult& made() const { return made_; }
    ChildResult here(const std::vector<std::string>& arguments) const {
        return run({ZELUTIL_TEST_COMMAND, arguments, world_.environment, world_.here});
    }
    ChildResult there(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--world", bundle().string()});
        return run({ZELUTIL_TEST_COMMAND, arguments, withoutProductVariables(), elsewhere_.path()});
    }

private:
    const DoctorWorld& world_;
    TempDirectory elsewhere_;
    ChildResult made_;
};

void expectSame(const ChildResult& here, const ChildResult& there) {
    EXPECT_EQ(there.exitCode, here.exitCode);
    EXPECT_EQ(there.out, here.out);
    EXPECT_EQ(there.err, here.err);
}

class DeadLinks : public testing::TestWithParam<LinkRow> {
protected:
    DeadLinks() {
        fs::remove_all(link_);
        fs::create_directories(link_.parent_path());
        fs::create_symlink("mine.cfg", world_.here / "second");
        fs::create_symlink(world_.work / GetParam().target, link_);
    }

    const DoctorWorld world_;
    const fs::path link_ = world_.work / GetParam().link;
};

TEST_P(DeadLinks, AreNamedAndTheirBundleSaysTheSame) {
    const MachineAndBundle both(world_);
    EXPECT_EQ(both.made().exitCode, 0) << both.made().err;
    const ChildResult doctor = both.here({"doctor"});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_NE(
        doctor.out.find("warning: The file \"" + world_.userFile().string() + "\" is not there, because the link \"" +
                        link_.string() + "\" leads to \"" + std::string(world_.work / GetParam().end) +
                        "\", which is not there" + (GetParam().canSave ? "; a save makes it." : ", so that ")),
        std::string::npos)
        << doctor.out;
    expectSame(doctor, both.there({"doctor"}));
    expectSame(both.here({"list"}), both.there({"list"}));
    const ChildResult saved = both.here({"set", "s::value=3"});
    EXPECT_EQ(saved.exitCode, GetParam().canSave ? 0 : 3) << saved.err;
    EXPECT_EQ(fs::exists(link_), GetParam().canSave);
    expectSame(saved, both.there({"set", "s::value=3"}));
    expectSame(both.here({"doctor"}), both.there({"doctor"}));
    expectSame(both.here({"get", "s::value"}), both.there({"get", "s::value"}));
}

/// A share that is not mounted must not have a profile of all that is on it replaced by an empty one.
TEST_P(DeadLinks, ThroughWhichNothingIsSavedAreNotTakenAsNoChanges) {
    writeTextFile(world_.defaults(), R"({"meta": [
        {"header": "S", "attribute": "s", "tclCommand": "t", "defaultsettings": [{"name": "value", "value": "1"}]},
        {"header": "K", "attribute": "k", "submanagerId": 100, "tclCommand": "t", "defaultsettings":
            {"actions": [{"id": 1, "context": "board", "command": "design save", "shortcut": "Ctrl+S"}]}}]})");
    const std::string profile = world_.work / "profile.json";
    const auto command = [&](const std::vector<std::string>& arguments) {
        return run({ZELUTIL_TEST_COMMAND, arguments, world_.environment, world_.here});
    };
    const std::string before = R"({"zelutilProfile": 1, "actions": []})"
                               "\n\n";
    writeTextFile(profile, before);
    const ChildResult exported = command({"export", profile});
    const ChildResult got = command({"get", "s::value"});
    const std::string unread = "Nothing of the user's file is in force.";
    EXPECT_EQ(exported.exitCode, GetParam().canSave ? 0 : 3) << exported.err;
    EXPECT_EQ(readTextFile(profile) == before, !GetParam().canSave);
    EXPECT_EQ(got.exitCode, GetParam().canSave ? 0 : 1) << got.err;
    EXPECT_EQ(got.err.find(unread) != std::string::npos, !GetParam().canSave) << got.err;
}

INSTANTIATE_TEST_SUITE_P(World, DeadLinks, testing::ValuesIn(kDeadLinks),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WorldRights, APathThatIsTooLongIsToldAsSuchInABundleToo) {
    std::string deep;
    for (int i = 0; i < 25; ++i) {
        deep += '/' + std::string(200, 'd');
    }
    for (const auto& [home, said] :
         {std::pair<std::string, std::string>("/" + std::string(5000, 'h'), "because the name"),
          {deep, "because its path is too long for the system."}}) {
        DoctorWorld world;
        world.environment["HOMEPATH"] = home;
        const MachineAndBundle both(world);
        EXPECT_EQ(both.made().exitCode, 0) << both.made().err;
        const ChildResult doctor = both.here({"doctor"});
        EXPECT_EQ(doctor.exitCode, 1);
        EXPECT_NE(doctor.out.find(said), std::string::npos) << doctor.out;
        EXPECT_EQ(doctor.out.find("may not be entered"), std::string::npos) << doctor.out;
        expectSame(doctor, both.there({"doctor"}));
        expectSame(both.here({"list"}), both.there({"list"}));
    }
}

/// A test cannot have a server fail, so that the manifest says so.
TEST(WorldRights, AnotherReasonIsToldInTheWordsOfTheSystem) {
    const DoctorWorld world;
    const MachineAndBundle both(world);
    const std::string file = world.userFile();
    std::string manifest = readTextFile(both.bundle() / "world.json");
    const std::string shown = '"' + file + "\": false";
    ASSERT_NE(manifest.find(shown), std::string::npos) << manifest;
    manifest.replace(manifest.find(shown), shown.size(), '"' + file + "\": " + std::to_string(EIO));
    writeTextFile(both.bundle() / "world.json", manifest);
    const ChildResult doctor = both.there({"doctor"});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_NE(doctor.out.find("The file \"" + file + "\" cannot be looked at: Input/output error.\n"),
              std::string::npos)
        << doctor.out;
}

TEST(WorldLinks, ABundleHasTheLinkThatLeadsRoundInACircle) {
    const DoctorWorld world;
    fs::create_directories(world.userFile().parent_path());
    fs::create_symlink(world.userFile().filename(), world.userFile());
    const MachineAndBundle both(world);
    EXPECT_EQ(both.made().exitCode, 0) << both.made().err;
    const ChildResult doctor = both.here({"doctor"});
    EXPECT_NE(doctor.out.find("leads round in a circle"), std::string::npos) << doctor.out;
    expectSame(doctor, both.there({"doctor"}));
    expectSame(both.here({"list"}), both.there({"list"}));
    const ChildResult saved = both.here({"set", "s::value=3"});
    EXPECT_EQ(saved.exitCode, 3) << saved.out;
    expectSame(saved, both.there({"set", "s::value=3"}));
}

}  // namespace
}  // namespace zelutil::test
