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

/// Writes the text into the file as another process does that saves, under the lock of writers: half of it now, the
/// other half when `finish` is called.
class SlowWriter {
public:
    SlowWriter(const fs::path& path, const std::string& text)
        : text_(text),
          file_(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, TRUNCATE_EXISTING, 0, nullptr)) {
        OVERLAPPED place{};
        place.OffsetHigh = 0x40000000;
        EXPECT_TRUE(LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place));
        write(0, text_.size() / 2);
    }
    SlowWriter(const SlowWriter&) = delete;
    SlowWriter& operator=(const SlowWriter&) = delete;

    void finish() {
        write(text_.size() / 2, text_.size());
        CloseHandle(file_);
    }

private:
    void write(std::size_t begin, std::size_t end) {
        DWORD count = 0;
        EXPECT_TRUE(WriteFile(file_, text_.data() + begin, static_cast<DWORD>(end - begin), &count, nullptr));
    }

    const std::string text_;
    HANDLE file_;
};

TEST_F(LockedUserFile, IntoWhichAnotherWritesIsReadWhole) {
    SlowWriter writer(file(), userWithValue("theirs"));
    std::thread other([&] {
        Sleep(200);
        writer.finish();
    });
    EXPECT_EQ(value(), "theirs");
    other.join();
    save("1");
    EXPECT_EQ(readTextFile(file()), savedText("1"));
    EXPECT_EQ(entries(), 1);
}

TEST_F(LockedUserFile, IntoWhichAnotherWritesIsNotTakenForATornOneAtASave) {
    EXPECT_EQ(value(), "mine");
    SlowWriter writer(file(), userWithValue("theirs"));
    std::thread other([&] {
        Sleep(200);
        writer.finish();
    });
    save("1");
    other.join();
    EXPECT_EQ(readTextFile(file()), savedText("1"));
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
