#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/common_library_stand_in.h"
#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using ZelU::File::Hierarchy;
using ZelU::File::Path;
using zelutil::test::InstallationTree;
using zelutil::test::setVariable;
using zelutil::test::systemText;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

std::string text(const Path& path) { return std::string(path); }

/// A tree that the root lookup finds, and a directory beside it.
class HierarchyFind : public ::testing::Test {
protected:
    HierarchyFind() {
        zelutil::test::clearProductVariables();
        tree.nameInEnvironment();
    }

    InstallationTree tree;
    TempDirectory outside;
};

// --- FindFile -------------------------------------------------------------------------------------------------------

class FindFile : public HierarchyFind {
protected:
    void nameSite() const { setVariable("QTX_SITE", systemText(site)); }

    fs::path site = outside / "site";
};

TEST_F(FindFile, AnswersAFileOfTheInstallationTree) {
    writeTextFile(tree / "share/qtxsetup/f.cfg", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f.cfg", "share/qtxsetup/")), windowsText(tree / "share/qtxsetup/f.cfg"));
    EXPECT_EQ(text(Hierarchy::FindFile("qtxsetup/f.cfg", "share")), windowsText(tree / "share/qtxsetup/f.cfg"));
    EXPECT_EQ(text(Hierarchy::FindFile("f.cfg", "share/other/../qtxsetup")),
              windowsText(tree / "share/qtxsetup/f.cfg"));
}

TEST_F(FindFile, AnswersADirectoryToo) {
    fs::create_directories(tree / "share/qtxsetup/d");
    EXPECT_EQ(text(Hierarchy::FindFile("d", "share/qtxsetup")), windowsText(tree / "share/qtxsetup/d"));
}

TEST_F(FindFile, AnswersTheEmptyPathForWhatIsNotThere) {
    EXPECT_EQ(text(Hierarchy::FindFile("none.cfg", "share/qtxsetup")), "");
    EXPECT_EQ(text(Hierarchy::FindFile("none.cfg", "share/local/pcb")), "");
}

TEST_F(FindFile, ANullArgumentFindsNothing) {
    writeTextFile(tree / "share/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile(nullptr, "share")), "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", nullptr)), "");
    EXPECT_EQ(text(Hierarchy::FindFile(nullptr, nullptr)), "");
}

TEST_F(FindFile, EmptyArgumentsAddNothing) {
    writeTextFile(tree / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "")), windowsText(tree / "f"));
    EXPECT_EQ(text(Hierarchy::FindFile("", "share")), windowsText(tree / "share"));
}

TEST_F(FindFile, LooksInTheSitesDirectoryThenInTheSiteThenInTheTree) {
    nameSite();
    const std::vector<fs::path> order = {site / "pcb/f", site / "f", tree / "share/local/pcb/f"};
    for (const fs::path& file : order) {
        writeTextFile(file, "");
    }
    for (const fs::path& file : order) {
        EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/pcb")), windowsText(file));
        fs::remove(file);
    }
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/pcb")), "");
}

TEST_F(FindFile, JoinsOnlyTheNameToTheSiteForTheShareItself) {
    nameSite();
    writeTextFile(tree / "share/local/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(tree / "share/local/f"));
    writeTextFile(site / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(site / "f"));
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/")), windowsText(site / "f"));
}

TEST_F(FindFile, LooksBelowTheSiteAtAnyDepth) {
    nameSite();
    writeTextFile(site / "pcb/views/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/pcb/views")), windowsText(site / "pcb/views/f"));
}

TEST_F(FindFile, TheSiteCountsForTheSitesShareOnly) {
    nameSite();
    writeTextFile(site / "f", "");
    for (const char* const dir : {"share", "share/loca", "Share/local", "share/Local", "share\\local", "/share/local",
                                  "./share/local", "share/pcb", ""}) {
        EXPECT_EQ(text(Hierarchy::FindFile("f", dir)), "") << dir;
    }
}

TEST_F(FindFile, WithoutASiteOnlyTheTreeIsSearched) {
    writeTextFile(site / "f", "");
    writeTextFile(tree / "share/local/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(tree / "share/local/f"));
}

TEST_F(FindFile, ReadsTheSiteAtEveryCall) {
    writeTextFile(site / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), "");
    nameSite();
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(site / "f"));
}

TEST_F(FindFile, AnEmptySiteIsTheCurrentDirectory) {
    setVariable("QTX_SITE", "");
    fs::current_path(outside.path());
    writeTextFile(outside / "f", "");
    // "/f" has the current directory put in front as it stands.
    const std::string here = windowsText(outside.path()) + "\\\\";
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/pcb")), here + "f");
    writeTextFile(outside / "pcb/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local/pcb")), here + "pcb\\f");
}

TEST_F(FindFile, ASiteThatIsNoPathIsTheCurrentDirectory) {
    setVariable("QTX_SITE", "C:/si?te");
    fs::current_path(outside.path());
    writeTextFile(outside / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(outside.path()) + "\\\\f");
}

TEST_F(FindFile, TheCharacterAfterTheSitesShareIsDroppedOddity) {
    nameSite();
    writeTextFile(site / "ization/f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/localXization")), windowsText(site / "ization/f"));
    writeTextFile(site / "g", "");
    EXPECT_EQ(text(Hierarchy::FindFile("g", "share/local2")), windowsText(site / "g"));
}

TEST_F(FindFile, ADirectoryThatIsNoPathLeavesTheTreeOddity) {
    fs::current_path(outside.path());
    writeTextFile(tree / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share?")), "");
    writeTextFile(outside / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share?")), windowsText(outside.path()) + "\\\\f");
}

TEST_F(FindFile, DoesNotAskForTheRootWhenTheSiteHasTheFile) {
    auto& commonLibrary = zelutil::test::loadCommonLibrary();
    commonLibrary.toolsPath = systemText(tree / "tools");
    nameSite();
    writeTextFile(site / "f", "");
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(site / "f"));
    EXPECT_EQ(commonLibrary.toolsPathCalls, 0);
    EXPECT_EQ(commonLibrary.initDoneCalls, 0);

    EXPECT_EQ(text(Hierarchy::FindFile("g", "share/local")), "");
    EXPECT_EQ(commonLibrary.toolsPathCalls, 1);
}

TEST_F(FindFile, DoesNotAskForTheRootWhenAnArgumentIsNull) {
    auto& commonLibrary = zelutil::test::loadCommonLibrary();
    Hierarchy::FindFile(nullptr, "share");
    Hierarchy::FindFile("f", nullptr);
    EXPECT_EQ(commonLibrary.toolsPathCalls, 0);
}

// --- FindExe --------------------------------------------------------------------------------------------------------

// The names end in ".exe" or ".bat", or have no suffix: on Windows the suffix alone makes a file executable, elsewhere
// the mode does, so that what is executable here is so on both.
class FindExe : public HierarchyFind {
protected:
    void makeExecutable(const std::string& relative) const {
        writeTextFile(tree / relative, "");
        fs::permissions(tree / relative, fs::perms::owner_exec, fs::perm_options::add);
    }

    /// A file that may not be executed: by its suffix on Windows, by its mode elsewhere.
    void makePlain(const std::string& relative) const {
        writeTextFile(tree / relative, "");
        fs::permissions(tree / relative, fs::perms::owner_exec, fs::perm_options::remove);
    }
};

TEST_F(FindExe, AnswersTheNameAsWrittenFirst) {
    makeExecutable("tools/bin/edit.exe");
    makeExecutable("tools/bin/edit.exe.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("edit.exe", "tools/bin")), windowsText(tree / "tools/bin/edit.exe"));
}

TEST_F(FindExe, TriesANameWithoutTheSuffixWithIt) {
    makeExecutable("tools/bin/edit.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "tools/bin")), windowsText(tree / "tools/bin/edit.exe"));
}

TEST_F(FindExe, TriesANameWithTheSuffixWithoutIt) {
    makeExecutable("tools/bin/edit.bat");
    EXPECT_EQ(text(Hierarchy::FindExe("edit.bat.exe", "tools/bin")), windowsText(tree / "tools/bin/edit.bat"));
}

TEST_F(FindExe, DropsEverythingFromTheFirstSuffixOn) {
    makeExecutable("tools/bin/edit.bat");
    EXPECT_EQ(text(Hierarchy::FindExe("edit.bat.exe.old.exe", "tools/bin")), windowsText(tree / "tools/bin/edit.bat"));
    EXPECT_EQ(text(Hierarchy::FindExe("edit.bat.executable", "tools/bin")), windowsText(tree / "tools/bin/edit.bat"));
}

TEST_F(FindExe, TheSuffixIsComparedWithItsCase) {
    makeExecutable("tools/bin/edit.bat");
    makeExecutable("tools/bin/save.EXE.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("edit.bat.EXE", "tools/bin")), "");
    EXPECT_EQ(text(Hierarchy::FindExe("save.EXE", "tools/bin")), windowsText(tree / "tools/bin/save.EXE.exe"));
}

TEST_F(FindExe, PassesOverAFileThatMayNotBeExecuted) {
    makePlain("tools/bin/edit");
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "tools/bin")), "");
    makeExecutable("tools/bin/edit.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "tools/bin")), windowsText(tree / "tools/bin/edit.exe"));
    makePlain("tools/bin/save");
    EXPECT_EQ(text(Hierarchy::FindExe("save.exe", "tools/bin")), "");
}

TEST_F(FindExe, ANullNameFindsNothing) {
    makeExecutable("tools/bin/edit.exe");
    EXPECT_EQ(text(Hierarchy::FindExe(nullptr, "tools/bin")), "");
    EXPECT_EQ(text(Hierarchy::FindExe(nullptr, nullptr)), "");
}

TEST_F(FindExe, WithoutADirectoryLooksInTheRoot) {
    makeExecutable("setup.exe");
    makeExecutable("tools/bin/edit.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("setup", nullptr)), windowsText(tree / "setup.exe"));
    EXPECT_EQ(text(Hierarchy::FindExe("setup", "")), windowsText(tree / "setup.exe"));
    EXPECT_EQ(text(Hierarchy::FindExe("edit", nullptr)), "");
}

TEST_F(FindExe, IgnoresTheSite) {
    setVariable("QTX_SITE", systemText(outside.path()));
    writeTextFile(outside / "edit.exe", "");
    fs::permissions(outside / "edit.exe", fs::perms::owner_exec, fs::perm_options::add);
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "share/local")), "");
}

TEST_F(FindExe, ADirectoryCountsAsExecutableOddity) {
    fs::create_directories(tree / "tools/bin/edit");
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "tools/bin")), windowsText(tree / "tools/bin/edit"));
    EXPECT_EQ(text(Hierarchy::FindExe(".exe", "tools/bin")), windowsText(tree / "tools/bin"));
}

TEST_F(FindExe, ADirectoryThatIsNoPathLeavesTheTreeOddity) {
    fs::current_path(outside.path());
    makeExecutable("edit.exe");
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "share?")), "");
    writeTextFile(outside / "edit.exe", "");
    fs::permissions(outside / "edit.exe", fs::perms::owner_exec, fs::perm_options::add);
    EXPECT_EQ(text(Hierarchy::FindExe("edit", "share?")), windowsText(outside.path()) + R"(\\edit.exe)");
}

// --- FindDll --------------------------------------------------------------------------------------------------------

class FindDll : public HierarchyFind {};

TEST_F(FindDll, TriesFourDirectoriesAndTwoNamesInEach) {
    const std::vector<std::string> order = {
        "tools/abc64.dll",     "tools/abc.dll",     "tools/bin/abc64.dll",       "tools/bin/abc.dll",
        "tools/lib/abc64.dll", "tools/lib/abc.dll", "tools/lib/64bit/abc64.dll", "tools/lib/64bit/abc.dll"};
    for (const std::string& file : order) {
        writeTextFile(tree / file, "");
    }
    for (const std::string& file : order) {
        EXPECT_EQ(text(Hierarchy::FindDll("abc", "tools")), windowsText(tree / file));
        fs::remove(tree / file);
    }
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "tools")), "");
}

TEST_F(FindDll, ANullNameFindsNothing) {
    writeTextFile(tree / "tools/64.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll(nullptr, "tools")), "");
    EXPECT_EQ(text(Hierarchy::FindDll(nullptr, nullptr)), "");
}

TEST_F(FindDll, WithoutADirectoryLooksInTheRoot) {
    writeTextFile(tree / "lib/64bit/abc.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", nullptr)), windowsText(tree / "lib/64bit/abc.dll"));
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "")), windowsText(tree / "lib/64bit/abc.dll"));
    writeTextFile(tree / "abc64.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", nullptr)), windowsText(tree / "abc64.dll"));
}

TEST_F(FindDll, TakesTheBaseNameOnly) {
    writeTextFile(tree / "tools/abc.dll", "");
    writeTextFile(tree / "tools/def", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc.dll", "tools")), "");
    EXPECT_EQ(text(Hierarchy::FindDll("def", "tools")), "");
}

TEST_F(FindDll, JoinsAnyNameAsAPath) {
    struct Row {
        std::string name;
        const char* file;
    };
    const Row rows[] = {
        {"", "tools/64.dll"},
        {"", "tools/lib/.dll"},
        {".", "tools/bin/.64.dll"},
        {"sub/abc", "tools/bin/sub/abc.dll"},
        {R"(sub\abc)", "tools/lib/64bit/sub/abc64.dll"},
        {"my files/a b", "tools/lib/my files/a b.dll"},
        {"sub/./abc", "tools/bin/sub/abc.dll"},
        {"../abc", "abc.dll"},
        {"sub/../../abc", "tools/lib/abc.dll"},
        {"/abc", "tools/bin/abc.dll"},
        {"sub//abc", "tools/lib/64bit/sub/abc.dll"},
        {R"("abc")", "tools/bin/abc64.dll"},
        {std::string(100, 'n') + '/' + std::string(100, 'm'), nullptr},
    };
    for (const Row& row : rows) {
        const std::string file = row.file == nullptr ? "tools/lib/" + row.name + ".dll" : row.file;
        EXPECT_EQ(text(Hierarchy::FindDll(row.name.c_str(), "tools")), "") << row.name;
        writeTextFile(tree / file, "");
        EXPECT_EQ(text(Hierarchy::FindDll(row.name.c_str(), "tools")), windowsText(tree / file)) << row.name;
        fs::remove(tree / file);
    }
    EXPECT_EQ(text(Hierarchy::FindDll("abc?", "tools")), "");
}

TEST_F(FindDll, LooksThroughADirectoryWhoseNameHasABlank) {
    writeTextFile(tree / "my tools/lib/64bit/abc64.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "my tools")), windowsText(tree / "my tools/lib/64bit/abc64.dll"));
}

TEST_F(FindDll, ADirectoryThatIsNoPathLeavesTheTreeOddity) {
    fs::current_path(outside.path());
    writeTextFile(tree / "abc.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "share?")), "");
    writeTextFile(outside / "lib/64bit/abc.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "share?")), windowsText(outside.path()) + R"(\\lib\64bit\abc.dll)");
    writeTextFile(outside / "abc.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "share?")), windowsText(outside.path()) + R"(\\abc.dll)");
}

TEST_F(FindDll, IgnoresTheSite) {
    setVariable("QTX_SITE", systemText(outside.path()));
    writeTextFile(outside / "abc.dll", "");
    EXPECT_EQ(text(Hierarchy::FindDll("abc", "share/local")), "");
}

// --- All of them ----------------------------------------------------------------------------------------------------

TEST(HierarchyFindWithoutARoot, Throws) {
    zelutil::test::clearProductVariables();
    setVariable("PATH", "");
    using ZelU::File::Exceptions::HierarchyNotFound;
    EXPECT_THROW(Hierarchy::FindFile("f", "share"), HierarchyNotFound);
    EXPECT_THROW(Hierarchy::FindFile("f", "share/local"), HierarchyNotFound);
    EXPECT_THROW(Hierarchy::FindExe("f", "share"), HierarchyNotFound);
    EXPECT_THROW(Hierarchy::FindDll("f", "share"), HierarchyNotFound);
}

TEST(HierarchyFindWithoutARoot, ANullNameThrowsNothing) {
    zelutil::test::clearProductVariables();
    setVariable("PATH", "");
    EXPECT_EQ(text(Hierarchy::FindFile(nullptr, "share")), "");
    EXPECT_EQ(text(Hierarchy::FindExe(nullptr, "share")), "");
    EXPECT_EQ(text(Hierarchy::FindDll(nullptr, "share")), "");
}

TEST(HierarchyFindWithoutARoot, AnswersAFileOfTheSiteAndPrintsNothing) {
    zelutil::test::clearProductVariables();
    setVariable("PATH", "");
    const TempDirectory site;
    setVariable("QTX_SITE", systemText(site.path()));
    writeTextFile(site / "f", "");
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(text(Hierarchy::FindFile("f", "share/local")), windowsText(site / "f"));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
