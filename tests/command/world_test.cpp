// A bundle says what the machine says that it was made on, with that machine's files away. Each run is a process of its
// own.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "command/command_line_text.h"
#include "command/command_world.h"
#include "command/doctor_world.h"
#include "command/subcommands/table.h"
#include "command/world/manifest.h"
#include "command/world/mirror.h"
#include "command/world/redaction.h"
#include "support/common_library_stand_in.h"
#include "support/sanitized.h"
#include "support/symbolic_link.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using command::world::Links;
using command::world::Mirror;
using command::world::Redaction;

// --- Machines -------------------------------------------------------------------------------------------------------

constexpr char kSettings[] =
    R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":"1"},)"
    R"({"name":"library","value":"/opt/parts"}],"children":[{"header":"I","attribute":"i","tclCommand":"t",)"
    R"("defaultsettings":[{"name":"units","value":"mm"}]}]},{"header":"A","attribute":"a","tclCommand":"t",)"
    R"("submanagerId":100,"defaultsettings":{"actions":[{"id":1,"parent_id":0,"name":"Move","icon":"","context":"b",)"
    R"("command":"m","shortcut":"M","rmb":true},{"id":2,"parent_id":0,"name":"Copy","icon":"","context":"b",)"
    R"("command":"c","shortcut":"C","rmb":false}]}}]})";
constexpr char kUser[] =
    R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":"2","gone":"secret"}],"children":[)"
    R"({"header":"I","attribute":"i","overriddensettings":[{"units":"mil"}]}]},{"header":"A","attribute":"a",)"
    R"("overriddensettings":[{"actions":[{"id":2,"shortcut":"M"},{"id":1,"shortcut":"F1"}]}]}]})";

constexpr char kNoPath[] = "\\a?b";

/// A world in which more is set and written than in a healthy one.
struct Machine : DoctorWorld {
    Machine() {
        writeTextFile(defaults(), kSettings);
        writeTextFile(userFile(), kUser);
    }

    ChildResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), options.begin(), options.end());
        return test::run({ZELUTIL_TEST_COMMAND, arguments, environment, here});
    }

    /// Runs the command in another place, with no variable of this machine.
    ChildResult runFromBundle(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {"--world", bundle.u8string()});
        EnvironmentChanges strange = withoutProductVariables();
        strange["HOMEDRIVE"] = "Y:";
        strange["PATH"] = "";
        return test::run({ZELUTIL_TEST_COMMAND, arguments, strange, elsewhere.path()});
    }

    void moveAway() { fs::rename(work.path(), away.path() / "gone"); }
    void moveBack() { fs::rename(away.path() / "gone", work.path()); }

    TempDirectory elsewhere;
    TempDirectory away;
    fs::path bundle = elsewhere / "bundle";
    std::vector<std::string> options;
};

struct Change {
    const char* name;
    std::function<void(Machine&)> make;
};

/// Removes the environment directory. Windows removes no file that may not be written.
void removeEnvironment(Machine& machine) {
    std::error_code ignored;
    fs::permissions(machine.userFile(), fs::perms::owner_all, ignored);
    fs::remove_all(machine.home / "pcbenv");
}

/// Writes the user's file, whatever an earlier change has put there.
void rewriteUserFile(Machine& machine, const std::string& text) {
    removeEnvironment(machine);
    writeTextFile(machine.userFile(), text);
}

void beside(Machine& machine, const char* ending) { writeTextFile(machine.userFile().u8string() + ending, "{"); }

const std::vector<Change> kChanges = {
    {"QTXROOT", [](auto& m) { m.name("QTXROOT", m.product); }},
    {"QTX_ROOT of nothing", [](auto& m) { m.name("QTX_ROOT", m.work / "nothing"); }},
    {"other product",
     [](auto& m) {
         makeInstallation(m.other);
         m.name("QTXINSTDIR", m.other);
     }},
    {"no installation", [](auto& m) { fs::remove_all(m.product / "share/pcb"); }},
    {"user's file of which a save leaves something out",
     [](auto& m) {
         rewriteUserFile(m, R"({"meta":[5,{"header":"A","attribute":"a","overriddensettings":)"
                            R"([{"actions":[{"id":1,"shortcut":"F1","note":"mine"}]}]}]})");
     }},
    {"site",
     [](auto& m) {
         fs::create_directories(m.work / "site");
         m.name("QTX_SITE", m.work / "site");
     }},
    {"site that is a file",
     [](auto& m) {
         writeTextFile(m.work / "site_file", "");
         m.name("QTX_SITE", m.work / "site_file");
     }},
    {"named defaults",
     [](auto& m) {
         writeTextFile(m.work / "settings/named.cfg", kHealthyDefaults);
         m.name("tessel_settings", m.work / "settings/named.cfg");
     }},
    {"named defaults by a relative path",
     [](auto& m) {
         writeTextFile(m.here / "own/named.cfg", kSettings);
         m.environment["tessel_settings"] = "own/../own/named.cfg";
     }},
    {"named defaults missing", [](auto& m) { m.name("tessel_settings", m.work / "none.cfg"); }},
    {"regression test", [](auto& m) { m.environment["regression_testing"] = ""; }},
    {"trace", [](auto& m) { m.environment["QTX_ZELUTIL_DEBUG"] = "1"; }},
    {"no user's file", [](auto& m) { removeEnvironment(m); }},
    {"user's file no JSON", [](auto& m) { rewriteUserFile(m, "{\"meta\":[]\n\"a\":1}"); }},
    {"user's file a directory",
     [](auto& m) {
         rewriteUserFile(m, "");
         fs::remove(m.userFile());
         fs::create_directories(m.userFile());
     }},
    {"user's file too large",
     [](auto& m) {
         rewriteUserFile(m, "{}");
         fs::resize_file(m.userFile(), (std::uint64_t{64} << 20) + 1);
     }},
    {"user's file read-only",
     [](auto& m) {
         rewriteUserFile(m, kUser);
         fs::permissions(m.userFile(), fs::perms::owner_read);
     }},
    {"environment a file",
     [](auto& m) {
         removeEnvironment(m);
         writeTextFile(m.home / "pcbenv", "");
     }},
    {"kept copies and a leftover",
     [](auto& m) {
         rewriteUserFile(m, kUser);
         beside(m, ".bad");
         beside(m, ".bad.2");
         beside(m, ".zelutil-00001a2b-00000007.tmp");
     }},
    {"facets missing", [](auto& m) { fs::remove(m.facets()); }},
    {"blank in the home",
     [](auto& m) {
         fs::rename(m.home, m.work / "two words");
         m.home = m.work / "two words";
         m.setHome(m.home);
     }},
    {"blanks are allowed", [](auto& m) { m.options = {"--paths-with-blanks"}; }},
    {"home that is no path", [](auto& m) { m.environment["HOMEPATH"] = kNoPath; }},
    {"home by a link",
     [](auto& m) {
         if (makeFileLink(m.home, m.work / "linked")) {
             m.setHome(m.work / "linked");
         }
     }},
    {"product by a link",
     [](auto& m) {
         if (makeFileLink(m.product, m.work / "current")) {
             m.name("QTXROOT", m.product);
             m.name("QTX_ROOT", m.work / "current");
         }
     }},
    {"user's file by a link",
     [](auto& m) {
         writeTextFile(m.work / "kept/mine.cfg", kUser);
         rewriteUserFile(m, "");
         fs::remove(m.userFile());
         makeFileLink(m.work / "kept/mine.cfg", m.userFile());
     }},
    {"common library",
     [](auto& m) {
         m.environment[loaderPathVariable()] = systemText(commonLibraryDirectory());
         writeTextFile(m.work / "setup/mine.cfg", kUser);
         m.name("QTXCOMMON_STAND_IN_TOOLS", m.product / "tools");
         m.name("QTXCOMMON_STAND_IN_FOUND", m.work / "setup/mine.cfg");
     }},
    {"common library that lacks its search",
     [](auto& m) {
         m.environment[loaderPathVariable()] = systemText(commonLibraryDirectory("without_search"));
         m.environment["QTXCOMMON_STAND_IN_INIT_DONE"] = "0";
     }},
};

// --- Outputs --------------------------------------------------------------------------------------------------------

/// Calls of every subcommand that only reads, and at last of those that write, which change the bundle as they change
/// the machine. One that a row says nothing of is called without arguments.
std::vector<std::vector<std::string>> callsIn(const Machine& machine) {
    const std::string file = machine.userFile().u8string();
    std::vector<std::vector<std::string>> calls{
        {"get", "value", "no_such"}, {"list", "--changed"}, {"list", "--section", "s"}};
    // A file that the library does not come to is not in the bundle.
    if (machine.environment.at("HOMEPATH") != kNoPath) {
        calls.push_back({"lint", file});
    }
    for (const command::Subcommand* const one : command::subcommands()) {
        const std::string name = one->name;
        if (!one->hidden && name != "bundle" && name != "get" && name != "lint") {
            calls.push_back({name});
        }
    }
    calls.push_back({"set", "value=7", "units=inch"});
    calls.push_back({"get", "value", "units"});
    calls.push_back({"reset", "value"});
    calls.push_back({"list"});
    for (std::vector<std::string>& call : calls) {
        call.emplace_back("--json");
    }
    return calls;
}

std::string shown(const ChildResult& result) {
    return "exit code " + std::to_string(result.exitCode) + '\n' + result.out + result.err;
}

/// Starting programs takes time, with sanitizers most of all: of so many calls one is made on each machine, and so many
/// neighbours have them all.
constexpr std::size_t kShareOfCalls = casesInTime(3, 9);

/// Expects that calls print from the bundle what they print on the machine.
void expectSameOutputs(Machine& machine, unsigned number) {
    std::vector<std::vector<std::string>> calls;
    std::vector<std::string> expected;
    const auto all = callsIn(machine);
    for (std::size_t place = number % kShareOfCalls; place < all.size(); place += kShareOfCalls) {
        calls.push_back(all[place]);
        expected.push_back(shown(machine.run(calls.back())));
    }
    machine.moveAway();
    for (std::size_t place = 0; place < calls.size(); ++place) {
        EXPECT_EQ(shown(machine.runFromBundle(calls[place])), expected[place]) << testing::PrintToString(calls[place]);
    }
    machine.moveBack();
}

void makeBundle(const Machine& machine, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"bundle", machine.bundle.u8string()});
    const ChildResult made = machine.run(options);
    EXPECT_EQ(made.exitCode, 0) << shown(made);
}

/// Returns all that lies in the bundle: the names of the files, and their bytes.
std::string everythingIn(const fs::path& bundle) {
    std::string all;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(bundle)) {
        all += entry.path().lexically_relative(bundle).generic_u8string() + '\n';
        all += entry.is_regular_file() ? readTextFile(entry.path()) : "";
    }
    return all;
}

class WorldOfRandomMachine : public testing::TestWithParam<unsigned> {};

TEST_P(WorldOfRandomMachine, SaysWhatTheMachineSays) {
    std::mt19937 random(GetParam());
    Machine machine;
    std::string changes;
    for (const Change& change : kChanges) {
        // Each is in one machine in six, and the one of the machine's number is.
        if (random() % 6 == 0 || &change == &kChanges[GetParam() % kChanges.size()]) {
            change.make(machine);
            changes += std::string(change.name) + "; ";
        }
    }
    SCOPED_TRACE(changes);
    makeBundle(machine);
    expectSameOutputs(machine, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Seeds, WorldOfRandomMachine, testing::Range(0U, static_cast<unsigned>(kChanges.size())));

/// Copies the program, and on Windows what it needs of the compiler's libraries.
void copyProgram(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from.parent_path())) {
        if (entry.path().extension() == ".dll" && entry.path().stem() != "zelutil") {
            fs::copy_file(entry.path(), to.parent_path() / entry.path().filename());
        }
    }
}

TEST(World, ProgramInTheProductFindsItByItsOwnFile) {
    Machine machine;
    machine.environment["PATH"] = "";
    const fs::path program = machine.product / "tools/bin" / fs::path(ZELUTIL_TEST_COMMAND).filename();
    copyProgram(ZELUTIL_TEST_COMMAND, program);
    const ChildResult made = run({program, {"bundle", machine.bundle.u8string()}, machine.environment, machine.here});
    EXPECT_EQ(made.exitCode, 0) << shown(made);
    const std::string expected = shown(run({program, {"doctor", "--json"}, machine.environment, machine.here}));
    EXPECT_NE(expected.find("\"own-file\""), std::string::npos);
    machine.moveAway();
    EXPECT_EQ(shown(machine.runFromBundle({"doctor", "--json"})), expected);
    machine.moveBack();
}

TEST(World, HoldsWhatTheDoctorSays) {
    Machine machine;
    makeBundle(machine);
    EXPECT_EQ(readTextFile(machine.bundle / "doctor.json"), machine.run({"doctor", "--json"}).out);
    EXPECT_EQ(readTextFile(machine.bundle / "doctor.txt"), machine.run({"doctor"}).out);
}

TEST(World, MovesWithItsDirectory) {
    Machine machine;
    makeBundle(machine);
    const std::string expected = shown(machine.run({"doctor", "--json"}));
    fs::rename(machine.bundle, machine.elsewhere / "another place");
    machine.bundle = machine.elsewhere / "another place";
    machine.moveAway();
    EXPECT_EQ(shown(machine.runFromBundle({"doctor", "--json"})), expected);
    machine.moveBack();
}

/// A save changes the bundle and nothing else; what it wrote is in force afterwards.
TEST(World, SaveWritesIntoTheBundleOnly) {
    Machine machine;
    makeBundle(machine);
    const std::string before = everythingIn(machine.work.path());
    const ChildResult saved = machine.runFromBundle({"set", "units=inch"});
    // The user's file gives action 2 a shortcut that was refused and that is free by now, so a copy of it is kept.
    EXPECT_EQ(saved.exitCode, 1) << saved.err;
    EXPECT_NE(saved.err.find(machine.userFile().make_preferred().u8string() + ".bad"), std::string::npos) << saved.err;
    EXPECT_NE(saved.out.find("Saved in " + machine.userFile().make_preferred().u8string()), std::string::npos)
        << saved.out;
    EXPECT_EQ(machine.runFromBundle({"get", "units", "--value"}).out, "inch\n");
    EXPECT_EQ(machine.run({"get", "units", "--value"}).out, "mil\n");
    EXPECT_EQ(everythingIn(machine.work.path()), before);
}

TEST(World, IsMadeInAnEmptyDirectoryOnly) {
    Machine machine;
    fs::create_directories(machine.bundle);
    makeBundle(machine);
    const std::string before = everythingIn(machine.bundle);
    const ChildResult again = machine.run({"bundle", machine.bundle.u8string()});
    EXPECT_EQ(again.exitCode, 3);
    EXPECT_NE(again.err.find("is not an empty directory"), std::string::npos) << again.err;
    EXPECT_EQ(everythingIn(machine.bundle), before);
    const ChildResult onFile = machine.run({"bundle", machine.userFile().u8string()});
    EXPECT_EQ(onFile.exitCode, 3);
    EXPECT_EQ(readTextFile(machine.userFile()), kUser);
}

TEST(World, NothingElseIsTakenForABundle) {
    const Machine machine;
    for (const char* const text : {"", "{}", "{\"zelutilWorld\":2}", "{\"zelutilWorld\":1,\"system\":\"abacus\"}"}) {
        SCOPED_TRACE(text);
        writeTextFile(machine.bundle / "world.json", text);
        const ChildResult result = machine.runFromBundle({"doctor"});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
    fs::remove_all(machine.bundle);
    const ChildResult none = machine.runFromBundle({"doctor", "--json"});
    EXPECT_EQ(none.exitCode, 3);
    const json::Document told(none.out);
    EXPECT_NE(told.root().member("error").member("text").text().value_or("").find("There is no bundle in "),
              std::string_view::npos)
        << none.out;
}

TEST(World, BundleOfAStrangerLeadsNowhereElse) {
    Machine machine;
    makeBundle(machine);
    const std::string manifest = readTextFile(machine.bundle / "world.json");
    const fs::path outside = machine.elsewhere / "outside.cfg";
    writeTextFile(outside, kUser);
    const auto expectRefused = [&] {
        const ChildResult result = machine.runFromBundle({"set", "units=inch"});
        EXPECT_EQ(result.exitCode, 3) << shown(result);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(readTextFile(outside), kUser);
    };
    const std::string root = fs::path("/").is_absolute() ? "" : "Z:";
    for (const std::string& to : {root + "/../outside.cfg", root + "/here/../../outside.cfg",
                                  std::string("outside.cfg"), std::string("../outside.cfg"), std::string()}) {
        SCOPED_TRACE(to);
        std::string hostile = manifest;
        const std::size_t links = hostile.find("\"links\"");
        ASSERT_NE(links, std::string::npos);
        hostile.insert(
            links, R"("links":[{"from":")" + machine.userFile().generic_u8string() + R"(","to":")" + to + R"("}],)");
        writeTextFile(machine.bundle / "world.json", hostile);
        expectRefused();
    }
}

TEST(World, BundleWithALinkIsRefused) {
    Machine machine;
    makeBundle(machine);
    const fs::path outside = machine.elsewhere / "outside.cfg";
    writeTextFile(outside, kUser);
    std::error_code error;
    fs::create_symlink(outside, machine.bundle / "files/outside.cfg", error);
    if (error) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    const ChildResult result = machine.runFromBundle({"set", "units=inch"});
    EXPECT_EQ(result.exitCode, 3) << shown(result);
    EXPECT_NE(result.err.find("outside.cfg"), std::string::npos) << result.err;
    EXPECT_EQ(readTextFile(outside), kUser);
}

/// Puts a member before the others of the manifest, which then counts.
void putIntoManifest(const Machine& machine, const std::string& member) {
    std::string manifest = readTextFile(machine.bundle / "world.json");
    manifest.insert(manifest.find('{') + 1, member + ',');
    writeTextFile(machine.bundle / "world.json", manifest);
}

TEST(World, BundleOfAnotherSystemIsNamedAsThat) {
    Machine machine;
    makeBundle(machine);
    const bool isPosix = command::world::nameOfThisSystem() == std::string("posix");
    const std::string other = isPosix ? "windows" : "posix";
    putIntoManifest(machine, R"("system":")" + other + R"(","directory":")" + (isPosix ? "C:/work" : "/work") +
                                 R"(","links":[{"from":"/a","to":"no path here"}])");
    const ChildResult result = machine.runFromBundle({"doctor"});
    EXPECT_EQ(result.exitCode, 3) << shown(result);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("The bundle was made on another system (" + other + ")"), std::string::npos)
        << result.err;
}

TEST(World, WithoutItsDirectoryOfFilesIsNotWhole) {
    Machine machine;
    makeBundle(machine);
    fs::remove_all(machine.bundle / "files");
    const ChildResult result = machine.runFromBundle({"doctor"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("is not whole: it lacks its directory \"files\"."), std::string::npos) << result.err;
}

TEST(World, BundleOfABundleSaysTheSame) {
    Machine machine;
    if (!makeFileLink(machine.home, machine.work / "linked")) {
        GTEST_SKIP() << "This system makes no links for this user.";
    }
    machine.setHome(machine.work / "linked");
    // By both names it is the same product.
    ASSERT_TRUE(makeFileLink(machine.product, machine.work / "current"));
    machine.name("QTXROOT", machine.product);
    machine.name("QTX_ROOT", machine.work / "current");
    makeBundle(machine);
    const std::string doctor = shown(machine.run({"doctor", "--json"}));
    const std::string list = shown(machine.run({"list", "--changed"}));
    EXPECT_NE(list.find("s::i::units=mil"), std::string::npos) << list;
    machine.moveAway();
    const fs::path second = machine.elsewhere / "second";
    EXPECT_EQ(machine.runFromBundle({"bundle", second.u8string()}).exitCode, 0);
    fs::remove_all(machine.bundle);
    machine.bundle = second;
    EXPECT_EQ(shown(machine.runFromBundle({"doctor", "--json"})), doctor);
    EXPECT_EQ(shown(machine.runFromBundle({"list", "--changed"})), list);
    machine.moveBack();
}

TEST(World, UnreadableFileIsSoForEverybody) {
    Machine machine;
    makeBundle(machine);
    putIntoManifest(machine, "\"unreadable\":[\"" + inJson(machine.userFile()) + "\"]");
    const ChildResult doctor = machine.runFromBundle({"doctor"});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_NE(doctor.out.find("cannot be read"), std::string::npos) << doctor.out;
    EXPECT_EQ(machine.runFromBundle({"get", "units", "--value"}).out, "mm\n");
}

TEST(World, FileThatMayNotBeWrittenStaysSo) {
    Machine machine;
    makeBundle(machine);
    EXPECT_EQ(machine.runFromBundle({"doctor"}).out.find("is read-only"), std::string::npos);
    putIntoManifest(machine, "\"writeable\":{\"" + inJson(machine.userFile()) + "\":false}");
    const ChildResult doctor = machine.runFromBundle({"doctor"});
    EXPECT_NE(doctor.out.find("is read-only"), std::string::npos) << doctor.out;
}

TEST(World, LintSaysWhereItChecksAFileOfThisMachine) {
    Machine machine;
    makeBundle(machine);
    const fs::path mine = machine.elsewhere / "mine.cfg";
    writeTextFile(mine, kUser);
    const ChildResult plan = machine.runFromBundle({"plan", mine.u8string()});
    EXPECT_NE(plan.err.find("The bundle has no such file, so that this machine's was read."), std::string::npos);
    const std::string note = "The bundle has no such file, so that this machine's was checked.";
    EXPECT_NE(machine.runFromBundle({"lint", mine.u8string()}).out.find(note), std::string::npos);
    EXPECT_EQ(machine.runFromBundle({"lint", machine.userFile().u8string()}).out.find(note), std::string::npos);
}

TEST(World, PrintsACommandThatAShellTakes) {
    Machine machine;
    machine.bundle = machine.elsewhere / "two words";
    const ChildResult made = machine.run({"bundle", machine.bundle.u8string()});
    const std::string quoted = zelutil::command::quotedForShell(machine.bundle.u8string());
    EXPECT_NE(made.out.find("--world " + quoted + "\n"), std::string::npos) << made.out;
    const ChildResult explained = machine.runFromBundle({"explain", "gone"});
    EXPECT_NE(explained.err.find("zelutil lint --world " + quoted + " --defaults "), std::string::npos)
        << explained.err;
}

TEST(World, WithoutANameIsWrongUsage) {
    const Machine machine;
    const ChildResult result = machine.run({"set", "units=inch", "--world", ""});
    EXPECT_EQ(result.exitCode, 2) << shown(result);
    EXPECT_EQ(readTextFile(machine.userFile()), kUser);
}

// --- Redacted -------------------------------------------------------------------------------------------------------

/// A machine of ann whose file says where her projects are.
struct MachineOfAnn : Machine {
    MachineOfAnn() {
        fs::rename(home, work / "ann_secret");
        home = work / "ann_secret";
        setHome(home);
        environment["USER"] = "ann_secret";
        environment["COMPUTERNAME"] = "host_secret";
        name("QTX_SITE", work / "host_secret/site");
        writeTextFile(userFile(),
                      R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":"2","library":)"
                      R"("C:\\ann_secret\\parts 7","gone":"topsecret","name":"topsecret","shortcut":"topsecret"}],)"
                      R"("note":"topsecret","children":[{"header":"I","attribute":"i","overriddensettings":)"
                      R"([{"units":"mm"}]}]},{"header":"A","attribute":"a","overriddensettings":)"
                      R"([{"actions":[{"id":1,"shortcut":"F1"}]}]}]})");
        beside(*this, ".bad");
        writeTextFile(userFile().u8string() + ".bad", "topsecret");
    }
};

TEST(WorldRedacted, HoldsNoNameAndNoValueOfTheUser) {
    MachineOfAnn machine;
    makeBundle(machine, {"--redact"});
    const std::string all = everythingIn(machine.bundle);
    EXPECT_EQ(all.find("secret"), std::string::npos) << all.substr(all.find("secret"), 100);
    EXPECT_EQ(all.find("parts 7"), std::string::npos);
    EXPECT_NE(all.find(R"({"value":"2","library":"x:xxxxx_xxxxxxxxxxxxx 0","gone":"xxxxxxxxx")"), std::string::npos);
    EXPECT_NE(all.find(R"("overriddensettings":[{"units":"mm"}])"), std::string::npos);
    EXPECT_NE(all.find(R"({"id":1,"shortcut":"F1"})"), std::string::npos);
}

TEST(WorldRedacted, SaysTheSameOfTheMachine) {
    MachineOfAnn machine;
    makeBundle(machine, {"--redact"});
    const DoctorRun doctor(machine);
    machine.moveAway();
    const ChildResult result = machine.runFromBundle({"doctor", "--json"});
    EXPECT_EQ(result.exitCode, doctor.result.exitCode);
    const json::Document redacted(result.out);
    std::vector<std::string> kinds;
    for (const json::View symptom : redacted.root().member("symptoms").elements()) {
        kinds.emplace_back(symptom.member("kind").text().value_or(""));
    }
    std::vector<std::string> expected;
    for (const NamedSymptom& symptom : doctor.symptoms()) {
        expected.push_back(symptom.kind);
    }
    EXPECT_EQ(kinds, expected);
    EXPECT_EQ(machine.runFromBundle({"get", "value", "library", "units", "--value"}).out,
              "2\nx:xxxxx_xxxxxxxxxxxxx 0\nmm\n");
    machine.moveBack();
}

/// The names are those that the recorded machine has for its user, not those of the machine that redacts.
TEST(WorldRedacted, BundleOfABundleHoldsNoName) {
    MachineOfAnn machine;
    machine.name("QTX_SITE", machine.work / "host_secret/guest-secret/castle-secret/login-secret/site");
    machine.environment["LOGNAME"] = "login-secret";
    makeBundle(machine);
    EXPECT_NE(everythingIn(machine.bundle).find("guest-secret"), std::string::npos);
    putIntoManifest(machine, R"("account":{"user":"guest-secret","host":"castle-secret.example"})");
    machine.moveAway();
    const fs::path second = machine.elsewhere / "second";
    const ChildResult made = machine.runFromBundle({"bundle", second.u8string(), "--redact"});
    EXPECT_EQ(made.exitCode, 0) << shown(made);
    const std::string all = everythingIn(second);
    EXPECT_EQ(all.find("secret"), std::string::npos) << all.substr(all.find("secret") - 50, 100);
    EXPECT_NE(readTextFile(second / "world.json").find("xxxx_xxxxxx/xxxxx-xxxxxx"), std::string::npos);
    machine.moveBack();
}

TEST(WorldRedacted, PathsThatTheMaskMakesOneAreTold) {
    Machine machine;
    machine.environment["USER"] = "eve";
    machine.environment["USERNAME"] = "bob";
    writeTextFile(machine.work / "eve/named.cfg", kSettings);
    fs::create_directories(machine.work / "bob/site");
    machine.name("tessel_settings", machine.work / "eve/named.cfg");
    machine.name("QTX_SITE", machine.work / "bob/site");
    const ChildResult made = machine.run({"bundle", machine.bundle.u8string(), "--redact"});
    EXPECT_EQ(made.exitCode, 1) << shown(made);
    EXPECT_NE(made.err.find("is the same when it is masked"), std::string::npos) << shown(made);
    const std::string all = everythingIn(machine.bundle);
    EXPECT_NE(all.find("xxx/named.cfg\n") == std::string::npos, all.find("xxx/site\n") == std::string::npos) << all;
}

TEST(WorldRedacted, MasksWordsAndLeavesWhatTheLibraryPutsIntoPaths) {
    const Redaction redaction({"ann", "tools", "C"}, "/home/dept/ann");
    EXPECT_EQ(redaction.words("/home/dept/ann/pcbenv"), "/home/xxxx/xxx/pcbenv");
    EXPECT_EQ(redaction.words("C:\\Users\\ANN\\tools"), "C:\\Users\\xxx\\tools");
    EXPECT_EQ(redaction.words("/opt/joann/annex"), "/opt/joann/annex");
    EXPECT_EQ(redaction.words("ann"), "xxx");
    EXPECT_EQ(redaction.words("/srv/backup_ann/ann_2/ann2"), "/srv/backup_xxx/xxx_2/ann2");
    EXPECT_EQ(Redaction({"facet", "settings"}, "").words("facet_settings.cfg"), "facet_settings.cfg");
    EXPECT_EQ(Redaction().words("ann"), "ann");
}

TEST(WorldRedacted, MasksThePartsOfANameWithBlanks) {
    const Redaction redaction({"Annabel Lee"}, "C:/Documents and Settings/lee.m");
    EXPECT_EQ(redaction.words("C:\\Documents and Settings\\Annabel Lee\\annabel"),
              "C:\\Documents and Settings\\xxxxxxx xxx\\xxxxxxx");
    EXPECT_EQ(redaction.words("/srv/lee"), "/srv/xxx");
}

TEST(WorldRedacted, MasksNamesThatWindowsHasShortened) {
    const Redaction redaction({"Annabel Lee", "k. li"}, "C:/Documents and Settings");
    EXPECT_EQ(redaction.words("C:\\DOCUME~1\\ANNABE~1\\Temp"), "C:\\DOCUME~1\\xxxxxx~1\\Temp");
    EXPECT_EQ(redaction.words("C:\\ANNAB~12;D:\\KLI~1"), "C:\\xxxxx~12;D:\\xxx~1");
    EXPECT_EQ(redaction.words("C:\\AN5F2C~1"), "C:\\xx0x0x~1");
    EXPECT_EQ(redaction.words("C:\\ANNA~1\\ANNABE~x\\PROGRA~1"), "C:\\ANNA~1\\ANNABE~x\\PROGRA~1");
}

/// The user's "/home/ann/p" is a shipped value too, and becomes what it becomes in the shipped file.
TEST(WorldRedacted, ComparesAndMasksWhatStringsStandFor) {
    const Redaction redaction({"ann", "jos\xC3\xA9"}, "");
    EXPECT_EQ(
        redaction.usersFile(R"({"a":"m\u006d","b":"\/home\/ann\/p","c":"C:\\ann","d":"Jos\u00e9","e":"\ud83d\ude00"})",
                            {"mm", "\xF0\x9F\x98\x80", "/home/ann/p", "C:\\\\ann"}),
        R"({"a":"m\u006d","b":"\/home\/xxx\/p","c":"x:xxxxx","d":"xxxxx00x0","e":"\ud83d\ude00"})");
    EXPECT_EQ(redaction.shippedFile(R"({"p":"\/home\/Jos\u00e9\/x\u002fy","q":"/\u0061nn/\ud83d\ude00"})"),
              R"({"p":"\/home\/xxxxxxxxx\/x\u002fy","q":"/xxxxxxxx/\ud83d\ude00"})");
    EXPECT_EQ(redaction.shippedFile("{\"p\":\"/jos\xC3\xA9/x\"}"), R"({"p":"/xxxx/x"})");
}

TEST(WorldRedacted, MasksAShippedFileThatIsNoJson) {
    const Redaction redaction({"ann"}, "");
    EXPECT_EQ(redaction.shippedFile("My diary, 7 pages:\nann"), "xx xxxxx, 0 xxxxx:\nxxx");
    EXPECT_EQ(redaction.shippedFile(R"({"name":"plan","a":["b","/c"})"), R"({"name":"xxxx","a":["x","/x"})");
}

TEST(WorldRedacted, MasksAFileThatIsNoJson) {
    const Redaction redaction({}, "");
    EXPECT_EQ(redaction.usersFile(R"({"a":"b","c":["d" "e"])", {}), R"({"a":"x","c":["x" "x"])");
    EXPECT_EQ(redaction.usersFile("{\"a\":\"\\u00e9\\n7\"}", {}), "{\"a\":\"xx00x0xx0\"}");
    EXPECT_EQ(redaction.usersFile(R"({"a":"3.5","b":"on","c":"mm","d":"mil"})", {"mm"}),
              R"({"a":"3.5","b":"on","c":"mm","d":"xxx"})");
}

// --- Paths ----------------------------------------------------------------------------------------------------------

TEST(WorldMirror, FollowsLinksAndDots) {
    const fs::path root = fs::path("/").make_preferred();
    const Links links{{root / "home", root / "data" / "homes"}, {root / "data" / "homes" / "l", root / "x"}};
    const Mirror mirror("FILES", root / "here", links);
    EXPECT_EQ(mirror.resolved(root / "home" / "ann"), root / "data" / "homes" / "ann");
    EXPECT_EQ(mirror.resolved(root / "home" / "l" / "f"), root / "x" / "f");
    EXPECT_EQ(mirror.resolved(root / "home" / ".." / "f"), root / "data" / "f");
    EXPECT_EQ(mirror.resolved(fs::path("a") / "." / "b" / ".." / "c"), root / "here" / "a" / "c");
    EXPECT_EQ(mirror.placeOf("f"), fs::path("FILES") / "here" / "f");
}

}  // namespace
}  // namespace zelutil::test
