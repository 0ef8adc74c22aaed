// File operations of paths where system calls fail, and where files have links.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zelutil/file/path.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "file/file_fixture.h"
#include "support/system_faults.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Path;
using zelutil::test::CallHook;
using zelutil::test::Fault;
using zelutil::test::FaultInjection;
using zelutil::test::windowsText;

class PosixFileOperations : public zelutil::test::FilesOfADirectory {
protected:
    /// Copies "from" to "to" while a call fails, which must come, and returns the result.
    bool copyWith(const Fault& fault) const {
        const FaultInjection injection(fault);
        const bool answer = path("from").CopyTheFile(path("to"));
        EXPECT_TRUE(injection.happened()) << fault.call;
        return answer;
    }

    bool moveWith(const Fault& fault, const char* from = "from") const {
        const FaultInjection injection(fault);
        const bool answer = path(from).MoveTheFile(path("to"));
        EXPECT_TRUE(injection.happened()) << fault.call;
        return answer;
    }
};

TEST_F(PosixFileOperations, ASourceThatCannotBeReadLeavesTheTargetAsItWas) {
    write("from", "new");
    write("to", "old");
    for (const Fault& fault : {Fault{"open", 1, EACCES}, Fault{"fstat", 1, EIO}, Fault{"read", 1, EIO}}) {
        EXPECT_FALSE(copyWith(fault)) << fault.call;
        EXPECT_EQ(bytesOf("to"), "old") << fault.call;
    }
}

TEST_F(PosixFileOperations, ATargetThatCannotBeOpenedStaysAsItWas) {
    write("from", "new");
    write("to", "old");
    EXPECT_FALSE(copyWith({"open", 2, EACCES}));
    EXPECT_EQ(bytesOf("to"), "old");
}

TEST_F(PosixFileOperations, AFailureWhileWritingIsReported) {
    write("from", "new bytes");
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
        EXPECT_FALSE(copyWith({"write", 1, error}));
        EXPECT_FALSE(copyWith({"write", 1, error, true})) << "after half of it";
        // The first close is the source's.
        EXPECT_FALSE(copyWith({"close", 2, error}));
    }
    EXPECT_EQ(bytesOf("from"), "new bytes");
    EXPECT_TRUE(path("from").CopyTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "new bytes");
}

TEST_F(PosixFileOperations, AnInterruptedCallIsRepeated) {
    write("from", "bytes");
    for (const Fault& fault :
         {Fault{"open", 1, EINTR}, Fault{"open", 2, EINTR}, Fault{"read", 1, EINTR}, Fault{"write", 1, EINTR}}) {
        fs::remove(directory / "to");
        EXPECT_TRUE(copyWith(fault)) << fault.call;
        EXPECT_EQ(bytesOf("to"), "bytes");
    }
}

TEST_F(PosixFileOperations, WhatCannotBeRenamedIsCopiedAndRemoved) {
    for (const int error : {EXDEV, EACCES, EPERM, EROFS}) {
        write("from", "bytes");
        EXPECT_TRUE(moveWith({"renameat2", 1, error}));
        EXPECT_FALSE(isThere("from"));
        EXPECT_EQ(bytesOf("to"), "bytes");
        fs::remove(directory / "to");
    }
}

TEST_F(PosixFileOperations, AFileSystemWithoutExclusiveRenameRenamesAllTheSame) {
    for (const int error : {EINVAL, ENOSYS}) {
        write("dir/file", "bytes");
        const Fault fault{"renameat2", 1, error};
        const FaultInjection injection(fault);
        EXPECT_TRUE(path("dir").MoveTheFile(path("to"))) << "a directory is never copied";
        EXPECT_TRUE(injection.happened());
        EXPECT_EQ(bytesOf("to/file"), "bytes");
        EXPECT_FALSE(isThere("dir"));
        fs::remove_all(directory / "to");
    }
}

TEST_F(PosixFileOperations, AFileSystemWithoutExclusiveRenameKeepsTheFileItself) {
    write("file", "bytes");
    fs::create_symlink(directory / "file", directory / "link");
    fs::create_directory(directory / "dir");
    fs::create_symlink(directory / "dir", directory / "dir_link");
    fs::create_hard_link(directory / "file", directory / "second");
    for (const char* const name : {"second", "link", "dir_link"}) {
        const bool isLink = fs::is_symlink(directory / name);
        EXPECT_TRUE(moveWith({"renameat2", 1, EINVAL}, name)) << name;
        EXPECT_FALSE(isThere(name));
        EXPECT_EQ(fs::is_symlink(directory / "to"), isLink) << name;
        EXPECT_TRUE(isLink || fs::equivalent(directory / "file", directory / "to")) << "not a copy";
        fs::remove(directory / "to");
    }
}

TEST_F(PosixFileOperations, ADirectoryThatCannotBeRenamedLeavesNoEmptyOne) {
    fs::create_directory(directory / "from");
    const CallHook hook("rename", 1, [this] { fs::rename(directory / "from", directory / "elsewhere"); });
    const Fault fault{"renameat2", 1, EINVAL};
    const FaultInjection injection(fault);
    EXPECT_FALSE(path("from").MoveTheFile(path("to")));
    EXPECT_TRUE(hook.happened());
    EXPECT_FALSE(isThere("to"));
}

TEST_F(PosixFileOperations, AFileThatCannotLoseItsOldNameGetsNoNewOne) {
    write("from", "bytes");
    const CallHook hook("unlink", 1, [this] { fs::rename(directory / "from", directory / "elsewhere"); });
    const Fault fault{"renameat2", 1, EINVAL};
    const FaultInjection injection(fault);
    EXPECT_FALSE(path("from").MoveTheFile(path("to")));
    EXPECT_TRUE(hook.happened());
    EXPECT_FALSE(isThere("to"));
    EXPECT_EQ(bytesOf("elsewhere"), "bytes");
}

TEST_F(PosixFileOperations, ADirectoryThatCannotBeRenamedStays) {
    write("from/file", "bytes");
    EXPECT_FALSE(moveWith({"renameat2", 1, EXDEV}));
    EXPECT_EQ(bytesOf("from/file"), "bytes");
    EXPECT_FALSE(isThere("to"));
}

TEST_F(PosixFileOperations, MoveIsTrueThoughTheOriginalCannotBeRemovedOddity) {
    write("from", "bytes");
    // A link to nothing does not exist for the caller, but for a renaming it does, so the file is copied through it.
    fs::create_symlink(directory / "target", directory / "to");
    EXPECT_TRUE(moveWith({"unlink", 1, EACCES}));
    EXPECT_EQ(bytesOf("from"), "bytes");
    EXPECT_EQ(bytesOf("target"), "bytes");
    EXPECT_TRUE(fs::is_symlink(directory / "to"));
}

TEST_F(PosixFileOperations, MoveOfAFileThatHasNoRemovableNameIsTrueOddity) {
    write("from", "bytes");
    // The process's open files have names that can be read, but neither renamed nor removed.
    const int descriptor = open((directory / "from").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    Path from("Z:/proc/self/fd/" + std::to_string(descriptor));
    EXPECT_TRUE(from.MoveTheFile(path("to")));
    EXPECT_EQ(bytesOf("to"), "bytes");
    EXPECT_TRUE(from.Exists());
    EXPECT_EQ(bytesOf("from"), "bytes");
    close(descriptor);
}

TEST_F(PosixFileOperations, AMoveOntoALinkToNothingMakesTheFileWhereItLeads) {
    write("from", "bytes");
    fs::create_symlink("target", directory / "to");
    EXPECT_TRUE(path("from").MoveTheFile(path("to")));
    EXPECT_FALSE(isThere("from"));
    EXPECT_TRUE(fs::is_symlink(directory / "to"));
    EXPECT_EQ(bytesOf("target"), "bytes");
}

TEST_F(PosixFileOperations, AMoveThroughALinkDoesNotOverwriteWhatAppearsBehindItMeanwhile) {
    write("from", "new");
    fs::create_symlink("target", directory / "to");
    // The source is opened first.
    const CallHook hook("open", 2, [this] { write("target", "old"); });
    EXPECT_FALSE(path("from").MoveTheFile(path("to")));
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(bytesOf("from"), "new");
    EXPECT_EQ(bytesOf("target"), "old");
}

TEST_F(PosixFileOperations, AMoveDoesNotOverwriteATargetThatAppearsMeanwhile) {
    struct Row {
        const char* call;
        std::size_t occurrence;
        int renamingFailsWith;
    };
    // Renamed in one step, by two names, and copied; the source is opened first.
    constexpr Row kRows[] = {{"renameat2", 1, 0}, {"link", 1, EINVAL}, {"open", 2, EXDEV}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.call);
        write("from", "new");
        fs::remove(directory / "to");
        const CallHook hook(row.call, row.occurrence, [this] { write("to", "old"); });
        const Fault fault{"renameat2", row.renamingFailsWith == 0 ? std::size_t{99} : 1, row.renamingFailsWith};
        const FaultInjection injection(fault);
        EXPECT_FALSE(path("from").MoveTheFile(path("to")));
        EXPECT_TRUE(hook.happened());
        EXPECT_EQ(bytesOf("from"), "new");
        EXPECT_EQ(bytesOf("to"), "old");
    }
}

TEST_F(PosixFileOperations, AMovedDirectoryDoesNotReplaceOneThatAppearsMeanwhile) {
    for (const char* const call : {"mkdir", "rename"}) {
        SCOPED_TRACE(call);
        write("from/file", "new");
        fs::remove_all(directory / "to");
        const CallHook hook(call, 1, [this] { write("to/file", "old"); });
        const Fault fault{"renameat2", 1, EINVAL};
        const FaultInjection injection(fault);
        EXPECT_FALSE(path("from").MoveTheFile(path("to")));
        EXPECT_TRUE(hook.happened());
        EXPECT_EQ(bytesOf("from/file"), "new");
        EXPECT_EQ(bytesOf("to/file"), "old");
    }
}

TEST_F(PosixFileOperations, AFileThatCannotBeRemovedIsReported) {
    write("file", "bytes");
    const Fault fault{"unlink", 1, EACCES};
    const FaultInjection injection(fault);
    EXPECT_FALSE(path("file").DeleteTheFile());
    EXPECT_TRUE(injection.happened());
    EXPECT_EQ(bytesOf("file"), "bytes");
}

TEST_F(PosixFileOperations, LinksAreFollowedButRemovedThemselves) {
    write("file", "bytes");
    fs::create_symlink(directory / "file", directory / "link");
    EXPECT_EQ(path("link").Size(), 5);
    EXPECT_TRUE(path("link").CopyTheFile(path("copy")));
    EXPECT_EQ(bytesOf("copy"), "bytes");
    EXPECT_FALSE(fs::is_symlink(directory / "copy"));
    write("other", "others");
    EXPECT_TRUE(path("other").CopyTheFile(path("link")));
    EXPECT_EQ(bytesOf("file"), "others");
    EXPECT_TRUE(path("link").DeleteTheFile());
    EXPECT_FALSE(isThere("link"));
    EXPECT_EQ(bytesOf("file"), "others");
}

TEST_F(PosixFileOperations, OnlyTheOwnersBitsOfTheModeCount) {
    struct Row {
        unsigned mode;
        bool executable;
        bool writeable;
    };
    constexpr Row kRows[] = {{0777, true, true},   {0500, true, false}, {0600, false, true},
                             {0677, false, true},  {0577, true, false}, {0477, false, false},
                             {0077, false, false}, {0100, true, false}, {0000, false, false}};
    write("file", "");
    for (const Row& row : kRows) {
        fs::permissions(directory / "file", fs::perms{row.mode});
        EXPECT_EQ(path("file").IsExecutable(), row.executable) << std::oct << row.mode;
        EXPECT_EQ(path("file").IsWriteable(), row.writeable) << std::oct << row.mode;
        EXPECT_TRUE(path("file").Exists()) << std::oct << row.mode;
    }
}

TEST_F(PosixFileOperations, ALinkToNothingDoesNotExist) {
    fs::create_symlink(directory / "missing", directory / "link");
    EXPECT_FALSE(path("link").Exists());
    EXPECT_FALSE(path("link").DeleteTheFile());
    EXPECT_TRUE(isThere("link"));
}

/// Says of all relative texts that they name no file.
void expectNoRelativePaths() {
    for (const char* const text : {"a", "a b", "/a", ".", ".."}) {
        EXPECT_STREQ(Path(text), "") << text;
    }
    EXPECT_STREQ(Path() + "a", "");
    EXPECT_STREQ(Path("a", "b"), "");
    EXPECT_STREQ(Path("Z:/a"), "Z:\\a");
    // Nothing remembers a directory that was not put in front.
    Path path("a b");
    EXPECT_STREQ(path.GetPath4Shell().c_str(), "");
    path = "b";
    EXPECT_STREQ(path, "");
}

TEST_F(PosixFileOperations, InACurrentDirectoryThatIsGoneARelativeTextIsNoPath) {
    fs::create_directory(directory / "gone");
    fs::current_path(directory / "gone");
    fs::remove(directory / "gone");
    EXPECT_EQ(Path::GetCWD(), "");
    expectNoRelativePaths();
    fs::current_path(directory.path());
    EXPECT_STREQ(Path("a"), windowsText(directory / "a").c_str());
}

TEST_F(PosixFileOperations, InACurrentDirectoryThatNoTextNamesARelativeTextIsNoPath) {
    // As texts, the last three would name other directories.
    for (const char* const name : {"wo?rk", "wo\nrk", "w\"ork", "w\\ork", "w\\..\\ork"}) {
        fs::create_directory(directory / name);
        fs::current_path(directory / name);
        EXPECT_EQ(Path::GetCWD(), windowsText(directory.path()) + "\\" + name);
        SCOPED_TRACE(name);
        expectNoRelativePaths();
    }
    fs::current_path(directory.path());
}

TEST_F(PosixFileOperations, ACurrentDirectoryOfMoreThan4096CharactersIsNotTold) {
    fs::current_path(directory.path());
    const std::string name(200, 'd');
    for (int depth = 0; depth < 21; ++depth) {
        fs::create_directory(name);
        fs::current_path(name);
    }
    EXPECT_EQ(Path::GetCWD(), "");
    expectNoRelativePaths();
    fs::current_path(directory.path());
    EXPECT_EQ(Path::GetCWD(), windowsText(directory.path()));
}

TEST_F(PosixFileOperations, TextsOfOtherDrivesAndNetworksNameNoFile) {
    fs::current_path(directory.path());
    write("c:", "x");
    write("c:\\x", "x");
    for (const char* const text : {"c:", "c:/x", "c:x", "//server/share", "y:/tmp"}) {
        EXPECT_FALSE(Path(text).Exists()) << text;
        EXPECT_FALSE(Path(text).DeleteTheFile()) << text;
    }
}

}  // namespace
