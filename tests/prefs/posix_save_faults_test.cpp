// Each system call of a save fails in turn. Whatever fails: the user's file is the old or the new one, whole, nothing
// of ours is left beside it, no exception comes out, the new value is in force and the observers are told.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/every_fault.h"
#include "support/save_fault_tally.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

class SaveFaults : public testing::Test {
protected:
    SaveFaults() {
        world_.writeDefaults(defaultsWithValue("default"));
        UserPreferenceManager::GetInstance();
    }

    std::string textOf(const fs::path& file) const { return fs::exists(file) ? readTextFile(file) : "(none)"; }

    bool isLeftoverThere() const {
        const fs::path directory = world_.userFile().parent_path();
        if (!fs::exists(directory)) {
            return false;
        }
        for (const auto& entry : fs::directory_iterator(directory)) {
            const std::string name = entry.path().filename().string();
            if (name != "tessel_settings.cfg" && name != "tessel_settings.cfg.bad") {
                return true;
            }
        }
        return false;
    }

    /// Saves a value that no save before had, with the fault; tells whether it came to pass.
    bool saveWith(const Fault& fault) {
        const std::string value = std::to_string(++saves_);
        const std::string old = textOf(world_.userFile());
        const Listener listener;
        bool happened = false;
        {
            const FaultInjection injection(fault);
            EXPECT_NO_THROW(save(value));
            happened = injection.happened();
        }
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), value);
        const std::string text = textOf(world_.userFile());
        tally_.broken += happened ? 1 : 0;
        tally_.old += happened && text == old ? 1 : 0;
        tally_.fresh += happened && text == savedText(value) ? 1 : 0;
        const bool damaged = text != old && text != savedText(value);
        tally_.damaged += damaged ? 1 : 0;
        EXPECT_FALSE(damaged) << text;
        // The next save removes what could not be removed.
        const bool leftover = isLeftoverThere() && fault.call != "unlink";
        tally_.leftovers += leftover ? 1 : 0;
        EXPECT_FALSE(leftover);
        return happened;
    }

    void expectGoodSave() {
        const std::string value = std::to_string(++saves_);
        save(value);
        EXPECT_EQ(textOf(world_.userFile()), savedText(value));
        EXPECT_FALSE(isLeftoverThere());
    }

    PreferenceWorld world_;
    SaveFaultTally tally_;

private:
    int saves_ = 0;
};

TEST_F(SaveFaults, AnyCallMayFailWhereThereIsAFile) {
    expectGoodSave();
    forEachFault([&](const Fault& fault) {
        const bool happened = saveWith(fault);
        expectGoodSave();
        return happened;
    });
    tally_.expectBothFiles("over a file", 150);
}

TEST_F(SaveFaults, AnyCallMayFailWhereThereIsNoDirectoryYet) {
    forEachFault([&](const Fault& fault) {
        fs::remove_all(world_.home() / "pcbenv");
        const bool happened = saveWith(fault);
        expectGoodSave();
        return happened;
    });
    tally_.expectBothFiles("without a directory", 150);
}

TEST_F(SaveFaults, ADiskThatFillsInTheMiddleOfAWriteLeavesTheOldFile) {
    expectGoodSave();
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
        const std::string old = textOf(world_.userFile());
        EXPECT_TRUE(saveWith({"write", 1, error, true}));
        EXPECT_EQ(textOf(world_.userFile()), old);
    }
    expectGoodSave();
}

// A process that has kept a file once does not keep it again, so each fault gets a process of its own.
TEST_F(SaveFaults, AnyCallMayFailWhereAFileThatIsNoJsonIsToBeKept) {
    constexpr char kBad[] = "{\"meta\":[{\"mine\":1,}]";
    enum Exit { kHappened = 10, kNever, kFailed };
    int keptWhole = 0;
    forEachFault([&](const Fault& fault) {
        const fs::path kept = world_.userFile().string() + ".bad";
        fs::remove(kept);
        world_.writeUser(kBad);
        const pid_t child = ::fork();
        if (child == 0) {
            const bool happened = saveWith(fault);
            ::_exit(HasFailure() ? kFailed : happened ? kHappened : kNever);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        EXPECT_TRUE(exitCode == kHappened || exitCode == kNever) << exitCode;
        const std::string keptText = textOf(kept);
        EXPECT_TRUE(keptText == kBad || keptText == "(none)") << keptText;
        EXPECT_TRUE(keptText == kBad || textOf(world_.userFile()) == kBad) << textOf(world_.userFile());
        keptWhole += keptText == kBad ? 1 : 0;
        tally_.broken += exitCode == kHappened ? 1 : 0;
        return exitCode == kHappened;
    });
    std::printf("over a file to keep: %d calls broken, %d times kept\n", tally_.broken, keptWhole);
    EXPECT_GT(tally_.broken, 300);
    EXPECT_GT(keptWhole, 0);
}

}  // namespace
}  // namespace zelutil::test
