// Each system call of a replacement fails in turn: the file is the old or the new one, whole, and nothing is left
// beside.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>

#include "platform/replace_file.h"
#include "support/system_faults.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::Fault;
using test::FaultInjection;
using test::readTextFile;
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
                const bool isKept = keepCopy(windowsText(file).c_str());
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

}  // namespace
}  // namespace zelutil::platform
