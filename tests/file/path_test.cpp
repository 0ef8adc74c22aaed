#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/temp_directory.h"
#include "support/text_file.h"

// Drive C: is only ever written here, never looked at: these texts are absolute on every system.
namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

constexpr const char* kNull = nullptr;

std::string textOf(const Path& path) { return static_cast<const char*>(path); }

/// Whether the path's blank flag is set: it decides about quotes.
bool hasBlank(const Path& path) { return path.GetPath4Shell() != textOf(path); }

/// Whether the path remembers that the current directory was put in front: a relative text then stays relative.
bool remembersCurrentDirectory(Path path) {
    path = "relative";
    return textOf(path) == "relative";
}

// --- Construction ---------------------------------------------------------------------------------------------------

TEST(Path, DefaultIsTheEmptyPath) {
    const Path path;
    EXPECT_TRUE(path.Empty());
    EXPECT_STREQ(path, "");
    EXPECT_FALSE(hasBlank(path));
    EXPECT_FALSE(remembersCurrentDirectory(path));
}

struct DirectoryAndName {
    const char* dir;
    const char* name;
    const char* out;
};

std::ostream& operator<<(std::ostream& stream, const DirectoryAndName& row) {
    const auto shown = [](const char* text) { return text == nullptr ? "null" : text; };
    return stream << "(" << shown(row.dir) << ", " << shown(row.name) << ") => [" << row.out << "]";
}

TEST(Path, JoinsADirectoryAndAName) {
    constexpr DirectoryAndName kRows[] = {
        {"c:/a", "b", R"(c:\a\b)"},
        {"c:/a", "b/c", R"(c:\a\b\c)"},
        {"c:/a/b", "c/d.txt", R"(c:\a\b\c\d.txt)"},
        {"c:/a/", "b", R"(c:\a\b)"},
        {"c:/a", "/b", R"(c:\a\b)"},
        {"c:/", "b", R"(c:\b)"},
        {"c:/a", "", R"(c:\a)"},
        {"c:/a", kNull, R"(c:\a)"},
        {"c:/a", "../b", R"(c:\b)"},
        {"c:/a", "d:/b", R"(c:\a\d:\b)"},
        {"//server", "share", R"(\\server\share)"},
        // One whole text: an invalid half spoils all of it.
        {"c:/a", "b?", ""},
        {"c:/a*", "b", ""},
        {"c:/a", "../..", ""},
        // A run of separators is one wherever its parts come from.
        {"c:/a/", "/b", R"(c:\a\/b)"},
    };
    for (const DirectoryAndName& row : kRows) {
        EXPECT_STREQ(Path(row.dir, row.name), row.out) << row;
    }
}

TEST(Path, WithoutADirectoryTheNameIsIgnoredOddity) {
    constexpr DirectoryAndName kRows[] = {
        {"", "b", ""}, {"", "c:/b", ""}, {"", kNull, ""}, {kNull, "c:/b", ""}, {kNull, "b", ""}, {kNull, kNull, ""},
    };
    for (const DirectoryAndName& row : kRows) {
        const Path path(row.dir, row.name);
        EXPECT_TRUE(path.Empty()) << row;
        EXPECT_FALSE(remembersCurrentDirectory(path)) << row;
    }
}

TEST(Path, NoticesABlankInDirectoryOrName) {
    EXPECT_TRUE(hasBlank(Path("c:/a b", "c")));
    EXPECT_TRUE(hasBlank(Path("c:/a", "b c")));
    EXPECT_FALSE(hasBlank(Path("c:/a", "b")));
}

TEST(Path, NormalisesATextItIsMadeFrom) {
    EXPECT_STREQ(Path("c:/a//b/"), R"(c:\a\b)");
    EXPECT_STREQ(Path("//server/share"), R"(\\server\share)");
    EXPECT_STREQ(Path("c:/a/./b/../c"), R"(c:\a\c)");
    EXPECT_STREQ(Path(""), "");
    for (const char* const rejected : {"c:/a?", "c:/*", "c:/a|b", "c:/<a", "c:/a>", "c:/a\nb", "c:/a\r", "c:/.."}) {
        EXPECT_TRUE(Path(rejected).Empty()) << rejected;
    }
}

TEST(Path, OfANullTextIsTheEmptyPath) {
    const char* const undefined = std::getenv("ZELUTIL_TEST_UNDEFINED");
    ASSERT_EQ(undefined, nullptr);
    for (const Path& path : {Path(undefined), Path(kNull), Path(nullptr)}) {
        EXPECT_TRUE(path.Empty());
        EXPECT_FALSE(hasBlank(path));
        EXPECT_FALSE(remembersCurrentDirectory(path));
    }
}

// A second implicit way from a C string would make these calls ambiguous.
struct Overloaded {
    static int call(const Path&) { return 1; }
    static int call(const std::string&) { return 2; }
};

TEST(Path, IsMadeImplicitlyOfAStringOnly) {
    static_assert(std::is_convertible_v<std::string, Path>);
    static_assert(!std::is_convertible_v<const char*, Path>);
    EXPECT_EQ(Overloaded::call("c:/a"), 2);
    const Path path("c:/a");
    for (const bool isKnown : {true, false}) {
        const char* const text = isKnown ? path : "none";
        EXPECT_STREQ(text, isKnown ? "c:\\a" : "none");
    }
}

TEST(Path, ATextMayHoldANul) {
    const Path path(std::string("c:/a\0b", 6));
    EXPECT_STREQ(path, R"(c:\a)");
    EXPECT_EQ(path.Name(), std::string("a\0b", 3));
    EXPECT_NE(path, Path("c:/a"));
}

TEST(Path, ARelativeTextGetsTheCurrentDirectoryInFront) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    const Path path("a/b");
    EXPECT_EQ(textOf(path), windowsText(directory.path()) + R"(\a\b)");
    EXPECT_TRUE(remembersCurrentDirectory(path));
    EXPECT_EQ(textOf(Path(".")), windowsText(directory.path()));
    EXPECT_EQ(textOf(Path("..")), windowsText(directory.path().parent_path()));
    EXPECT_FALSE(remembersCurrentDirectory(Path("c:/a")));
}

TEST(Path, ABlankInTheCurrentDirectoryCounts) {
    const TempDirectory directory;
    fs::create_directory(directory / "my work");
    fs::current_path(directory / "my work");
    EXPECT_TRUE(hasBlank(Path("a")));
    EXPECT_FALSE(hasBlank(Path("c:/a")));
}

TEST(Path, AtADrivesRootTheCurrentDirectoryAddsNoSecondSeparator) {
    const TempDirectory directory;
    const std::string drive = windowsText(directory.path()).substr(0, 2);
    fs::current_path(directory.path().root_path());
    EXPECT_EQ(textOf(Path("a")), drive + R"(\a)");
    EXPECT_EQ(textOf(Path(".")), drive);
    EXPECT_STREQ(Path(".."), "");
}

TEST(Path, RelativePathsMayBeMadeOnSeveralThreadsAtOnce) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    const std::string expected = windowsText(directory.path()) + R"(\a)";
    constexpr int kThreads = 4;
    constexpr int kPaths = 500;
    std::vector<int> wrong(kThreads, 0);
    std::vector<std::thread> threads;
    for (int& count : wrong) {
        threads.emplace_back([&count, &expected] {
            for (int i = 0; i < kPaths; ++i) {
                count += textOf(Path("a")) == expected ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(kThreads, 0));
}

// --- Copies and assignment ------------------------------------------------------------------------------------------

TEST(Path, ACopyHasTextAndFlagsAndIsItsOwn) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    Path original("a b");
    const Path copy = original;
    Path assigned;
    assigned = original;
    original = "c:/other";
    for (const Path& path : {copy, assigned}) {
        EXPECT_EQ(textOf(path), windowsText(directory.path()) + R"(\a b)");
        EXPECT_TRUE(hasBlank(path));
        EXPECT_TRUE(remembersCurrentDirectory(path));
    }
}

TEST(Path, MovedFromIsEmptyWithoutFlags) {
    // Both a text that lies in the object and one that needs memory; each with a blank and the current directory.
    for (const std::string& text : {std::string("a b"), std::string(100, 'a') + " b"}) {
        Path first(text);
        const std::string whole = textOf(first);
        Path second(std::move(first));
        Path third("c:/other path");
        third = std::move(second);
        // NOLINTNEXTLINE(bugprone-use-after-move): it is what is tested.
        for (const Path& path : {first, second}) {
            EXPECT_TRUE(path.Empty());
            EXPECT_FALSE(hasBlank(path));
            EXPECT_FALSE(remembersCurrentDirectory(path));
        }
        EXPECT_EQ(textOf(third), whole);
        EXPECT_TRUE(hasBlank(third));
        EXPECT_TRUE(remembersCurrentDirectory(third));
    }
}

TEST(Path, MovedFromAShortTextIsEmptyToo) {
    Path first("c:/a b");
    const Path second(std::move(first));
    EXPECT_STREQ(second, R"(c:\a b)");
    EXPECT_TRUE(first.Empty());  // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(hasBlank(first));
}

TEST(Path, MovedToItselfStays) {
    Path path("a b");
    const std::string text = textOf(path);
    Path& same = path;
    path = std::move(same);
    EXPECT_EQ(textOf(path), text);
    EXPECT_TRUE(hasBlank(path));
    EXPECT_TRUE(remembersCurrentDirectory(path));
}

TEST(Path, MovesWithoutThrowing) {
    static_assert(std::is_nothrow_move_constructible_v<Path>);
    static_assert(std::is_nothrow_move_assignable_v<Path>);
}

TEST(Path, AssigningATextNormalisesItAndLooksForBlanksAnew) {
    Path path("c:/a b");
    path = "c:/x//y/";
    EXPECT_STREQ(path, R"(c:\x\y)");
    EXPECT_FALSE(hasBlank(path));
    path = "c:/x y";
    EXPECT_TRUE(hasBlank(path));
    path = "c:/x y?";
    EXPECT_STREQ(path, "");
    EXPECT_FALSE(hasBlank(path));
}

TEST(Path, AssigningNothingGivesTheEmptyPathWithoutFlags) {
    for (const char* const nothing : {kNull, ""}) {
        Path path("a b");
        path = nothing;
        EXPECT_TRUE(path.Empty());
        EXPECT_FALSE(hasBlank(path));
        EXPECT_FALSE(remembersCurrentDirectory(path));
    }
}

TEST(Path, ARelativeTextAssignedToAPathThatWasRelativeStaysRelativeOddity) {
    Path path("a");
    path = "b/c d";
    EXPECT_STREQ(path, R"(b\c d)");
    EXPECT_TRUE(hasBlank(path));
    // Neither an absolute text nor a rejected one makes it forget.
    path = "c:/x";
    path = "?";
    path = "b";
    EXPECT_STREQ(path, "b");
    // Appending looks at the same flag.
    path += "../..";
    EXPECT_STREQ(path, "");
    path += "x";
    EXPECT_STREQ(path, R"(\x)");
}

TEST(Path, AssigningAPathBringsItsOwnFlags) {
    Path path("a");
    path = Path("c:/x");
    EXPECT_FALSE(remembersCurrentDirectory(path));
    path = std::string("a");
    EXPECT_TRUE(remembersCurrentDirectory(path));
}

TEST(Path, ItsOwnTextMayBeAssigned) {
    Path path("c:/a/b");
    path = static_cast<const char*>(path);
    EXPECT_STREQ(path, R"(c:\a\b)");
    path = static_cast<const char*>(path) + 2;
    EXPECT_EQ(path.Name(), "b");
}

// --- Joining --------------------------------------------------------------------------------------------------------

struct Joined {
    const char* path;
    const char* component;
    const char* out;
};

TEST(Path, AppendsComponents) {
    constexpr Joined kRows[] = {
        {"c:/a", "b", R"(c:\a\b)"},
        {"c:/a", "b/c/", R"(c:\a\b\c)"},
        {"c:/a", "", R"(c:\a)"},
        {"c:/a", "/b", R"(c:\a\b)"},
        {"c:/a", "../b", R"(c:\b)"},
        {"c:/a", ".", R"(c:\a)"},
        {"c:/a", "../..", ""},
        {"c:/a", "b?", ""},
        {"c:/a", "d:/b", R"(c:\a\d:\b)"},
        {"c:", "a", R"(c:\a)"},
        {"c:/a", "b c", R"(c:\a\b c)"},
        {"//server/share", "a", R"(\\server\share\a)"},
        {"c:/a///b", "c", R"(c:\a\/b\c)"},
    };
    for (const Joined& row : kRows) {
        SCOPED_TRACE(testing::Message() << "[" << row.path << "] + [" << row.component << "]");
        const Path path(row.path);
        const std::string before = textOf(path);
        EXPECT_STREQ(path + row.component, row.out);
        EXPECT_STREQ(path + std::string(row.component), row.out);
        EXPECT_EQ(textOf(path), before);
        Path changed = path;
        Path& answer = changed += row.component;
        EXPECT_STREQ(changed, row.out);
        EXPECT_EQ(&answer, &changed);
        Path changedByString = path;
        changedByString += std::string(row.component);
        EXPECT_STREQ(changedByString, row.out);
    }
}

TEST(Path, AppendingNullChangesNothing) {
    Path path("c:/a b");
    path += kNull;
    EXPECT_STREQ(path, R"(c:\a b)");
    EXPECT_TRUE(hasBlank(path));
    EXPECT_STREQ(path + kNull, R"(c:\a b)");
    Path empty;
    empty += kNull;
    EXPECT_TRUE(empty.Empty());
}

TEST(Path, AppendingKeepsABlankAndClearsItWithAnInvalidText) {
    EXPECT_TRUE(hasBlank(Path("c:/a b") + "c"));
    EXPECT_TRUE(hasBlank(Path("c:/a") + "b c"));
    EXPECT_TRUE(hasBlank(Path("c:/a b") + ".."));
    EXPECT_FALSE(hasBlank(Path("c:/a") + "b"));
    EXPECT_FALSE(hasBlank(Path("c:/a b") + "?"));
    EXPECT_FALSE(hasBlank(Path("c:/a b") + "../../c d"));
}

TEST(Path, AStringIsAppendedUpToItsFirstNul) {
    Path path("c:/a");
    path += std::string("b\0c", 3);
    EXPECT_EQ(path, Path("c:/a/b"));
}

TEST(Path, ItsOwnTextMayBeAppended) {
    Path path("c:/a");
    path += path;
    EXPECT_STREQ(path, R"(c:\a\c:\a)");
}

TEST(Path, ToTheEmptyPathAnAppendedNameHasALeadingSeparatorOddity) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    const Path path = Path() + "a";
    EXPECT_EQ(textOf(path), windowsText(directory.path()) + R"(\\a)");
    EXPECT_TRUE(remembersCurrentDirectory(path));
    EXPECT_TRUE((Path() + "").Empty());
    EXPECT_STREQ(Path() + "/server/share", R"(\\server\share)");
}

// --- Comparison -----------------------------------------------------------------------------------------------------

TEST(Path, EqualityIsByteByByte) {
    EXPECT_EQ(Path("c:/a"), Path(R"(c:\a\)"));
    EXPECT_FALSE(Path("c:/a") != Path("c:/a"));
    EXPECT_EQ(Path(), Path("c:/a?"));
    for (const char* const other : {"c:/A", "C:/a", "c:/a/b", "c:/b", "c:", "//c/a"}) {
        EXPECT_FALSE(Path("c:/a") == Path(other)) << other;
        EXPECT_TRUE(Path("c:/a") != Path(other)) << other;
    }
}

TEST(Path, FlagsDoNotCountInComparisons) {
    const Path outlived("c:/a b/..");
    ASSERT_TRUE(hasBlank(outlived));
    EXPECT_EQ(outlived, Path("c:"));
    EXPECT_FALSE(outlived < Path("c:"));
    EXPECT_FALSE(Path("c:") < outlived);
}

TEST(Path, OrderIsByUnsignedBytesAndTheShorterFirst) {
    const Path kAscending[] = {Path(),       Path("C:/a"), Path("C:/b"),    Path("c:"),      Path("c:/"),
                               Path("c:/A"), Path("c:/a"), Path("c:/a/b"),  Path("c:/aa"),   Path("c:/b"),
                               Path("c:/z"), Path("c:/~"), Path("c:/\x80"), Path("c:/\xff"), Path("d:/a")};
    for (const Path& left : kAscending) {
        for (const Path& right : kAscending) {
            const bool before = &left < &right && left != right;
            EXPECT_EQ(left < right, before) << textOf(left) << " < " << textOf(right);
        }
    }
}

// --- Name and parent ------------------------------------------------------------------------------------------------

struct Split {
    const char* path;
    const char* parent;
    const char* name;
};

TEST(Path, SplitsAtTheLastSeparator) {
    constexpr Split kRows[] = {
        {"c:/a/b", R"(c:\a)", "b"},
        {"c:/a/b.txt", R"(c:\a)", "b.txt"},
        {"c:/a", "c:", "a"},
        // Both are the whole text where there is no separator.
        {"c:", "c:", "c:"},
        {"c:a", "c:a", "c:a"},
        {"", "", ""},
        {"//server/share/a", R"(\\server\share)", "a"},
        {"//server/share", R"(\\server)", "share"},
        // A separator alone precedes a server, and that is no path.
        {"//server", "", "server"},
        {"c:/a///b", R"(c:\a)", "/b"},
    };
    for (const Split& row : kRows) {
        const Path path(row.path);
        EXPECT_STREQ(path.Parent(), row.parent) << row.path;
        EXPECT_EQ(path.Name(), row.name) << row.path;
    }
}

TEST(Path, AParentHasFlagsOfItsOwn) {
    EXPECT_TRUE(hasBlank(Path("c:/a b/c").Parent()));
    EXPECT_FALSE(hasBlank(Path("c:/a/b c").Parent()));
    EXPECT_FALSE(remembersCurrentDirectory(Path("a").Parent()));
}

TEST(Path, TheParentOfATextWithoutSeparatorIsACopyWithItsFlags) {
    Path path("a");
    path = "b c";
    const Path parent = path.Parent();
    EXPECT_STREQ(parent, "b c");
    EXPECT_TRUE(hasBlank(parent));
    EXPECT_TRUE(remembersCurrentDirectory(parent));
    EXPECT_TRUE(hasBlank(Path("c:/a b/..").Parent()));
}

TEST(Path, TheParentOfATextLeftRelativeIsAbsoluteOddity) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    Path path("a");
    path = "b/c";
    ASSERT_STREQ(path, R"(b\c)");
    EXPECT_EQ(textOf(path.Parent()), windowsText(directory.path()) + R"(\b)");
}

TEST(Path, AWholePathIsItsParentAndItsName) {
    const Path path("c:/a/b/c d.txt");
    EXPECT_EQ(path.Parent() + path.Name(), path);
}

// --- Extension ------------------------------------------------------------------------------------------------------

TEST(Path, TheExtensionFollowsTheLastDotOfTheName) {
    struct Row {
        const char* path;
        const char* extension;
    };
    constexpr Row kRows[] = {
        {"c:/a.txt", "txt"}, {"c:/a.tar.gz", "gz"},
        {"c:/a.TXT", "TXT"}, {"c:/a", ""},
        {"c:/a.", ""},       {"c:/a..", ""},
        {"c:/a..b", "b"},    {"c:/.profile", "profile"},
        {"c:/...", ""},      {"c:/a.b/c", ""},
        {"c:/a.b/c.d", "d"}, {"c:/a.b c", "b c"},
        {"c:a.b", "b"},      {"c:", ""},
        {"c:/", ""},         {"", ""},
        {"//server.x", "x"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Path(row.path).Extension(), row.extension) << row.path;
    }
}

// --- Forms for others -----------------------------------------------------------------------------------------------

TEST(Path, WritesAUri) {
    struct Row {
        const char* path;
        const char* uri;
        const char* uriWithoutQuotes;
    };
    constexpr Row kRows[] = {
        {"c:/a", "file:///c:/a", "file:///c:/a"},
        {"c:/a/b.txt", "file:///c:/a/b.txt", "file:///c:/a/b.txt"},
        {"c:/a b", "\"file:///c:/a b\"", "file:///c:/a b"},
        {"c:", "file:///c:", "file:///c:"},
        {"c:a", "file:///c:a", "file:///c:a"},
        {"//server/share", "file://///server/share", "file://///server/share"},
        {"//my server/x", "\"file://///my server/x\"", "file://///my server/x"},
        // Nothing is escaped.
        {"c:/a%20#b&\xe9", "file:///c:/a%20#b&\xe9", "file:///c:/a%20#b&\xe9"},
        {"", "file:///", "file:///"},
    };
    for (const Row& row : kRows) {
        const Path path(row.path);
        EXPECT_EQ(path.GetURI(false), row.uri) << row.path;
        EXPECT_EQ(path.GetURI(true), row.uriWithoutQuotes) << row.path;
    }
}

TEST(Path, WritesAFormForCommandLines) {
    EXPECT_EQ(Path("c:/a").GetPath4Shell(), R"(c:\a)");
    EXPECT_EQ(Path("c:/a b").GetPath4Shell(), R"("c:\a b")");
    EXPECT_EQ(Path("c:/a b/c").GetPath4Shell(), R"("c:\a b\c")");
    EXPECT_EQ(Path("c:/a\tb").GetPath4Shell(), "c:\\a\tb");
    EXPECT_EQ(Path().GetPath4Shell(), "");
}

TEST(Path, ABlankThatIsGoneStillQuotesOddity) {
    const Path path("c:/a b/../c");
    EXPECT_EQ(path.GetPath4Shell(), R"("c:\c")");
    EXPECT_EQ(path.GetURI(false), "\"file:///c:/c\"");
    EXPECT_EQ(path.GetURI(true), "file:///c:/c");
}

TEST(Path, ABlankHiddenBehindARemovedQuoteDoesNotQuoteOddity) {
    const Path path("c:/a\" b");
    EXPECT_STREQ(path, R"(c:\a b)");
    EXPECT_EQ(path.GetPath4Shell(), R"(c:\a b)");
}

// --- Status ---------------------------------------------------------------------------------------------------------

void expectNothingThere(const Path& path) {
    SCOPED_TRACE(textOf(path));
    EXPECT_FALSE(path.Exists());
    EXPECT_FALSE(path.IsDirectory());
    EXPECT_FALSE(path.IsExecutable());
    EXPECT_FALSE(path.IsWriteable());
    EXPECT_EQ(path.Size(), 0);
}

TEST(PathStatus, OfNothingIsFalseAndZero) {
    const TempDirectory directory;
    writeTextFile(directory / "file", "x");
    expectNothingThere(Path());
    expectNothingThere(Path("c:/?"));
    expectNothingThere(Path(windowsText(directory / "missing")));
    expectNothingThere(Path(windowsText(directory / "missing/file")));
    expectNothingThere(Path(windowsText(directory / "file")) + "below");
    expectNothingThere(Path(windowsText(directory / "file") + "//?"));
}

TEST(PathStatus, OfAFile) {
    const TempDirectory directory;
    writeTextFile(directory / "file.txt", "12345");
    const Path path(windowsText(directory / "file.txt"));
    EXPECT_TRUE(path.Exists());
    EXPECT_FALSE(path.IsDirectory());
    EXPECT_FALSE(path.IsExecutable());
    EXPECT_TRUE(path.IsWriteable());
    EXPECT_EQ(path.Size(), 5);
    writeTextFile(directory / "file.txt", "");
    EXPECT_TRUE(path.Exists());
    EXPECT_EQ(path.Size(), 0);
}

TEST(PathStatus, OfADirectory) {
    const TempDirectory directory;
    const Path path(windowsText(directory.path()));
    EXPECT_TRUE(path.Exists());
    EXPECT_TRUE(path.IsDirectory());
    EXPECT_TRUE(path.IsExecutable());
    EXPECT_TRUE(path.IsWriteable());
}

TEST(PathStatus, OfADrive) {
    const TempDirectory directory;
    const Path drive(windowsText(directory.path()).substr(0, 2));
    EXPECT_TRUE(drive.Exists());
    EXPECT_TRUE(drive.IsDirectory());
}

TEST(PathStatus, ExecutableByModeOrExtension) {
    const TempDirectory directory;
    writeTextFile(directory / "tool.exe", "");
    fs::permissions(directory / "tool.exe", fs::perms::owner_exec, fs::perm_options::add);
    EXPECT_TRUE(Path(windowsText(directory / "tool.exe")).IsExecutable());
}

TEST(PathStatus, AReadOnlyFileIsNotWriteable) {
    const TempDirectory directory;
    writeTextFile(directory / "file", "x");
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::remove);
    const Path path(windowsText(directory / "file"));
    EXPECT_TRUE(path.Exists());
    EXPECT_FALSE(path.IsWriteable());
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(path.IsWriteable());
}

TEST(PathStatus, SizesOfTwoGibibytesAndMoreAreTrue) {
    const TempDirectory directory;
    writeTextFile(directory / "large", "");
    const Path path(windowsText(directory / "large"));
    constexpr std::int64_t kGibibyte = std::int64_t{1} << 30;
    // The file has no blocks of its own on the file systems these tests run on.
    for (const std::int64_t size : {2 * kGibibyte - 1, 2 * kGibibyte, 4 * kGibibyte + 5}) {
        std::error_code error;
        fs::resize_file(directory / "large", static_cast<std::uintmax_t>(size), error);
        if (error) {
            GTEST_SKIP() << "the system makes no such file here: " << error.message();
        }
        EXPECT_EQ(path.Size(), size);
    }
}

}  // namespace
