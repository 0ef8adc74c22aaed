// Each system call of a replacement fails in turn: the file is the old or the new one, whole, and nothing is left
// beside.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "platform/replace_file.h"
#include "platform/replacement_name.h"
#include "support/access_list.h"
#include "support/system_faults.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::CallHook;
using test::CallLog;
using test::Fault;
using test::FaultInjection;
using test::NfsLocks;
using test::readTextFile;
using test::SimpleFileSystem;
using test::TempDirectory;
using test::windowsText;
using test::writeTextFile;

const std::string kOld(5'000, 'o');
const std::string kNew(9'000, 'n');
constexpr int kErrors[] = {EACCES, EPERM, EROFS, EIO, ENOSPC, EDQUOT, EINTR, EMFILE, EBUSY, ENOLCK, EFBIG};

std::ptrdiff_t entriesOf(const TempDirectory& directory) {
    return std::distance(fs::directory_iterator(directory.path()), {});
}

class ReplaceFileFaults : public testing::Test {
protected:
    /// Replaces the file once with the fault; tells whether the fault came to pass.
    bool replaceWith(const Fault& fault, const std::string& oldBytes) {
        SCOPED_TRACE(fault.call + " " + std::to_string(fault.occurrence) + ": " + std::strerror(fault.error));
        const TempDirectory directory;
        const fs::path file = directory / "tessel_settings.cfg";
        writeTextFile(file, oldBytes);
        bool happened = false;
        Replaced replaced = Replaced::No;
        {
            const FaultInjection injection(fault);
            replaced = replaceFile(windowsText(file).c_str(), kNew);
            happened = injection.happened();
        }
        EXPECT_NE(replaced, Replaced::Torn);
        EXPECT_EQ(readTextFile(file), replaced == Replaced::Yes ? kNew : oldBytes);
        const bool leftoverIsDue = fault.call == "unlink" && happened;
        if (!leftoverIsDue) {
            EXPECT_EQ(entriesOf(directory), 1);
        }
        EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::Yes) << "the next one";
        EXPECT_EQ(entriesOf(directory), 1) << "after the next one";
        return happened;
    }
};

TEST_F(ReplaceFileFaults, AnySingleFailingCallLeavesTheOldOrTheNewFile) {
    int broken = 0;
    for (const std::string& call : test::wrappedCalls()) {
        for (const int error : kErrors) {
            std::size_t occurrence = 1;
            while (replaceWith({call, occurrence, error}, kOld)) {
                ++occurrence;
                ++broken;
                ASSERT_LT(occurrence, 100U) << call << " is called without end";
            }
        }
    }
    RecordProperty("calls_broken", broken);
    std::printf("%d calls broken\n", broken);
    EXPECT_GT(broken, 100);
}

TEST_F(ReplaceFileFaults, ADiskThatFillsInTheMiddleOfAWriteLeavesTheOldFile) {
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
        EXPECT_TRUE(replaceWith({"write", 1, error, true}, kOld));
    }
}

TEST_F(ReplaceFileFaults, AFileThatMustBeWrittenIntoGrowsBeforeItIsTouched) {
    const TempDirectory directory;
    const fs::path file = directory / "tessel_settings.cfg";
    writeTextFile(file, kOld);
    fs::create_hard_link(file, directory / "other.cfg");
    for (const int error : {ENOSPC, EDQUOT}) {
        const Fault fault{"posix_fallocate", 1, error};
        const FaultInjection injection(fault);
        EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::No);
        EXPECT_TRUE(injection.happened());
        EXPECT_EQ(readTextFile(file), kOld);
    }
    EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::Yes);
    EXPECT_EQ(readTextFile(directory / "other.cfg"), kNew);
}

TEST_F(ReplaceFileFaults, AnySingleFailingCallLeavesAFileThatIsWrittenIntoOldOrNew) {
    const TempDirectory directory;
    const fs::path file = directory / "tessel_settings.cfg";
    writeTextFile(file, kOld);
    fs::create_hard_link(file, directory / "other.cfg");
    int broken = 0;
    int undone = 0;
    const auto isUndone = [&](const Fault& fault) {
        const FaultInjection injection(fault);
        const CallLog log;
        const Replaced replaced = replaceFile(windowsText(file).c_str(), kNew);
        // A system that fails to close keeps who asks in the dark.
        const bool isTold = replaced == Replaced::Yes || (fault.call == "close" && replaced == Replaced::Torn);
        EXPECT_TRUE(readTextFile(file) == (isTold ? kNew : kOld));
        EXPECT_TRUE(replaced != Replaced::Torn || fault.call == "close");
        undone += replaced == Replaced::No && log.count("write") > 1 ? 1 : 0;
        return injection.happened();
    };
    for (const std::string& call : test::wrappedCalls()) {
        for (const int error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::strerror(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                writeTextFile(file, kOld);
                if (!isUndone({call, occurrence, error})) {
                    break;
                }
                ++broken;
            }
        }
    }
    std::printf("%d calls broken, %d times undone\n", broken, undone);
    EXPECT_GT(broken, 100);
    EXPECT_GT(undone, 10);
    EXPECT_EQ(fs::hard_link_count(file), 2U);
}

TEST_F(ReplaceFileFaults, AnySingleFailingCallKeepsAWholeCopyOrNone) {
    const TempDirectory directory;
    const fs::path file = directory / "tessel_settings.cfg";
    const fs::path kept = directory / "tessel_settings.cfg.bad";
    writeTextFile(file, kOld);
    int broken = 0;
    int copies = 0;
    for (const std::string& call : test::wrappedCalls()) {
        for (const int error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::strerror(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                const Fault fault{call, occurrence, error};
                const FaultInjection injection(fault);
                const bool isKept = keepCopy(windowsText(file).c_str()).has_value();
                EXPECT_EQ(fs::exists(kept), isKept);
                if (isKept) {
                    EXPECT_EQ(readTextFile(kept), kOld);
                }
                EXPECT_EQ(entriesOf(directory), isKept ? 2 : 1);
                EXPECT_EQ(readTextFile(file), kOld);
                fs::remove(kept);
                if (!injection.happened()) {
                    break;
                }
                ++broken;
                copies += isKept ? 1 : 0;
            }
        }
    }
    std::printf("%d calls broken, %d copies kept\n", broken, copies);
    EXPECT_GT(broken, 100);
    EXPECT_GT(copies, 0);
}

TEST_F(ReplaceFileFaults, WhereTheSystemCannotRenameToAFreeNameOnlyACopyStillTouchesNoOther) {
    const TempDirectory directory;
    const fs::path file = directory / "tessel_settings.cfg";
    writeTextFile(file, kOld);
    writeTextFile(directory / "tessel_settings.cfg.bad", "earlier");
    for (const int error : {EINVAL, ENOSYS}) {
        fs::remove(directory / "tessel_settings.cfg.bad.2");
        // The first name is taken, for the link too; the second is asked without the fault.
        const Fault fault{"renameat2", 1, error};
        const FaultInjection injection(fault);
        EXPECT_TRUE(keepCopy(windowsText(file).c_str()));
        EXPECT_TRUE(injection.happened());
        EXPECT_EQ(readTextFile(directory / "tessel_settings.cfg.bad"), "earlier");
        EXPECT_EQ(readTextFile(directory / "tessel_settings.cfg.bad.2"), kOld);
        EXPECT_EQ(entriesOf(directory), 3);
    }
}

/// The errors with which file systems refuse a second link.
constexpr int kNoLinks[] = {EPERM, ENOTSUP, ENOSYS};

TEST_F(ReplaceFileFaults, WhereTheSystemHasNeitherFreeNamesOnlyNorLinksANewFileIsMadeAllTheSame) {
    for (const int error : kNoLinks) {
        const TempDirectory directory;
        const fs::path file = directory / "tessel_settings.cfg";
        const SimpleFileSystem system(error);
        EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::Yes) << std::strerror(error);
        EXPECT_EQ(readTextFile(file), kNew);
        EXPECT_EQ(replaceFile(windowsText(file).c_str(), "next"), Replaced::Yes);
        EXPECT_EQ(readTextFile(file), "next");
        EXPECT_EQ(entriesOf(directory), 1);
    }
}

TEST_F(ReplaceFileFaults, WhereTheSystemHasNeitherFreeNamesOnlyNorLinksACopyIsKeptAndTouchesNoOther) {
    for (const int error : kNoLinks) {
        const TempDirectory directory;
        const fs::path file = directory / "tessel_settings.cfg";
        writeTextFile(file, kOld);
        writeTextFile(directory / "tessel_settings.cfg.bad", "earlier");
        const SimpleFileSystem system(error);
        EXPECT_TRUE(keepCopy(windowsText(file).c_str())) << std::strerror(error);
        EXPECT_EQ(readTextFile(directory / "tessel_settings.cfg.bad"), "earlier");
        EXPECT_EQ(readTextFile(directory / "tessel_settings.cfg.bad.2"), kOld);
        EXPECT_EQ(entriesOf(directory), 3);
    }
}

TEST_F(ReplaceFileFaults, ANameThatIsTakenInVainIsGivenBack) {
    for (const int error : {EIO, EACCES, ENOSPC}) {
        const TempDirectory directory;
        const fs::path file = directory / "tessel_settings.cfg";
        const SimpleFileSystem system(EPERM);
        const Fault fault{"rename", 1, error};
        const FaultInjection injection(fault);
        EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::No);
        EXPECT_TRUE(injection.happened());
        EXPECT_EQ(entriesOf(directory), 0);
    }
}

TEST_F(ReplaceFileFaults, AFileThatIsPutOverANameTakenInVainStays) {
    const TempDirectory directory;
    const fs::path file = directory / "tessel_settings.cfg";
    const SimpleFileSystem system(EPERM);
    const Fault fault{"rename", 1, EIO};
    const FaultInjection injection(fault);
    const CallHook hook("rename", 1, [&] {
        writeTextFile(directory / "new", "another's");
        fs::rename(directory / "new", file);
    });
    EXPECT_EQ(replaceFile(windowsText(file).c_str(), kNew), Replaced::No);
    EXPECT_TRUE(injection.happened());
    EXPECT_EQ(readTextFile(file), "another's");
    EXPECT_EQ(entriesOf(directory), 1);
}

/// The calls among `calls` that are in `wanted`, in their order.
std::vector<std::string> only(const std::set<std::string>& wanted, const std::vector<std::string>& calls) {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& call) { return wanted.count(call) != 0; });
    return found;
}

using Calls = std::vector<std::string>;

class ReplaceFileSteps : public testing::Test {
protected:
    ReplaceFileSteps() { writeTextFile(file_, kOld); }

    Replaced replace(std::string_view bytes = kNew) { return replaceFile(windowsText(file_).c_str(), bytes); }

    /// The only file beside the target.
    fs::path fileBeside() const {
        fs::path found;
        for (const auto& entry : fs::directory_iterator(directory_.path())) {
            found = entry.path() == file_ ? found : entry.path();
        }
        return found;
    }

    fs::path leaveOneBehind() const {
        const fs::path leftover = directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp";
        writeTextFile(leftover, "left");
        return leftover;
    }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
};

TEST_F(ReplaceFileSteps, RightsComeBeforeTheBytesAndTheBytesAreOnDiskBeforeTheFileIsInPlace) {
    const std::set<std::string> wanted = {"fchmod", "fremovexattr", "write", "fsync", "rename", "ftruncate"};
    const CallLog log;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(only(wanted, log.calls()), (Calls{"fremovexattr", "fchmod", "write", "fsync", "rename"}));
}

TEST_F(ReplaceFileSteps, ANewFileIsOnDiskBeforeItHasItsName) {
    fs::remove(file_);
    const CallLog log;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(only({"write", "fsync", "rename", "renameat2"}, log.calls()), (Calls{"write", "fsync", "renameat2"}));
}

TEST_F(ReplaceFileSteps, AFileThatIsWrittenIntoIsLockedReservedWrittenCutAndFlushed) {
    fs::create_hard_link(file_, directory_ / "other.cfg");
    const CallLog log;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(only({"flock", "posix_fallocate", "write", "ftruncate", "fsync", "rename"}, log.calls()),
              (Calls{"flock", "posix_fallocate", "write", "ftruncate", "fsync"}));
}

TEST_F(ReplaceFileSteps, AKeptCopyIsOnDiskBeforeItHasItsName) {
    const CallLog log;
    EXPECT_TRUE(keepCopy(windowsText(file_).c_str()));
    EXPECT_EQ(only({"fchmod", "write", "fsync", "renameat2"}, log.calls()),
              (Calls{"fchmod", "write", "fsync", "renameat2"}));
}

TEST_F(ReplaceFileSteps, NobodyElseCanReadTheNewFileBeforeItHasTheRightsOfTheOld) {
    mode_t mode = 0777;
    const CallHook hook("fchmod", 1, [&] {
        struct stat status {};
        EXPECT_EQ(::stat(fileBeside().c_str(), &status), 0);
        mode = status.st_mode & 0777;
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(mode, 0600U);
}

TEST_F(ReplaceFileSteps, AnotherReplacementLeavesTheFileThatIsBeingWrittenAlone) {
    bool isLeft = false;
    const CallHook hook("fsync", 1, [&] {
        const fs::path written = fileBeside();
        EXPECT_EQ(replace("another"), Replaced::Yes);
        isLeft = fs::exists(written);
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_TRUE(isLeft);
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
}

TEST_F(ReplaceFileSteps, ANewFileThatAnotherProcessRemovesBeforeItIsLockedIsMadeUnderAnotherName) {
    const CallHook hook("flock", 1, [&] { fs::remove(fileBeside()); });
    const CallLog log;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    // Nothing was written into the file that had no name any more.
    EXPECT_EQ(log.count("write"), 1);
    EXPECT_EQ(readTextFile(file_), kNew);
}

TEST_F(ReplaceFileSteps, ANewFileWhoseLockAnotherProcessHasIsGivenUpForAnother) {
    int other = -1;
    const CallHook hook("flock", 1, [&] {
        other = ::open(fileBeside().c_str(), O_RDWR);
        EXPECT_EQ(::flock(other, LOCK_EX), 0);
    });
    const CallLog log;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(log.count("write"), 1);
    // It is the other's to remove: nothing is removed without its lock.
    EXPECT_EQ(log.count("unlink"), 0);
    EXPECT_EQ(entriesOf(directory_), 2);
    ::close(other);
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(entriesOf(directory_), 1);
}

TEST_F(ReplaceFileSteps, ANameThatSomebodyElseTookIsLeftToThem) {
    const auto process = static_cast<std::uint32_t>(::getpid());
    const fs::path taken = directory_ / replacementName("tessel_settings.cfg", process, nextReplacementCall() + 1);
    // The first call opens the target, the second one makes the new file.
    const CallHook hook("open", 2, [&] { writeTextFile(taken, "another's"); });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(taken), "another's");
    EXPECT_EQ(readTextFile(file_), kNew);
}

TEST_F(ReplaceFileSteps, ANewFileThatIsRemovedAllTheSameIsWrittenAnew) {
    const CallHook hook("rename", 1, [&] { fs::remove(fileBeside()); });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
}

TEST_F(ReplaceFileSteps, ALeftoverIsRemovedUnderItsLock) {
    const fs::path leftover = leaveOneBehind();
    int lockedByAnother = 0;
    const CallHook hook("unlink", 1, [&] {
        const int file = ::open(leftover.c_str(), O_RDWR);
        lockedByAnother = ::flock(file, LOCK_EX | LOCK_NB);
        ::close(file);
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(lockedByAnother, -1);
    EXPECT_FALSE(fs::exists(leftover));
}

TEST_F(ReplaceFileSteps, AFileThatTookTheNameOfALeftoverMeanwhileStays) {
    const fs::path leftover = leaveOneBehind();
    const CallHook hook("flock", 1, [&] {
        writeTextFile(directory_ / "another", "another's");
        fs::rename(directory_ / "another", leftover);
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(leftover), "another's");
}

TEST_F(ReplaceFileSteps, WhereThereAreNoLocksNothingIsTakenForALeftover) {
    const fs::path leftover = leaveOneBehind();
    for (const int error : {ENOLCK, ENOSYS, EOPNOTSUPP}) {
        const Fault fault{"flock", 1, error};
        const FaultInjection injection(fault);
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_TRUE(fs::exists(leftover));
    }
    // The file itself is written without a lock then.
    fs::remove(leftover);
    for (const int error : {ENOLCK, ENOSYS, EOPNOTSUPP}) {
        const Fault fault{"flock", 1, error};
        const FaultInjection injection(fault);
        const CallLog log;
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_EQ(log.count("flock"), 1);
    }
}

TEST_F(ReplaceFileSteps, LocksAreTakenOverNfs) {
    const NfsLocks nfs;
    const fs::path leftover = leaveOneBehind();
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_FALSE(fs::exists(leftover));
    EXPECT_TRUE(keepCopy(windowsText(file_).c_str()));
    fs::create_hard_link(file_, directory_ / "other.cfg");
    EXPECT_EQ(replace("into"), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), "into");
}

TEST_F(ReplaceFileSteps, AFileThatAnotherOneReplacesBeforeItIsWrittenIntoIsLookedAtAgain) {
    fs::create_hard_link(file_, directory_ / "other.cfg");
    const CallHook hook("flock", 1, [&] {
        writeTextFile(directory_ / "new", "a file with one name");
        fs::rename(directory_ / "new", file_);
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(readTextFile(directory_ / "other.cfg"), kOld);
}

TEST_F(ReplaceFileSteps, AFileThatVanishesBeforeItIsWrittenIntoIsMadeAnew) {
    fs::create_hard_link(file_, directory_ / "other.cfg");
    const CallHook hook("flock", 1, [&] { fs::remove(file_); });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(readTextFile(directory_ / "other.cfg"), kOld);
}

TEST_F(ReplaceFileSteps, ATargetThatComesToBeMeanwhileKeepsItsRights) {
    fs::remove(file_);
    const CallHook hook("renameat2", 1, [&] {
        writeTextFile(file_, "another's");
        ::chmod(file_.c_str(), 0640);
    });
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(hook.happened());
    EXPECT_EQ(readTextFile(file_), kNew);
    struct stat status {};
    EXPECT_EQ(::stat(file_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(ReplaceFileSteps, ALinkWhoseTargetCannotBeToldIsLeftAlone) {
    const fs::path link = directory_ / "link.cfg";
    fs::create_symlink("tessel_settings.cfg", link);
    for (const int error : {EIO, EACCES}) {
        const Fault fault{"readlink", 1, error};
        const FaultInjection injection(fault);
        EXPECT_EQ(replaceFile(windowsText(link).c_str(), kNew), Replaced::No);
        EXPECT_TRUE(injection.happened());
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_EQ(readTextFile(file_), kOld);
    }
}

TEST_F(ReplaceFileSteps, AFileWhoseOwnerModeOrAccessListCannotBeGivenIsWrittenInto) {
    struct stat before {};
    ASSERT_EQ(::stat(file_.c_str(), &before), 0);
    for (const char* const call : {"fchmod", "getxattr", "fremovexattr", "stat"}) {
        // The first two calls of stat look whether the new file is still there and at the old one.
        const Fault fault{call, std::string(call) == "stat" ? 2U : 1U, EIO};
        const FaultInjection injection(fault);
        EXPECT_EQ(replace(call), Replaced::Yes);
        EXPECT_TRUE(injection.happened()) << call;
        struct stat after {};
        ASSERT_EQ(::stat(file_.c_str(), &after), 0);
        EXPECT_EQ(after.st_ino, before.st_ino) << call;
        EXPECT_EQ(readTextFile(file_), call);
    }
}

TEST_F(ReplaceFileSteps, AFileWhoseAccessListCannotBeGivenKeepsItAndIsWrittenInto) {
    const std::string list = test::accessListForOneMore();
    if (!test::setAccessList(file_, test::kAccessList, list)) {
        GTEST_SKIP() << "this file system has no access lists";
    }
    struct stat before {};
    ASSERT_EQ(::stat(file_.c_str(), &before), 0);
    const Fault fault{"fsetxattr", 1, ENOTSUP};
    const FaultInjection injection(fault);
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(injection.happened());
    struct stat after {};
    ASSERT_EQ(::stat(file_.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(test::accessListOf(file_), list);
    EXPECT_EQ(readTextFile(file_), kNew);
}

}  // namespace
}  // namespace zelutil::platform
