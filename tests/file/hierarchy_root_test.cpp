#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "file/hierarchy_fixture.h"
#include "support/common_library_stand_in.h"
#include "support/installation_tree.h"
#include "support/shared_module.h"

namespace {

namespace fs = std::filesystem;
using zelutil::test::HierarchyProbe;
using zelutil::test::kNotFound;
using zelutil::test::makeInstallation;
using zelutil::test::moduleFileName;
using zelutil::test::quoted;
using zelutil::test::rootLine;
using zelutil::test::systemList;
using zelutil::test::systemText;
using zelutil::test::windowsText;

// --- The common library ---------------------------------------------------------------------------------------------

class RootFromCommonLibrary : public HierarchyProbe {};

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

TEST_F(RootFromCommonLibrary, IsNotTakenFromTheCurrentDirectoryThoughTheLoaderWouldLookThere) {
    fs::create_directory(here / "sub");
    for (const fs::path& planted : {here, here / "sub"}) {
        fs::copy(zelutil::test::commonLibraryDirectory() / moduleFileName("qtxCommon"), planted);
    }
    environment["QTXCOMMON_STAND_IN_TOOLS"] = systemText(product / "tools");
    const std::string elsewhere = systemText(other);
    const std::vector<std::string> lists[] = {{"", elsewhere}, {elsewhere, ""}, {"."}, {"sub", elsewhere}};
    for (const std::vector<std::string>& list : lists) {
        environment[zelutil::test::loaderPathVariable()] = systemList(list);
        EXPECT_EQ(outputOf({"root"}, kNotFound), std::string(kNotFound) + "HierarchyNotFound\n") << systemList(list);
    }
    environment[zelutil::test::loaderPathVariable()] =
        systemList({"", systemText(zelutil::test::commonLibraryDirectory())});
    EXPECT_EQ(outputOf({"root"}), rootLine(product)) << "the other entries count";
}

// --- The library's own file -----------------------------------------------------------------------------------------

class RootFromOwnFile : public HierarchyProbe {};

TEST_F(RootFromOwnFile, IsTheTreeWithTheLibraryInItsProgramDirectory) {
    trace();
    installProgram(product / "tools/bin");
    EXPECT_EQ(outputOf({"root"}), "Populated installation root using GetModuleFileName(): " +
                                      quoted(windowsText(product)) + rootLine(product));
}

TEST_F(RootFromOwnFile, LetsNoCommonLibraryOfTheCurrentDirectoryPassForOneBesideIt) {
    installProgram(product / "tools/bin");
    fs::create_directory(other);
    fs::copy(zelutil::test::commonLibraryDirectory() / moduleFileName("qtxCommon"), other);
    here = product / "tools/bin";
    environment[zelutil::test::loaderPathVariable()] = ".";
    environment["QTXCOMMON_STAND_IN_TOOLS"] = "C:/wrong/tools";
    EXPECT_EQ(outputOf({"chdir", systemText(other), "root"}), rootLine(product));
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

TEST_F(RootFromOwnFile, IsTheSameAfterAChangeOfDirectory) {
    installProgram(product / "tools/bin");
    here = product / "tools/bin";
    environment[zelutil::test::loaderPathVariable()] = ".";
    EXPECT_EQ(outputOf({"chdir", systemText(work.path()), "root"}), rootLine(product));
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

class RootFromSearch : public HierarchyProbe {
protected:
    /// Returns what is printed when no entry is usable.
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

TEST_F(RootFromSearch, AVariableThatIsNoPathMeansTheCurrentDirectoryFirstOddity) {
    makeInstallation(here);
    makeInstallation(other);
    setPath({other / "tools/bin"});
    for (const char* const name : {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"}) {
        environment[name] = "C:/no?path";
        EXPECT_EQ(outputOf({"root"}), rootLine(here)) << name;
        environment[name] = std::nullopt;
    }
    EXPECT_EQ(outputOf({"root"}), rootLine(other));
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

}  // namespace
