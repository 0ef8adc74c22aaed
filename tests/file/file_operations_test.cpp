#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "file/file_fixture.h"
#include "support/silence.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;
using zelutil::test::expectSilence;
using zelutil::test::readTextFile;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;

/// Bytes that a text mode would change or stop at.
const std::string kBinary("a\0b\x1a\r\nc\n\r\n\xff\xfe\x1a", 13);

std::string allBytes() {
    std::string bytes;
    for (int code = 0; code < 256; ++code) {
        bytes += static_cast<char>(code);
    }
    return bytes;
}

class FileOperations : public zelutil::test::FilesOfADirectory {
protected:
    /// Whether the file can be opened for writing; a superuser may also write what is read-only.
    bool canWrite(const std::string& name) const { return std::ofstream(directory / name, std::ios::app).is_open(); }

    void makeReadOnly(const std::string& name) const {
        fs::permissions(directory / name, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                        fs::perm_options::remove);
    }
};

// --- Copying --------------------------------------------------------------------------------------------------------

TEST_F(FileOperations, CopyMakesAFileOfTheSameBytes) {
    for (const std::string& bytes : {std::string("text"), kBinary, allBytes(), std::string("\x1a"),
                                     std::string("\0", 1), std::string("\r\n"), std::string("last line without end")}) {
        write("from", bytes);
        EXPECT_TRUE(path("from").CopyTheFile(path("to")));
        EXPECT_EQ(bytesOf("to"), bytes);
        EXPECT_EQ(bytesOf("from"), bytes);
    }
}

TEST_F(FileOperations, CopyOfAnEmptyFileIsAnEmptyFile) {
    write("from", "");
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "");
}

TEST_F(FileOperations, CopyOfALargeFile) {
    std::string bytes;
    while (bytes.size() < 5'000'000) {
        bytes += kBinary + std::to_string(bytes.size());
    }
    write("from", bytes);
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), bytes);
}

TEST_F(FileOperations, CopyOverwritesAndLeavesNothingOfALongerFile) {
    write("from", "new");
    write("to", "old and much longer");
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "new");
    write("from", "");
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "");
}

TEST_F(FileOperations, CopyOntoItselfKeepsTheBytes) {
    write("file", kBinary);
    EXPECT_TRUE(path("file").CopyTheFile(path("file")));
    EXPECT_EQ(bytesOf("file"), kBinary);
}

TEST_F(FileOperations, CopyWorksWithBlanksInPaths) {
    write("my dir/my file", "x");
    EXPECT_TRUE(path("my dir/my file").CopyTheFile(path("my dir/my copy")));
    EXPECT_EQ(bytesOf("my dir/my copy"), "x");
}

TEST_F(FileOperations, CopyOfAReadOnlyFile) {
    write("from", "x");
    makeReadOnly("from");
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "x");
    EXPECT_TRUE(canWrite("to"));
}

TEST_F(FileOperations, CopyOntoAReadOnlyFileIsUpToTheSystem) {
    write("from", "new");
    write("to", "old");
    makeReadOnly("to");
    const bool expected = canWrite("to");
    EXPECT_EQ(path("from").CopyTheFile(path("to")), expected);
    EXPECT_EQ(bytesOf("to"), expected ? "new" : "old");
}

TEST_F(FileOperations, CopyOfNothingIsFalseAndMakesNothing) {
    write("to", "old");
    EXPECT_FALSE(Path().CopyTheFile(path("to")));
    EXPECT_FALSE(path("missing").CopyTheFile(path("to")));
    EXPECT_FALSE(path("missing/file").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "old");
    EXPECT_FALSE(path("missing").CopyTheFile(path("other")));
    EXPECT_FALSE(isThere("other"));
}

TEST_F(FileOperations, CopyRefusesADirectory) {
    fs::create_directory(directory / "dir");
    write("file", "x");
    EXPECT_FALSE(path("dir").CopyTheFile(path("to")));
    EXPECT_FALSE(isThere("to"));
    EXPECT_FALSE(path("file").CopyTheFile(path("dir")));
    EXPECT_TRUE(fs::is_empty(directory / "dir"));
}

TEST_F(FileOperations, CopyToWhereNoFileCanBeIsFalse) {
    write("file", "x");
    EXPECT_FALSE(path("file").CopyTheFile(Path()));
    EXPECT_FALSE(path("file").CopyTheFile(path("missing/to")));
    EXPECT_FALSE(path("file").CopyTheFile(path("file") + "below"));
    EXPECT_FALSE(isThere("missing"));
    EXPECT_EQ(bytesOf("file"), "x");
}

// --- Moving ---------------------------------------------------------------------------------------------------------

TEST_F(FileOperations, MoveRenamesAFile) {
    write("from", kBinary);
    Path moved = path("from");
    EXPECT_TRUE(moved.MoveTheFile(path("to")));
    EXPECT_FALSE(isThere("from"));
    EXPECT_EQ(bytesOf("to"), kBinary);
    EXPECT_EQ(moved, path("from"));
}

TEST_F(FileOperations, MoveIntoAnotherDirectory) {
    write("from", "x");
    fs::create_directory(directory / "dir");
    EXPECT_TRUE(path("from").MoveTheFile(path("dir/to")));
    EXPECT_FALSE(isThere("from"));
    EXPECT_EQ(bytesOf("dir/to"), "x");
}

TEST_F(FileOperations, MoveOntoAnExistingFileFailsAndLeavesBothUnchanged) {
    write("from", "new");
    write("to", "old");
    EXPECT_FALSE(path("from").MoveTheFile(path("to")));
    EXPECT_EQ(bytesOf("from"), "new");
    EXPECT_EQ(bytesOf("to"), "old");
}

TEST_F(FileOperations, MoveOntoItselfOrADirectoryFails) {
    write("file", "x");
    fs::create_directory(directory / "dir");
    EXPECT_FALSE(path("file").MoveTheFile(path("file")));
    EXPECT_FALSE(path("file").MoveTheFile(path("dir")));
    EXPECT_EQ(bytesOf("file"), "x");
    EXPECT_TRUE(fs::is_empty(directory / "dir"));
}

TEST_F(FileOperations, MoveRenamesADirectoryWithAllInIt) {
    write("dir/sub/file", "x");
    EXPECT_TRUE(path("dir").MoveTheFile(path("moved")));
    EXPECT_FALSE(isThere("dir"));
    EXPECT_EQ(bytesOf("moved/sub/file"), "x");
}

TEST_F(FileOperations, MoveOfAReadOnlyFile) {
    write("from", "x");
    makeReadOnly("from");
    EXPECT_TRUE(path("from").MoveTheFile(path("to")));
    EXPECT_FALSE(isThere("from"));
    EXPECT_EQ(bytesOf("to"), "x");
}

TEST_F(FileOperations, MoveOfNothingIsFalseAndMakesNothing) {
    EXPECT_FALSE(Path().MoveTheFile(path("to")));
    EXPECT_FALSE(path("missing").MoveTheFile(path("to")));
    EXPECT_FALSE(isThere("to"));
}

TEST_F(FileOperations, MoveToWhereNoFileCanBeLeavesTheFile) {
    write("file", "x");
    EXPECT_FALSE(path("file").MoveTheFile(Path()));
    EXPECT_FALSE(path("file").MoveTheFile(path("missing/to")));
    EXPECT_FALSE(path("file").MoveTheFile(path("file") + "below"));
    EXPECT_EQ(bytesOf("file"), "x");
    EXPECT_FALSE(isThere("missing"));
}

TEST_F(FileOperations, MoveToAnotherVolumeCopiesAndRemoves) {
    const fs::path otherVolume = zelutil::test::fileOfText(R"(Z:\dev\shm)");
    if (!fs::is_directory(otherVolume) || fs::space(otherVolume).capacity == fs::space(directory.path()).capacity) {
        GTEST_SKIP() << "no second volume on this system";
    }
    const TempDirectory other(otherVolume);
    write("from", kBinary);
    const Path target(windowsText(other / "to"));
    EXPECT_TRUE(path("from").MoveTheFile(target));
    EXPECT_FALSE(isThere("from"));
    EXPECT_EQ(readTextFile(other / "to"), kBinary);

    write("again", "x");
    EXPECT_FALSE(path("again").MoveTheFile(target)) << "it is there by now";
    EXPECT_EQ(readTextFile(other / "to"), kBinary);
    EXPECT_FALSE(path("again").MoveTheFile(Path(windowsText(other / "missing/to"))));
    EXPECT_EQ(bytesOf("again"), "x");

    write("dir/file", "x");
    EXPECT_FALSE(path("dir").MoveTheFile(Path(windowsText(other / "dir")))) << "a directory cannot be copied";
    EXPECT_EQ(bytesOf("dir/file"), "x");
    EXPECT_FALSE(fs::exists(other / "dir"));
}

// --- Deleting -------------------------------------------------------------------------------------------------------

TEST_F(FileOperations, DeleteRemovesAFile) {
    write("file", "x");
    write("other", "y");
    Path deleted = path("file");
    EXPECT_TRUE(deleted.DeleteTheFile());
    EXPECT_FALSE(isThere("file"));
    EXPECT_EQ(deleted, path("file"));
    EXPECT_FALSE(deleted.DeleteTheFile());
    EXPECT_EQ(bytesOf("other"), "y");
}

TEST_F(FileOperations, DeleteOfNothingIsFalse) {
    EXPECT_FALSE(Path().DeleteTheFile());
    EXPECT_FALSE(path("missing").DeleteTheFile());
    EXPECT_FALSE(path("missing/file").DeleteTheFile());
}

TEST_F(FileOperations, DeleteRefusesADirectory) {
    fs::create_directory(directory / "empty");
    write("full/file", "x");
    EXPECT_FALSE(path("empty").DeleteTheFile());
    EXPECT_FALSE(path("full").DeleteTheFile());
    EXPECT_TRUE(isThere("empty"));
    EXPECT_TRUE(isThere("full/file"));
}

TEST_F(FileOperations, DeleteOfAReadOnlyFileTellsWhatTheSystemDid) {
    write("file", "x");
    makeReadOnly("file");
    const bool deleted = path("file").DeleteTheFile();
    EXPECT_EQ(deleted, !isThere("file"));
}

// --- The current directory ------------------------------------------------------------------------------------------

TEST_F(FileOperations, ChdirEntersADirectory) {
    fs::create_directory(directory / "my dir");
    EXPECT_TRUE(Path::Chdir(path("my dir")));
    EXPECT_EQ(fs::current_path(), directory / "my dir");
    EXPECT_EQ(Path::GetCWD(), windowsText(directory / "my dir"));
    EXPECT_EQ(Path("a"), path("my dir/a"));
}

TEST_F(FileOperations, ChdirWithAFileEntersTheDirectoryThatHoldsIt) {
    write("dir/file", "x");
    EXPECT_TRUE(Path::Chdir(path("dir/file")));
    EXPECT_EQ(Path::GetCWD(), windowsText(directory / "dir"));
}

TEST_F(FileOperations, ChdirWithAMissingNameEntersTheDirectoryThatWouldHoldIt) {
    fs::create_directory(directory / "dir");
    EXPECT_TRUE(Path::Chdir(path("dir/missing")));
    EXPECT_EQ(Path::GetCWD(), windowsText(directory / "dir"));
}

TEST_F(FileOperations, ChdirToNowhereIsFalseAndStays) {
    fs::current_path(directory.path());
    write("file", "x");
    EXPECT_FALSE(Path::Chdir(Path()));
    EXPECT_FALSE(Path::Chdir(path("missing/deeper")));
    EXPECT_FALSE(Path::Chdir(path("file") + "below"));
    EXPECT_EQ(Path::GetCWD(), windowsText(directory.path()));
}

TEST_F(FileOperations, ChdirToADriveEntersItsRoot) {
    const std::string drive = windowsText(directory.path()).substr(0, 2);
    EXPECT_TRUE(Path::Chdir(Path(drive)));
    EXPECT_EQ(Path::GetCWD(), drive + "\\");
    EXPECT_TRUE(Path::Chdir(Path(windowsText(directory.path()))));
    EXPECT_EQ(Path::GetCWD(), windowsText(directory.path()));
    EXPECT_TRUE(Path::Chdir(Path(drive) + "no such name"));
    EXPECT_EQ(Path::GetCWD(), drive + "\\");
}

// --- Silence --------------------------------------------------------------------------------------------------------

TEST_F(FileOperations, NothingIsPrintedWhateverFails) {
    write("file", "x");
    fs::create_directory(directory / "dir");
    expectSilence([&] {
        EXPECT_TRUE(path("file").CopyTheFile(path("copy")));
        EXPECT_FALSE(path("missing").CopyTheFile(path("to")));
        EXPECT_FALSE(path("file").CopyTheFile(path("missing/to")));
        EXPECT_FALSE(path("dir").CopyTheFile(path("to")));
        EXPECT_FALSE(path("file").MoveTheFile(path("copy")));
        EXPECT_FALSE(path("missing").MoveTheFile(path("to")));
        EXPECT_FALSE(path("file").MoveTheFile(path("missing/to")));
        EXPECT_FALSE(path("dir").DeleteTheFile());
        EXPECT_FALSE(path("missing").DeleteTheFile());
        EXPECT_TRUE(path("copy").DeleteTheFile());
        EXPECT_FALSE(Path::Chdir(path("missing/deeper")));
        EXPECT_TRUE(Path::GetTempFile(path("file"), true, "x").Empty());
    });
}

}  // namespace
