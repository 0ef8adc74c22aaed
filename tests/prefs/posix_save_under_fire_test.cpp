// Saves that are killed in the middle, and saves of two processes at once: the user's file is always a whole one.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <thread>

#include "prefs/many_settings.h"
#include "prefs/preference_world.h"

namespace {

namespace fs = std::filesystem;
using zelutil::test::kills;
using zelutil::test::manyDefaults;
using zelutil::test::manySavedText;
using zelutil::test::PreferenceWorld;
using zelutil::test::readTextFile;
using zelutil::test::saveMany;

constexpr int kUsualKills = 200;

class SaveUnderFire : public testing::Test {
protected:
    SaveUnderFire() {
        world_.writeDefaults(manyDefaults());
        saveMany(first_);
        EXPECT_EQ(readTextFile(world_.userFile()), firstText_);
    }

    /// A process that saves the one value and the other in turn until it is killed.
    pid_t startSaving() const {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                saveMany(second_);
                saveMany(first_);
            }
        }
        return child;
    }

    static void killNow(pid_t child) {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }

    bool isWhole(const std::string& text) const { return text == firstText_ || text == secondText_; }

    std::ptrdiff_t filesBesideTheUsers() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}) - 1;
    }

    PreferenceWorld world_;
    const std::string first_ = zelutil::test::kShortValue;
    const std::string second_ = zelutil::test::kLongValue;
    const std::string firstText_ = manySavedText(first_);
    const std::string secondText_ = manySavedText(second_);
};

TEST_F(SaveUnderFire, AKilledSaveLeavesAWholeFileAndTheNextOneClearsUp) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> microseconds(500, 20'000);
    int damaged = 0;
    int changed = 0;
    std::ptrdiff_t mostLeft = 0;
    for (int i = 0; i < kills(kUsualKills); ++i) {
        const pid_t child = startSaving();
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        killNow(child);
        const std::string text = readTextFile(world_.userFile());
        damaged += isWhole(text) ? 0 : 1;
        changed += text == secondText_ ? 1 : 0;
        mostLeft = std::max(mostLeft, filesBesideTheUsers());
    }
    std::printf("%d kills, %d damaged files, %d times the newer text, at most %td files left\n", kills(kUsualKills),
                damaged, changed, mostLeft);
    EXPECT_EQ(damaged, 0);
    EXPECT_GT(changed, 0);
    // Each save removes what the killed one before it left.
    EXPECT_LE(mostLeft, 1);
    saveMany("last");
    EXPECT_EQ(filesBesideTheUsers(), 0);
    EXPECT_EQ(readTextFile(world_.userFile()), manySavedText("last"));
}

TEST_F(SaveUnderFire, AReaderOfAFileThatTwoProcessesSaveNeverSeesATornOne) {
    const pid_t one = startSaving();
    const pid_t two = startSaving();
    ASSERT_GT(one, 0);
    ASSERT_GT(two, 0);
    int reads = 0;
    int torn = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (std::chrono::steady_clock::now() < end) {
        torn += isWhole(readTextFile(world_.userFile())) ? 0 : 1;
        ++reads;
    }
    killNow(one);
    killNow(two);
    std::printf("%d reads, %d torn\n", reads, torn);
    EXPECT_EQ(torn, 0);
    EXPECT_GT(reads, 100);
    saveMany("last");
    EXPECT_EQ(filesBesideTheUsers(), 0);
}

}  // namespace
