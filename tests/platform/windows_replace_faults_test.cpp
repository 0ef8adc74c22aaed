// Each system call of a replacement fails in turn, and the system behaves as it does on disks and for users that a test
// does not have: the file is the old or the new one, whole, and nothing is left beside.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/replace_file.h"
#include "support/temp_directory.h"
#include "support/text_file.h"
#include "support/windows_calls.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::readTextFile;
using test::TempDirectory;
using test::WindowsCalls;
using test::windowsText;
using test::writeTextFile;

using Calls = std::vector<std::string>;

const std::string kOld(5'000, 'o');
const std::string kNew(9'000, 'n');

constexpr DWORD kErrors[] = {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_DISK_FULL,          ERROR_IO_DEVICE,
                             ERROR_NOT_SUPPORTED, ERROR_WRITE_PROTECT,     ERROR_TOO_MANY_OPEN_FILES};

std::ptrdiff_t entriesOf(const TempDirectory& directory) {
    return std::distance(fs::directory_iterator(directory.path()), {});
}

struct Outcome {
    bool happened;
    Replaced replaced;
};

class ReplaceWindowsFileFaults : public testing::Test {
protected:
    ReplaceWindowsFileFaults() { writeTextFile(file_, kOld); }

    Replaced replace(std::string_view bytes = kNew) { return replaceFile(windowsText(file_).c_str(), bytes); }

    /// Replaces the file once while the occurrence of the call fails.
    Outcome replaceWith(const std::string& call, std::size_t occurrence, DWORD error) {
        Outcome outcome{};
        WindowsCalls calls;
        calls.decide = [&](const std::string& name, std::size_t number) -> DWORD {
            const bool isTheOne = name == call && number == occurrence;
            outcome.happened = outcome.happened || isTheOne;
            return isTheOne ? error : 0;
        };
        outcome.replaced = replace();
        return outcome;
    }

    /// Identifies the file itself, whatever its contents.
    std::uint64_t index() const {
        BY_HANDLE_FILE_INFORMATION information{};
        const HANDLE file = CreateFileW(file_.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        EXPECT_TRUE(GetFileInformationByHandle(file, &information));
        CloseHandle(file);
        return (std::uint64_t{information.nFileIndexHigh} << 32) | information.nFileIndexLow;
    }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
};

const Calls kWays = {"MoveFileExW", "ReplaceFileW", "LockFileEx"};

TEST_F(ReplaceWindowsFileFaults, AnySingleFailingCallLeavesTheOldOrTheNewFile) {
    int broken = 0;
    int old = 0;
    for (const std::string& call : test::wrappedWindowsCalls()) {
        for (const DWORD error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::to_string(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                writeTextFile(file_, kOld);
                const Outcome outcome = replaceWith(call, occurrence, error);
                EXPECT_NE(outcome.replaced, Replaced::Torn);
                EXPECT_EQ(readTextFile(file_), outcome.replaced == Replaced::Yes ? kNew : kOld);
                EXPECT_EQ(entriesOf(directory_), 1);
                if (!outcome.happened) {
                    break;
                }
                ++broken;
                old += outcome.replaced == Replaced::Yes ? 0 : 1;
            }
        }
    }
    std::printf("%d calls broken, %d times the old file\n", broken, old);
    EXPECT_GT(broken, 100);
    EXPECT_GT(old, 0);
}

TEST_F(ReplaceWindowsFileFaults, AnySingleFailingCallMakesAWholeFileOrNone) {
    int broken = 0;
    for (const std::string& call : test::wrappedWindowsCalls()) {
        for (const DWORD error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::to_string(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                fs::remove(file_);
                const Outcome outcome = replaceWith(call, occurrence, error);
                EXPECT_EQ(fs::exists(file_), outcome.replaced == Replaced::Yes);
                EXPECT_EQ(entriesOf(directory_), outcome.replaced == Replaced::Yes ? 1 : 0);
                if (outcome.replaced == Replaced::Yes) {
                    EXPECT_EQ(readTextFile(file_), kNew);
                }
                if (!outcome.happened) {
                    break;
                }
                ++broken;
            }
        }
    }
    std::printf("%d calls broken\n", broken);
    EXPECT_GT(broken, 50);
}

TEST_F(ReplaceWindowsFileFaults, AnySingleFailingCallKeepsAWholeCopyOrNone) {
    const fs::path kept = directory_ / "tessel_settings.cfg.bad";
    int broken = 0;
    int copies = 0;
    for (const std::string& call : test::wrappedWindowsCalls()) {
        for (const DWORD error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::to_string(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                fs::remove(kept);
                bool happened = false;
                bool isKept = false;
                {
                    WindowsCalls calls;
                    calls.decide = [&](const std::string& name, std::size_t number) -> DWORD {
                        const bool isTheOne = name == call && number == occurrence;
                        happened = happened || isTheOne;
                        return isTheOne ? error : 0;
                    };
                    isKept = keepCopy(windowsText(file_).c_str()).has_value();
                }
                EXPECT_EQ(fs::exists(kept), isKept);
                EXPECT_EQ(entriesOf(directory_), isKept ? 2 : 1);
                EXPECT_EQ(readTextFile(isKept ? kept : file_), kOld);
                if (!happened) {
                    break;
                }
                ++broken;
                copies += isKept ? 1 : 0;
            }
        }
    }
    std::printf("%d calls broken, %d copies kept\n", broken, copies);
    EXPECT_GT(broken, 50);
    EXPECT_GT(copies, 0);
}

TEST_F(ReplaceWindowsFileFaults, RightsComeBeforeTheBytesAndTheBytesAreOnDiskBeforeTheFileIsInPlace) {
    const WindowsCalls calls;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.only({"SetFileAttributesW", "SetFileSecurityW", "WriteFile", "FlushFileBuffers", "MoveFileExW",
                          "ReplaceFileW", "SetEndOfFile"}),
              (Calls{"SetFileAttributesW", "SetFileSecurityW", "WriteFile", "FlushFileBuffers", "MoveFileExW"}));
}

TEST_F(ReplaceWindowsFileFaults, AFileThatIsWrittenIntoIsLockedReservedWrittenCutAndFlushed) {
    fs::create_hard_link(file_, directory_ / "other.cfg");
    const WindowsCalls calls;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.only({"LockFileEx", "SetEndOfFile", "WriteFile", "FlushFileBuffers", "MoveFileExW"}),
              (Calls{"LockFileEx", "SetEndOfFile", "WriteFile", "SetEndOfFile", "FlushFileBuffers"}));
}

TEST_F(ReplaceWindowsFileFaults, ARefusedMoveIsTriedAgainBeforeTheCallOfSeveralSteps) {
    for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}) {
        WindowsCalls calls;
        calls.decide = [&](const std::string& call, std::size_t number) -> DWORD {
            return call == "MoveFileExW" && number <= 3 ? error : 0;
        };
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_EQ(calls.count("MoveFileExW"), 4U);
        EXPECT_EQ(calls.count("ReplaceFileW"), 0U);
        EXPECT_EQ(entriesOf(directory_), 1);
    }
}

TEST_F(ReplaceWindowsFileFaults, WhereNoMoveIsAllowedTheFileIsExchanged) {
    const auto before = index();
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "MoveFileExW" ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.count("MoveFileExW"), 6U);
    EXPECT_EQ(calls.count("ReplaceFileW"), 1U);
    EXPECT_EQ(calls.count("LockFileEx"), 0U);
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
    EXPECT_NE(index(), before);
}

TEST_F(ReplaceWindowsFileFaults, WhereNothingCanBePutInItsPlaceTheFileIsWrittenInto) {
    const auto before = index();
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "MoveFileExW" || call == "ReplaceFileW" ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.count("LockFileEx"), 1U);
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
    EXPECT_EQ(index(), before);
}

TEST_F(ReplaceWindowsFileFaults, WithoutSpaceNoOtherWayIsTried) {
    for (const char* const failing : {"WriteFile", "FlushFileBuffers", "MoveFileExW"}) {
        WindowsCalls calls;
        calls.decide = [&](const std::string& call, std::size_t) -> DWORD {
            return call == failing ? ERROR_DISK_FULL : 0;
        };
        EXPECT_EQ(replace(), Replaced::No) << failing;
        EXPECT_EQ(calls.only({"ReplaceFileW", "LockFileEx"}), Calls()) << failing;
        EXPECT_EQ(readTextFile(file_), kOld);
        EXPECT_EQ(entriesOf(directory_), 1);
    }
}

/// Lets every move over the file be refused, and the call of several steps end with the old file gone and the new one
/// still beside.
DWORD giveUpHalfWay(const fs::path& file, const std::string& call, std::size_t number, std::size_t refusedMoves) {
    if (call == "ReplaceFileW") {
        DeleteFileW(file.c_str());
        return ERROR_UNABLE_TO_MOVE_REPLACEMENT;
    }
    return call == "MoveFileExW" && number <= refusedMoves ? ERROR_ACCESS_DENIED : 0;
}

TEST_F(ReplaceWindowsFileFaults, WhereTheOldFileVanishedHalfWayTheNewOneIsPutThere) {
    for (const std::size_t refusedMoves : {6U, 8U}) {
        writeTextFile(file_, kOld);
        WindowsCalls calls;
        calls.decide = [&](const std::string& call, std::size_t number) {
            return giveUpHalfWay(file_, call, number, refusedMoves);
        };
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_EQ(calls.count("LockFileEx"), 0U);
        EXPECT_EQ(readTextFile(file_), kNew);
        EXPECT_EQ(entriesOf(directory_), 1);
    }
}

TEST_F(ReplaceWindowsFileFaults, WhereItCannotBePutThereEitherItIsKept) {
    {
        WindowsCalls calls;
        calls.decide = [&](const std::string& call, std::size_t number) {
            return giveUpHalfWay(file_, call, number, 1'000);
        };
        EXPECT_EQ(replace(), Replaced::Torn);
    }
    EXPECT_FALSE(fs::exists(file_));
    ASSERT_EQ(entriesOf(directory_), 1);
    EXPECT_EQ(readTextFile(fs::directory_iterator(directory_.path())->path()), kNew);
    EXPECT_EQ(replace("next"), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), "next");
    EXPECT_EQ(readTextFile(directory_ / "tessel_settings.cfg.bad"), kNew);
    EXPECT_EQ(entriesOf(directory_), 2);
}

// It goes by another name here: Wine does not tell of an open file that it is being deleted.
TEST_F(ReplaceWindowsFileFaults, AFileThatVanishesBeforeItIsWrittenIntoIsMadeAnew) {
    WindowsCalls calls;
    calls.decide = [&](const std::string& call, std::size_t number) -> DWORD {
        if (call == "LockFileEx") {
            MoveFileExW(file_.c_str(), (directory_ / "elsewhere").c_str(), 0);
            return 0;
        }
        const bool isRefused = (call == "MoveFileExW" && number <= 6) || call == "ReplaceFileW";
        return isRefused ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.count("LockFileEx"), 1U);
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(readTextFile(directory_ / "elsewhere"), kOld);
    EXPECT_EQ(entriesOf(directory_), 2);
}

struct WayRow {
    DWORD attributes;
    bool haveStreams;
    const char* way;
};

TEST_F(ReplaceWindowsFileFaults, WhatAMoveWouldLoseGoesAnotherWay) {
    constexpr WayRow kRows[] = {
        {0, false, "MoveFileExW"},
        {FILE_ATTRIBUTE_ENCRYPTED, false, "ReplaceFileW"},
        {FILE_ATTRIBUTE_COMPRESSED, false, "ReplaceFileW"},
        {0, true, "ReplaceFileW"},
        {FILE_ATTRIBUTE_SPARSE_FILE, false, "LockFileEx"},
        {FILE_ATTRIBUTE_SPARSE_FILE | FILE_ATTRIBUTE_COMPRESSED, true, "LockFileEx"},
    };
    for (const WayRow& row : kRows) {
        WindowsCalls calls;
        calls.addedAttributes = row.attributes;
        calls.haveStreams = row.haveStreams;
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_EQ(calls.only(kWays), Calls{row.way}) << row.attributes;
        EXPECT_EQ(readTextFile(file_), kNew);
        EXPECT_EQ(entriesOf(directory_), 1);
    }
}

TEST_F(ReplaceWindowsFileFaults, WhatAnExchangeCannotKeepIsWrittenInto) {
    WindowsCalls calls;
    calls.addedAttributes = FILE_ATTRIBUTE_ENCRYPTED;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "ReplaceFileW" ? ERROR_NOT_SUPPORTED : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.only(kWays), (Calls{"ReplaceFileW", "LockFileEx"}));
    EXPECT_EQ(readTextFile(file_), kNew);
}

TEST_F(ReplaceWindowsFileFaults, ANewFileWhoseRightsForbidToDeleteItIsRemovedAllTheSame) {
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t number) -> DWORD {
        const bool isRefused =
            call == "MoveFileExW" || call == "ReplaceFileW" || (call == "DeleteFileW" && number == 1);
        return isRefused ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    // The first rights are those that it took over.
    EXPECT_EQ(calls.only({"SetFileSecurityW", "DeleteFileW"}),
              (Calls{"SetFileSecurityW", "DeleteFileW", "SetFileSecurityW", "DeleteFileW"}));
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
}

TEST_F(ReplaceWindowsFileFaults, AFileOfAnotherOwnerIsWrittenInto) {
    bool hasOtherOwner = false;
    WindowsCalls calls;
    calls.decide = [&](const std::string& call, std::size_t number) -> DWORD {
        hasOtherOwner = hasOtherOwner || call == "EqualSid";
        // This user may make nobody else the owner.
        const bool isRefused = call == "EqualSid" || (hasOtherOwner && call == "SetFileSecurityW" && number == 1);
        return isRefused ? ERROR_INVALID_OWNER : 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(calls.only(kWays), Calls{"LockFileEx"});
    EXPECT_EQ(readTextFile(file_), kNew);
    EXPECT_EQ(entriesOf(directory_), 1);
}

/// Returns whether somebody has the mutex of that name, asked by a thread that has none.
bool isHeld(const wchar_t* name) {
    DWORD result = WAIT_FAILED;
    std::thread([&] {
        const HANDLE mutex = OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, name);
        if (mutex == nullptr) {
            return;
        }
        result = WaitForSingleObject(mutex, 0);
        if (result == WAIT_OBJECT_0) {
            ReleaseMutex(mutex);
        }
        CloseHandle(mutex);
    }).join();
    return result == WAIT_TIMEOUT;
}

TEST_F(ReplaceWindowsFileFaults, TurnsAreThoseOfTheWholeMachine) {
    bool isTurnTaken = false;
    WindowsCalls calls;
    calls.decide = [&](const std::string& call, std::size_t) -> DWORD {
        isTurnTaken = isTurnTaken || (call == "MoveFileExW" && isHeld(L"Global\\zelutil-replace-file"));
        return 0;
    };
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(isTurnTaken);
    EXPECT_EQ(calls.count("CreateMutexW"), 1U);
}

TEST_F(ReplaceWindowsFileFaults, WhoMayNotReachBeyondTheSessionTakesTurnsInIt) {
    bool isTurnTaken = false;
    WindowsCalls calls;
    calls.decide = [&](const std::string& call, std::size_t number) -> DWORD {
        isTurnTaken = isTurnTaken || (call == "MoveFileExW" && isHeld(L"Local\\zelutil-replace-file"));
        return call == "CreateMutexW" && number == 1 ? ERROR_ACCESS_DENIED : 0;
    };
    writeTextFile(directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp", "left");
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_TRUE(isTurnTaken);
    EXPECT_EQ(calls.count("CreateMutexW"), 2U);
    // Clearing up needs a turn.
    EXPECT_EQ(entriesOf(directory_), 1);
}

TEST_F(ReplaceWindowsFileFaults, WithoutATurnOnlySingleStepsAreTaken) {
    writeTextFile(directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp", "left");
    {
        WindowsCalls calls;
        calls.decide = [](const std::string& call, std::size_t) -> DWORD {
            return call == "CreateMutexW" ? ERROR_ACCESS_DENIED : 0;
        };
        EXPECT_EQ(replace(), Replaced::Yes);
        EXPECT_EQ(entriesOf(directory_), 2);
    }
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "CreateMutexW" || call == "MoveFileExW" ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace("into"), Replaced::Yes);
    EXPECT_EQ(calls.count("ReplaceFileW"), 0U);
    EXPECT_EQ(readTextFile(file_), "into");
}

TEST_F(ReplaceWindowsFileFaults, ALockThatIsNotToBeHadLeavesTheFileAsItIs) {
    fs::create_hard_link(file_, directory_ / "other.cfg");
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "LockFileEx" ? ERROR_LOCK_VIOLATION : 0;
    };
    EXPECT_EQ(replace(), Replaced::No);
    EXPECT_GT(calls.count("LockFileEx"), 100U);
    EXPECT_EQ(readTextFile(file_), kOld);
}

// Wine takes paths of any length.
TEST_F(ReplaceWindowsFileFaults, APathThatLeavesNoRoomBesideItIsReplaced) {
    fs::path parent = directory_.path();
    while (parent.native().size() < 190) {
        parent /= std::string(20, 'd');
    }
    fs::create_directories(parent);
    for (const std::size_t length : {228U, 229U, 230U, 245U, 258U, 259U}) {
        const fs::path file = parent / std::string(length - parent.native().size() - 1, 'n');
        const std::string text = windowsText(file);
        WindowsCalls calls;
        calls.areLongPathsRefused = true;
        EXPECT_EQ(replaceFile(text.c_str(), "first"), Replaced::Yes) << length;
        EXPECT_EQ(replaceFile(text.c_str(), "second"), Replaced::Yes) << length;
        EXPECT_TRUE(keepCopy(text.c_str())) << length;
        EXPECT_EQ(readTextFile(file), "second") << length;
    }
    const fs::path tooLong = parent / std::string(260 - parent.native().size() - 1, 'n');
    WindowsCalls calls;
    calls.areLongPathsRefused = true;
    EXPECT_EQ(replaceFile(windowsText(tooLong).c_str(), "new"), Replaced::No);
}

// Wine makes no symbolic links, so the file only seems to be one. What a link's data name, ReplaceRules shows.
TEST_F(ReplaceWindowsFileFaults, ALinkIsReplacedAtItsTargetAndOneThatLeadsNobodyKnowsWhereIsLeftAlone) {
    WindowsCalls calls;
    calls.addedAttributes = FILE_ATTRIBUTE_REPARSE_POINT;
    EXPECT_EQ(replace(), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), kNew);
    for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_FILE_NOT_FOUND, ERROR_CANT_RESOLVE_FILENAME}) {
        const std::size_t opened = calls.count("CreateFileW");
        calls.decide = [&](const std::string& call, std::size_t number) -> DWORD {
            return call == "CreateFileW" && number == opened + 1 ? error : 0;
        };
        EXPECT_EQ(replace("another"), Replaced::No) << error;
        EXPECT_EQ(readTextFile(file_), kNew);
        EXPECT_EQ(entriesOf(directory_), 1);
    }
}

TEST_F(ReplaceWindowsFileFaults, ATargetThatCannotBeToldIsLeftAlone) {
    WindowsCalls calls;
    calls.decide = [](const std::string& call, std::size_t) -> DWORD {
        return call == "GetFileAttributesW" ? ERROR_ACCESS_DENIED : 0;
    };
    EXPECT_EQ(replace(), Replaced::No);
    EXPECT_EQ(calls.only(kWays), Calls());
    EXPECT_EQ(readTextFile(file_), kOld);
}

}  // namespace
}  // namespace zelutil::platform
