// A user's file that another program holds while the manager reads it, and one that cannot be replaced.
#include <gtest/gtest.h>
#include <windows.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/held_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

class LockedUserFile : public testing::Test {
protected:
    LockedUserFile() {
        world_.writeDefaults(defaultsWithValue("default"));
        world_.writeUser(userWithValue("mine"));
    }

    fs::path file() const { return world_.userFile(); }
    fs::path kept() const { return file().string() + ".bad"; }
    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(file().parent_path()), {}); }
    static std::string value() { return UserPreferenceManager::GetInstance().getUserPrefSetting("value"); }

    PreferenceWorld world_;
};

TEST_F(LockedUserFile, ForAMomentIsReadAllTheSame) {
    std::optional<HeldFile> held(std::in_place, file(), 0);
    std::thread other([&] {
        Sleep(40);
        held.reset();
    });
    EXPECT_EQ(value(), "mine");
    other.join();
    save("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(LockedUserFile, ForLongIsKeptBeforeItIsOverwritten) {
    {
        const HeldFile held(file(), 0);
        EXPECT_EQ(value(), "default");
    }
    save("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(readTextFile(kept()), userWithValue("mine"));
    EXPECT_EQ(entries(), 2);
}

// It could be written into, but not read.
TEST_F(LockedUserFile, ForLongerStillIsNotOverwritten) {
    {
        const HeldFile held(file(), FILE_SHARE_WRITE);
        const Listener listener;
        save("1");
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(value(), "1");
    }
    EXPECT_EQ(readTextFile(file()), userWithValue("mine"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(LockedUserFile, ThatIsReadOnlyAndNoJsonIsKeptOnce) {
    world_.writeUser("half {");
    ASSERT_TRUE(SetFileAttributesW(file().c_str(), FILE_ATTRIBUTE_READONLY));
    save("1");
    save("2");
    ASSERT_TRUE(SetFileAttributesW(file().c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(value(), "2");
    EXPECT_EQ(readTextFile(file()), "half {");
    EXPECT_EQ(readTextFile(kept()), "half {");
    EXPECT_EQ(entries(), 2);
    SetFileAttributesW(kept().c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
}  // namespace zelutil::test
