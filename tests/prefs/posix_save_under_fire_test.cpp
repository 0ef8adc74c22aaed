// Saves that are killed in the middle, and saves of two processes at once: the user's file is always a whole one.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zelutil/prefs/user_preference_manager.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <thread>

#include "prefs/preference_world.h"

namespace {

namespace fs = std::filesystem;
using zelutil::test::PreferenceWorld;
using zelutil::test::readTextFile;

constexpr int kSettings = 300;

/// How many saves are killed; the variable ZELUTIL_TEST_KILLS asks for more.
int kills() {
    constexpr int kUsual = 200;
    const char* const asked = std::getenv("ZELUTIL_TEST_KILLS");
    return asked == nullptr ? kUsual : std::atoi(asked);
}

/// Defaults with many settings, all of them changed by every save, so that a save takes its time.
std::string manyDefaults() {
    std::string text = R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[)";
    for (int i = 0; i < kSettings; ++i) {
        text +=
            (i == 0 ? "" : ",") + std::string(R"({"name":"setting_)") + std::to_string(i) + R"(","value":"default"})";
    }
    return text + "]}]}";
}

std::map<std::string, std::string> all(const std::string& value) {
    std::map<std::string, std::string> settings;
    for (int i = 0; i < kSettings; ++i) {
        settings["s::setting_" + std::to_string(i)] = value;
    }
    return settings;
}

/// The text of a user's file in which every setting has `value`, as a save lays it out.
std::string savedText(const std::string& value) {
    std::string text =
        "{\n    \"meta\": [\n        {\n            \"header\": \"S\",\n            \"attribute\": \"s\",\n"
        "            \"overriddensettings\": [";
    for (int i = 0; i < kSettings; ++i) {
        text += (i == 0 ? "\n" : ",\n") + std::string("                {\n                    \"setting_") +
                std::to_string(i) + "\": \"" + value + "\"\n                }";
    }
    return text + "\n            ]\n        }\n    ]\n}";
}

class SaveUnderFire : public testing::Test {
protected:
    SaveUnderFire() {
        world_.writeDefaults(manyDefaults());
        save(first_);
        EXPECT_EQ(readTextFile(world_.userFile()), firstText_);
    }

    static void save(const std::string& value) {
        UserPreferenceManager::GetInstance().updateUserPrefSettings(all(value), {});
    }

    /// A process that saves the one value and the other in turn until it is killed.
    pid_t startSaving() const {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                save(second_);
                save(first_);
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
    const std::string first_ = "short";
    const std::string second_ = "a value that is longer than the other one";
    const std::string firstText_ = savedText(first_);
    const std::string secondText_ = savedText(second_);
};

TEST_F(SaveUnderFire, AKilledSaveLeavesAWholeFileAndTheNextOneClearsUp) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> microseconds(500, 20'000);
    int damaged = 0;
    int changed = 0;
    std::ptrdiff_t mostLeft = 0;
    for (int i = 0; i < kills(); ++i) {
        const pid_t child = startSaving();
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        killNow(child);
        const std::string text = readTextFile(world_.userFile());
        damaged += isWhole(text) ? 0 : 1;
        changed += text == secondText_ ? 1 : 0;
        mostLeft = std::max(mostLeft, filesBesideTheUsers());
    }
    std::printf("%d kills, %d damaged files, %d times the newer text, at most %td files left\n", kills(), damaged,
                changed, mostLeft);
    EXPECT_EQ(damaged, 0);
    EXPECT_GT(changed, 0);
    // Each save removes what the killed one before it left.
    EXPECT_LE(mostLeft, 1);
    save("last");
    EXPECT_EQ(filesBesideTheUsers(), 0);
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("last"));
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
    save("last");
    EXPECT_EQ(filesBesideTheUsers(), 0);
}

}  // namespace
