// Processes that read, change and write one file take turns.
#include "platform/file_turn.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "platform/replace_file.h"
#include "support/child_process.h"
#include "support/symbolic_link.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;
using test::BackgroundProcess;
using test::TempDirectory;
using test::windowsText;

class FileTurns : public testing::Test {
protected:
    /// Another process that takes turns for the file.
    BackgroundProcess other(const fs::path& file) const {
        return BackgroundProcess({ZELUTIL_TEST_TURN_TAKER, {windowsText(file)}, {}, directory_.path()});
    }

    bool isHadHere() const { return FileTurn(windowsText(file_).c_str()).isTaken(); }

    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(directory_.path()), {}); }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
};

TEST_F(FileTurns, OneProcessAtATimeHasIt) {
    BackgroundProcess process = other(file_);
    ASSERT_EQ(process.ask("take"), "has it");
    const auto start = steady_clock::now();
    EXPECT_FALSE(isHadHere());
    const auto waited = steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::seconds(2));
    EXPECT_LT(waited, std::chrono::seconds(20));
    EXPECT_EQ(process.ask("release"), "has it not");
    EXPECT_TRUE(isHadHere());
    EXPECT_EQ(process.ask("take"), "has it");
}

TEST_F(FileTurns, WhoWaitsGetsItWhenItIsReleased) {
    BackgroundProcess process = other(file_);
    {
        const FileTurn turn(windowsText(file_).c_str());
        ASSERT_TRUE(turn.isTaken());
        process.tell("take");
    }
    EXPECT_EQ(process.hear(), "has it");
}

TEST_F(FileTurns, AKilledHolderHasItNoMore) {
    for (int i = 0; i < 20; ++i) {
        BackgroundProcess process = other(file_);
        ASSERT_EQ(process.ask("take"), "has it");
        process.kill();
        const auto start = steady_clock::now();
        EXPECT_TRUE(isHadHere());
        EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(2));
    }
}

TEST_F(FileTurns, ADirectoryOfItsOwnIsSomebodyElsesTurn) {
    fs::create_directory(directory_ / "other");
    BackgroundProcess process = other(directory_ / "other" / "tessel_settings.cfg");
    ASSERT_EQ(process.ask("take"), "has it");
    EXPECT_TRUE(isHadHere());
}

TEST_F(FileTurns, AnotherPathOfTheDirectoryIsTheSameTurn) {
    fs::create_directory(directory_ / "other");
    const fs::path roundabout = directory_ / "other" / ".." / "tessel_settings.cfg";
    BackgroundProcess process = other(roundabout);
    ASSERT_EQ(process.ask("take"), "has it");
    EXPECT_FALSE(isHadHere());
}

TEST_F(FileTurns, ItGoesByTheFileThatALinkLeadsTo) {
    fs::create_directory(directory_ / "other");
    const fs::path link = directory_ / "other" / "link.cfg";
    test::writeTextFile(file_, "{}");
    if (!test::makeFileLink(file_, link)) {
        GTEST_SKIP() << "no symbolic links here";
    }
    BackgroundProcess process = other(link);
    ASSERT_EQ(process.ask("take"), "has it");
    EXPECT_FALSE(isHadHere());
}

TEST_F(FileTurns, TheFileCanBeReadReplacedAndKeptMeanwhile) {
    test::writeTextFile(file_, "old");
    const std::string text = windowsText(file_);
    const FileTurn turn(text.c_str());
    ASSERT_TRUE(turn.isTaken());
    const auto start = steady_clock::now();
    EXPECT_EQ(readWhole(text.c_str(), 100).bytes, "old");
    EXPECT_TRUE(keepCopy(text.c_str()));
    EXPECT_EQ(replaceFile(text.c_str(), "new"), Replaced::Yes);
    EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_EQ(test::readTextFile(file_), "new");
}

TEST_F(FileTurns, ItLeavesNothingBehind) {
    EXPECT_TRUE(isHadHere());
    EXPECT_EQ(entries(), 0);
    EXPECT_TRUE(isHadHere());
}

TEST_F(FileTurns, ItIsNotHadWhereThereIsNoDirectory) {
    EXPECT_FALSE(FileTurn(windowsText(directory_ / "none" / "x.cfg").c_str()).isTaken());
    EXPECT_FALSE(FileTurn(nullptr).isTaken());
    EXPECT_FALSE(FileTurn("").isTaken());
    EXPECT_FALSE(FileTurn((windowsText(file_) + "?\\x").c_str()).isTaken());
}

}  // namespace
}  // namespace zelutil::platform
