// Each system call of an import, of an applied plan, of a reset and of an export fails in turn, and a process is killed
// at each of them. Whatever happens: the file is the old or the new one, whole, the result says which, and doing the
// same once more finishes the work. Once more after that writes nothing into the user's file.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "actions/manager_access.h"
#include "command/html/result_file.h"
#include "command/shortcuts/action_reset.h"
#include "command/shortcuts/importing.h"
#include "command/shortcuts/profile.h"
#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "support/every_fault.h"
#include "support/killed_at.h"
#include "support/save_fault_tally.h"
#include "support/system_faults.h"
#include "support/twin_json.h"

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

SaveResult importNumber(int number) {
    const shortcuts::Import import = shortcuts::importWishes(profileOfNumber(number));
    EXPECT_TRUE(import.wishes.skipped.empty());
    return import.save;
}

/// Applies a plan that is to bring about the same.
SaveResult applyNumber(int number) {
    const auto& catalogue = actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
    const std::string list = "3 = Key" + std::to_string(number) + "\n6 = Key" + std::to_string(number - 1) + "\n";
    const shortcuts::NamedWishes wishes = nameWishes(shortcuts::readWishes(list), catalogue);
    const shortcuts::WishPlan plan = planWishes(catalogue, wishes.keys);
    EXPECT_EQ(plan.outcome, shortcuts::WishPlan::Outcome::Possible);
    return applyWishes(plan, wishes.menuFlags);
}

/// Gives both actions what is shipped for them.
SaveResult resetBoth(int /*number*/) { return shortcuts::resetActions({3, 6}).save; }

bool hasKey(const std::string& text, int number) { return has(text, "\"Key" + std::to_string(number) + "\""); }

bool hasBothKeys(const std::string& text, int number) { return hasKey(text, number) && hasKey(text, number - 1); }

bool hasNoKey(const std::string& text, int number) { return !hasKey(text, number) && !hasKey(text, number - 1); }

/// A reset has something to take away.
void importBefore(int number) { EXPECT_TRUE(importNumber(number).ok()); }

/// Every number makes a change.
void doNothingBefore(int /*number*/) {}

struct Change {
    const char* name;
    void (*prepare)(int number);
    SaveResult (*make)(int number);
    /// Returns whether the user's text has what the change gives.
    bool (*isMade)(const std::string& text, int number);
    /// The save itself is tested with every error.
    std::vector<int> errors;
};

/// Names the change in the list of the tests.
void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }

class ShortcutFaults : public testing::TestWithParam<Change> {
protected:
    ShortcutFaults() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
        host::save({{"part0::value0", "first"}});
        EXPECT_TRUE(importNumber(0).ok());
    }

    static SaveResult change(int number) { return GetParam().make(number); }

    /// Goes on to the next number and returns the text of the file before that is made.
    std::string begin() {
        GetParam().prepare(++number_);
        return fileText();
    }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    std::ptrdiff_t filesBeside() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}) - 1;
    }

    /// Returns whether the file is whole and has what the change gives.
    bool isNew(const std::string& text) const {
        return readTwinJson(text) && GetParam().isMade(text, number_) && has(text, "\"first\"");
    }

    /// Finishes what a change began, and makes it once more.
    void expectFinished() {
        const SaveResult again = change(number_);
        const std::string text = fileText();
        const bool isThere = again.ok() && isNew(text) && filesBeside() == 0;
        tally_.lost += isThere ? 0 : 1;
        EXPECT_TRUE(isThere) << again.text << '\n' << text;
        EXPECT_EQ(change(number_).status, Status::Unchanged);
        EXPECT_EQ(fileText(), text);
    }

    void expectOldOrNew(const std::string& old) {
        const std::string text = fileText();
        const bool isNew = this->isNew(text);
        tally_.old += text == old ? 1 : 0;
        tally_.fresh += isNew ? 1 : 0;
        tally_.damaged += text == old || isNew ? 0 : 1;
        EXPECT_TRUE(text == old || isNew) << text;
    }

    PreferenceWorld world_;
    SaveFaultTally tally_;
    int number_ = 0;
};

TEST_P(ShortcutFaults, AnyCallMayFail) {
    forEachFaultOf(GetParam().errors, [&](const Fault& fault) {
        const std::string old = begin();
        SaveResult result;
        bool happened = false;
        {
            const FaultInjection injection(fault);
            result = change(number_);
            happened = injection.happened();
        }
        tally_.broken += happened ? 1 : 0;
        expectOldOrNew(old);
        const bool isTrue = result.ok() == isNew(fileText());
        tally_.untrue += isTrue ? 0 : 1;
        EXPECT_TRUE(isTrue) << result.text;
        expectFinished();
        return happened;
    });
    tally_.expectBothFiles(GetParam().name, 40);
}

TEST_P(ShortcutFaults, AProcessMayBeKilledAtAnyCall) {
    std::string old;
    forEachKill([&] { old = begin(); }, [&] { change(number_); },
                [&](bool killed) {
                    tally_.broken += killed ? 1 : 0;
                    expectOldOrNew(old);
                    expectFinished();
                });
    tally_.expectBothFiles((std::string(GetParam().name) + ", killed").c_str(), 15);
}

INSTANTIATE_TEST_SUITE_P(Changes, ShortcutFaults,
                         testing::Values(Change{"imports", doNothingBefore, importNumber, hasBothKeys, {EACCES, EINTR}},
                                         Change{"plans", doNothingBefore, applyNumber, hasBothKeys, {ENOSPC}},
                                         Change{"resets", importBefore, resetBoth, hasNoKey, {EACCES, ENOSPC, EINTR}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

/// Exports into a file that holds a profile of other shortcuts.
class ExportFaults : public testing::Test {
protected:
    ExportFaults() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
        EXPECT_TRUE(importNumber(1).ok());
        fresh_ = shortcuts::profileOf(shortcuts::rowsOfProfile(shortcuts::shortcutTable()));
        EXPECT_TRUE(has(fresh_, "\"Key1\"") && has(fresh_, "\"Key0\"")) << fresh_;
        fs::create_directories(folder_);
        writeTextFile(file(), kOld);
    }

    fs::path file() const { return folder_ / "profile.json"; }

    /// Returns whether the command says that it has written the file.
    bool exports() const {
        command::Output output("export", command::FindingsAre::BesideResult, {true, command::ColorChoice::Never});
        const auto rows = shortcuts::rowsOfProfile(shortcuts::shortcutTable());
        return command::writeResult(file().u8string(), shortcuts::profileOf(rows), output);
    }

    /// Returns whether the file has the new profile; otherwise it is to have the old one.
    bool isNew() const {
        const std::string text = readTextFile(file());
        EXPECT_TRUE(text == kOld || text == fresh_) << text;
        return text == fresh_;
    }

    /// The next export finishes the work, and nothing lies beside the file.
    void expectFinishedAgain() {
        EXPECT_TRUE(exports());
        EXPECT_TRUE(isNew());
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
        writeTextFile(file(), kOld);
    }

    static constexpr char kOld[] = R"({"zelutilProfile":1,"actions":[{"id":3,"shortcut":"Old"}]})";

    PreferenceWorld world_;
    fs::path folder_ = world_.userFile().parent_path() / "profiles";
    std::string fresh_;
};

TEST_F(ExportFaults, AnyCallMayFail) {
    int broken = 0;
    forEachFaultOf({EACCES, ENOSPC, EINTR}, [&](const Fault& fault) {
        bool happened = false;
        bool isWritten = false;
        {
            const FaultInjection injection(fault);
            isWritten = exports();
            happened = injection.happened();
        }
        broken += happened ? 1 : 0;
        EXPECT_EQ(isWritten, isNew());
        expectFinishedAgain();
        return happened;
    });
    std::printf("exports: %d calls broken\n", broken);
    EXPECT_GT(broken, 20);
}

TEST_F(ExportFaults, AProcessMayBeKilledAtAnyCall) {
    int kills = 0;
    int fresh = 0;
    forEachKill([] {}, [&] { exports(); },
                [&](bool killed) {
                    kills += killed ? 1 : 0;
                    fresh += isNew() ? 1 : 0;
                    expectFinishedAgain();
                });
    std::printf("exports: %d kills, %d times the new file\n", kills, fresh);
    EXPECT_GT(kills, 5);
    EXPECT_GT(fresh, 0);
}

}  // namespace
}  // namespace zelutil::test
