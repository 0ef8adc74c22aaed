// A replaced file keeps its links, modes and owners where files have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/replace_file.h"
#include "platform/replacement_name.h"
#include "support/access_list.h"
#include "support/ordinary_user.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::accessListOf;
using test::kNobody;
using test::OrdinaryUser;
using test::readTextFile;
using test::setAccessList;
using test::TempDirectory;
using test::windowsText;
using test::writeTextFile;

struct stat statusOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status;
}

class ReplacePosixFile : public testing::Test {
protected:
    ReplacePosixFile() { fs::permissions(directory_.path(), fs::perms::all); }

    Replaced replace(const fs::path& path, std::string_view bytes) {
        return replaceFile(windowsText(path).c_str(), bytes);
    }

    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory_.path()), {}));
    }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
};

TEST_F(ReplacePosixFile, KeepsTheMode) {
    writeTextFile(file_, "old");
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
        ASSERT_EQ(::chmod(file_.c_str(), mode), 0);
        EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
        EXPECT_EQ(statusOf(file_).st_mode & 07777, mode);
    }
}

TEST_F(ReplacePosixFile, ANewFileHasTheModeTheUserAskedFor) {
    const mode_t before = ::umask(027);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    ::umask(before);
    EXPECT_EQ(statusOf(file_).st_mode & 07777, 0640U);
}

TEST_F(ReplacePosixFile, PutsANewFileInThePlaceOfTheOld) {
    writeTextFile(file_, "old");
    const int reader = ::open(file_.c_str(), O_RDONLY);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    // Whoever had it open still reads the old contents, whole.
    char bytes[8] = {};
    EXPECT_EQ(::read(reader, bytes, sizeof bytes), 3);
    EXPECT_STREQ(bytes, "old");
    ::close(reader);
}

TEST_F(ReplacePosixFile, KeepsTheOwnerWhenRootWrites) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root writes other users' files";
    }
    writeTextFile(file_, "old");
    ASSERT_EQ(::chown(file_.c_str(), kNobody, kNobody), 0);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(statusOf(file_).st_uid, kNobody);
    EXPECT_EQ(statusOf(file_).st_gid, kNobody);
}

TEST_F(ReplacePosixFile, WritesIntoAFileOfAnotherOwner) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root to make another user's file";
    }
    writeTextFile(file_, "old contents");
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    const ino_t inode = statusOf(file_).st_ino;
    {
        const OrdinaryUser user;
        EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    }
    EXPECT_EQ(readTextFile(file_), "new");
    EXPECT_EQ(statusOf(file_).st_ino, inode);
    EXPECT_EQ(statusOf(file_).st_uid, 0U);
    EXPECT_EQ(entries(), 1U);
}

TEST_F(ReplacePosixFile, WritesIntoAFileWhoseDirectoryCannotBeWritten) {
    const OrdinaryUser user;
    writeTextFile(file_, "old contents");
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    const TempDirectory closed;
    fs::rename(file_, closed / "x.cfg");
    ASSERT_EQ(::chmod(closed.path().c_str(), 0555), 0);
    EXPECT_EQ(replace(closed / "x.cfg", "new"), Replaced::Yes);
    EXPECT_EQ(readTextFile(closed / "x.cfg"), "new");
    EXPECT_EQ(replace(closed / "y.cfg", "new"), Replaced::No);
    ASSERT_EQ(::chmod(closed.path().c_str(), 0755), 0);
    EXPECT_FALSE(fs::exists(closed / "y.cfg"));
}

TEST_F(ReplacePosixFile, LeavesAReadOnlyFileAsItIs) {
    const OrdinaryUser user;
    writeTextFile(file_, "old");
    ASSERT_EQ(::chmod(file_.c_str(), 0444), 0);
    EXPECT_EQ(replace(file_, "new"), Replaced::No);
    EXPECT_EQ(readTextFile(file_), "old");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(ReplacePosixFile, FollowsLinksAndKeepsThem) {
    writeTextFile(directory_ / "real/settings.cfg", "old");
    fs::create_symlink("real/settings.cfg", directory_ / "relative.cfg");
    fs::create_symlink(directory_ / "relative.cfg", file_);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(readTextFile(directory_ / "real/settings.cfg"), "new");
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_TRUE(fs::is_symlink(directory_ / "relative.cfg"));
}

TEST_F(ReplacePosixFile, MakesTheFileThatADanglingLinkNames) {
    fs::create_directory(directory_ / "real");
    fs::create_symlink("real/settings.cfg", file_);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(readTextFile(directory_ / "real/settings.cfg"), "new");
    EXPECT_TRUE(fs::is_symlink(file_));
}

TEST_F(ReplacePosixFile, LinksInACircleNameNoFile) {
    fs::create_symlink("b", directory_ / "a");
    fs::create_symlink("a", directory_ / "b");
    EXPECT_EQ(replace(directory_ / "a", "new"), Replaced::No);
    EXPECT_EQ(entries(), 2U);
}

TEST_F(ReplacePosixFile, LeavesWhatIsNoRegularFileAlone) {
    ASSERT_EQ(::mkfifo(file_.c_str(), 0666), 0);
    EXPECT_EQ(replace(file_, "new"), Replaced::No);
    EXPECT_TRUE(fs::is_fifo(file_));
    EXPECT_EQ(replace("/dev/null", "new"), Replaced::No);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

class ReplaceFileWithAccessList : public ReplacePosixFile {
protected:
    void SetUp() override {
        writeTextFile(file_, "old");
        if (!setAccessList(file_, test::kAccessList, list_)) {
            GTEST_SKIP() << "this file system has no access lists";
        }
    }

    const std::string list_ = test::accessListForOneMore();
};

TEST_F(ReplaceFileWithAccessList, KeepsIt) {
    const struct stat before = statusOf(file_);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_NE(statusOf(file_).st_ino, before.st_ino);
    EXPECT_EQ(statusOf(file_).st_mode, before.st_mode);
    EXPECT_EQ(accessListOf(file_), list_);
}

TEST_F(ReplaceFileWithAccessList, KeepsACopyWithIt) {
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    EXPECT_EQ(accessListOf(file_.string() + ".bad"), list_);
}

TEST_F(ReplaceFileWithAccessList, KeepsACopyOfAnotherUsersFileWithoutIt) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root to make another user's file";
    }
    // Its group, which may do nothing, is none that the user can be in.
    ASSERT_EQ(::chown(file_.c_str(), 0, 4321), 0);
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    // Nor is the copy to have the list that the directory hands down.
    ASSERT_TRUE(setAccessList(directory_.path(), test::kDefaultAccessList, list_));
    const OrdinaryUser user;
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    EXPECT_EQ(accessListOf(file_.string() + ".bad"), "");
    EXPECT_EQ(statusOf(file_.string() + ".bad").st_mode & 0777, 0600U);
}

TEST_F(ReplaceFileWithAccessList, DoesNotGetItFromTheDirectory) {
    const fs::path plain = directory_ / "plain.cfg";
    writeTextFile(plain, "old");
    ASSERT_EQ(::chmod(plain.c_str(), 0640), 0);
    ASSERT_TRUE(setAccessList(directory_.path(), test::kDefaultAccessList, list_));
    EXPECT_EQ(replace(plain, "new"), Replaced::Yes);
    EXPECT_EQ(accessListOf(plain), "");
    EXPECT_EQ(statusOf(plain).st_mode & 0777, 0640U);
    // A file that replaces none has what the directory hands down.
    EXPECT_EQ(replace(directory_ / "first.cfg", "new"), Replaced::Yes);
    EXPECT_NE(accessListOf(directory_ / "first.cfg"), "");
}

TEST_F(ReplacePosixFile, ReplacesFilesOfAnyNameThatTheSystemTakes) {
    for (const std::size_t length : {1U, 224U, 225U, 226U, 240U, 255U}) {
        const fs::path file = directory_ / std::string(length, 'n');
        EXPECT_EQ(replace(file, "first"), Replaced::Yes) << length;
        EXPECT_EQ(replace(file, "second"), Replaced::Yes) << length;
        EXPECT_EQ(readTextFile(file), "second") << length;
        ASSERT_TRUE(keepCopy(windowsText(file).c_str())) << length;
        EXPECT_EQ(entries(), 2U) << length;
        fs::remove_all(directory_.path());
        fs::create_directory(directory_.path());
    }
    EXPECT_EQ(replace(directory_ / std::string(256, 'n'), "new"), Replaced::No);
}

TEST_F(ReplacePosixFile, RemovesALeftoverOfALongName) {
    const std::string name(250, 'n');
    writeTextFile(directory_ / name, "old");
    writeTextFile(directory_ / replacementName(name, 1, 0), "left");
    EXPECT_EQ(replace(directory_ / name, "new"), Replaced::Yes);
    EXPECT_EQ(entries(), 1U);
}

TEST_F(ReplacePosixFile, AFileOfALeftoversNameThatIsNoRegularOneStays) {
    const fs::path pipe = directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0666), 0);
    fs::create_symlink("elsewhere", directory_ / "tessel_settings.cfg.zelutil-00000001-00000001.tmp");
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(entries(), 3U);
}

TEST_F(ReplacePosixFile, ALinkTooManyIsNotReplaced) {
    writeTextFile(file_, "old");
    fs::path last = file_.filename();
    for (int i = 0; i < 45; ++i) {
        const std::string name = "link" + std::to_string(i);
        fs::create_symlink(last, directory_ / name);
        last = name;
    }
    EXPECT_EQ(replace(directory_ / last, "new"), Replaced::No);
    EXPECT_TRUE(fs::is_symlink(directory_ / last));
    EXPECT_EQ(readTextFile(file_), "old");
}

TEST_F(ReplacePosixFile, AKeptCopyHasModeAndOwner) {
    writeTextFile(file_, "half {");
    ASSERT_EQ(::chmod(file_.c_str(), 0640), 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(file_.c_str(), kNobody, kNobody), 0);
    }
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    const struct stat kept = statusOf(file_.string() + ".bad");
    EXPECT_EQ(kept.st_mode & 07777, 0640U);
    EXPECT_EQ(kept.st_uid, statusOf(file_).st_uid);
    EXPECT_EQ(kept.st_gid, statusOf(file_).st_gid);
}

TEST_F(ReplacePosixFile, AKeptCopyOfAnotherUsersFileIsPrivate) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root to make another user's file";
    }
    writeTextFile(file_, "half {");
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    const OrdinaryUser user;
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    const struct stat kept = statusOf(file_.string() + ".bad");
    EXPECT_EQ(kept.st_mode & 07777, 0600U);
    EXPECT_EQ(kept.st_uid, kNobody);
}

TEST_F(ReplacePosixFile, ACopyIsKeptBesideTheLink) {
    writeTextFile(directory_ / "real/settings.cfg", "half {");
    fs::create_symlink("real/settings.cfg", file_);
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    EXPECT_EQ(readTextFile(file_.string() + ".bad"), "half {");
    EXPECT_FALSE(fs::is_symlink(file_.string() + ".bad"));
}

TEST_F(ReplacePosixFile, ACopyDoesNotFollowALinkOfItsName) {
    writeTextFile(file_, "half {");
    fs::create_symlink("elsewhere", file_.string() + ".bad");
    ASSERT_TRUE(keepCopy(windowsText(file_).c_str()));
    EXPECT_FALSE(fs::exists(directory_ / "elsewhere"));
    EXPECT_EQ(readTextFile(file_.string() + ".bad.2"), "half {");
}

TEST_F(ReplacePosixFile, LeavesTheFileAnotherProcessIsStillWriting) {
    const fs::path written = directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp";
    writeTextFile(written, "half");
    const int writer = ::open(written.c_str(), O_WRONLY);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_TRUE(fs::exists(written));
    ::close(writer);
    EXPECT_EQ(replace(file_, "newer"), Replaced::Yes);
    EXPECT_FALSE(fs::exists(written));
}

}  // namespace
}  // namespace zelutil::platform
