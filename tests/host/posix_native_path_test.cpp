// Paths where the drive "Z:" is the root directory.
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

struct Row {
    const char* from;
    const char* to;
};

TEST(NativePathWithoutDrives, OfPaths) {
    const Row rows[] = {
        {"Z:\\home\\ann", "/home/ann"},
        {"Z:/home/ann", "/home/ann"},
        {"z:\\home", "/home"},
        {"Z:", "/"},
        {"Z:\\", "/"},
        {"Z:\\home\\ann\\..\\bob", "/home/bob"},
        // Other drives and the network are not there.
        {"C:\\home", ""},
        {"c:", ""},
        {"\\\\server\\share\\x", ""},
        {"//server/share", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(nativePath(Path(std::string(row.from))).native(), row.to) << row.from;
    }
}

TEST(NativePathWithoutDrives, OfTexts) {
    const Row rows[] = {
        {"Z:\\home/ann\\\\x", "/home/ann/x"},
        {"z:/home", "/home"},
        {"Z:", "/"},
        {"\\home", "/home"},
        {"/home/ann", "/home/ann"},
        {"a\\b", "a/b"},
        {"Z:a", "a"},
        {"C:\\home", ""},
        {"//server", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(nativePath(std::string(row.from)).native(), row.to) << row.from;
    }
}

TEST(NativePathWithoutDrives, OfFiles) {
    const Row rows[] = {
        {"/", "Z:"},
        {"/home", "Z:\\home"},
        {"/home/ann/", "Z:\\home\\ann"},
        {"//home//ann", "Z:\\home\\ann"},
        {"/home/./ann", "Z:\\home\\ann"},
        {"/home/ann/..", "Z:\\home"},
        {"/..", "Z:"},
        {"/home/C:", "Z:\\home\\C:"},
        {"/home/two words", "Z:\\home\\two words"},
        {"/home/ann.", "Z:\\home\\ann."},
        {"/home/\xC3\xA4\xE6\x97\xA5", "Z:\\home\\\xC3\xA4\xE6\x97\xA5"},
        {"/home/\xFF\x80", "Z:\\home\\\xFF\x80"},
    };
    for (const Row& row : rows) {
        EXPECT_STREQ(fromNative(row.from), row.to) << row.from;
    }
}

TEST(NativePathWithoutDrives, OfFilesThatNoTextNames) {
    for (const char* const file : {"/a\\b", "/a\"b", "/a*b", "/a?b", "/<a", "/a>", "/a|b", "/a\nb", "/a\rb", "/\\"}) {
        EXPECT_STREQ(fromNative(file), "") << file;
    }
}

TEST(NativePathWithoutDrives, OfAFileBeyondAscii) {
    const TempDirectory directory;
    const fs::path file = directory / "\xC3\xA4\xE6\x97\xA5\xFF";
    writeTextFile(file, "bytes");
    ASSERT_TRUE(fromNative(file).Exists());
    EXPECT_EQ(readTextFile(nativePath(fromNative(file))), "bytes");
}

TEST(NativePathWithoutDrives, OfARelativeFileWhereTheCurrentDirectoryIsGone) {
    const TempDirectory directory;
    const fs::path before = fs::current_path();
    fs::create_directory(directory / "gone");
    fs::current_path(directory / "gone");
    fs::remove(directory / "gone");
    EXPECT_TRUE(fromNative("file.txt").Empty());
    EXPECT_STREQ(fromNative("/home"), "Z:\\home");
    fs::current_path(before);
}

}  // namespace
}  // namespace zelutil::test
