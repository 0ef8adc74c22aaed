// Tests that users' files in directories that may not be looked into are noted.
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "command/upgrade/user_files.h"
#include "support/ordinary_user.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using zelutil::command::upgrade::NotSeen;
using zelutil::command::upgrade::UserFiles;
using zelutil::test::OrdinaryUser;
using zelutil::test::TempDirectory;
using zelutil::test::writeTextFile;

/// Two homes. A test takes the rights of the second one away from everybody.
class UpgradeRights : public testing::Test {
protected:
    UpgradeRights() {
        for (const char* const user : {"ann", "eve"}) {
            writeTextFile(file(user), "{}");
            for (fs::path path = file(user); path != work_.path().parent_path(); path = path.parent_path()) {
                fs::permissions(path, fs::perms::all);
            }
        }
    }
    ~UpgradeRights() override { fs::permissions(shut_, fs::perms::all); }

    fs::path file(const char* user) const { return work_ / user / "pcbenv/tessel/tessel_settings.cfg"; }

    /// Returns what an ordinary user finds, who may do this with the home.
    UserFiles found(const fs::path& argument, fs::perms rights) const {
        fs::permissions(shut_, rights);
        const OrdinaryUser user;
        UserFiles files;
        EXPECT_TRUE(files.add(argument));
        return files;
    }

    static void expectShut(const UserFiles& files, const fs::path& path) {
        ASSERT_EQ(files.notSeen().size(), 1U);
        EXPECT_EQ(files.notSeen()[0].path, path);
        EXPECT_EQ(files.notSeen()[0].why, NotSeen::Why::Shut);
    }

    TempDirectory work_;
    const fs::path shut_ = work_ / "eve";
};

TEST_F(UpgradeRights, AHomeThatIsShutIsNotSeen) {
    const UserFiles files = found(work_.path(), fs::perms::none);
    EXPECT_EQ(files.files(), std::vector<fs::path>{file("ann")});
    expectShut(files, shut_);
}

TEST_F(UpgradeRights, AHomeThatTellsNamesOnlyIsNotSeen) {
    const auto reading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    expectShut(found(work_.path(), reading), shut_);
}

TEST_F(UpgradeRights, APatternBehindWhichAHomeIsShutIsNotSeen) {
    const UserFiles files = found(work_ / "*/pcbenv", fs::perms::none);
    EXPECT_EQ(files.files(), std::vector<fs::path>{file("ann")});
    expectShut(files, shut_ / "pcbenv");
    expectShut(found(work_ / "*/p*", fs::perms::none), shut_);
}

TEST_F(UpgradeRights, AFileInAHomeThatIsShutIsNotSeen) { expectShut(found(file("eve"), fs::perms::none), file("eve")); }

}  // namespace
