// A user's file that cannot be read, kept or overwritten for want of rights.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/ordinary_user.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

/// The file belongs to nobody else, and the library runs as its owner.
class UserFileWithoutRights : public testing::Test {
protected:
    UserFileWithoutRights() {
        world_.writeDefaults(defaultsWithValue("default"));
        fs::permissions(world_.home().path(), fs::perms::all);
        user_.emplace();
    }
    ~UserFileWithoutRights() override { allow(0777); }

    fs::path file() const { return world_.userFile(); }
    fs::path directory() const { return file().parent_path(); }
    fs::path kept() const { return file().string() + ".bad"; }
    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(directory()), {}); }

    void allow(mode_t ofDirectory) const { ::chmod(directory().c_str(), ofDirectory); }

    static void saveAndListen(const std::string& value) {
        const Listener listener;
        EXPECT_NO_THROW(save(value));
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), value);
    }

    PreferenceWorld world_;
    std::optional<OrdinaryUser> user_;
};

TEST_F(UserFileWithoutRights, IsKeptOnceItCanBeRead) {
    world_.writeUser(userWithValue("mine"));
    ::chmod(file().c_str(), 0);
    UserPreferenceManager::GetInstance();
    ::chmod(file().c_str(), 0640);
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("mine"));
    struct stat status {};
    ASSERT_EQ(::stat(kept().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    EXPECT_EQ(entries(), 2);
}

TEST_F(UserFileWithoutRights, OfADirectoryWithoutRightsAtTheStartIsKept) {
    world_.writeUser(userWithValue("mine"));
    allow(0);
    UserPreferenceManager::GetInstance();
    allow(0755);
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("mine"));
    EXPECT_EQ(entries(), 2);
}

TEST_F(UserFileWithoutRights, IsNoneWhereADirectoryOfItsPathIsNone) {
    writeTextFile(world_.home() / "pcbenv", "a file");
    UserPreferenceManager::GetInstance();
    fs::remove(world_.home() / "pcbenv");
    world_.writeUser(userWithValue("mine"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(UserFileWithoutRights, IsNotOverwrittenWhileItCannotBeRead) {
    world_.writeUser(userWithValue("mine"));
    ::chmod(file().c_str(), 0200);
    saveAndListen("1");
    saveAndListen("2");
    ::chmod(file().c_str(), 0600);
    EXPECT_EQ(readTextFile(file()), userWithValue("mine"));
    EXPECT_EQ(entries(), 1);
    saveAndListen("3");
    EXPECT_EQ(readTextFile(file()), savedText("3"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("mine"));
}

TEST_F(UserFileWithoutRights, IsNotOverwrittenWhereItAppearedAfterTheStart) {
    UserPreferenceManager::GetInstance();
    world_.writeUser(userWithValue("mine"));
    ::chmod(file().c_str(), 0200);
    saveAndListen("1");
    ::chmod(file().c_str(), 0600);
    EXPECT_EQ(readTextFile(file()), userWithValue("mine"));
}

TEST_F(UserFileWithoutRights, ThatWasReadAtTheStartIsReplaced) {
    world_.writeUser(userWithValue("mine"));
    UserPreferenceManager::GetInstance();
    ::chmod(file().c_str(), 0200);
    saveAndListen("1");
    ::chmod(file().c_str(), 0600);
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(UserFileWithoutRights, ThatIsNoJsonStaysWhereNothingCanBeKeptBesideIt) {
    world_.writeUser("half {");
    allow(0555);
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), "half {");
    EXPECT_EQ(entries(), 1);
    allow(0755);
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(readTextFile(kept()), "half {");
}

TEST_F(UserFileWithoutRights, ThatCannotBeOverwrittenIsKeptOnce) {
    world_.writeUser("half {");
    ::chmod(file().c_str(), 0444);
    saveAndListen("1");
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), "half {");
    EXPECT_EQ(readTextFile(kept()), "half {");
    EXPECT_EQ(entries(), 2);
}

/// Another process writes into the file under a lock, as a save does where the file has a second name.
class UserFileWithAWriter : public testing::Test {
protected:
    UserFileWithAWriter() {
        world_.writeDefaults(defaultsWithValue("default"));
        world_.writeUser("");
    }
    ~UserFileWithAWriter() override {
        if (child_ > 0) {
            int status = 0;
            EXPECT_EQ(::waitpid(child_, &status, 0), child_);
            EXPECT_EQ(status, 0);
        }
    }

    /// Returns when half of the text is written; the other half follows later.
    void writeSlowly(const std::string& text) {
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        child_ = ::fork();
        if (child_ == 0) {
            const int file = ::open(world_.userFile().c_str(), O_WRONLY | O_TRUNC);
            const std::size_t half = text.size() / 2;
            bool isDone = ::flock(file, LOCK_EX) == 0 && ::write(file, text.data(), half) == ssize_t(half);
            isDone = isDone && ::write(ready[1], "r", 1) == 1 && ::usleep(200'000) == 0;
            const std::string_view rest = std::string_view(text).substr(half);
            isDone = isDone && ::write(file, rest.data(), rest.size()) == ssize_t(rest.size());
            ::_exit(isDone ? 0 : 1);
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }

    std::ptrdiff_t entries() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {});
    }

    PreferenceWorld world_;
    pid_t child_ = 0;
};

TEST_F(UserFileWithAWriter, IsReadWholeAtTheStart) {
    writeSlowly(userWithValue("mine"));
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "mine");
    save("1");
    EXPECT_EQ(entries(), 1);
}

TEST_F(UserFileWithAWriter, IsNotTakenForATornOneAtASave) {
    UserPreferenceManager::GetInstance();
    save("1");
    writeSlowly(userWithValue("theirs"));
    save("2");
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("2"));
    EXPECT_EQ(entries(), 1);
}

// Nothing tells a lock for something else from that of a writer.
TEST_F(UserFileWithAWriter, ThatNeverEndsIsReadAsItIs) {
    world_.writeUser(userWithValue("mine"));
    const int file = ::open(world_.userFile().c_str(), O_RDWR);
    ASSERT_EQ(::flock(file, LOCK_EX), 0);
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "mine");
    ::close(file);
}

}  // namespace
}  // namespace zelutil::test
