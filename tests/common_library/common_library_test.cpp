#include "common_library/common_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/common_library_stand_in.h"
#include "support/environment.h"
#include "support/shared_module.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
namespace common_library = zelutil::common_library;
using common_library::SetupPathSearch;
using zelutil::test::commonLibraryDirectory;
using zelutil::test::loadCommonLibrary;
using zelutil::test::moduleFileName;
using zelutil::test::setVariable;
using zelutil::test::TempDirectory;

constexpr char kUserFile[] = "pcbenv/tessel/tessel_settings.cfg";

std::string withBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

TEST(CommonLibrary, MissingItKnowsNoToolsIsDoneAndCannotSearch) {
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    EXPECT_TRUE(common_library::initDone());
    EXPECT_FALSE(SetupPathSearch::prepare());
}

TEST(CommonLibrary, TellsWhereItsModuleWasLookedFor) {
    using Source = zelutil::text::Candidate::Source;
    using Verdict = zelutil::text::Candidate::Verdict;
    setVariable(zelutil::test::loaderPathVariable(), zelutil::test::systemText(commonLibraryDirectory()));
    zelutil::text::SearchTrace trace;
    common_library::locate(trace);
    ASSERT_GE(trace.candidates().size(), 3U);
    EXPECT_EQ(trace.candidates()[0].source, Source::Process);
    EXPECT_EQ(trace.candidates()[1].source, Source::BesideLibrary);
    for (const auto& candidate : trace.candidates()) {
        const bool last = &candidate == &trace.candidates().back();
        EXPECT_EQ(candidate.verdict, last ? Verdict::Taken : Verdict::NotThere) << candidate.seen;
    }
    EXPECT_EQ(trace.candidates().back().source, Source::Loader);
    EXPECT_NE(trace.candidates().back().seen.find(moduleFileName("qtxCommon")), std::string::npos);
    EXPECT_TRUE(common_library::missingFunctions());
    zelutil::text::SearchTrace later;
    common_library::locate(later);
    EXPECT_TRUE(later.candidates().empty());
}

TEST(CommonLibrary, TellsThatItsModuleIsInTheProcess) {
    loadCommonLibrary();
    zelutil::text::SearchTrace trace;
    common_library::locate(trace);
    ASSERT_EQ(trace.candidates().size(), 1U);
    EXPECT_EQ(trace.candidates()[0].source, zelutil::text::Candidate::Source::Process);
    EXPECT_EQ(trace.candidates()[0].verdict, zelutil::text::Candidate::Verdict::Taken);
}

TEST(CommonLibrary, AsksForTheToolsPathWithTheDocumentedArguments) {
    auto& state = loadCommonLibrary();
    state.toolsPath = "C:/product/tools";
    EXPECT_EQ(common_library::toolsPath(), "C:/product/tools");
    EXPECT_EQ(state.toolsPathCalls, 1);
    EXPECT_EQ(state.toolsPathBufferSize, 1024);
    EXPECT_EQ(state.toolsPathReserved, 0);
}

TEST(CommonLibrary, AsksAgainAtEveryCall) {
    auto& state = loadCommonLibrary();
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    state.toolsPath = "C:/first/tools";
    EXPECT_EQ(common_library::toolsPath(), "C:/first/tools");
    state.toolsPath = "C:/second/tools";
    EXPECT_EQ(common_library::toolsPath(), "C:/second/tools");
    EXPECT_EQ(state.toolsPathCalls, 3);
}

TEST(CommonLibrary, AnEmptyToolsPathIsAnAnswer) {
    loadCommonLibrary().toolsPath = "";
    EXPECT_EQ(common_library::toolsPath(), "");
}

TEST(CommonLibrary, AToolsPathThatFillsItsBufferIsCut) {
    const std::string longest = "C:/" + std::string(1020, 'a');
    auto& state = loadCommonLibrary();
    state.toolsPath = longest;
    EXPECT_EQ(common_library::toolsPath(), longest);
    state.toolsPath = longest + "bc";
    EXPECT_EQ(common_library::toolsPath(), longest);
}

TEST(CommonLibrary, PathsOfTheSystemComeAsWindowsTexts) {
    const TempDirectory directory;
    auto& state = loadCommonLibrary();
    state.toolsPath = state.foundPath = zelutil::test::systemText(directory / "a");
    const std::string expected = zelutil::test::windowsText(directory / "a");
    EXPECT_EQ(withBackslashes(common_library::toolsPath().value()), expected);
    EXPECT_EQ(withBackslashes(SetupPathSearch::prepare()->find("a").value()), expected);
}

TEST(CommonLibrary, TellsWhetherItsInitialisationIsOver) {
    auto& state = loadCommonLibrary();
    EXPECT_TRUE(common_library::initDone());
    state.initDone = false;
    EXPECT_FALSE(common_library::initDone());
    EXPECT_EQ(state.initDoneCalls, 2);
}

TEST(CommonLibrary, FindsAFileOfTheSetupPath) {
    auto& state = loadCommonLibrary();
    state.foundPath = "C:/site/pcbenv/tessel/tessel_settings.cfg";
    const auto search = SetupPathSearch::prepare();
    ASSERT_TRUE(search);
    EXPECT_EQ(state.initializeCalls, 1);
    EXPECT_EQ(state.searchCalls, 0);

    EXPECT_EQ(search->find(kUserFile), "C:/site/pcbenv/tessel/tessel_settings.cfg");
    EXPECT_EQ(state.searchCalls, 1);
    EXPECT_EQ(state.searchedName, kUserFile);
    EXPECT_EQ(state.searchBufferSize, 2048);
    EXPECT_TRUE(state.searchGotItsHandle);
}

TEST(CommonLibrary, AFoundPathThatFillsItsBufferIsCut) {
    const std::string longest = "C:/" + std::string(2044, 'a');
    loadCommonLibrary().foundPath = longest + "bc";
    EXPECT_EQ(SetupPathSearch::prepare()->find(kUserFile), longest);
}

TEST(CommonLibrary, FindsNothingWhereTheSearchFindsNothing) {
    auto& state = loadCommonLibrary();
    EXPECT_EQ(SetupPathSearch::prepare()->find(kUserFile), std::nullopt);
    EXPECT_EQ(state.searchCalls, 1);
}

TEST(CommonLibrary, ASearchThatCannotBePreparedIsNotMade) {
    auto& state = loadCommonLibrary();
    state.canSearch = false;
    state.foundPath = "C:/f";
    EXPECT_FALSE(SetupPathSearch::prepare());
    EXPECT_EQ(state.searchCalls, 0);
}

// --- Missing functions: the others are used all the same ------------------------------------------------------------

TEST(CommonLibrary, WithoutToolsPathItKnowsNoTools) {
    auto& state = loadCommonLibrary("without_tools_path");
    state.initDone = false;
    state.foundPath = "C:/f";
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    EXPECT_FALSE(common_library::initDone());
    EXPECT_EQ(SetupPathSearch::prepare()->find("f"), "C:/f");
}

TEST(CommonLibrary, WithoutInitDoneItIsDone) {
    auto& state = loadCommonLibrary("without_init_done");
    state.initDone = false;
    state.toolsPath = "C:/p/tools";
    EXPECT_TRUE(common_library::initDone());
    EXPECT_EQ(common_library::toolsPath(), "C:/p/tools");
}

TEST(CommonLibrary, WithoutInitializeItCannotSearch) {
    auto& state = loadCommonLibrary("without_initialize");
    state.foundPath = "C:/f";
    state.toolsPath = "C:/p/tools";
    EXPECT_FALSE(SetupPathSearch::prepare());
    EXPECT_EQ(state.searchCalls, 0);
    EXPECT_EQ(common_library::toolsPath(), "C:/p/tools");
}

TEST(CommonLibrary, WithoutSearchItFindsNothing) {
    loadCommonLibrary("without_search").foundPath = "C:/f";
    const auto search = SetupPathSearch::prepare();
    ASSERT_TRUE(search);
    EXPECT_EQ(search->find("f"), std::nullopt);
}

TEST(CommonLibrary, WithoutAnyFunctionItIsAsIfMissing) {
    auto& state = loadCommonLibrary("without_functions");
    state.toolsPath = state.foundPath = "C:/f";
    state.initDone = false;
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    EXPECT_TRUE(common_library::initDone());
    EXPECT_FALSE(SetupPathSearch::prepare());
}

// --- When and where it is bound -------------------------------------------------------------------------------------

TEST(CommonLibrary, IsBoundOnceAtTheFirstNeed) {
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    auto& lateComer = loadCommonLibrary();
    lateComer.toolsPath = "C:/p/tools";
    lateComer.initDone = false;
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    EXPECT_TRUE(common_library::initDone());
    EXPECT_EQ(lateComer.toolsPathCalls, 0);
    EXPECT_EQ(lateComer.initDoneCalls, 0);
}

TEST(CommonLibrary, IsNotLookedForBeforeTheFirstNeed) {
    // Loaded after this program's static initialisers have run.
    loadCommonLibrary().toolsPath = "C:/p/tools";
    EXPECT_EQ(common_library::toolsPath(), "C:/p/tools");
}

TEST(CommonLibrary, ThreadsMayMeetAtTheFirstNeed) {
    loadCommonLibrary("without_init_done").toolsPath = "C:/p/tools";
    std::array<bool, 8> done{};
    std::vector<std::thread> threads;
    for (bool& answer : done) {
        threads.emplace_back([&answer] { answer = common_library::initDone(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(done, ::testing::Each(true));
    EXPECT_EQ(common_library::toolsPath(), "C:/p/tools");
}

TEST(CommonLibrary, IsNotTakenFromTheCurrentDirectory) {
    const TempDirectory directory;
    const std::string fileName = moduleFileName("qtxCommon");
    fs::copy_file(commonLibraryDirectory() / fileName, directory / fileName);
    fs::current_path(directory.path());
    setVariable("QTXCOMMON_STAND_IN_TOOLS", "C:/p/tools");
    EXPECT_EQ(common_library::toolsPath(), std::nullopt);
    EXPECT_FALSE(zelutil::test::moduleIsLoaded(directory / fileName));
}

}  // namespace
