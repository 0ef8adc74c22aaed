#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <filesystem>
#include <string>
#include <vector>

#include "file/hierarchy_fixture.h"
#include "support/installation_tree.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::HierarchyProbe;
using zelutil::test::kNotFound;
using zelutil::test::makeInstallation;
using zelutil::test::quoted;
using zelutil::test::rootLine;
using zelutil::test::systemList;
using zelutil::test::systemText;
using zelutil::test::windowsText;

// --- No root --------------------------------------------------------------------------------------------------------

class RootNotFound : public HierarchyProbe {};

TEST_F(RootNotFound, IsToldOnBothStreamsWithoutTheTraceToo) {
    const ChildResult result = probe({"root"});
    EXPECT_EQ(result.out, std::string(kNotFound) + "HierarchyNotFound\n");
    EXPECT_EQ(result.err, kNotFound);
}

TEST_F(RootNotFound, IsTracedEntryByEntry) {
    trace();
    setPath({product / "tools/bin", other});
    EXPECT_EQ(outputOf({"root"}, kNotFound),
              "Searching PATH for installation root...\n"
              "Checking path entry: " +
                  quoted(windowsText(product / "tools/bin")) + "Checking path entry: " + quoted(windowsText(other)) +
                  kNotFound + "HierarchyNotFound\n");
}

TEST_F(RootNotFound, TheNextCallAnswersTheLastEntryOddity) {
    trace();
    setPath({product / "tools/bin", other / "lib"});
    const ChildResult result = probe({"root", "root", "root"});
    EXPECT_EQ(result.out,
              "Searching PATH for installation root...\n"
              "Checking path entry: " +
                  quoted(windowsText(product / "tools/bin")) +
                  "Checking path entry: " + quoted(windowsText(other / "lib")) + kNotFound + "HierarchyNotFound\n" +
                  rootLine(other / "lib") + rootLine(other / "lib"));
    EXPECT_EQ(result.err, kNotFound);
}

TEST_F(RootNotFound, TheNextCallAnswersTheVariablesDirectoryWithoutPathOddity) {
    environment["QTXROOT"] = systemText(product);
    EXPECT_EQ(outputOf({"root", "root"}, kNotFound),
              std::string(kNotFound) + "HierarchyNotFound\n" + rootLine(product / "tools/bin"));
}

TEST_F(RootNotFound, TheEndOfAListThatEndsInTheSeparatorIsNoEntry) {
    trace();
    environment["PATH"] = systemList({systemText(other), ""});
    EXPECT_EQ(outputOf({"root", "root"}, kNotFound),
              "Searching PATH for installation root...\n"
              "Checking path entry: " +
                  quoted(windowsText(other)) + kNotFound + "HierarchyNotFound\n" + rootLine(other));
}

TEST_F(RootNotFound, AfterALastEntryThatWasEmptyTheNextCallSearchesAgain) {
    makeInstallation(product);
    environment["PATH"] = systemList({systemText(other), "", ""});
    EXPECT_EQ(outputOf({"root", "root", "set", "PATH", systemText(product / "tools/bin"), "root"},
                       std::string(kNotFound) + kNotFound),
              std::string(kNotFound) + "HierarchyNotFound\n" + kNotFound + "HierarchyNotFound\n" + rootLine(product));
}

TEST_F(RootNotFound, WithoutAnyEntryTheNextCallSearchesAgain) {
    makeInstallation(product);
    trace();
    environment["PATH"] = "";
    EXPECT_EQ(outputOf({"root", "set", "PATH", systemText(product / "tools/bin"), "root"}, kNotFound),
              "Searching PATH for installation root...\n" + std::string(kNotFound) +
                  "HierarchyNotFound\n"
                  "Searching PATH for installation root...\n"
                  "Checking path entry: " +
                  quoted(windowsText(product / "tools/bin")) +
                  "Populated installation root by searching PATH: " + quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootNotFound, TheTraceSwitchIsReadAtEverySearch) {
    EXPECT_EQ(outputOf({"root", "set", "QTX_ZELUTIL_DEBUG", "", "root"}, std::string(kNotFound) + kNotFound),
              std::string(kNotFound) + "HierarchyNotFound\n" + "Searching PATH for installation root...\n" + kNotFound +
                  "HierarchyNotFound\n");
}

TEST_F(RootNotFound, AThrownExceptionIsCaughtByItsBaseAndCopiesInSilence) {
    using ZelU::File::Exceptions::Base;
    using ZelU::File::Exceptions::HierarchyNotFound;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const HierarchyNotFound original;
    const HierarchyNotFound copy(original);
    EXPECT_THROW(throw copy, Base);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), kNotFound);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), kNotFound);
}

// --- On several threads ---------------------------------------------------------------------------------------------

class RootOnThreads : public HierarchyProbe {
protected:
    /// Directories without an installation, enough to keep a search busy for a while.
    std::vector<std::filesystem::path> manyOthers() const {
        std::vector<std::filesystem::path> directories;
        for (int number = 0; number < 500; ++number) {
            directories.push_back(other / std::to_string(number));
        }
        return directories;
    }
};

TEST_F(RootOnThreads, SeveralMayAskFirst) {
    makeInstallation(product);
    std::vector<std::filesystem::path> directories = manyOthers();
    directories.push_back(product / "tools/bin");
    setPath(directories);
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(outputOf({"threads", "4", "root"}), rootLine(product) + rootLine(product));
    }
}

TEST_F(RootOnThreads, WithoutAnInstallationAtLeastOneIsToldSo) {
    setPath(manyOthers());
    const ChildResult result = probe({"threads", "4", "root"});
    EXPECT_EQ(result.exitCode, 0);
    // A thread that asks when another one's search is over gets the last directory, as the next call does; it never
    // gets one in the middle.
    std::string lines = result.out;
    for (const std::string& text : {std::string(kNotFound), std::string("root \"HierarchyNotFound\"\n")}) {
        ASSERT_NE(lines.find(text), std::string::npos) << result.out;
        for (std::size_t found = lines.find(text); found != std::string::npos; found = lines.find(text)) {
            lines.erase(found, text.size());
        }
    }
    const std::string last = rootLine(other / "499");
    EXPECT_TRUE(lines == last || lines == last + last) << result.out;
}

// --- While the common library calls back ----------------------------------------------------------------------------

class RootCalledBack : public HierarchyProbe {};

TEST_F(RootCalledBack, IsSearchedForByTheCallToo) {
    makeInstallation(product);
    setPath({product / "tools/bin"});
    EXPECT_EQ(outputOf({"common-library", "complete", "nested", "root", "root", "root"}),
              "nested\n" + rootLine(product) + rootLine(product) + rootLine(product));
}

TEST_F(RootCalledBack, IsInTheEndWhatTheCommonLibraryTellsLast) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "complete", "nested", "root", "tools", "C:/a/tools", "root", "root"}),
              "nested\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "root \"C:\\a\"\n");
}

TEST_F(RootCalledBack, IsNotFoundBothTimes) {
    setPath({other / "lib"});
    EXPECT_EQ(
        outputOf({"common-library", "complete", "nested", "root", "root", "root"}, std::string(kNotFound) + kNotFound),
        std::string("nested\n") + kNotFound + "HierarchyNotFound\n" + kNotFound + "HierarchyNotFound\n" +
            rootLine(other / "lib"));
}

TEST_F(RootCalledBack, MayBeAskedForOnAnotherThreadThatIsWaitedFor) {
    makeInstallation(product);
    setPath({product / "tools/bin"});
    EXPECT_EQ(outputOf({"common-library", "complete", "nested", "wait", "root", "root"}),
              "on another thread\n" + rootLine(product) + rootLine(product) + rootLine(product));
}

// --- While the common library is not initialised --------------------------------------------------------------------

class RootBeforeInitialisation : public HierarchyProbe {};

TEST_F(RootBeforeInitialisation, IsTheFirstFoundThoughLookedForAtEveryCall) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "complete", "init-done", "0", "tools", "C:/a/tools", "root", "tools",
                        "C:/b/tools", "root", "init-done", "1", "root", "tools", "C:/c/tools", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\b\"\n"
              "root \"C:\\a\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\b\"\n"
              "root \"C:\\b\"\n"
              "root \"C:\\b\"\n");
}

TEST_F(RootBeforeInitialisation, AnEmptyFirstAnswerStaysUntilInitialisationOddity) {
    EXPECT_EQ(outputOf({"common-library", "complete", "init-done", "0", "tools", "", "root", "tools", "C:/a/tools",
                        "root", "init-done", "1", "root"}),
              "root \"\"\n"
              "root \"\"\n"
              "root \"C:\\a\"\n");
}

TEST_F(RootBeforeInitialisation, ARootKeptEarlierIsAnsweredOnceMoreAndThenLookedForAgain) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "complete", "tools", "C:/a/tools", "root", "init-done", "0", "tools",
                        "C:/b/tools", "root", "root", "init-done", "1", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\b\"\n"
              "root \"C:\\a\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\b\"\n"
              "root \"C:\\b\"\n");
}

TEST_F(RootBeforeInitialisation, IsSearchedForWhenTheCommonLibraryKnowsNoTools) {
    makeInstallation(product);
    setPath({product / "tools/bin"});
    for (const char* const kind : {"complete", "without_tools_path"}) {
        EXPECT_EQ(outputOf({"common-library", kind, "init-done", "0", "root", "root"}),
                  rootLine(product) + rootLine(product))
            << kind;
    }
}

TEST_F(RootBeforeInitialisation, WithoutTheQuestionInitialisationCountsAsOver) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "without_init_done", "init-done", "0", "tools", "C:/a/tools", "root", "tools",
                        "C:/b/tools", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "root \"C:\\a\"\n");
}

}  // namespace
