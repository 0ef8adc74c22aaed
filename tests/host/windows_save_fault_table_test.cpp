// Each system call of a save that merges fails in turn. Whatever fails: the user's file is the old or the new one,
// whole, nothing of ours is left beside it, the result says which of the two it is, the new values are in force, the
// observers are told, and the next save writes everything, what another process saved among it.
#include <gtest/gtest.h>
#include <windows.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>

#include <filesystem>
#include <string>

#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/held_file.h"
#include "support/save_fault_tally.h"
#include "support/windows_calls.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using Status = SaveResult::Status;

constexpr DWORD kErrors[] = {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_DISK_FULL,
                             ERROR_IO_DEVICE,     ERROR_NOT_SUPPORTED,     ERROR_WRITE_PROTECT};

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class WindowsSaveFaultTable : public testing::Test {
protected:
    WindowsSaveFaultTable() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
        EXPECT_TRUE(host::save({{"part0::value0", "first"}}).ok());
    }

    std::string fileText() const { return fs::exists(world_.userFile()) ? readTextFile(world_.userFile()) : "(none)"; }

    std::ptrdiff_t filesBeside() const {
        const fs::path directory = world_.userFile().parent_path();
        return std::distance(fs::directory_iterator(directory), {}) - (fs::exists(world_.userFile()) ? 1 : 0);
    }

    /// Has another process's save give the first setting this value.
    void writeTheirs(const std::string& value) const {
        writeTextFile(world_.userFile(), withFirstValue(fileText(), value));
    }

    bool isNew() const {
        const std::string number = std::to_string(saves_);
        const std::string text = fileText();
        return has(text, "value0\": \"" + number + "\"") && has(text, "\"Key" + number + "\"") && text.back() == '}';
    }

    /// Saves a value and a shortcut that no save before had while the call fails; returns whether that came to pass.
    bool saveWith(const std::string& call, std::size_t occurrence, DWORD error) {
        const std::string number = std::to_string(++saves_);
        writeTheirs("theirs " + number);
        const std::string old = fileText();
        UCPActionManager::instance().updateShortcut(3, "Key" + number);
        const Listener listener;
        SaveResult result;
        bool happened = false;
        {
            WindowsCalls calls;
            calls.decide = [&](const std::string& name, std::size_t count) -> DWORD {
                const bool isTheOne = name == call && count == occurrence;
                happened = happened || isTheOne;
                return isTheOne ? error : 0;
            };
            EXPECT_NO_THROW(result = host::save({{"part1::value0", number}}));
        }
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("part1::value0"), number);
        const bool isOld = fileText() == old;
        tally_.broken += happened ? 1 : 0;
        tally_.old += happened && isOld ? 1 : 0;
        tally_.fresh += happened && isNew() ? 1 : 0;
        tally_.damaged += isOld || isNew() ? 0 : 1;
        tally_.untrue += result.ok() == isNew() && result.status != Status::Torn && !result.text.empty() ? 0 : 1;
        // The next save removes what could not be removed.
        tally_.leftovers += filesBeside() != 0 && call != "DeleteFileW" ? 1 : 0;
        const bool isEverythingThere =
            host::save().ok() && isNew() && has(fileText(), "theirs " + number) && filesBeside() == 0;
        tally_.lost += isEverythingThere ? 0 : 1;
        EXPECT_TRUE(isEverythingThere) << fileText();
        return happened;
    }

    PreferenceWorld world_;
    SaveFaultTally tally_;
    int saves_ = 0;
};

TEST_F(WindowsSaveFaultTable, AnyCallMayFail) {
    for (const std::string& call : wrappedWindowsCalls()) {
        for (const DWORD error : kErrors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::to_string(error));
                ASSERT_LT(occurrence, 100U) << "called without end";
                if (!saveWith(call, occurrence, error)) {
                    break;
                }
            }
        }
    }
    tally_.expectBothFiles("over another process's values", 100);
    EXPECT_EQ(tally_.damaged, 0);
    EXPECT_EQ(tally_.leftovers, 0);
    EXPECT_EQ(tally_.untrue, 0);
    EXPECT_EQ(tally_.lost, 0);
}

TEST_F(WindowsSaveFaultTable, AReadOnlyFileStaysAndIsToldOf) {
    const std::string old = fileText();
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_READONLY));
    const SaveResult result = host::save({{"part1::value0", "mine"}});
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(result.status, Status::NotWritten);
    EXPECT_TRUE(has(result.text, result.path)) << result.text;
    EXPECT_EQ(fileText(), old);
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"mine\""));
}

/// A copy is kept of what a new file would lack.
TEST_F(WindowsSaveFaultTable, AFileThatCannotBeOverwrittenIsKeptOnceHoweverOftenThatIsTried) {
    const std::string theirs = R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[]},"lost"]})";
    writeTextFile(world_.userFile(), theirs);
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_READONLY));
    for (int attempt = 0; attempt < 3; ++attempt) {
        const SaveResult result = host::save({{"part1::value0", "mine"}});
        EXPECT_EQ(result.status, Status::NotWritten);
        EXPECT_EQ(result.keptCopy, result.path + ".bad");
        EXPECT_EQ(filesBeside(), 1);
    }
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_NORMAL));
    const SaveResult saved = host::save();
    EXPECT_EQ(saved.status, Status::Saved);
    EXPECT_EQ(saved.keptCopy, saved.path + ".bad");
    EXPECT_EQ(filesBeside(), 1);
    EXPECT_EQ(readTextFile(fileOfText(saved.keptCopy)), theirs);
}

/// A file that is no JSON is kept, as one is that holds something which a new file would lack.
TEST_F(WindowsSaveFaultTable, AFileThatIsNoJsonIsKeptOnceAndItsCopyIsNamedUntilItIsReplaced) {
    const std::string theirs = "{ half";
    writeTextFile(world_.userFile(), theirs);
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_READONLY));
    for (int attempt = 0; attempt < 2; ++attempt) {
        const SaveResult result = host::save({{"part1::value0", "mine"}});
        EXPECT_EQ(result.status, Status::NotWritten);
        EXPECT_EQ(result.keptCopy, result.path + ".bad");
    }
    ASSERT_TRUE(SetFileAttributesW(world_.userFile().c_str(), FILE_ATTRIBUTE_NORMAL));
    const SaveResult saved = host::save();
    EXPECT_EQ(saved.status, Status::Saved);
    EXPECT_EQ(saved.keptCopy, saved.path + ".bad");
    EXPECT_EQ(readTextFile(fileOfText(saved.keptCopy)), theirs);
    EXPECT_EQ(filesBeside(), 1);
    EXPECT_EQ(host::save({{"part1::value0", "again"}}).keptCopy, "");
}

/// Nobody can tell what another process saved there, and no copy can be kept.
TEST_F(WindowsSaveFaultTable, AFileThatSomebodyShutsOthersOutOfStaysAndIsToldOf) {
    const std::string old = fileText();
    SaveResult result;
    {
        const HeldFile held(world_.userFile(), 0);
        result = host::save({{"part1::value0", "mine"}});
    }
    EXPECT_EQ(result.status, Status::NotKept) << result.text;
    EXPECT_EQ(fileText(), old);
    EXPECT_EQ(filesBeside(), 0);
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_TRUE(has(fileText(), "\"mine\""));
}

}  // namespace
}  // namespace zelutil::test
