#include <gtest/gtest.h>
#include <zelutil/host/native_path.h>

#include <filesystem>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::fromNative;
using host::nativePath;
using ZelU::File::Path;

std::string textOf(const Path& path) { return static_cast<const char*>(path); }

/// Whether there is a file of these bytes where the standard library looks.
bool holds(const fs::path& file, const std::string& bytes) { return fs::exists(file) && readTextFile(file) == bytes; }

TEST(NativePath, LeadsTheStandardLibraryToTheFileOfAPath) {
    const TempDirectory directory;
    writeTextFile(directory / "below/file.txt", "bytes");
    const Path path(windowsText(directory / "below/file.txt"));
    ASSERT_TRUE(path.Exists());
    EXPECT_TRUE(holds(nativePath(path), "bytes"));
    EXPECT_EQ(nativePath(path), directory / "below/file.txt");
}

TEST(NativePath, LeadsTheLibraryToAFileOfTheStandardLibrary) {
    const TempDirectory directory;
    const fs::path file = directory / "below/file.txt";
    writeTextFile(file, "bytes");
    EXPECT_EQ(textOf(fromNative(file)), windowsText(file));
    EXPECT_TRUE(fromNative(file).Exists());
    EXPECT_EQ(nativePath(fromNative(file)), file);
}

TEST(NativePath, OfTheEmptyPathIsEmpty) {
    EXPECT_EQ(nativePath(Path()), fs::path());
    EXPECT_EQ(nativePath(std::string()), fs::path());
    EXPECT_TRUE(fromNative(fs::path()).Empty());
}

TEST(NativePath, OfATextNeedNotBeOneOfAPath) {
    // As the path of the user's file is written: a home in the form of paths, and a name with slashes.
    const TempDirectory directory;
    const std::string text = windowsText(directory.path()) + "/tessel/x.cfg";
    EXPECT_EQ(nativePath(text), directory / "tessel/x.cfg");
    EXPECT_EQ(nativePath(std::string("notes.txt")), fs::path("notes.txt"));
}

TEST(NativePath, OfATextThatNamesNoFileIsEmpty) {
    for (const char* const text : {"\"Z:\\a b\"/x", "Z:\\a?b", "Z:\\a*", "Z:\\<a>", "Z:\\a|b", "Z:\\\"a", "?"}) {
        EXPECT_EQ(nativePath(std::string(text)), fs::path()) << text;
    }
}

TEST(NativePath, OfAFileWhoseNameHasAnEndInTheMiddleIsEmpty) {
    const TempDirectory directory;
    fs::path file = directory / "file.txt";
    writeTextFile(file, "bytes");
    file += fs::path::string_type(1, fs::path::value_type());
    file += "x";
    EXPECT_TRUE(fromNative(file).Empty());
}

TEST(NativePath, MayHaveBlanks) {
    const TempDirectory directory;
    const fs::path file = directory / "two words/a file";
    writeTextFile(file, "bytes");
    EXPECT_EQ(textOf(fromNative(file)), windowsText(file));
    EXPECT_TRUE(holds(nativePath(fromNative(file)), "bytes"));
}

TEST(NativePath, OfARelativeFileIsAbsolute) {
    const TempDirectory directory;
    fs::current_path(directory.path());
    const std::string here = windowsText(directory.path());
    EXPECT_EQ(textOf(fromNative("file.txt")), here + "\\file.txt");
    EXPECT_EQ(textOf(fromNative("below/file.txt")), here + "\\below\\file.txt");
    EXPECT_EQ(textOf(fromNative(".")), here);
    EXPECT_EQ(textOf(fromNative("./a")), here + "\\a");
    EXPECT_EQ(textOf(fromNative("a/../b")), here + "\\b");
    EXPECT_EQ(textOf(fromNative("..")), windowsText(directory.path().parent_path()));
    EXPECT_EQ(textOf(fromNative("directory/")), here + "\\directory");
    EXPECT_EQ(textOf(fromNative("a//b")), here + "\\a\\b");
}

}  // namespace
}  // namespace zelutil::test
