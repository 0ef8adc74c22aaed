// A file gets new contents in one step, and nothing of ours is left beside it.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/platform.h"
#include "platform/replace_file.h"
#include "platform/replacement_name.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::readTextFile;
using test::TempDirectory;
using test::windowsText;
using test::writeTextFile;

class ReplaceFile : public testing::Test {
protected:
    Replaced replace(const fs::path& path, std::string_view bytes) {
        return replaceFile(windowsText(path).c_str(), bytes);
    }

    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(directory_.path())) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
    const std::vector<std::string> onlyTheFile_ = {"tessel_settings.cfg"};
};

TEST_F(ReplaceFile, MakesAFileThatWasMissing) {
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), "new");
    EXPECT_EQ(names(), onlyTheFile_);
}

TEST_F(ReplaceFile, GivesAFileNewContentsOfAnyLengthByteForByte) {
    writeTextFile(file_, "old contents");
    const std::string large(3'000'000, 'x');
    for (const std::string& bytes : {std::string("n"), std::string("a\0b\r\n\x1A\xFF", 7), large, std::string()}) {
        EXPECT_EQ(replace(file_, bytes), Replaced::Yes);
        EXPECT_EQ(readTextFile(file_), bytes);
        EXPECT_EQ(names(), onlyTheFile_);
    }
}

TEST_F(ReplaceFile, MakesNoDirectory) {
    EXPECT_EQ(replace(directory_ / "missing/tessel_settings.cfg", "new"), Replaced::No);
    EXPECT_TRUE(names().empty());
}

TEST_F(ReplaceFile, LeavesADirectoryAlone) {
    fs::create_directory(file_);
    EXPECT_EQ(replace(file_, "new"), Replaced::No);
    EXPECT_TRUE(fs::is_directory(file_));
    EXPECT_EQ(names(), onlyTheFile_);
}

TEST_F(ReplaceFile, MakesNothingUnderATextThatIsNoName) {
    const std::string quoted = "\"" + windowsText(file_) + "\"";
    for (const std::string& name : {quoted, windowsText(file_) + "?", windowsText(file_) + "*", std::string()}) {
        EXPECT_EQ(replaceFile(name.c_str(), "new"), Replaced::No) << name;
    }
    EXPECT_EQ(replaceFile(nullptr, "new"), Replaced::No);
    EXPECT_TRUE(names().empty());
}

TEST_F(ReplaceFile, WritesIntoAFileThatHasAnotherName) {
    for (const char* const bytes : {"a longer text than before", "short"}) {
        writeTextFile(file_, "old contents");
        fs::remove(directory_ / "other.cfg");
        fs::create_hard_link(file_, directory_ / "other.cfg");
        EXPECT_EQ(replace(file_, bytes), Replaced::Yes);
        EXPECT_EQ(readTextFile(file_), bytes);
        EXPECT_EQ(readTextFile(directory_ / "other.cfg"), bytes);
        EXPECT_EQ(names(), (std::vector<std::string>{"other.cfg", "tessel_settings.cfg"}));
    }
}

TEST_F(ReplaceFile, RemovesWhatAKilledProcessLeftAndNothingElse) {
    const std::vector<std::string> ours = {"tessel_settings.cfg.zelutil-00001a2b-00000007.tmp",
                                           "tessel_settings.cfg.zelutil-ffffffff-00000000.tmp"};
    const std::vector<std::string> notOurs = {
        "other.cfg.zelutil-00001a2b-00000007.tmp",
        "tessel_settings.cfg.bad",
        "tessel_settings.cfg.tmp",
        "tessel_settings.cfg.zelutil-00001a2b-0000007.tmp",
        "tessel_settings.cfg.zelutil-00001a2b-00000007.tmp.mine",
        "tessel_settings.cfg.zelutil-00001a2g-00000007.tmp",
        "tessel_settings.cfg.zelutil-00001a2b_00000007.tmp",
    };
    for (const auto& group : {ours, notOurs}) {
        for (const std::string& name : group) {
            writeTextFile(directory_ / name, "left");
        }
    }
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    std::vector<std::string> expected = notOurs;
    expected.push_back("tessel_settings.cfg");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names(), expected);
}

TEST_F(ReplaceFile, AReaderSeesWholeTextsOnlyWhileTwoWrite) {
    const std::string first(100'000, '1');
    const std::string second(70'000, '2');
    ASSERT_EQ(replace(file_, first), Replaced::Yes);
    std::atomic<bool> done{false};
    const auto writeMany = [&](const std::string& bytes) {
        for (int i = 0; i < 100; ++i) {
            replace(file_, bytes);
        }
    };
    int torn = 0;
    int reads = 0;
    std::thread reader([&] {
        while (!done) {
            const auto bytes = readFile(windowsText(file_).c_str(), 1'000'000);
            if (bytes) {
                ++reads;
                torn += *bytes == first || *bytes == second ? 0 : 1;
            }
        }
    });
    std::thread one(writeMany, first);
    std::thread two(writeMany, second);
    one.join();
    two.join();
    done = true;
    reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_GT(reads, 0);
    EXPECT_EQ(names(), onlyTheFile_);
}

class KeepCopy : public ReplaceFile {
protected:
    bool keep() { return keepCopy(windowsText(file_).c_str()); }

    fs::path kept(const char* suffix) const { return directory_ / (std::string("tessel_settings.cfg") + suffix); }
};

TEST_F(KeepCopy, TakesTheFirstFreeNameAndTouchesNoOther) {
    const std::string first("half {\0\r\n\xFF", 10);
    writeTextFile(file_, first);
    EXPECT_TRUE(keep());
    EXPECT_EQ(readTextFile(kept(".bad")), first);
    writeTextFile(file_, "second");
    EXPECT_TRUE(keep());
    writeTextFile(file_, "third");
    EXPECT_TRUE(keep());
    EXPECT_EQ(readTextFile(kept(".bad")), first);
    EXPECT_EQ(readTextFile(kept(".bad.2")), "second");
    EXPECT_EQ(readTextFile(kept(".bad.3")), "third");
    EXPECT_EQ(readTextFile(file_), "third");
    EXPECT_EQ(names().size(), 4U);
    // A gap is filled: the file that has left it is not there to be touched.
    fs::remove(kept(".bad.2"));
    EXPECT_TRUE(keep());
    EXPECT_EQ(readTextFile(kept(".bad.2")), "third");
}

TEST_F(KeepCopy, OfALargeFileIsWhole) {
    std::string large;
    for (int i = 0; i < 300'000; ++i) {
        large += std::to_string(i);
    }
    writeTextFile(file_, large);
    EXPECT_TRUE(keep());
    EXPECT_TRUE(readTextFile(kept(".bad")) == large);
}

TEST_F(KeepCopy, OfAnEmptyFileIsEmpty) {
    writeTextFile(file_, "");
    EXPECT_TRUE(keep());
    EXPECT_EQ(readTextFile(kept(".bad")), "");
}

TEST_F(KeepCopy, OfWhatIsNoFileIsNone) {
    EXPECT_FALSE(keep());
    fs::create_directory(file_);
    EXPECT_FALSE(keep());
    EXPECT_FALSE(keepCopy(nullptr));
    EXPECT_FALSE(keepCopy(""));
    EXPECT_FALSE(keepCopy((windowsText(file_) + "?").c_str()));
    EXPECT_EQ(names(), onlyTheFile_);
}

TEST_F(KeepCopy, ADirectoryHasTakenItsNameToo) {
    writeTextFile(file_, "half {");
    fs::create_directory(kept(".bad"));
    EXPECT_TRUE(keep());
    EXPECT_EQ(readTextFile(kept(".bad.2")), "half {");
}

TEST_F(KeepCopy, ManyAtOnceGetANameEach) {
    writeTextFile(file_, "half {");
    std::atomic<int> copies{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 10; ++i) {
                copies += keep() ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(copies, 40);
    EXPECT_EQ(names().size(), 41U);
    EXPECT_TRUE(fs::exists(kept(".bad.40")));
}

TEST(ReplacementName, NumbersTheKeptCopiesFromTheSecondOn) {
    EXPECT_EQ(keptSuffix(1), ".bad");
    EXPECT_EQ(keptSuffix(2), ".bad.2");
    EXPECT_EQ(keptSuffix(10'000), ".bad.10000");
}

TEST(ReplacementName, HoldsProcessAndCall) {
    EXPECT_EQ(replacementName("x.cfg", 0x1a2b, 7), "x.cfg.zelutil-00001a2b-00000007.tmp");
    EXPECT_EQ(replacementName("", 0xffffffff, 0), ".zelutil-ffffffff-00000000.tmp");
    EXPECT_TRUE(isReplacementName("x.cfg.zelutil-00001a2b-00000007.tmp", "x.cfg"));
    EXPECT_FALSE(isReplacementName("x.cfg.zelutil-00001a2b-00000007.tmp", "y.cfg"));
    EXPECT_FALSE(isReplacementName("x.cfg.zelutil-00001A2B-00000007.tmp", "x.cfg"));
    EXPECT_FALSE(isReplacementName("x.cfg", "x.cfg"));
}

TEST(ReplacementName, EveryCallGetsANumberOfItsOwn) {
    const std::uint32_t first = nextReplacementCall();
    EXPECT_EQ(nextReplacementCall(), first + 1);
}

}  // namespace
}  // namespace zelutil::platform
