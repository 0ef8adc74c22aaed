// File operations of paths on files that somebody holds open, where an open file cannot be renamed or removed.
#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "file/file_fixture.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;

class WindowsFileOperations : public zelutil::test::FilesOfADirectory {};

TEST_F(WindowsFileOperations, MoveIsTrueThoughTheOriginalCannotBeRemovedOddity) {
    write("from", "bytes");
    {
        const std::ifstream holder(directory / "from");
        ASSERT_TRUE(holder.is_open());
        EXPECT_TRUE(path("from").MoveTheFile(path("to")));
        EXPECT_EQ(bytesOf("to"), "bytes");
        EXPECT_EQ(bytesOf("from"), "bytes");
        EXPECT_FALSE(path("from").MoveTheFile(path("to"))) << "it is there by now";
    }
    EXPECT_EQ(bytesOf("from"), "bytes");
}

TEST_F(WindowsFileOperations, AFileHeldOpenIsCopiedAndNotDeleted) {
    write("file", "bytes");
    const std::ifstream holder(directory / "file");
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("file").CopyTheFile(path("copy")));
    EXPECT_EQ(bytesOf("copy"), "bytes");
    EXPECT_FALSE(path("file").DeleteTheFile());
    EXPECT_EQ(bytesOf("file"), "bytes");
}

TEST_F(WindowsFileOperations, AFileHeldOpenForReadingIsOverwritten) {
    write("from", "new");
    write("to", "old");
    const std::ifstream holder(directory / "to");
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "new");
}

TEST_F(WindowsFileOperations, AFileHeldOpenForWritingIsOverwritten) {
    write("from", "new");
    write("to", "old");
    const std::ofstream holder(directory / "to", std::ios::app);
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "new");
}

TEST_F(WindowsFileOperations, AReadOnlyFileIsNotDeleted) {
    write("file", "bytes");
    fs::permissions(directory / "file", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    EXPECT_FALSE(path("file").DeleteTheFile());
    EXPECT_EQ(bytesOf("file"), "bytes");
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(path("file").DeleteTheFile());
}

TEST_F(WindowsFileOperations, TheFileSystemFoldsCaseThoughPathsDoNot) {
    write("File", "bytes");
    EXPECT_TRUE(path("fILE").Exists());
    EXPECT_NE(path("fILE"), path("File"));
    EXPECT_FALSE(path("File").MoveTheFile(path("fILE"))) << "the target exists";
    EXPECT_EQ(bytesOf("File"), "bytes");
}

TEST_F(WindowsFileOperations, InACurrentDirectoryThatNoTextNamesARelativeTextIsNoPath) {
    struct Row {
        std::wstring name;
        const char* asTheSystemReplacesIt;
    };
    // The superscript four is not in the code page; a plain four is, and names another directory.
    const Row rows[] = {{L"\u0394\u65e5", "??"}, {L"\u2074", "4"}};
    for (const Row& row : rows) {
        fs::create_directory(directory.path() / row.name);
        fs::current_path(directory.path() / row.name);
        EXPECT_EQ(Path::GetCWD(), zelutil::test::windowsText(directory.path()) + "\\" + row.asTheSystemReplacesIt);
        for (const char* const text : {"a", "a b", "/a", ".", ".."}) {
            EXPECT_STREQ(Path(text), "") << text << " in " << row.asTheSystemReplacesIt;
        }
    }
    fs::current_path(directory.path());
    EXPECT_STREQ(Path("a"), zelutil::test::windowsText(directory / "a").c_str());
}

}  // namespace
