// A file gets new contents in one step, and nothing of ours is left beside it.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/files.h"
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
    writeTextFile(file_, "old");
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

TEST_F(ReplaceFile, KeepsWhatAKilledProcessLeftWhereThereIsNoFile) {
    writeTextFile(directory_ / "tessel_settings.cfg.zelutil-00001a2b-00000007.tmp", "all that is left");
    writeTextFile(directory_ / "tessel_settings.cfg.zelutil-00001a2b-00000008.tmp", "");
    writeTextFile(directory_ / "tessel_settings.cfg.bad", "earlier");
    EXPECT_EQ(replace(file_, "new"), Replaced::Yes);
    EXPECT_EQ(names(), (std::vector<std::string>{"tessel_settings.cfg", "tessel_settings.cfg.bad",
                                                 "tessel_settings.cfg.bad.2"}));
    EXPECT_EQ(readTextFile(directory_ / "tessel_settings.cfg.bad"), "earlier");
    EXPECT_EQ(readTextFile(directory_ / "tessel_settings.cfg.bad.2"), "all that is left");
}

TEST_F(ReplaceFile, AReaderSeesWholeTextsOnlyWhileTwoWrite) {
    const std::string first(100'000, '1');
    const std::string second(70'000, '2');
    ASSERT_EQ(replace(file_, first), Replaced::Yes);
    std::atomic<bool> done{false};
    std::atomic<int> written{0};
    const auto writeMany = [&](const std::string& bytes) {
        for (int i = 0; i < 100; ++i) {
            written += replace(file_, bytes) == Replaced::Yes ? 1 : 0;
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
    EXPECT_EQ(written, 200);
    EXPECT_GT(reads, 0);
    EXPECT_EQ(names(), onlyTheFile_);
}

class KeepCopy : public ReplaceFile {
protected:
    /// Returns whether a copy was kept, and expects that it lies where the call says.
    bool keep() {
        const auto copy = keepCopy(windowsText(file_).c_str());
        EXPECT_TRUE(!copy || fs::exists(test::fileOfText(*copy))) << *copy;
        return copy.has_value();
    }

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
    EXPECT_EQ(keepCopy(windowsText(file_).c_str()), windowsText(kept(".bad.3")));
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

NativeText native(std::string_view ascii) { return NativeText(ascii.begin(), ascii.end()); }

TEST(ReplacementName, NumbersTheKeptCopiesFromTheSecondOn) {
    EXPECT_EQ(keptName(native("x.cfg"), 1), native("x.cfg.bad"));
    EXPECT_EQ(keptName(native("x.cfg"), 2), native("x.cfg.bad.2"));
    EXPECT_EQ(keptName(native("x.cfg"), 10'000), native("x.cfg.bad.10000"));
    const auto isOurs = [](std::string_view name) { return isKeptName(native(name), native("x.cfg")); };
    for (const char* const name : {"x.cfg.bad", "x.cfg.bad.2", "x.cfg.bad.10000"}) {
        EXPECT_TRUE(isOurs(name)) << name;
    }
    for (const char* const name :
         {"", "x.cfg", "y.cfg.bad", "x.cfg.bad.", "x.cfg.bad.1", "x.cfg.bad.02", "x.cfg.bad.x", "x.cfg.bad.-2",
          "x.cfg.bad.4294967298", "x.cfg.bad.99999999999999999999", "x.cfg.2"}) {
        EXPECT_FALSE(isOurs(name)) << name;
    }
}

TEST(ReplacementName, HoldsProcessAndCall) {
    EXPECT_EQ(replacementName(native("x.cfg"), 0x1a2b, 7), native("x.cfg.zelutil-00001a2b-00000007.tmp"));
    EXPECT_EQ(replacementName(native(""), 0xffffffff, 0), native(".zelutil-ffffffff-00000000.tmp"));
    const auto isOurs = [](std::string_view name) { return isReplacementName(native(name), native("x.cfg")); };
    EXPECT_TRUE(isOurs("x.cfg.zelutil-00001a2b-00000007.tmp"));
    EXPECT_FALSE(isOurs("y.cfg.zelutil-00001a2b-00000007.tmp"));
    EXPECT_FALSE(isOurs("x.cfg.zelutil-00001A2B-00000007.tmp"));
    EXPECT_FALSE(isOurs("x.cfg"));
}

TEST(ReplacementName, OfALongNameIsLegalAndRecognised) {
    for (std::size_t length = 200; length <= kMaximumNameLength; ++length) {
        const NativeText target(length, 'n');
        const NativeText name = replacementName(target, 0x1a2b, 7);
        EXPECT_EQ(name.size(), std::min<std::size_t>(length + 30, 255)) << length;
        EXPECT_TRUE(isReplacementName(name, target)) << length;
        EXPECT_EQ(keptName(target, 12).size(), std::min<std::size_t>(length + 7, 255)) << length;
        EXPECT_TRUE(isKeptName(keptName(target, 12), target)) << length;
        EXPECT_TRUE(isKeptName(keptName(target, 1), target)) << length;
    }
}

TEST(ReplacementName, TellsLongTargetsApartThatBeginAlike) {
    const NativeText one = NativeText(230, 'n') + native("1");
    const NativeText two = NativeText(230, 'n') + native("2");
    EXPECT_FALSE(isReplacementName(replacementName(one, 1, 1), two));
    EXPECT_NE(keptName(one + NativeText(24, 'x'), 1), keptName(two + NativeText(24, 'x'), 1));
}

TEST(ReplacementName, DoesNotCutACharacter) {
    if (sizeof(NativeText::value_type) == 1) {
        // 255 - 30 - 9 bytes would end after the first of the two bytes of a character.
        const NativeText target = native("a") + native([] {
                                      std::string text;
                                      while (text.size() < 230) {
                                          text += "\xC3\xA4";
                                      }
                                      return text;
                                  }());
        EXPECT_EQ(replacementName(target, 1, 1).substr(0, 216), target.substr(0, 215) + native("~"));
    } else {
        NativeText target = native("a");
        while (target.size() < 230) {
            target += static_cast<NativeText::value_type>(0xD83D);
            target += static_cast<NativeText::value_type>(0xDE00);
        }
        EXPECT_EQ(replacementName(target, 1, 1).substr(0, 216), target.substr(0, 215) + native("~"));
    }
}

TEST(ReplacementName, EveryCallGetsANumberOfItsOwn) {
    const std::uint32_t first = nextReplacementCall();
    EXPECT_EQ(nextReplacementCall(), first + 1);
}

}  // namespace
}  // namespace zelutil::platform
