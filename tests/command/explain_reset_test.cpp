// zelutil reset takes entries out of the user's file and leaves every other byte alone.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "command/command_world.h"
#include "command/explain/entry_cut.h"
#include "command/explain/setting_account.h"
#include "platform/file_turn.h"

namespace {

using zelutil::command::SettingAccounts;
using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::inJson;
using zelutil::test::kCommandDefaults;
using zelutil::test::readTextFile;

struct CutRow {
    const char* before;
    std::vector<const char*> names;
    const char* after;
};

/// Only the entries of the section "display" are shown.
const CutRow kCutRows[] = {
    {R"([{"units":"a","zoom":"b"}])", {"units"}, R"([{"zoom":"b"}])"},
    {R"([{"units":"a","zoom":"b"}])", {"zoom"}, R"([{"units":"a"}])"},
    {R"([{"units":"a","x":"y","zoom":"b"}])", {"units", "zoom"}, R"([{"x":"y"}])"},
    {R"([{"units":"a","zoom":"b","x":"y"}])", {"units", "zoom"}, R"([{"x":"y"}])"},
    {R"([{"x":"y","units":"a","zoom":"b"}])", {"units", "zoom"}, R"([{"x":"y"}])"},
    // An object of which nothing is left goes; one that was empty stays.
    {R"([ { "units" : "a" } ])", {"units"}, "[]"},
    {R"([{"units":"a"}, {"zoom":"b"}])", {"units"}, R"([{"zoom":"b"}])"},
    {R"([{"zoom":"b"}, {"units":"a"}])", {"units"}, R"([{"zoom":"b"}])"},
    {R"([{}, {"units":"a"}, 7])", {"units"}, "[{}, 7]"},
    // Lines go whole.
    {"[\n  {\"units\": \"a\"},\r\n\t{\"zoom\": \"b\"}\n]", {"units"}, "[\n  {\"zoom\": \"b\"}\n]"},
    {"[\n  {\"zoom\": \"b\"},\n  {\"units\": \"a\"}\n]", {"units"}, "[\n  {\"zoom\": \"b\"}\n]"},
    // Every entry that sets it goes, whatever name it has and whether a later one overrules it.
    {R"([{"units":"a","UNITS":"b"},{"display::units":"c","zoom":"d"},{"unit\u0073":"e"}])",
     {"units"},
     R"([{"zoom":"d"}])"},
    // An entry without effect stays, as does a text that looks like an entry.
    {R"([{"units":7},["units"],{"zoom":"\"units\":\"a\","}])",
     {"units"},
     R"([{"units":7},["units"],{"zoom":"\"units\":\"a\","}])"},
    {R"([{"zoom":"b"}])", {"units"}, R"([{"zoom":"b"}])"},
};

std::string userWith(const std::string& entries) {
    return "\xEF\xBB\xBF{\"more\": 1.50, "
           "\"meta\":[{\"header\":\"D\",\"attribute\":\"display\",\"overriddensettings\":" +
           entries + "}] }\n";
}

TEST(ExplainCut, TakesEntriesWithTheirCommasAndLines) {
    for (const CutRow& row : kCutRows) {
        SCOPED_TRACE(row.before);
        const SettingAccounts accounts(kCommandDefaults, userWith(row.before));
        std::vector<std::uint32_t> numbers;
        for (const char* const name : row.names) {
            numbers.push_back(accounts.find(name).value());
        }
        EXPECT_EQ(zelutil::command::withoutEntries(accounts.userDocument(), accounts.entriesThatSet(numbers)),
                  userWith(row.after));
    }
}

/// Leaves out "grid" and "zoom", each in its section.
constexpr char kOddFile[] =
    "{ \"mine\": [1.0, 2],\n  \"meta\": [ {\"attribute\": \"display\", \"header\": \"My display\",\n"
    "    \"overriddensettings\": [ {\"zoom\": \"3\"}, {\"units\": \"mil\"} ],\n"
    "    \"children\": [ {\"header\":\"G\",\"attribute\":\"grids\",\"overriddensettings\":[{\"grid\":\"1\",\n"
    "      \"visible\":\"false\" }]} ] } ]\t}";
constexpr char kOddFileWithoutGrid[] =
    "{ \"mine\": [1.0, 2],\n  \"meta\": [ {\"attribute\": \"display\", \"header\": \"My display\",\n"
    "    \"overriddensettings\": [ {\"zoom\": \"3\"}, {\"units\": \"mil\"} ],\n"
    "    \"children\": [ {\"header\":\"G\",\"attribute\":\"grids\",\"overriddensettings\":[{"
    "\"visible\":\"false\" }]} ] } ]\t}";
constexpr char kOddFileWithoutAny[] =
    "{ \"mine\": [1.0, 2],\n  \"meta\": [ {\"attribute\": \"display\", \"header\": \"My display\",\n"
    "    \"overriddensettings\": [],\n"
    "    \"children\": [ {\"header\":\"G\",\"attribute\":\"grids\",\"overriddensettings\":[]} ] } ]\t}";

TEST(ExplainReset, LeavesEveryOtherByteAloneAndASecondRunAllOfThem) {
    const CommandWorld world;
    world.writeUser(kOddFile);
    const std::string file = world.userFile().u8string();
    EXPECT_EQ(world.run({"reset", "Grid", "display::grids::grid"}).out,
              "display::grids::grid: 1 -> 0.5\nSaved in " + file + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), kOddFileWithoutGrid);
    const auto written = std::filesystem::last_write_time(world.userFile());
    const ChildResult again = world.run({"reset", "grid"});
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_EQ(again.out, "display::grids::grid: 0.5, as before\nNothing changed in " + file + "\n");
    EXPECT_EQ(readTextFile(world.userFile()), kOddFileWithoutGrid);
    EXPECT_EQ(std::filesystem::last_write_time(world.userFile()), written);

    EXPECT_EQ(world.run({"reset", "--all"}).exitCode, 0);
    EXPECT_EQ(readTextFile(world.userFile()), kOddFileWithoutAny);
    const ChildResult none = world.run({"reset", "--all"});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(none.out, "Nothing changed in " + file + "\n");
    EXPECT_EQ(world.run({"diff"}).out, "");
}

TEST(ExplainReset, MakesNoFileWhereThereIsNone) {
    const CommandWorld world;
    const ChildResult result = world.run({"reset", "grid"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "display::grids::grid: 0.5, as before\nNothing changed in " + world.userFile().u8string() + "\n");
    EXPECT_FALSE(std::filesystem::exists(world.home() / "pcbenv"));
}

TEST(ExplainReset, LeavesAFileThatIsNoJson) {
    const CommandWorld world;
    const std::string text = R"({"meta":[{"header":"D","attribute":"display","overriddensettings":[{"zoom":"3"},]}]})";
    world.writeUser(text);
    const ChildResult result = world.run({"reset", "zoom"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(":1:81: warning: Nothing of the user's file is in force."), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("Nothing can be taken out of the user's file"), std::string::npos) << result.err;
    EXPECT_EQ(readTextFile(world.userFile()), text);
    EXPECT_FALSE(std::filesystem::exists(world.userFile().u8string() + ".bad"));
}

TEST(ExplainReset, LeavesAFileInWhichNothingCounts) {
    const CommandWorld world;
    for (const char* const text : {"", "[]", R"({"meta":{}})"}) {
        world.writeUser(text);
        const ChildResult result = world.run({"reset", "--all"});
        EXPECT_EQ(result.exitCode, 3) << text;
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("warning: Nothing of the user's file is in force. "), std::string::npos)
            << result.err;
        EXPECT_EQ(readTextFile(world.userFile()), text);
    }
}

TEST(ExplainReset, TellsProgramsToo) {
    const CommandWorld world;
    world.writeUser("no JSON");
    const std::string json = world.json({"reset", "zoom"});
    EXPECT_NE(json.find(R"("settings":[],"save":{"status":"notWritten","file":")" + inJson(world.userFile()) + R"("})"),
              std::string::npos)
        << json;
}

/// Returns how many seconds it takes to take the entries of the first settings out of a text with so many.
double secondsOfCut(std::size_t chosen) {
    constexpr std::size_t kCount = 6000;
    std::string settings;
    std::string entries;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::string name = (i == 0 ? "" : ",") + (R"({"name":"n)" + std::to_string(i));
        settings += name + R"(","value":""})";
        entries += (i == 0 ? R"({"n)" : R"(,{"n)") + std::to_string(i) + R"(":"v"})";
    }
    const SettingAccounts accounts(
        R"({"meta":[{"header":"","attribute":"display","tclCommand":"t","defaultsettings":[)" + settings + "]}]}",
        userWith('[' + entries + ']'));
    const std::vector<std::uint32_t> numbers(accounts.numbers().begin(), accounts.numbers().begin() + chosen);
    const auto begin = std::chrono::steady_clock::now();
    const auto values = accounts.entriesThatSet(numbers);
    EXPECT_EQ(values.size(), chosen);
    EXPECT_FALSE(zelutil::command::withoutEntries(accounts.userDocument(), values).empty());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST(ExplainCut, OfAllEntriesTakesLittleMoreTimeThanOfOne) { EXPECT_LT(secondsOfCut(6000), 6 * secondsOfCut(1)); }

/// The test has the turn, as another program that saves; the reset waits.
TEST(ExplainReset, WaitsUntilAnotherSaveIsDone) {
    const CommandWorld world;
    world.writeUser(kOddFile);
    ChildResult result;
    std::thread reset;
    {
        const zelutil::platform::FileTurn turn(zelutil::test::windowsText(world.userFile()).c_str());
        ASSERT_TRUE(turn.isTaken());
        reset = std::thread([&] { result = world.run({"reset", "units"}); });
        // The reset is waiting by now, or comes later still.
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        EXPECT_EQ(readTextFile(world.userFile()), kOddFile);
        world.writeUser(userWith(R"([{"units":"inch"},{"zoom":"7"}])"));
    }
    reset.join();
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(readTextFile(world.userFile()), userWith(R"([{"zoom":"7"}])"));
}

/// Takes the values out of a file that is not read: that cannot be done, and where there is none, nothing is to be
/// done.
TEST(ExplainReset, SaysThatAFileIsNotReadForABlankOrItsPath) {
    const CommandWorld world;
    const std::string home = zelutil::test::windowsText(world.home() / "my home");
    const zelutil::test::EnvironmentChanges blank{{"HOMEPATH", home.substr(2)}};
    const ChildResult nothing = world.run({"reset", "--all"}, blank);
    EXPECT_EQ(nothing.exitCode, 0);
    EXPECT_EQ(nothing.out.find("Nothing changed in "), 0U) << nothing.out;
    EXPECT_EQ(nothing.err, "");
    ASSERT_EQ(world.run({"set", "grid=1", "--paths-with-blanks"}, blank).exitCode, 0);
    const zelutil::test::EnvironmentChanges nowhere{{"HOMEPATH", "\\a?b"}};
    for (const auto& changes : {blank, nowhere}) {
        const ChildResult result = world.run({"reset", "--all"}, changes);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("Nothing can be taken out of the user's file, because it is not read."),
                  std::string::npos)
            << result.err;
    }
    EXPECT_EQ(world.run({"get", "grid", "--value", "--paths-with-blanks"}, blank).out, "1\n");
}

/// Saves go into the current directory then, and the file that is read stays.
TEST(ExplainReset, LeavesTheFileOfWhomARegressionTestReads) {
    const CommandWorld world;
    world.writeUser(kOddFile);
    const ChildResult result = world.run({"reset", "zoom"}, {{"regression_testing", "1"}});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.err.find("regression_testing"), std::string::npos) << result.err;
    EXPECT_EQ(readTextFile(world.userFile()), kOddFile);
    EXPECT_FALSE(std::filesystem::exists(world.home() / "tessel_settings.cfg"));
}

}  // namespace
