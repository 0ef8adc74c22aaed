// A user's file that cannot be read, kept or overwritten for want of rights.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>

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

}  // namespace
}  // namespace zelutil::test
