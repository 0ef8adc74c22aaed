// Each system call of the subcommand `set` fails in turn, and its process is killed at each of them: the user's file is
// the old one or has the value, whole, the exit code says which, and the same once more finishes the work. Once more
// after that writes nothing.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "command/command_line.h"
#include "prefs/preference_world.h"
#include "support/every_fault.h"
#include "support/killed_at.h"
#include "support/sanitized.h"
#include "support/save_fault_tally.h"
#include "support/twin_json.h"

namespace {

namespace fs = std::filesystem;
using zelutil::test::Fault;
using zelutil::test::readTextFile;

constexpr char kOld[] =
    R"({"mine":1.0,"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":"v"},{"other":"x"}]}]})";

/// Is added to an exit code where the fault came to pass.
constexpr int kHappened = 64;
constexpr int kDone = 0;
constexpr int kFindings = 1;
constexpr int kFailed = 3;

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Returns whether the text is whole, has the new value and keeps the rest.
bool isFresh(const std::string& text) {
    return zelutil::test::readTwinJson(text) && has(text, "\"new\"") && !has(text, "\"v\"") && has(text, "\"x\"") &&
           has(text, "\"mine\"");
}

/// It is opened before any call is made to fail.
const int kNowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);

/// Sets the value as the program does, and prints nothing.
int set() {
    ::dup2(kNowhere, STDOUT_FILENO);
    ::dup2(kNowhere, STDERR_FILENO);
    return static_cast<int>(zelutil::command::run({"set", "s::value=new"}));
}

class SetFaults : public testing::Test {
protected:
    SetFaults() {
        world_.writeDefaults(zelutil::test::defaultsWithValue("default"));
        begin();
    }

    /// Leaves the old file alone in its directory.
    void begin() const {
        fs::remove_all(directory());
        world_.writeUser(kOld);
    }

    fs::path directory() const { return world_.userFile().parent_path(); }
    fs::path keptCopy() const { return world_.userFile().string() + ".bad"; }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    std::ptrdiff_t filesBeside() const { return std::distance(fs::directory_iterator(directory()), {}) - 1; }

    /// Returns whether the file that was not read is there as a copy, and the new value in its place.
    bool isKept() const {
        return fs::exists(keptCopy()) && readTextFile(keptCopy()) == kOld && has(fileText(), "\"new\"") &&
               zelutil::test::readTwinJson(fileText());
    }

    void expectOldOrNew() {
        const std::string text = fileText();
        const bool isNew = isFresh(text) || isKept();
        tally_.old += text == kOld ? 1 : 0;
        tally_.fresh += isNew ? 1 : 0;
        tally_.damaged += text == kOld || isNew ? 0 : 1;
        EXPECT_TRUE(text == kOld || isNew) << text;
    }

    void expectTrue(int code) {
        const bool isTrue = fileText() == kOld ? code == kFailed : isKept() ? code == kFindings : code == kDone;
        tally_.untrue += isTrue ? 0 : 1;
        EXPECT_TRUE(isTrue) << code << '\n' << fileText();
    }

    /// Sets the value again, which finishes the work, and once more, which changes nothing.
    void expectFinished() {
        const bool wasKept = isKept();
        const bool isDone = zelutil::test::exitCodeOf(set) == kDone && (wasKept || isFresh(fileText())) &&
                            filesBeside() == (wasKept ? 1 : 0);
        tally_.lost += isDone ? 0 : 1;
        EXPECT_TRUE(isDone) << fileText();
        const std::string text = fileText();
        const auto time = fs::last_write_time(world_.userFile());
        EXPECT_EQ(zelutil::test::exitCodeOf(set), kDone);
        EXPECT_EQ(fileText(), text);
        EXPECT_EQ(fs::last_write_time(world_.userFile()), time);
    }

    zelutil::test::PreferenceWorld world_;
    zelutil::test::SaveFaultTally tally_;
};

TEST_F(SetFaults, AnyCallMayFail) {
    const std::vector<int> errors = zelutil::test::kIsSanitized ? std::vector{EIO} : std::vector{EACCES, ENOSPC, EINTR};
    zelutil::test::forEachFaultOf(errors, [&](const Fault& fault) {
        begin();
        const int code = zelutil::test::exitCodeOf([&] {
            const zelutil::test::FaultInjection injection(fault);
            const int own = set();
            return own + (injection.happened() ? kHappened : 0);
        });
        const bool happened = code >= kHappened;
        tally_.broken += happened ? 1 : 0;
        expectOldOrNew();
        expectTrue(happened ? code - kHappened : code);
        expectFinished();
        return happened;
    });
    tally_.expectBothFiles("sets", 40);
}

TEST_F(SetFaults, AProcessMayBeKilledAtAnyCall) {
    zelutil::test::forEachKill([&] { begin(); }, set,
                               [&](bool killed) {
                                   tally_.broken += killed ? 1 : 0;
                                   expectOldOrNew();
                                   expectFinished();
                               });
    tally_.expectBothFiles("sets, killed", 15);
}

/// A process in a mistyped home makes its directories: what is left of one that was killed there is no obstacle.
TEST_F(SetFaults, AProcessThatMakesTheDirectoryMayBeKilledAtAnyCall) {
    zelutil::test::forEachKill([&] { fs::remove_all(directory().parent_path()); }, set,
                               [&](bool killed) {
                                   tally_.broken += killed ? 1 : 0;
                                   EXPECT_EQ(zelutil::test::exitCodeOf(set), kDone);
                                   EXPECT_TRUE(has(fileText(), "\"new\"")) << fileText();
                               });
    tally_.print("sets into no directory, killed");
    EXPECT_GT(tally_.broken, 15);
}

}  // namespace
