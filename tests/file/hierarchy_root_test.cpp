#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/common_library_stand_in.h"
#include "support/installation_tree.h"
#include "support/shared_module.h"
#include "support/temp_directory.h"

// Each case runs a small program that links the library, so that the environment, the current directory and the place
// of the library's file are the case's own from the start. All it prints is compared.
namespace {

namespace fs = std::filesystem;
using zelutil::test::ChildResult;
using zelutil::test::EnvironmentChanges;
using zelutil::test::makeInstallation;
using zelutil::test::moduleFileName;
using zelutil::test::systemList;
using zelutil::test::systemText;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;

constexpr char kNotFound[] =
    "ERROR: Vorn Marl hierarchy root could not be located.\n"
    "Make sure <qtxroot>/tools/bin is included in the $PATH\n";

std::string quoted(const std::string& path) { return "\"" + path + "\"\n"; }

std::string rootLine(const fs::path& root) { return "root " + quoted(windowsText(root)); }

class HierarchyRoot : public ::testing::Test {
protected:
    /// Runs the probe in `here`, with no variable of the product and no "PATH" but those in `environment`.
    ChildResult probe(const std::vector<std::string>& arguments) const {
        return zelutil::test::run({program, arguments, environment, here});
    }

    /// All it writes on standard output; on standard error it has to write `err`.
    std::string outputOf(const std::vector<std::string>& arguments, const std::string& err = "") const {
        const ChildResult result = probe(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, err);
        return result.out;
    }

    void setPath(const std::vector<fs::path>& directories) {
        std::vector<std::string> texts;
        for (const fs::path& directory : directories) {
            texts.push_back(systemText(directory));
        }
        environment["PATH"] = systemList(texts);
    }

    void trace() { environment["QTX_ZELUTIL_DEBUG"] = "0"; }

    /// Puts the program and the library into a directory and has them run from there.
    void installProgram(const fs::path& directory) {
        fs::create_directories(directory);
        for (const char* const file : {ZELUTIL_TEST_PROBE, ZELUTIL_TEST_LIBRARY}) {
            fs::copy(file, directory, fs::copy_options::overwrite_existing);
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(ZELUTIL_TEST_LIBRARY).parent_path())) {
            if (entry.path().extension() == ".dll" && entry.path().filename().string().rfind("lib", 0) == 0) {
                fs::copy(entry.path(), directory);
            }
        }
        program = directory / fs::path(ZELUTIL_TEST_PROBE).filename();
    }

    TempDirectory work;
    fs::path here = work.path();
    fs::path product = work / "product";
    fs::path other = work / "other";
    fs::path program = ZELUTIL_TEST_PROBE;
    EnvironmentChanges environment = {{"QTX_ZELUTIL_DEBUG", std::nullopt}, {"QTXROOT", std::nullopt},
                                      {"QTX_ROOT", std::nullopt},          {"QTXINSTDIR", std::nullopt},
                                      {"QTX_SITE", std::nullopt},          {"HOMEDRIVE", std::nullopt},
                                      {"HOMEPATH", std::nullopt},          {"PATH", std::nullopt}};
};

// --- The common library ---------------------------------------------------------------------------------------------

class RootFromCommonLibrary : public HierarchyRoot {};

TEST_F(RootFromCommonLibrary, IsTheParentOfItsToolsDirectory) {
    trace();
    environment["QTXCOMMON_STAND_IN_TOOLS"] = "C:/product/tools";
    EXPECT_EQ(outputOf({"common-library", "complete", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\product\"\n"
              "root \"C:\\product\"\n");
}

TEST_F(RootFromCommonLibrary, IsTakenWhetherItExistsOrNot) {
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    EXPECT_EQ(outputOf({"common-library", "complete", "root"}), rootLine(product));
}

TEST_F(RootFromCommonLibrary, WinsOverEveryOtherSource) {
    makeInstallation(other);
    installProgram(other / "tools/bin");
    environment["QTXROOT"] = systemText(other);
    setPath({other / "tools/bin"});
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    EXPECT_EQ(outputOf({"common-library", "complete", "root"}), rootLine(product));
}

TEST_F(RootFromCommonLibrary, IsKept) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "complete", "tools", "C:/a/tools", "root", "tools", "C:/b/tools", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n"
              "root \"C:\\a\"\n");
}

TEST_F(RootFromCommonLibrary, AnEmptyAnswerIsAnEmptyRootAndAskedForAgain) {
    trace();
    EXPECT_EQ(outputOf({"common-library", "complete", "tools", "", "root", "root", "tools", "C:/a/tools", "root"}),
              "Populated installation root using qtxGetToolsPathInBuf(): \"\"\n"
              "root \"\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"\"\n"
              "root \"\"\n"
              "Populated installation root using qtxGetToolsPathInBuf(): \"C:\\a\"\n"
              "root \"C:\\a\"\n");
}

TEST_F(RootFromCommonLibrary, ItsFailureLeavesTheOtherSources) {
    makeInstallation(product);
    setPath({product / "tools/bin"});
    for (const char* const kind : {"complete", "without_tools_path", "without_functions"}) {
        EXPECT_EQ(outputOf({"common-library", kind, "root"}), rootLine(product)) << kind;
    }
}

TEST_F(RootFromCommonLibrary, IsFoundBesideTheLibrary) {
    installProgram(work / "bin");
    fs::copy(zelutil::test::commonLibraryDirectory() / moduleFileName("qtxCommon"), work / "bin");
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromCommonLibrary, IsFoundWhereTheLoaderLooks) {
    environment[zelutil::test::loaderPathVariable()] = systemText(zelutil::test::commonLibraryDirectory());
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromCommonLibrary, IsNotTakenFromTheCurrentDirectory) {
    fs::create_directories(here);
    fs::copy(zelutil::test::commonLibraryDirectory() / moduleFileName("qtxCommon"), here);
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    EXPECT_EQ(outputOf({"root"}, kNotFound), std::string(kNotFound) + "HierarchyNotFound\n");
}

// --- The library's own file -----------------------------------------------------------------------------------------

class RootFromOwnFile : public HierarchyRoot {};

TEST_F(RootFromOwnFile, IsTheTreeWithTheLibraryInItsProgramDirectory) {
    trace();
    installProgram(product / "tools/bin");
    EXPECT_EQ(outputOf({"root"}), "Populated installation root using GetModuleFileName(): " +
                                      quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootFromOwnFile, IsTheTreeWithABin64DirectoryOddity) {
    installProgram(product / "tools/bin64");
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromOwnFile, IsTheTreeWithAToolsDirectoryOfALongerNameOddity) {
    installProgram(product / "tools.new/bin");
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromOwnFile, WinsOverVariablesAndPath) {
    installProgram(product / "tools/bin");
    makeInstallation(other);
    environment["QTXROOT"] = systemText(other);
    setPath({other / "tools/bin"});
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromOwnFile, IsNoneForALibraryElsewhere) {
    makeInstallation(other);
    setPath({other / "tools/bin"});
    for (const char* const elsewhere : {"bin", "tools/lib/64bit", "tools/sbin", "Tools/bin", "tools/bin/plugins"}) {
        fs::remove_all(product);
        installProgram(product / elsewhere);
        EXPECT_EQ(outputOf({"root"}), rootLine(other)) << elsewhere;
    }
}

// --- The search: a variable, then the entries of "PATH" -------------------------------------------------------------

class RootFromSearch : public HierarchyRoot {
protected:
    /// What is printed when no entry is usable.
    std::string failure() const { return std::string(kNotFound) + "HierarchyNotFound\n"; }
};

TEST_F(RootFromSearch, TakesEachOfTheVariables) {
    makeInstallation(product);
    for (const char* const name : {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"}) {
        environment[name] = systemText(product);
        EXPECT_EQ(outputOf({"root"}), rootLine(product)) << name;
        environment[name] = std::nullopt;
    }
    EXPECT_EQ(outputOf({"root"}, kNotFound), failure());
}

TEST_F(RootFromSearch, TakesTheFirstDefinedVariable) {
    const std::vector<std::string> names = {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"};
    for (const std::string& name : names) {
        makeInstallation(work / name);
        environment[name] = systemText(work / name);
    }
    for (const std::string& name : names) {
        EXPECT_EQ(outputOf({"root"}), rootLine(work / name));
        environment[name] = std::nullopt;
    }
}

TEST_F(RootFromSearch, ADefinedVariableHidesTheOthersEvenWhenItNamesNoTree) {
    makeInstallation(product);
    environment["QTX_ROOT"] = systemText(product);
    for (const std::string& useless : {systemText(other), std::string()}) {
        environment["QTXROOT"] = useless;
        EXPECT_EQ(outputOf({"root"}, kNotFound), failure()) << useless;
    }
}

TEST_F(RootFromSearch, AVariableComesBeforePath) {
    makeInstallation(product);
    makeInstallation(other);
    trace();
    environment["QTXINSTDIR"] = systemText(product);
    setPath({other / "tools/bin"});
    const std::string programs = quoted(windowsText(product / "tools/bin"));
    EXPECT_EQ(outputOf({"root"}), "Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH: " + programs +
                                      "Searching PATH for installation root...\n"
                                      "Checking path entry: " +
                                      programs + "Populated installation root by searching PATH: " +
                                      quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootFromSearch, GoesOnWithPathWhenTheVariableNamesNoTree) {
    makeInstallation(product);
    trace();
    environment["QTXROOT"] = systemText(other);
    setPath({other / "bin", product / "tools/bin", other / "tools/bin"});
    const std::string useless = quoted(windowsText(other / "tools/bin"));
    EXPECT_EQ(outputOf({"root"}), "Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH: " + useless +
                                      "Searching PATH for installation root...\n"
                                      "Checking path entry: " +
                                      useless + "Checking path entry: " + quoted(windowsText(other / "bin")) +
                                      "Checking path entry: " + quoted(windowsText(product / "tools/bin")) +
                                      "Populated installation root by searching PATH: " + quoted(windowsText(product)) +
                                      rootLine(product));
}

TEST_F(RootFromSearch, AVariableIsNormalised) {
    makeInstallation(product);
    environment["QTXROOT"] = systemText(product) + "/share/../";
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromSearch, AnEmptyVariableIsTheCurrentDirectory) {
    makeInstallation(here);
    trace();
    environment["QTXROOT"] = "";
    // "/tools/bin" has the current directory put in front as it stands; as an entry of the list it is normalised.
    EXPECT_EQ(outputOf({"root"}), "Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH: " +
                                      quoted(windowsText(here) + "\\\\tools\\bin") +
                                      "Searching PATH for installation root...\n"
                                      "Checking path entry: " +
                                      quoted(windowsText(here / "tools/bin")) +
                                      "Populated installation root by searching PATH: " + quoted(windowsText(here)) +
                                      rootLine(here));
}

TEST_F(RootFromSearch, TakesAnEntryOfPath) {
    makeInstallation(product);
    trace();
    setPath({product / "tools/bin"});
    EXPECT_EQ(outputOf({"root"}),
              "Searching PATH for installation root...\n"
              "Checking path entry: " +
                  quoted(windowsText(product / "tools/bin")) +
                  "Populated installation root by searching PATH: " + quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootFromSearch, A64bitEntryLiesOneDirectoryDeeper) {
    makeInstallation(product, "tools/lib/64bit");
    setPath({product / "tools/lib/64bit"});
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromSearch, OnlyTheExactName64bitLiesDeeper) {
    makeInstallation(product, "tools/lib/64BIT");
    makeInstallation(other, "tools/lib/64bits");
    setPath({product / "tools/lib/64BIT", other / "tools/lib/64bits"});
    EXPECT_EQ(outputOf({"root"}, kNotFound), failure());
}

TEST_F(RootFromSearch, AnyDirectoryTwoBelowTheRootWillDo) {
    makeInstallation(product, "programs/native");
    setPath({product / "programs/native"});
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromSearch, NeedsBothTheLibraryAndTheMarker) {
    makeInstallation(product);
    makeInstallation(other);
    fs::remove(product / "share/pcb/zelmgr/zeldict.l");
    fs::remove(other / "tools/bin" / zelutil::test::libraryFileName());
    setPath({product / "tools/bin", other / "tools/bin"});
    EXPECT_EQ(outputOf({"root"}, kNotFound), failure());
}

TEST_F(RootFromSearch, TakesTheFirstUsableEntry) {
    makeInstallation(product);
    makeInstallation(other);
    setPath({work / "none", other / "tools/bin", product / "tools/bin"});
    EXPECT_EQ(outputOf({"root"}), rootLine(other));
}

TEST_F(RootFromSearch, PassesOverEntriesThatAreNoPaths) {
    makeInstallation(product);
    trace();
    environment["PATH"] = systemList({"a*b", "", systemText(product / "tools/bin")});
    EXPECT_EQ(outputOf({"root"}),
              "Searching PATH for installation root...\n"
              "Checking path entry: \"\"\n"
              "Checking path entry: \"\"\n"
              "Checking path entry: " +
                  quoted(windowsText(product / "tools/bin")) +
                  "Populated installation root by searching PATH: " + quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootFromSearch, ARelativeEntryIsBelowTheCurrentDirectory) {
    makeInstallation(product);
    environment["PATH"] = "product/tools/bin";
    EXPECT_EQ(outputOf({"root"}), rootLine(product));
}

TEST_F(RootFromSearch, AnEmptyEntryInACompleteCurrentDirectoryIsAnEmptyRootOddity) {
    makeInstallation(here, ".");
    trace();
    environment["PATH"] = systemList({"", "none"});
    EXPECT_EQ(outputOf({"root"}),
              "Searching PATH for installation root...\n"
              "Checking path entry: \"\"\n"
              "Populated installation root by searching PATH: \"\"\n"
              "root \"\"\n");
}

TEST_F(RootFromSearch, IsKept) {
    makeInstallation(product);
    makeInstallation(other);
    setPath({product / "tools/bin"});
    EXPECT_EQ(
        outputOf({"root", "set", "PATH", systemText(other / "tools/bin"), "set", "QTXROOT", systemText(other), "root"}),
        rootLine(product) + rootLine(product));
}

// --- No root --------------------------------------------------------------------------------------------------------

class RootNotFound : public HierarchyRoot {};

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

// --- While the common library is not initialised --------------------------------------------------------------------

class RootBeforeInitialisation : public HierarchyRoot {};

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

// --- The user's environment directory -------------------------------------------------------------------------------

class PcbEnv : public HierarchyRoot {};

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

}  // namespace
