#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <string>
#include <thread>
#include <vector>

#include "file/hierarchy_fixture.h"
#include "support/environment.h"

namespace {

using zelutil::test::HierarchyProbe;
using zelutil::test::quoted;
using zelutil::test::systemText;
using zelutil::test::windowsText;

class PcbEnv : public HierarchyProbe {};

TEST_F(PcbEnv, IsBelowTheHomeDirectory) {
    environment["HOMEDRIVE"] = "C:";
    environment["HOMEPATH"] = "\\Users\\ann";
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv \"C:\\Users\\ann\\pcbenv\"\n");
}

TEST_F(PcbEnv, JoinsTheVariablesAsTheyStandAndNormalises) {
    struct Row {
        const char* drive;
        const char* path;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {"C:", "/home/ann/", "C:\\home\\ann\\pcbenv"},
        {"\\\\server", "\\homes\\ann", "\\\\server\\homes\\ann\\pcbenv"},
        {"C:/home", "/../x", "C:\\x\\pcbenv"},
        {"C:", "Users", "C:Users\\pcbenv"},
        {"C:", "\\my home", "C:\\my home\\pcbenv"},
        {"C:", "", "C:\\pcbenv"},
        // No paths.
        {"C:", "\\a?b", ""},
        {"C:", "\\..", ""},
    };
    for (const Row& row : kRows) {
        environment["HOMEDRIVE"] = row.drive;
        environment["HOMEPATH"] = row.path;
        EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv " + quoted(row.expected)) << row.drive << " and " << row.path;
    }
}

TEST_F(PcbEnv, EachVariableIsOptional) {
    environment["HOMEDRIVE"] = "C:";
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv \"C:\\pcbenv\"\n");

    environment["HOMEDRIVE"] = std::nullopt;
    environment["HOMEPATH"] = "\\Users\\ann";
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv " + quoted(windowsText(here) + "\\\\Users\\ann\\pcbenv"));

    environment["HOMEPATH"] = "home";
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv " + quoted(windowsText(here / "home/pcbenv")));
}

TEST_F(PcbEnv, WithoutBothVariablesHasADoubledSeparatorBelowTheCurrentDirectoryOddity) {
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv " + quoted(windowsText(here) + "\\\\pcbenv"));
}

TEST_F(PcbEnv, IsKept) {
    EXPECT_EQ(
        outputOf({"set", "HOMEDRIVE", "C:", "pcbenv", "set", "HOMEDRIVE", "D:", "chdir", systemText(here), "pcbenv"}),
        "pcbenv \"C:\\pcbenv\"\n"
        "pcbenv \"C:\\pcbenv\"\n");
}

TEST_F(PcbEnv, IsReadAgainAfterTheEmptyPath) {
    EXPECT_EQ(outputOf({"set", "HOMEPATH", "\\a*b", "pcbenv", "set", "HOMEPATH", "C:\\ann", "pcbenv"}),
              "pcbenv \"\"\n"
              "pcbenv \"C:\\ann\\pcbenv\"\n");
}

TEST_F(PcbEnv, NeedsNoRoot) {
    trace();
    environment["HOMEDRIVE"] = "C:";
    EXPECT_EQ(outputOf({"pcbenv"}), "pcbenv \"C:\\pcbenv\"\n");
}

TEST(PcbEnvOnThreads, SeveralMayAskFirst) {
    zelutil::test::setVariable("HOMEDRIVE", "C:");
    zelutil::test::setVariable("HOMEPATH", "\\Users\\ann");
    constexpr std::size_t kThreads = 8;
    std::vector<std::string> answers(kThreads);
    std::vector<std::thread> threads;
    for (std::string& answer : answers) {
        threads.emplace_back([&answer] { answer = ZelU::File::Hierarchy::GetPcbEnv(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(answers, std::vector<std::string>(kThreads, "C:\\Users\\ann\\pcbenv"));
}

}  // namespace
