// A save keeps a user's file that could not be read beside itself before it overwrites it, or it does not overwrite it.
#include <gtest/gtest.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFileRead = std::uintmax_t{64} << 20;
constexpr std::uintmax_t kLargestFileKept = 4 * kLargestFileRead;

class UnreadUserFile : public testing::Test {
protected:
    UnreadUserFile() {
        world_.writeDefaults(defaultsWithValue("default"));
        fs::create_directories(file().parent_path());
    }

    fs::path file() const { return world_.userFile(); }
    fs::path kept(const std::string& number = "") const { return file().string() + ".bad" + number; }
    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(file().parent_path()), {}); }

    static void start() { UserPreferenceManager::GetInstance(); }

    /// Saves and expects what every save does, whether it writes or not.
    static void saveAndListen(const std::string& value) {
        const Listener listener;
        EXPECT_NO_THROW(save(value));
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(listener.names, std::set<std::string>{"s::value"});
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), value);
    }

    PreferenceWorld world_;
};

TEST_F(UnreadUserFile, IsKeptUnderAFreeNameEachTimeItIsNoJson) {
    world_.writeUser("first {");
    saveAndListen("1");
    world_.writeUser("second {");
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(readTextFile(kept()), "first {");
    EXPECT_EQ(readTextFile(kept(".2")), "second {");
    EXPECT_EQ(entries(), 3);
}

TEST_F(UnreadUserFile, IsKeptBesideWhatEarlierProcessesKept) {
    writeTextFile(kept(), "of an earlier process {");
    fs::create_directory(kept(".2"));
    world_.writeUser("half {");
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), "of an earlier process {");
    EXPECT_EQ(readTextFile(kept(".3")), "half {");
    EXPECT_EQ(entries(), 4);
}

TEST_F(UnreadUserFile, IsKeptThoughItHasBecomeJson) {
    world_.writeUser("half {");
    start();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
    EXPECT_EQ(entries(), 2);
}

TEST_F(UnreadUserFile, IsKeptWhenItWasEmptyAtTheStart) {
    world_.writeUser("");
    start();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
}

TEST_F(UnreadUserFile, IsKeptWhenItWasTooLargeAtTheStart) {
    world_.writeUser(userWithValue("theirs"));
    fs::resize_file(file(), kLargestFileRead + 1);
    start();
    fs::resize_file(file(), userWithValue("theirs").size());
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
}

TEST_F(UnreadUserFile, IsKeptOnceWhenItHasBecomeJson) {
    world_.writeUser("half {");
    start();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("1");
    world_.writeUser(userWithValue("theirs later"));
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
    EXPECT_EQ(entries(), 2);
}

TEST_F(UnreadUserFile, IsNotKeptWhenItIsEmpty) {
    world_.writeUser("half {");
    start();
    world_.writeUser("");
    saveAndListen("1");
    world_.writeUser("");
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(UnreadUserFile, IsForgottenWhenItIsGoneAtTheFirstSave) {
    world_.writeUser("half {");
    start();
    fs::remove(file());
    saveAndListen("1");
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(UnreadUserFile, IsKeptWhenItIsReachedByAnotherName) {
    setVariable("regression_testing", "1");
    world_.writeUser("half {");
    start();
    world_.writeUser(userWithValue("theirs"));
    fs::current_path(file().parent_path());
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
    world_.writeUser(userWithValue("theirs later"));
    saveAndListen("2");
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(entries(), 2);
}

// Whether it is the file that was unread cannot be told by its name.
TEST_F(UnreadUserFile, HasAFileOfAnotherPlaceKeptOnce) {
    setVariable("regression_testing", "1");
    world_.writeUser("half {");
    start();
    fs::current_path(world_.home().path());
    const fs::path written = world_.home() / "tessel_settings.cfg";
    writeTextFile(written, userWithValue("theirs"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(written), savedText("1"));
    EXPECT_EQ(readTextFile(written.string() + ".bad"), userWithValue("theirs"));
    writeTextFile(written, userWithValue("theirs later"));
    saveAndListen("2");
    EXPECT_EQ(readTextFile(written), savedText("2"));
    EXPECT_FALSE(fs::exists(written.string() + ".bad.2"));
    EXPECT_EQ(readTextFile(file()), "half {");
    EXPECT_EQ(entries(), 1);
}

TEST_F(UnreadUserFile, IsStillUnreadAfterASaveToAnotherPlace) {
    world_.writeUser("half {");
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    start();
    commonLibrary.foundPath = systemText(world_.home() / "moved.cfg");
    saveAndListen("1");
    commonLibrary.foundPath.reset();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("2");
    EXPECT_EQ(readTextFile(kept()), userWithValue("theirs"));
    EXPECT_EQ(readTextFile(file()), savedText("2"));
}

TEST_F(UnreadUserFile, AsLargeAsCanBeKeptIsKept) {
    start();
    world_.writeUser("x");
    fs::resize_file(file(), kLargestFileKept);
    saveAndListen("1");
    ASSERT_TRUE(fs::exists(kept()));
    EXPECT_EQ(fs::file_size(kept()), kLargestFileKept);
    EXPECT_EQ(fs::file_size(file()), savedText("1").size());
}

TEST_F(UnreadUserFile, TooLargeToBeKeptIsNotOverwritten) {
    world_.writeUser("x");
    fs::resize_file(file(), kLargestFileKept + 1);
    start();
    saveAndListen("1");
    EXPECT_EQ(fs::file_size(file()), kLargestFileKept + 1);
    EXPECT_EQ(entries(), 1);
    // Nor once the process has written a file of its own there.
    world_.writeUser("");
    saveAndListen("2");
    fs::resize_file(file(), kLargestFileKept + 1);
    saveAndListen("3");
    EXPECT_EQ(fs::file_size(file()), kLargestFileKept + 1);
    EXPECT_EQ(entries(), 1);
}

TEST_F(UnreadUserFile, IsKeptOnceForAManagerAndItsCopies) {
    world_.writeUser("half {");
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    UserPreferenceManager copy = manager;
    copy.updateUserPrefSettings({{"value", "1"}}, {});
    EXPECT_EQ(readTextFile(kept()), "half {");
    world_.writeUser(userWithValue("theirs"));
    manager.updateUserPrefSettings({{"value", "2"}}, {});
    EXPECT_EQ(readTextFile(file()), savedText("2"));
    EXPECT_EQ(entries(), 2);
    copy = manager;
    world_.writeUser(userWithValue("theirs"));
    copy.updateUserPrefSettings({{"value", "3"}}, {});
    EXPECT_EQ(readTextFile(file()), savedText("3"));
    EXPECT_EQ(entries(), 2);
}

TEST_F(UnreadUserFile, IsNoneWhenItWasReadAtTheStart) {
    world_.writeUser(userWithValue("user"));
    start();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(UnreadUserFile, IsNoneWhenItWasNotThereAtTheStart) {
    start();
    world_.writeUser(userWithValue("theirs"));
    saveAndListen("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

}  // namespace
}  // namespace zelutil::test
