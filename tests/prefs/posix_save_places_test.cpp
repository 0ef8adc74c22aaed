// Saves to files that cannot be replaced or not be written, through links, and to a full disk. Whatever becomes of the
// file, the new value is in force and the observers are told.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/ordinary_user.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

class SaveTo : public testing::Test {
protected:
    SaveTo() {
        world_.writeDefaults(defaultsWithValue("default"));
        UserPreferenceManager::GetInstance();
        fs::create_directories(directory());
    }

    fs::path file() const { return world_.userFile(); }
    fs::path directory() const { return file().parent_path(); }

    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(directory()), {}); }

    /// Lets an ordinary user in.
    void openToEverybody() const { fs::permissions(world_.home().path(), fs::perms::all); }

    /// Saves and expects what every save does, wherever it goes.
    void saveAndListen(const std::string& value) {
        const Listener listener;
        EXPECT_NO_THROW(save(value));
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(listener.names, std::set<std::string>{"s::value"});
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), value);
    }

    PreferenceWorld world_;
};

TEST_F(SaveTo, AReadOnlyFileLeavesItAsItIs) {
    openToEverybody();
    world_.writeUser(userWithValue("user"));
    fs::permissions(directory(), fs::perms::all);
    ASSERT_EQ(::chmod(file().c_str(), 0444), 0);
    {
        const OrdinaryUser user;
        saveAndListen("1");
    }
    EXPECT_EQ(readTextFile(file()), userWithValue("user"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(SaveTo, AWritableFileInAReadOnlyDirectoryWritesIntoIt) {
    openToEverybody();
    world_.writeUser(userWithValue("a value that makes this file longer than the one that will be saved")
                         .append(std::string(500, ' ')));
    ASSERT_EQ(::chmod(file().c_str(), 0666), 0);
    ASSERT_EQ(::chmod(directory().c_str(), 0555), 0);
    {
        const OrdinaryUser user;
        saveAndListen("1");
        EXPECT_EQ(readTextFile(file()), savedText("1"));
        saveAndListen("a longer value");
    }
    EXPECT_EQ(readTextFile(file()), savedText("a longer value"));
    EXPECT_EQ(entries(), 1);
    ASSERT_EQ(::chmod(directory().c_str(), 0755), 0);
}

TEST_F(SaveTo, AReadOnlyDirectoryWithoutAFileMakesNone) {
    openToEverybody();
    ASSERT_EQ(::chmod(directory().c_str(), 0555), 0);
    {
        const OrdinaryUser user;
        saveAndListen("1");
    }
    EXPECT_EQ(entries(), 0);
    ASSERT_EQ(::chmod(directory().c_str(), 0755), 0);
}

TEST_F(SaveTo, ASymbolicLinkReplacesTheFileItNames) {
    const fs::path real = world_.home() / "real/settings.cfg";
    writeTextFile(real, userWithValue("user"));
    fs::create_symlink("../../real/settings.cfg", file());
    saveAndListen("1");
    EXPECT_TRUE(fs::is_symlink(file()));
    EXPECT_EQ(readTextFile(real), savedText("1"));
    EXPECT_EQ(entries(), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(real.parent_path()), {}), 1);
}

TEST_F(SaveTo, ADanglingLinkMakesTheFileItNames) {
    fs::create_directory(world_.home() / "real");
    fs::create_symlink(world_.home() / "real/settings.cfg", file());
    saveAndListen("1");
    EXPECT_TRUE(fs::is_symlink(file()));
    EXPECT_EQ(readTextFile(world_.home() / "real/settings.cfg"), savedText("1"));
}

TEST_F(SaveTo, ALinkIntoAMissingDirectoryMakesNothing) {
    fs::create_symlink(world_.home() / "missing/settings.cfg", file());
    saveAndListen("1");
    EXPECT_TRUE(fs::is_symlink(file()));
    EXPECT_FALSE(fs::exists(world_.home() / "missing"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(SaveTo, AFileWithAnotherNameIsSeenUnderBoth) {
    world_.writeUser(userWithValue("user"));
    fs::create_hard_link(file(), world_.home() / "other.cfg");
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(world_.home() / "other.cfg"), savedText("1"));
    EXPECT_EQ(fs::hard_link_count(file()), 2U);
    EXPECT_EQ(entries(), 1);
}

/// A file system of a few pages over the user's directory, seen by this process only.
class SmallDisk {
public:
    explicit SmallDisk(const fs::path& directory) : directory_(directory) {
        isMounted_ = ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     ::mount("tmpfs", directory_.c_str(), "tmpfs", 0, "size=32k") == 0;
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        if (isMounted_) {
            ::umount2(directory_.c_str(), MNT_DETACH);
        }
    }

    bool isMounted() const { return isMounted_; }

    /// Takes all the space that is left.
    void fill() const {
        std::ofstream filler(directory_ / "filler", std::ios::binary);
        while (filler << std::string(4096, 'x') << std::flush) {
        }
    }
    void makeRoom() const { fs::remove(directory_ / "filler"); }

private:
    fs::path directory_;
    bool isMounted_;
};

class SaveToAFullDisk : public SaveTo {
protected:
    void SetUp() override {
        if (!disk_.isMounted()) {
            GTEST_SKIP() << "needs the right to mount a file system";
        }
    }

    SmallDisk disk_{directory()};
};

TEST_F(SaveToAFullDisk, LeavesTheOldFileUntilThereIsRoom) {
    world_.writeUser(userWithValue("user"));
    disk_.fill();
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), userWithValue("user"));
    EXPECT_EQ(entries(), 2);
    disk_.makeRoom();
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(SaveToAFullDisk, LeavesAFileWithAnotherNameAsItIs) {
    world_.writeUser(userWithValue("user"));
    fs::create_hard_link(file(), directory() / "other.cfg");
    disk_.fill();
    saveAndListen(std::string(20'000, 'v'));
    EXPECT_EQ(readTextFile(file()), userWithValue("user"));
    EXPECT_EQ(entries(), 3);
}

TEST_F(SaveToAFullDisk, LeavesAFileThatIsNoJsonWhereItCannotBeKept) {
    world_.writeUser("half {");
    disk_.fill();
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), "half {");
    EXPECT_EQ(entries(), 2);
    disk_.makeRoom();
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(readTextFile(file().string() + ".bad"), "half {");
}

TEST_F(SaveToAFullDisk, MakesNoFile) {
    disk_.fill();
    saveAndListen("1");
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(entries(), 1);
}

}  // namespace
}  // namespace zelutil::test
