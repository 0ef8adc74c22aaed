// Each system call of a reset fails in turn, and resets are killed in the middle: the user's file is the old one or the
// one without the entry, whole, and the result says which.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <thread>

#include "command/command_line.h"
#include "command/explain/entry_reset.h"
#include "prefs/preference_world.h"
#include "support/every_fault.h"
#include "support/killed_at.h"
#include "support/save_fault_tally.h"

namespace {

namespace fs = std::filesystem;
using zelutil::command::EntryReset;
using zelutil::host::SaveResult;
using zelutil::test::Fault;
using zelutil::test::readTextFile;

constexpr char kFile[] =
    "{\"mine\":1.0, \"meta\":[{\"header\":\"S\", \"attribute\":\"s\",\n \"overriddensettings\":[{\"other\":\"x\"},\n"
    "   {\"value\":\"v\"}, {\"S::VALUE\":\"w\"}]}]}\n";
constexpr char kFileWithout[] =
    "{\"mine\":1.0, \"meta\":[{\"header\":\"S\", \"attribute\":\"s\",\n "
    "\"overriddensettings\":[{\"other\":\"x\"}]}]}\n";

class ExplainResetFaults : public testing::Test {
protected:
    ExplainResetFaults() {
        world_.writeDefaults(zelutil::test::defaultsWithValue("default"));
        world_.writeUser(kFile);
    }

    /// Resets the setting; nothing where the defaults could not be read.
    static std::optional<SaveResult> reset() {
        EntryReset reset;
        const auto number = reset.accounts().find("s::value");
        return number ? std::optional(reset.cut({*number})) : std::nullopt;
    }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    std::ptrdiff_t filesBeside() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}) - 1;
    }

    bool resetWith(const Fault& fault) {
        world_.writeUser(kFile);
        std::optional<SaveResult> result;
        bool happened = false;
        {
            const zelutil::test::FaultInjection injection(fault);
            EXPECT_NO_THROW(result = reset());
            happened = injection.happened();
        }
        tell(fault, result, happened);
        return happened;
    }

    void tell(const Fault& fault, const std::optional<SaveResult>& result, bool happened) {
        const std::string text = fileText();
        const bool isOld = text == kFile;
        const bool isNew = text == kFileWithout;
        tally_.broken += happened ? 1 : 0;
        tally_.old += isOld ? 1 : 0;
        tally_.fresh += isNew ? 1 : 0;
        tally_.damaged += isOld || isNew ? 0 : 1;
        EXPECT_TRUE(isOld || isNew) << text;
        const bool saysNew = result && result->status == SaveResult::Status::Saved;
        const bool saysNothing = result && result->status == SaveResult::Status::Unchanged;
        tally_.untrue += saysNew == isNew && !saysNothing ? 0 : 1;
        EXPECT_EQ(saysNew, isNew);
        EXPECT_FALSE(saysNothing);
        const bool leftover = filesBeside() != 0 && fault.call != "unlink";
        tally_.leftovers += leftover ? 1 : 0;
        EXPECT_FALSE(leftover);
    }

    /// Resets again, which finishes the work, and once more, which changes nothing.
    void expectFinished() {
        const auto next = reset();
        const bool isDone = next && next->ok() && fileText() == kFileWithout && filesBeside() == 0;
        tally_.lost += isDone ? 0 : 1;
        EXPECT_TRUE(isDone) << fileText();
        const auto time = fs::last_write_time(world_.userFile());
        const auto again = reset();
        EXPECT_TRUE(again && again->status == SaveResult::Status::Unchanged);
        EXPECT_EQ(fileText(), kFileWithout);
        EXPECT_EQ(fs::last_write_time(world_.userFile()), time);
    }

    zelutil::test::PreferenceWorld world_;
    zelutil::test::SaveFaultTally tally_;
};

TEST_F(ExplainResetFaults, AnyCallMayFail) {
    zelutil::test::forEachFault([&](const Fault& fault) {
        const bool happened = resetWith(fault);
        world_.writeUser(kFile);
        const auto next = reset();
        const bool isDone = next && next->ok() && fileText() == kFileWithout && filesBeside() == 0;
        tally_.lost += isDone ? 0 : 1;
        EXPECT_TRUE(isDone);
        return happened;
    });
    tally_.expectBothFiles("resets", 100);
}

TEST_F(ExplainResetFaults, AFileThatWasChangedMeanwhileStays) {
    EntryReset reset;
    ASSERT_TRUE(reset.hasTurn());
    // A program that waits for no turn.
    const std::string changed = zelutil::test::readTextFile(world_.userFile()) + " ";
    world_.writeUser(changed);
    const SaveResult result = reset.cut({reset.accounts().find("s::value").value()});
    EXPECT_EQ(result.status, SaveResult::Status::NotWritten);
    EXPECT_EQ(result.text, "The file stays, because another program is changing it.");
    EXPECT_EQ(fileText(), changed);
}

/// The lock of the directory fails.
TEST_F(ExplainResetFaults, WithoutATurnItIsDoneAndTold) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    zelutil::command::ExitCode code{};
    {
        const Fault fault{"flock", 1, EIO};
        const zelutil::test::FaultInjection injection(fault);
        code = zelutil::command::run({"reset", "s::value"});
        EXPECT_TRUE(injection.happened());
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "s::value: w -> default\nSaved in " + world_.userFile().u8string() + "\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "warning: Other processes could not be kept from saving at the same moment, which this reset may have "
              "undone.\n    See whether their values are still there: \"zelutil diff\" shows all.\n");
    EXPECT_EQ(code, zelutil::command::ExitCode::Found);
    EXPECT_EQ(fileText(), kFileWithout);
}

/// A disk that fails once is nothing that can be seen afterwards.
TEST_F(ExplainResetFaults, AReasonThatIsGoneIsNotGuessedAt) {
    testing::internal::CaptureStderr();
    zelutil::command::ExitCode code{};
    {
        const Fault fault{"fsync", 1, EIO};
        const zelutil::test::FaultInjection injection(fault);
        code = zelutil::command::run({"reset", "s::value"});
        EXPECT_TRUE(injection.happened());
    }
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "zelutil: error: Nothing was saved, because \"" + world_.userFile().u8string() +
            "\" could not be written.\n    See whether the file and its directory may be written and the disk has "
            "room, and try again.\n");
    EXPECT_EQ(code, zelutil::command::ExitCode::Failed);
    EXPECT_EQ(fileText(), kFile);
}

/// Nobody is kept from saving between the reading and the cut then.
TEST_F(ExplainResetFaults, WithoutATurnWhatAnotherSavesMeanwhileStays) {
    const Fault fault{"flock", 1, EIO};
    const zelutil::test::FaultInjection injection(fault);
    EntryReset reset;
    ASSERT_FALSE(reset.hasTurn());
    world_.writeUser(kFileWithout);
    const SaveResult result = reset.cut({reset.accounts().find("s::value").value()});
    EXPECT_EQ(result.status, SaveResult::Status::NotWritten);
    EXPECT_EQ(fileText(), kFileWithout);
}

TEST_F(ExplainResetFaults, AProcessMayBeKilledAtAnyCall) {
    zelutil::test::forEachKill([&] { world_.writeUser(kFile); }, reset,
                               [&](bool killed) {
                                   const std::string text = fileText();
                                   tally_.broken += killed ? 1 : 0;
                                   tally_.old += text == kFile ? 1 : 0;
                                   tally_.fresh += text == kFileWithout ? 1 : 0;
                                   EXPECT_TRUE(text == kFile || text == kFileWithout) << text;
                                   expectFinished();
                               });
    tally_.expectBothFiles("resets, killed", 15);
}

TEST_F(ExplainResetFaults, AKilledResetLosesNothing) {
    constexpr int kKills = 100;
    std::mt19937 random(3);
    int old = 0;
    int fresh = 0;
    for (int i = 0; i < kKills; ++i) {
        world_.writeUser(kFile);
        const pid_t child = ::fork();
        if (child == 0) {
            reset();
            ::pause();
        }
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20'000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string text = fileText();
        old += text == kFile ? 1 : 0;
        fresh += text == kFileWithout ? 1 : 0;
        EXPECT_TRUE(text == kFile || text == kFileWithout) << text;
    }
    std::printf("%d kills, %d times the old file, %d times the new one\n", kKills, old, fresh);
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
    world_.writeUser(kFile);
    ASSERT_TRUE(reset());
    EXPECT_EQ(fileText(), kFileWithout);
    EXPECT_EQ(filesBeside(), 0);
}

}  // namespace
