// Each system call of an import fails in turn, and a process is killed at each of them. Whatever happens: the user's
// file is the old or the new one, whole, the result says which, and the next import of the same profile finishes the
// work. An import after that writes nothing. What "plan --apply" does is the same edits and the same save.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "command/shortcuts/importing.h"
#include "host/save_fault_tally.h"
#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "support/every_fault.h"
#include "support/system_faults.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using Status = SaveResult::Status;

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Returns a profile with another shortcut for action 3, and for action 6 the one that action 3 had.
shortcuts::WishText profileOfNumber(int number) {
    const auto key = [](int of) { return "\"Key" + std::to_string(of) + "\""; };
    return shortcuts::readProfile(R"({"zelutilProfile":1,"actions":[{"id":3,"shortcut":)" + key(number) +
                                  R"(},{"id":6,"shortcut":)" + key(number - 1) + "}]}");
}

class ImportFaults : public testing::Test {
protected:
    ImportFaults() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
        host::save({{"part0::value0", "first"}});
        EXPECT_TRUE(shortcuts::importWishes(profileOfNumber(0)).save.ok());
    }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    std::ptrdiff_t filesBeside() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}) - 1;
    }

    /// Returns whether the file is whole and has what the profile of that number gives.
    static bool isOfNumber(const std::string& text, int number) {
        return has(text, "\"Key" + std::to_string(number) + "\"") &&
               has(text, "\"Key" + std::to_string(number - 1) + "\"") && has(text, "\"first\"") && text.back() == '}';
    }

    /// Finishes what an import began, and imports once more.
    void expectFinished(int number) {
        const SaveResult again = shortcuts::importWishes(profileOfNumber(number)).save;
        const std::string text = fileText();
        const bool isThere = again.ok() && isOfNumber(text, number) && filesBeside() == 0;
        tally_.lost += isThere ? 0 : 1;
        EXPECT_TRUE(isThere) << again.text << '\n' << text;
        EXPECT_EQ(shortcuts::importWishes(profileOfNumber(number)).save.status, Status::Unchanged);
        EXPECT_EQ(fileText(), text);
    }

    void expectOldOrNew(const std::string& old, int number) {
        const std::string text = fileText();
        const bool isNew = isOfNumber(text, number);
        tally_.old += text == old ? 1 : 0;
        tally_.fresh += isNew ? 1 : 0;
        tally_.damaged += text == old || isNew ? 0 : 1;
        EXPECT_TRUE(text == old || isNew) << text;
    }

    PreferenceWorld world_;
    SaveFaultTally tally_;
};

TEST_F(ImportFaults, AnyCallMayFail) {
    int number = 0;
    // The save itself is tested with every error.
    forEachFaultOf({EACCES, ENOSPC, EINTR}, [&](const Fault& fault) {
        const std::string old = fileText();
        ++number;
        shortcuts::Import import;
        bool happened = false;
        {
            const FaultInjection injection(fault);
            import = shortcuts::importWishes(profileOfNumber(number));
            happened = injection.happened();
        }
        tally_.broken += happened ? 1 : 0;
        EXPECT_TRUE(import.wishes.skipped.empty());
        expectOldOrNew(old, number);
        const bool isTrue = import.save.ok() == isOfNumber(fileText(), number);
        tally_.untrue += isTrue ? 0 : 1;
        EXPECT_TRUE(isTrue) << import.save.text;
        expectFinished(number);
        return happened;
    });
    tally_.print("imports");
    EXPECT_GT(tally_.broken, 100);
    EXPECT_GT(tally_.old, 0);
    EXPECT_GT(tally_.fresh, 0);
}

/// Imports in a process of its own, which ends at once just before the call. Returns whether it came to that.
bool importKilledAt(const std::string& call, std::size_t occurrence, int number) {
    constexpr int kKilled = 42;
    const pid_t child = ::fork();
    if (child == 0) {
        const CallHook hook(call, occurrence, [] { ::_exit(kKilled); });
        shortcuts::importWishes(profileOfNumber(number));
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == kKilled;
}

TEST_F(ImportFaults, AProcessMayBeKilledAtAnyCall) {
    int number = 0;
    for (const std::string& call : wrappedCalls()) {
        for (std::size_t occurrence = 1; !HasFailure(); ++occurrence) {
            SCOPED_TRACE(call + " " + std::to_string(occurrence));
            const std::string old = fileText();
            const bool killed = importKilledAt(call, occurrence, ++number);
            tally_.broken += killed ? 1 : 0;
            expectOldOrNew(old, number);
            expectFinished(number);
            if (!killed) {
                break;
            }
        }
    }
    tally_.print("killed imports");
    EXPECT_GT(tally_.broken, 15);
    EXPECT_GT(tally_.old, 0);
    EXPECT_GT(tally_.fresh, 0);
}

}  // namespace
}  // namespace zelutil::test
