// Each system call of a save that merges fails in turn. Whatever fails: the user's file is the old or the new one,
// whole, nothing of ours is left beside it, the result says which of the two it is, the new values are in force, the
// observers are told, and the next save writes everything.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/every_fault.h"
#include "support/ordinary_user.h"
#include "support/save_fault_tally.h"
#include "support/system_faults.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using Status = SaveResult::Status;

class SaveFaultTable : public testing::Test {
protected:
    SaveFaultTable() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
    }

    std::string textOf(const fs::path& file) const { return fs::exists(file) ? readTextFile(file) : "(none)"; }

    std::string fileText() const { return textOf(world_.userFile()); }

    std::ptrdiff_t filesBeside() const {
        const fs::path directory = world_.userFile().parent_path();
        return fs::exists(directory)
                   ? std::distance(fs::directory_iterator(directory), {}) - (fs::exists(world_.userFile()) ? 1 : 0)
                   : 0;
    }

    static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

    /// Saves a value and a shortcut that no save before had, with the fault; returns whether it came to pass.
    bool saveWith(const Fault& fault) {
        const std::string number = std::to_string(++saves_);
        const std::string old = fileText();
        UCPActionManager::instance().updateShortcut(3, "Key" + number);
        const Listener listener;
        SaveResult result;
        bool happened = false;
        {
            const FaultInjection injection(fault);
            EXPECT_NO_THROW(result = host::save({{"part1::value0", number}}));
            happened = injection.happened();
        }
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("part1::value0"), number);
        EXPECT_EQ(result.changedSettings.size(), 1U);
        tell(fault, result, old, happened);
        return happened;
    }

    void tell(const Fault& fault, const SaveResult& result, const std::string& old, bool happened) {
        const std::string text = fileText();
        const std::string number = std::to_string(saves_);
        const bool isOld = text == old;
        const bool isNew = has(text, "value0\": \"" + number + "\"") && has(text, "\"Key" + number + "\"") &&
                           text.size() > 100 && text.back() == '}';
        tally_.broken += happened ? 1 : 0;
        tally_.old += happened && isOld ? 1 : 0;
        tally_.fresh += happened && isNew ? 1 : 0;
        tally_.damaged += isOld || isNew ? 0 : 1;
        EXPECT_TRUE(isOld || isNew) << text;
        const bool isTrue = result.ok() == isNew && result.status != Status::Torn && !result.text.empty();
        tally_.untrue += isTrue ? 0 : 1;
        EXPECT_TRUE(isTrue) << result.text << '\n' << text;
        // The next save removes what could not be removed.
        const bool leftover = filesBeside() != 0 && fault.call != "unlink";
        tally_.leftovers += leftover ? 1 : 0;
        EXPECT_FALSE(leftover);
    }

    /// A save without a fault, in which nothing is handed over: whatever a failed one left is written.
    void expectTheNextSaveWritesEverything() {
        const SaveResult result = host::save();
        const std::string number = std::to_string(saves_);
        const std::string text = fileText();
        const bool isThere = result.ok() && has(text, "value0\": \"" + number + "\"") &&
                             has(text, "\"Key" + number + "\"") && filesBeside() == 0;
        tally_.lost += isThere ? 0 : 1;
        EXPECT_TRUE(isThere) << result.text << '\n' << text;
    }

    PreferenceWorld world_;
    SaveFaultTally tally_;
    int saves_ = 0;
};

TEST_F(SaveFaultTable, AnyCallMayFailWhereThereIsAFile) {
    host::save({{"part0::value0", "first"}});
    forEachFault([&](const Fault& fault) {
        const bool happened = saveWith(fault);
        expectTheNextSaveWritesEverything();
        return happened;
    });
    tally_.expectBothFiles("over a file", 150);
    EXPECT_TRUE(has(fileText(), "\"first\""));
}

TEST_F(SaveFaultTable, AnyCallMayFailWhereThereIsNoDirectoryYet) {
    forEachFault([&](const Fault& fault) {
        fs::remove_all(world_.home() / "pcbenv");
        const bool happened = saveWith(fault);
        expectTheNextSaveWritesEverything();
        return happened;
    });
    tally_.expectBothFiles("without a directory", 150);
}

TEST_F(SaveFaultTable, WhatAnotherProcessSavedSurvivesEveryFault) {
    host::save({{"part0::value0", "first"}});
    int lost = 0;
    int theirs = 0;
    forEachFault([&](const Fault& fault) {
        const std::string value = "theirs " + std::to_string(++theirs);
        writeTextFile(world_.userFile(), withFirstValue(fileText(), value));
        const bool happened = saveWith(fault);
        const bool isThereAfterFault = has(fileText(), value);
        expectTheNextSaveWritesEverything();
        lost += isThereAfterFault && has(fileText(), value) ? 0 : 1;
        return happened;
    });
    tally_.print("over another process's values");
    std::printf("%d times another process's value was lost\n", lost);
    EXPECT_GT(tally_.broken, 150);
    EXPECT_EQ(lost, 0);
}

TEST_F(SaveFaultTable, ADiskThatFillsInTheMiddleOfAWriteLeavesTheOldFile) {
    host::save({{"part0::value0", "first"}});
    for (const int error : {ENOSPC, EDQUOT, EIO}) {
        EXPECT_TRUE(saveWith({"write", 1, error, true}));
        EXPECT_EQ(tally_.old, 1);
        tally_.old = 0;
    }
    expectTheNextSaveWritesEverything();
}

/// As an ordinary user, whom rights concern.
class SaveOfAnOrdinaryUser : public SaveFaultTable {
protected:
    SaveOfAnOrdinaryUser() {
        EXPECT_EQ(::chmod(world_.home().path().c_str(), 0777), 0);
        const OrdinaryUser user;
        EXPECT_TRUE(host::save({{"part0::value0", "first"}}).ok());
    }

    SaveResult saveMine() const {
        const OrdinaryUser user;
        return host::save({{"part1::value0", "mine"}});
    }

    void expectToldAndTriedAgain(const SaveResult& result, Status status) const {
        EXPECT_EQ(result.status, status) << result.text;
        EXPECT_TRUE(has(result.text, result.path)) << result.text;
        EXPECT_FALSE(has(fileText(), "\"mine\""));
    }
};

TEST_F(SaveOfAnOrdinaryUser, AReadOnlyFileStaysAndIsToldOf) {
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0444), 0);
    expectToldAndTriedAgain(saveMine(), Status::NotWritten);
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0644), 0);
    EXPECT_EQ(saveMine().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"mine\""));
}

/// A copy is kept of what a new file would lack.
TEST_F(SaveOfAnOrdinaryUser, AFileThatCannotBeOverwrittenIsKeptOnceHoweverOftenThatIsTried) {
    const std::string theirs = R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[]},"lost"]})";
    writeTextFile(world_.userFile(), theirs);
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0444), 0);
    for (int attempt = 0; attempt < 3; ++attempt) {
        const SaveResult result = saveMine();
        expectToldAndTriedAgain(result, Status::NotWritten);
        EXPECT_EQ(result.keptCopy, result.path + ".bad");
        EXPECT_EQ(filesBeside(), 1);
    }
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0644), 0);
    const SaveResult saved = saveMine();
    EXPECT_EQ(saved.status, Status::Saved);
    EXPECT_EQ(saved.keptCopy, saved.path + ".bad");
    EXPECT_EQ(filesBeside(), 1);
    EXPECT_EQ(readTextFile(fileOfText(saved.keptCopy)), theirs);
}

/// A file that is no JSON is kept, as one is that holds something which a new file would lack.
TEST_F(SaveOfAnOrdinaryUser, AFileThatIsNoJsonIsKeptOnceAndItsCopyIsNamedUntilItIsReplaced) {
    const std::string theirs = "{ half";
    writeTextFile(world_.userFile(), theirs);
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0444), 0);
    for (int attempt = 0; attempt < 2; ++attempt) {
        const SaveResult result = saveMine();
        EXPECT_EQ(result.status, Status::NotWritten);
        EXPECT_EQ(result.keptCopy, result.path + ".bad");
    }
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0644), 0);
    const SaveResult saved = saveMine();
    EXPECT_EQ(saved.status, Status::Saved);
    EXPECT_EQ(saved.keptCopy, saved.path + ".bad");
    EXPECT_EQ(readTextFile(fileOfText(saved.keptCopy)), theirs);
    EXPECT_EQ(filesBeside(), 1);
    EXPECT_EQ(host::save({{"part1::value0", "again"}}).keptCopy, "");
}

TEST_F(SaveOfAnOrdinaryUser, AFileThatHasChangedOrWhoseCopyIsGoneIsKeptAgain) {
    const std::string theirs = R"({"meta":["lost"]})";
    writeTextFile(world_.userFile(), theirs);
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0444), 0);
    const std::string copy = saveMine().keptCopy;
    fs::remove(fileOfText(copy));
    EXPECT_EQ(saveMine().keptCopy, copy);
    EXPECT_EQ(readTextFile(fileOfText(copy)), theirs);
    writeTextFile(world_.userFile(), R"({"meta":["more"]})");
    EXPECT_EQ(saveMine().keptCopy, copy + ".2");
    EXPECT_EQ(readTextFile(fileOfText(copy + ".2")), R"({"meta":["more"]})");
    EXPECT_EQ(filesBeside(), 2);
}

TEST_F(SaveOfAnOrdinaryUser, AFileThatMayNotBeReadStaysAndIsToldOf) {
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0200), 0);
    expectToldAndTriedAgain(saveMine(), Status::NotKept);
    ASSERT_EQ(::chmod(world_.userFile().c_str(), 0644), 0);
    EXPECT_EQ(saveMine().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"mine\""));
    EXPECT_TRUE(has(fileText(), "\"first\""));
}

TEST_F(SaveOfAnOrdinaryUser, ADirectoryThatMayNotBeEnteredIsToldOf) {
    ASSERT_EQ(::chmod(world_.userFile().parent_path().c_str(), 0), 0);
    expectToldAndTriedAgain(saveMine(), Status::NotKept);
    ASSERT_EQ(::chmod(world_.userFile().parent_path().c_str(), 0755), 0);
    EXPECT_EQ(saveMine().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"first\""));
}

/// Nothing can be made beside the file, so it is written into.
TEST_F(SaveOfAnOrdinaryUser, AReadOnlyDirectoryWithAFileThatMayBeWrittenIsEnough) {
    ASSERT_EQ(::chmod(world_.userFile().parent_path().c_str(), 0555), 0);
    EXPECT_EQ(saveMine().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"mine\""));
    ASSERT_EQ(::chmod(world_.userFile().parent_path().c_str(), 0755), 0);
}

}  // namespace
}  // namespace zelutil::test
