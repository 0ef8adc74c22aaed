// File operations of paths on files that somebody holds open, where an open file cannot be renamed or removed.
#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;
using zelutil::test::readTextFile;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

class WindowsFileOperations : public testing::Test {
protected:
    Path path(const std::string& name) const { return Path(windowsText(directory / name)); }

    TempDirectory directory;
};

TEST_F(WindowsFileOperations, MoveIsTrueThoughTheOriginalCannotBeRemovedOddity) {
    writeTextFile(directory / "from", "bytes");
    {
        const std::ifstream holder(directory / "from");
        ASSERT_TRUE(holder.is_open());
        EXPECT_TRUE(path("from").MoveTheFile(path("to")));
        EXPECT_EQ(readTextFile(directory / "to"), "bytes");
        EXPECT_EQ(readTextFile(directory / "from"), "bytes");
        EXPECT_FALSE(path("from").MoveTheFile(path("to"))) << "it is there by now";
    }
    EXPECT_EQ(readTextFile(directory / "from"), "bytes");
}

TEST_F(WindowsFileOperations, AFileHeldOpenIsCopiedAndNotDeleted) {
    writeTextFile(directory / "file", "bytes");
    const std::ifstream holder(directory / "file");
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("file").CopyTheFile(path("copy")));
    EXPECT_EQ(readTextFile(directory / "copy"), "bytes");
    EXPECT_FALSE(path("file").DeleteTheFile());
    EXPECT_EQ(readTextFile(directory / "file"), "bytes");
}

TEST_F(WindowsFileOperations, AFileHeldOpenForReadingIsOverwritten) {
    writeTextFile(directory / "from", "new");
    writeTextFile(directory / "to", "old");
    const std::ifstream holder(directory / "to");
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(readTextFile(directory / "to"), "new");
}

TEST_F(WindowsFileOperations, AFileHeldOpenForWritingIsOverwritten) {
    writeTextFile(directory / "from", "new");
    writeTextFile(directory / "to", "old");
    const std::ofstream holder(directory / "to", std::ios::app);
    ASSERT_TRUE(holder.is_open());
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(readTextFile(directory / "to"), "new");
}

TEST_F(WindowsFileOperations, AReadOnlyFileIsNotDeleted) {
    writeTextFile(directory / "file", "bytes");
    fs::permissions(directory / "file", fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    EXPECT_FALSE(path("file").DeleteTheFile());
    EXPECT_EQ(readTextFile(directory / "file"), "bytes");
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_TRUE(path("file").DeleteTheFile());
}

TEST_F(WindowsFileOperations, TheFileSystemFoldsCaseThoughPathsDoNot) {
    writeTextFile(directory / "File", "bytes");
    EXPECT_TRUE(path("fILE").Exists());
    EXPECT_NE(path("fILE"), path("File"));
    EXPECT_FALSE(path("File").MoveTheFile(path("fILE"))) << "the target exists";
    EXPECT_EQ(readTextFile(directory / "File"), "bytes");
}

}  // namespace
