#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/environment.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;
using zelutil::test::fileOfText;
using zelutil::test::fixedTemporaryDirectory;
using zelutil::test::setVariable;
using zelutil::test::systemText;
using zelutil::test::TempDirectory;
using zelutil::test::unsetVariable;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

constexpr std::string_view kStem = "Tmp";
constexpr std::size_t kDigits = 8;
constexpr std::string_view kLowerCaseDigits = "0123456789abcdef";

/// The digits of a name; empty when it does not begin with "Tmp" and eight lower-case hexadecimal digits.
std::string digitsOf(const std::string& name) {
    const std::string digits = name.substr(kStem.size() < name.size() ? kStem.size() : name.size(), kDigits);
    const bool good = name.compare(0, kStem.size(), kStem) == 0 && digits.size() == kDigits &&
                      digits.find_first_not_of(kLowerCaseDigits) == std::string::npos;
    return good ? digits : "";
}

std::uint32_t numberOf(const Path& path) {
    const std::string digits = digitsOf(path.Name());
    EXPECT_NE(digits, "") << path.Name();
    return digits.empty() ? 0 : static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
}

/// Returns what follows the digits.
std::string endingOf(const Path& path) { return path.Name().substr(kStem.size() + kDigits); }

std::string nameWithNumber(std::uint32_t number, const std::string& ending) {
    std::string name(kStem);
    for (int shift = 28; shift >= 0; shift -= 4) {
        name += kLowerCaseDigits[(number >> shift) & 0xf];
    }
    return name + ending;
}

class TemporaryFile : public testing::Test {
protected:
    Path next(const char* suffix) const { return Path::GetTempFile(here, false, suffix); }

    TempDirectory directory;
    Path here{windowsText(directory.path())};
};

TEST_F(TemporaryFile, IsNamedByAStemEightDigitsAndTheSuffix) {
    const Path path = next("log");
    EXPECT_EQ(path.Parent(), here);
    EXPECT_NE(digitsOf(path.Name()), "") << path.Name();
    EXPECT_EQ(endingOf(path), ".log");
    EXPECT_EQ(path.Extension(), "log");
}

TEST_F(TemporaryFile, ASuffixWithAndWithoutItsDotGivesTheSameName) {
    const Path without = next("log");
    const Path with = next(".log");
    EXPECT_EQ(endingOf(without), ".log");
    EXPECT_EQ(endingOf(with), ".log");
    EXPECT_EQ(with.Name().size(), without.Name().size());
}

TEST_F(TemporaryFile, EndsInADotWithoutASuffixOddity) {
    for (const char* const suffix : {"", ".", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(endingOf(next(suffix)), ".");
    }
}

TEST_F(TemporaryFile, OnlyALeadingDotIsLookedFor) {
    EXPECT_EQ(endingOf(next("..x")), "..x");
    EXPECT_EQ(endingOf(next("tar.gz")), ".tar.gz");
    EXPECT_EQ(endingOf(next("_x")), "._x");
}

TEST_F(TemporaryFile, IsNotMade) {
    next("x");
    next("y");
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

/// Whether `number` is what std::rand gives first after it was seeded with one of these moments of the process's clock.
bool isDrawnAfterSeed(std::uint32_t number, std::clock_t first, std::clock_t last) {
    for (std::clock_t moment = first; moment <= last; ++moment) {
        std::srand(static_cast<unsigned>(moment));
        if (static_cast<std::uint32_t>(std::rand()) == number) {
            return true;
        }
    }
    return false;
}

TEST_F(TemporaryFile, TheFirstNumberIsDrawnAfterSeedingWithTheClock) {
    const std::clock_t before = std::clock();
    const std::uint32_t number = numberOf(next("x"));
    const std::clock_t after = std::clock();
    EXPECT_TRUE(isDrawnAfterSeed(number, before, after)) << number;
}

TEST_F(TemporaryFile, EachNameHasTheNextNumberWhateverDirectoryAndSuffix) {
    fs::create_directory(directory / "other");
    const std::uint32_t first = numberOf(next("x"));
    EXPECT_EQ(numberOf(next("x")), first + 1);
    EXPECT_EQ(numberOf(next("log")), first + 2);
    EXPECT_EQ(numberOf(Path::GetTempFile(here + "other", false, "x")), first + 3);
    EXPECT_EQ(numberOf(Path::GetTempFile(here, true, "x")), first + 4);
}

TEST_F(TemporaryFile, SkipsAllConsecutiveNumbersThatAreTaken) {
    const std::uint32_t first = numberOf(next("x"));
    constexpr std::uint32_t kTaken = 40;
    for (std::uint32_t number = first + 1; number <= first + kTaken; ++number) {
        writeTextFile(directory / nameWithNumber(number, ".x"), "");
    }
    EXPECT_EQ(numberOf(next("x")), first + kTaken + 1);
    EXPECT_EQ(numberOf(next("x")), first + kTaken + 2) << "what was skipped is not tried again";
}

TEST_F(TemporaryFile, SkipsADirectoryOfThatName) {
    const std::uint32_t first = numberOf(next("x"));
    fs::create_directory(directory / nameWithNumber(first + 1, ".x"));
    EXPECT_EQ(numberOf(next("x")), first + 2);
}

TEST_F(TemporaryFile, IsNotDisturbedByOtherSuffixesOrDirectories) {
    fs::create_directory(directory / "other");
    const std::uint32_t first = numberOf(next("x"));
    writeTextFile(directory / nameWithNumber(first + 1, ".y"), "");
    writeTextFile(directory / nameWithNumber(first + 1, ""), "");
    writeTextFile(directory / "other" / nameWithNumber(first + 1, ".x"), "");
    EXPECT_EQ(numberOf(next("x")), first + 1);
}

TEST_F(TemporaryFile, InWhatIsNoDirectoryIsTheEmptyPath) {
    writeTextFile(directory / "file", "x");
    const std::uint32_t first = numberOf(next("x"));
    EXPECT_TRUE(Path::GetTempFile(here + "file", true, "x").Empty());
    EXPECT_TRUE(Path::GetTempFile(here + "missing", true, "x").Empty());
    EXPECT_TRUE(Path::GetTempFile(Path(), true, "x").Empty());
    EXPECT_EQ(numberOf(next("x")), first + 1) << "no number was used";
    EXPECT_TRUE(fs::exists(directory / "file"));
}

TEST_F(TemporaryFile, ABlankInTheSuffixIsNoticed) {
    const Path path = next("my log");
    EXPECT_EQ(path.GetPath4Shell(), '"' + std::string(path) + '"');
}

TEST_F(TemporaryFile, ASuffixIsAPathTextLikeOthersOddity) {
    EXPECT_TRUE(next("a?").Empty());
    EXPECT_EQ(std::string(next("/../name")), std::string(here + "name"));
    const Path below = next("d/file");
    EXPECT_EQ(below.Name(), "file");
    EXPECT_EQ(endingOf(below.Parent()), ".d");
}

TEST_F(TemporaryFile, ASuffixThatTakesTheNumberAwayEndsTheSearch) {
    EXPECT_TRUE(next("/..").Empty());
    writeTextFile(directory / "name", "x");
    EXPECT_TRUE(next("/../name").Empty());
}

TEST_F(TemporaryFile, SeedsTheHostsRandomNumbersAnewOddity) {
    constexpr unsigned kSeed = 0x5eed1234;
    const auto draw = [] {
        std::array<int, 8> numbers{};
        for (int& number : numbers) {
            number = std::rand();
        }
        return numbers;
    };
    next("x");
    std::srand(kSeed);
    const auto undisturbed = draw();
    std::srand(kSeed);
    ASSERT_EQ(draw(), undisturbed);
    std::srand(kSeed);
    next("x");
    EXPECT_NE(draw(), undisturbed);
    // The seed is the clock again, and nothing is drawn.
    const std::clock_t before = std::clock();
    next("x");
    const std::clock_t after = std::clock();
    const auto drawn = static_cast<std::uint32_t>(std::rand());
    EXPECT_TRUE(isDrawnAfterSeed(drawn, before, after)) << drawn;
    // A call that finds no directory leaves them alone.
    std::srand(kSeed);
    Path::GetTempFile(Path(), false, "x");
    EXPECT_EQ(draw(), undisturbed);
}

TEST_F(TemporaryFile, ThreadsThatAskAtOnceGetDifferentNames) {
    constexpr std::size_t kThreads = 4;
    constexpr std::size_t kNames = 100;
    std::vector<std::vector<std::string>> names(kThreads);
    std::vector<std::thread> threads;
    for (std::vector<std::string>& own : names) {
        threads.emplace_back([this, &own] {
            while (own.size() < kNames) {
                own.push_back(next("x").Name());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::string> all;
    for (const std::vector<std::string>& own : names) {
        all.insert(own.begin(), own.end());
    }
    EXPECT_EQ(all.size(), kThreads * kNames);
}

// --- The directory for temporary files: chosen once in a process, and so once in a test ------------------------------

class TemporaryDirectoryChoice : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directory(directory / "one");
        fs::create_directory(directory / "two");
        unsetVariable("TMP");
        unsetVariable("TEMP");
    }

    void set(const char* variable, const std::string& name) const {
        setVariable(variable, systemText(directory / name));
    }

    /// The path of `name` in the test's directory.
    std::string textOf(const std::string& name) const { return windowsText(directory / name); }

    static std::string chosen() { return std::string(Path::GetTempFile(false, "x").Parent()); }

    TempDirectory directory;
};

TEST_F(TemporaryDirectoryChoice, TmpComesFirst) {
    set("TMP", "one");
    set("TEMP", "two");
    const Path path = Path::GetTempFile(false, ".log");
    EXPECT_EQ(std::string(path.Parent()), textOf("one"));
    EXPECT_NE(digitsOf(path.Name()), "");
    EXPECT_EQ(endingOf(path), ".log");
}

TEST_F(TemporaryDirectoryChoice, TempWhenTmpIsNotDefined) {
    set("TEMP", "two");
    EXPECT_EQ(chosen(), textOf("two"));
}

TEST_F(TemporaryDirectoryChoice, TempWhenTmpIsEmpty) {
    setVariable("TMP", "");
    set("TEMP", "two");
    EXPECT_EQ(chosen(), textOf("two"));
}

TEST_F(TemporaryDirectoryChoice, TempWhenTmpDoesNotExist) {
    set("TMP", "missing");
    set("TEMP", "two");
    EXPECT_EQ(chosen(), textOf("two"));
}

TEST_F(TemporaryDirectoryChoice, TempWhenTmpIsNoPath) {
    set("TMP", "one?");
    set("TEMP", "two");
    EXPECT_EQ(chosen(), textOf("two"));
}

TEST_F(TemporaryDirectoryChoice, TheVariableIsNormalised) {
    setVariable("TMP", systemText(directory / "one") + "/../two//");
    EXPECT_EQ(chosen(), textOf("two"));
}

TEST_F(TemporaryDirectoryChoice, ARelativeVariableIsBelowTheCurrentDirectoryOfTheFirstCall) {
    fs::current_path(directory.path());
    setVariable("TMP", "one");
    EXPECT_EQ(chosen(), textOf("one"));
    fs::current_path(directory / "two");
    EXPECT_EQ(chosen(), textOf("one"));
}

TEST_F(TemporaryDirectoryChoice, AFileIsTakenAndThenServesNothingOddity) {
    writeTextFile(directory / "file", "x");
    set("TMP", "file");
    set("TEMP", "two");
    EXPECT_EQ(chosen(), "");
}

TEST_F(TemporaryDirectoryChoice, IsNotMadeAnew) {
    set("TMP", "one");
    EXPECT_EQ(chosen(), textOf("one"));
    set("TMP", "two");
    EXPECT_EQ(chosen(), textOf("one"));
    fs::remove(directory / "one");
    EXPECT_EQ(chosen(), "");
    fs::create_directory(directory / "one");
    EXPECT_EQ(chosen(), textOf("one"));
}

TEST_F(TemporaryDirectoryChoice, TheFixedDirectoryWhenNoVariableServes) {
    const std::string fixed = fixedTemporaryDirectory();
    set("TMP", "missing");
    const bool made = fs::create_directory(fileOfText(fixed));
    EXPECT_EQ(chosen(), fixed);
    set("TMP", "one");
    EXPECT_EQ(chosen(), fixed) << "chosen at the first call";
    if (made) {
        fs::remove(fileOfText(fixed));
        EXPECT_EQ(chosen(), "");
    }
}

TEST_F(TemporaryDirectoryChoice, NamesShareTheCounter) {
    set("TMP", "one");
    const std::uint32_t first = numberOf(Path::GetTempFile(false, "x"));
    EXPECT_EQ(numberOf(Path::GetTempFile(Path(textOf("two")), false, "x")), first + 1);
    EXPECT_EQ(numberOf(Path::GetTempFile(false, "x")), first + 2);
}

}  // namespace
