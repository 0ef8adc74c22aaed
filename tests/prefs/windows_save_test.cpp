// Saves while somebody else has the user's file open, and saves of a process that is killed in them.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>

#include "prefs/many_settings.h"
#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/held_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

std::ptrdiff_t filesBeside(const fs::path& file) {
    return std::distance(fs::directory_iterator(file.parent_path()), {}) - (fs::exists(file) ? 1 : 0);
}

struct SharingRow {
    DWORD sharing;
    bool written;
};

TEST(WindowsSave, WhileSomebodyHoldsTheFileItIsWrittenWhereTheySharedWriting) {
    constexpr SharingRow kRows[] = {
        {0, false},
        {FILE_SHARE_READ, false},
        {FILE_SHARE_DELETE, false},
        {FILE_SHARE_READ | FILE_SHARE_DELETE, false},
        {FILE_SHARE_WRITE, true},
        {FILE_SHARE_READ | FILE_SHARE_WRITE, true},
        {FILE_SHARE_WRITE | FILE_SHARE_DELETE, true},
        {FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, true},
    };
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("default"));
    const std::string old = userWithValue("user");
    // A file that cannot be read at the start is another matter.
    world.writeUser(old);
    UserPreferenceManager::GetInstance();
    for (const SharingRow& row : kRows) {
        SCOPED_TRACE(row.sharing);
        world.writeUser(old);
        const std::string value = "value" + std::to_string(row.sharing);
        const Listener listener;
        {
            const HeldFile held(world.userFile(), row.sharing);
            EXPECT_NO_THROW(save(value));
        }
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), value);
        EXPECT_EQ(readTextFile(world.userFile()), row.written ? savedText(value) : old);
        EXPECT_EQ(filesBeside(world.userFile()), 0);
    }
}

TEST(WindowsSave, AReadOnlyFileStaysAsItIs) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("default"));
    world.writeUser(userWithValue("user"));
    ASSERT_TRUE(SetFileAttributesW(world.userFile().c_str(), FILE_ATTRIBUTE_READONLY));
    const Listener listener;
    save("1");
    ASSERT_TRUE(SetFileAttributesW(world.userFile().c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), "1");
    EXPECT_EQ(readTextFile(world.userFile()), userWithValue("user"));
    EXPECT_EQ(filesBeside(world.userFile()), 0);
}

/// The saver, which inherits this process's environment, from its first finished save on.
class Saver {
public:
    Saver() {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        CreatePipe(&reader, &writer, &inheritable, 0);
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = writer;
        const BOOL started = CreateProcessA(ZELUTIL_TEST_SAVER, nullptr, nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                            &startup, &process_);
        CloseHandle(writer);
        char first = 0;
        DWORD size = 0;
        const bool saves = started != 0 && ReadFile(reader, &first, 1, &size, nullptr) != 0 && size == 1;
        CloseHandle(reader);
        if (!saves) {
            throw std::runtime_error("the saver does not start");
        }
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    ~Saver() {
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }

    void kill() {
        EXPECT_TRUE(TerminateProcess(process_.hProcess, 1));
        EXPECT_EQ(WaitForSingleObject(process_.hProcess, INFINITE), WAIT_OBJECT_0);
    }

private:
    PROCESS_INFORMATION process_{};
};

TEST(WindowsSave, AKilledOneLeavesAWholeFileAndTheNextOneClearsUp) {
    constexpr int kUsualKills = 100;
    const PreferenceWorld world;
    world.writeDefaults(manyDefaults());
    const std::string texts[] = {manySavedText(kShortValue), manySavedText(kLongValue)};
    std::mt19937 random(7);
    std::uniform_int_distribution<DWORD> milliseconds(0, 40);
    int missing = 0;
    int torn = 0;
    int shorter = 0;
    std::ptrdiff_t mostLeft = 0;
    for (int i = 0; i < kills(kUsualKills); ++i) {
        Saver saver;
        Sleep(milliseconds(random));
        saver.kill();
        mostLeft = std::max(mostLeft, filesBeside(world.userFile()));
        if (!fs::exists(world.userFile())) {
            ++missing;
            continue;
        }
        const std::string text = readTextFile(world.userFile());
        torn += text == texts[0] || text == texts[1] ? 0 : 1;
        shorter += text == texts[0] ? 1 : 0;
    }
    std::printf("%d kills, %d torn files, %d missing ones, %d times the shorter text, at most %d files left\n",
                kills(kUsualKills), torn, missing, shorter, static_cast<int>(mostLeft));
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(missing, 0);
    EXPECT_GT(shorter, 0);
    // Each save removes what the killed one before it left.
    EXPECT_LE(mostLeft, 1);
    saveMany("last");
    EXPECT_EQ(filesBeside(world.userFile()), 0);
    EXPECT_EQ(readTextFile(world.userFile()), manySavedText("last"));
}

}  // namespace
}  // namespace zelutil::test
