// The seam makes these promises of the environment, directories and files on every system.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/modules.h"
#include "support/child_process.h"
#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/symbolic_link.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::readTextFile;
using test::setVariable;
using test::systemList;
using test::systemText;
using test::TempDirectory;
using test::unsetVariable;
using test::windowsText;
using test::writeTextFile;

constexpr char kVariable[] = "ZELUTIL_TEST_VARIABLE";
constexpr const char* kNull = nullptr;
constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

std::string withBackslashes(std::string text) {
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

// --- Fixed texts and environment ------------------------------------------------------------------------------------

TEST(PlatformTexts, NameTheTemporaryDirectoryAndTheLibrary) {
    EXPECT_EQ(fixedTemporaryDirectory(), test::fixedTemporaryDirectory());
    EXPECT_EQ(libraryFileName(), test::libraryFileName());
}

TEST(PlatformTexts, ASystemsPathIsTranslated) {
    const TempDirectory directory;
    EXPECT_EQ(withBackslashes(fromSystemPath(systemText(directory.path()))), windowsText(directory.path()));
    EXPECT_EQ(fromSystemPath("C:\\a"), "C:\\a");
    EXPECT_EQ(fromSystemPath("Z:/a"), "Z:/a");
    EXPECT_EQ(fromSystemPath("a"), "a");
    EXPECT_EQ(fromSystemPath(""), "");
}

TEST(PlatformEnvironment, UndefinedEmptyAndTextAreThreeThings) {
    unsetVariable(kVariable);
    EXPECT_EQ(environment(kVariable), std::nullopt);
    EXPECT_EQ(environmentPath(kVariable), std::nullopt);
    EXPECT_EQ(environmentPathList(kVariable), std::nullopt);
    setVariable(kVariable, "");
    EXPECT_EQ(environment(kVariable), "");
    EXPECT_EQ(environmentPath(kVariable), "");
    EXPECT_EQ(environmentPathList(kVariable), "");
    setVariable(kVariable, "some text");
    EXPECT_EQ(environment(kVariable), "some text");
    EXPECT_EQ(environment(kNull), std::nullopt);
}

TEST(PlatformEnvironment, ALongValueIsWhole) {
    for (const std::size_t length : {259U, 260U, 261U, 519U, 520U, 521U, 5'000U, 30'000U}) {
        const std::string value(length, 'x');
        setVariable(kVariable, value);
        EXPECT_EQ(environment(kVariable), value) << length;
    }
}

TEST(PlatformEnvironment, OnlyPathsAreTranslated) {
    setVariable(kVariable, "/opt/x");
    EXPECT_EQ(environment(kVariable), "/opt/x");
    const TempDirectory directory;
    setVariable(kVariable, systemText(directory.path()));
    EXPECT_EQ(withBackslashes(environmentPath(kVariable).value_or("")), windowsText(directory.path()));
    setVariable(kVariable, "C:\\a\\b");
    EXPECT_EQ(environmentPath(kVariable), "C:\\a\\b");
}

TEST(PlatformEnvironment, AListHasSemicolons) {
    const TempDirectory directory;
    setVariable(kVariable, systemList({systemText(directory / "a"), "", systemText(directory / "b")}));
    EXPECT_EQ(withBackslashes(environmentPathList(kVariable).value_or("")),
              windowsText(directory / "a") + ";;" + windowsText(directory / "b"));
}

// --- Directories and files ------------------------------------------------------------------------------------------

class PlatformFiles : public testing::Test {
protected:
    std::string text(const std::string& name) const { return windowsText(directory / name); }

    void write(const std::string& name, const std::string& bytes) const { writeTextFile(directory / name, bytes); }

    std::string bytesOf(const std::string& name) const { return readTextFile(directory / name); }

    bool isThere(const std::string& name) const { return fs::exists(directory / name); }

    TempDirectory directory;
};

TEST_F(PlatformFiles, TheCurrentDirectoryIsAbsoluteWithBackslashes) {
    fs::create_directory(directory / "my dir");
    EXPECT_TRUE(changeDirectory(text("my dir").c_str()));
    EXPECT_EQ(currentDirectory(), text("my dir"));
    EXPECT_EQ(fs::current_path(), directory / "my dir");
    EXPECT_TRUE(changeDirectory(".."));
    EXPECT_EQ(currentDirectory(), windowsText(directory.path()));
}

TEST_F(PlatformFiles, ADirectoryThatIsNoneIsNotEntered) {
    fs::current_path(directory.path());
    write("file", "x");
    for (const char* const none : {"", kNull, "missing", "file", "a?"}) {
        EXPECT_FALSE(changeDirectory(none));
    }
    EXPECT_EQ(currentDirectory(), windowsText(directory.path()));
}

TEST_F(PlatformFiles, ADriveAloneIsItsRoot) {
    const std::string drive = windowsText(directory.path()).substr(0, 2);
    fs::current_path(directory.path());
    const auto status = fileStatus(drive.c_str());
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->directory);
    EXPECT_TRUE(makeDirectories(drive.c_str()));
    EXPECT_TRUE(changeDirectory(drive.c_str()));
    EXPECT_EQ(currentDirectory(), drive + "\\");
}

TEST_F(PlatformFiles, StatusOfAFile) {
    write("file.txt", "12345");
    const auto status = fileStatus(text("file.txt").c_str());
    ASSERT_TRUE(status);
    EXPECT_FALSE(status->directory);
    EXPECT_FALSE(status->ownerExecute);
    EXPECT_TRUE(status->ownerWrite);
    EXPECT_EQ(status->size, 5);
}

TEST_F(PlatformFiles, StatusOfADirectory) {
    const auto status = fileStatus(windowsText(directory.path()).c_str());
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->directory);
    EXPECT_TRUE(status->ownerExecute);
}

TEST_F(PlatformFiles, StatusOfAnExecutable) {
    for (const char* const name : {"tool.exe", "tool.COM", "tool.bat", "tool.cmd"}) {
        write(name, "");
        fs::permissions(directory / name, fs::perms::owner_exec, fs::perm_options::add);
        const auto status = fileStatus(text(name).c_str());
        ASSERT_TRUE(status);
        EXPECT_TRUE(status->ownerExecute) << name;
    }
    // The dot belongs to the directory, the letters are no extension.
    for (const char* const name : {"dir.exe/file", "exe", "a.exe.txt", "a.ex"}) {
        write(name, "");
        const auto status = fileStatus(text(name).c_str());
        ASSERT_TRUE(status);
        EXPECT_FALSE(status->ownerExecute) << name;
    }
}

TEST_F(PlatformFiles, StatusOfAReadOnlyFile) {
    write("file", "x");
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::remove);
    const auto status = fileStatus(text("file").c_str());
    ASSERT_TRUE(status);
    EXPECT_FALSE(status->ownerWrite);
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(PlatformFiles, NothingHasNoStatus) {
    write("file", "x");
    for (const std::string& none : {text("missing"), text("missing/file"), text("file") + "\\below", std::string()}) {
        EXPECT_FALSE(fileStatus(none.c_str())) << none;
    }
    EXPECT_FALSE(fileStatus(kNull));
}

TEST_F(PlatformFiles, OfASymbolicLinkTheFileItLeadsToCounts) {
    write("file", "bytes");
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::remove);
    if (!test::makeFileLink(directory / "file", directory / "link") ||
        !test::makeFileLink(directory / "missing", directory / "loose")) {
        GTEST_SKIP() << "no symbolic links on this system";
    }
    const auto status = fileStatus(text("link").c_str());
    ASSERT_TRUE(status);
    EXPECT_FALSE(status->directory);
    EXPECT_FALSE(status->ownerWrite);
    EXPECT_EQ(status->size, 5);
    EXPECT_FALSE(fileStatus(text("loose").c_str()));
    EXPECT_EQ(readFile(text("link").c_str(), kNoLimit), "bytes");
    EXPECT_TRUE(removeFile(text("link").c_str()));
    EXPECT_TRUE(isThere("file"));
    fs::permissions(directory / "file", fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(PlatformFiles, SeparatorsMayBeSlashesAndDoubled) {
    write("dir/file", "bytes");
    std::string path = text("dir/file");
    std::replace(path.begin(), path.end(), '\\', '/');
    EXPECT_EQ(readFile(path.c_str(), kNoLimit), "bytes");
    EXPECT_EQ(readFile((text("dir") + "\\\\file").c_str(), kNoLimit), "bytes");
    EXPECT_EQ(readFile((text("dir") + "\\/file").c_str(), kNoLimit), "bytes");
    EXPECT_EQ(readFile((text("dir") + "\\..\\dir\\.\\file").c_str(), kNoLimit), "bytes");
}

TEST_F(PlatformFiles, RenamesFilesAndDirectories) {
    write("from", "bytes");
    EXPECT_TRUE(renameFile(text("from").c_str(), text("to").c_str()));
    EXPECT_FALSE(isThere("from"));
    EXPECT_EQ(bytesOf("to"), "bytes");
    write("dir/file", "x");
    EXPECT_TRUE(renameFile(text("dir").c_str(), text("moved").c_str()));
    EXPECT_FALSE(isThere("dir"));
    EXPECT_EQ(bytesOf("moved/file"), "x");
}

TEST_F(PlatformFiles, RenamingNeverReplaces) {
    write("from", "new");
    write("to", "old");
    fs::create_directory(directory / "empty");
    fs::create_directory(directory / "dir");
    EXPECT_FALSE(renameFile(text("from").c_str(), text("to").c_str()));
    EXPECT_FALSE(renameFile(text("from").c_str(), text("empty").c_str()));
    EXPECT_FALSE(renameFile(text("dir").c_str(), text("empty").c_str()));
    EXPECT_FALSE(renameFile(text("dir").c_str(), text("to").c_str()));
    EXPECT_EQ(bytesOf("from"), "new");
    EXPECT_EQ(bytesOf("to"), "old");
    EXPECT_TRUE(isThere("dir"));
    EXPECT_TRUE(isThere("empty"));
}

TEST_F(PlatformFiles, RenamingFromOrToNowhereIsRefused) {
    write("from", "x");
    EXPECT_FALSE(renameFile(text("missing").c_str(), text("to").c_str()));
    EXPECT_FALSE(renameFile(text("from").c_str(), text("missing/to").c_str()));
    EXPECT_FALSE(renameFile(text("from").c_str(), ""));
    EXPECT_FALSE(renameFile(text("from").c_str(), kNull));
    EXPECT_FALSE(renameFile("", text("to").c_str()));
    EXPECT_FALSE(renameFile(kNull, text("to").c_str()));
    EXPECT_EQ(bytesOf("from"), "x");
    EXPECT_FALSE(isThere("to"));
}

TEST_F(PlatformFiles, RemovesAFileButNoDirectory) {
    write("file", "x");
    fs::create_directory(directory / "empty");
    EXPECT_TRUE(removeFile(text("file").c_str()));
    EXPECT_FALSE(isThere("file"));
    for (const std::string& none : {text("file"), text("missing/file"), text("empty"), std::string()}) {
        EXPECT_FALSE(removeFile(none.c_str())) << none;
    }
    EXPECT_FALSE(removeFile(kNull));
    EXPECT_TRUE(isThere("empty"));
}

TEST_F(PlatformFiles, MakesADirectoryAndItsParents) {
    EXPECT_TRUE(makeDirectories(text("a/b/my dir").c_str()));
    EXPECT_TRUE(fs::is_directory(directory / "a/b/my dir"));
    EXPECT_TRUE(makeDirectories(text("a/b").c_str())) << "it is there";
    EXPECT_TRUE(makeDirectories((text("c") + "\\d/").c_str()));
    EXPECT_TRUE(fs::is_directory(directory / "c/d"));
    fs::current_path(directory.path());
    EXPECT_TRUE(makeDirectories("e\\f"));
    EXPECT_TRUE(fs::is_directory(directory / "e/f"));
}

TEST_F(PlatformFiles, MakesNoDirectoryWhereAFileIs) {
    write("file", "x");
    EXPECT_FALSE(makeDirectories(text("file").c_str()));
    EXPECT_FALSE(makeDirectories(text("file/below").c_str()));
    EXPECT_FALSE(makeDirectories(""));
    EXPECT_FALSE(makeDirectories(kNull));
    EXPECT_EQ(bytesOf("file"), "x");
}

TEST_F(PlatformFiles, WritesAndReadsBytesAsTheyAre) {
    std::string all;
    for (int code = 0; code < 256; ++code) {
        all += static_cast<char>(code);
    }
    for (const std::string& bytes : {std::string(), std::string("a\r\nb\n\x1a"), all, std::string(3'000'000, 'x')}) {
        EXPECT_TRUE(writeFile(text("file").c_str(), bytes));
        EXPECT_EQ(bytesOf("file"), bytes);
        EXPECT_EQ(readFile(text("file").c_str(), kNoLimit), bytes);
    }
    EXPECT_TRUE(writeFile(text("file").c_str(), "short"));
    EXPECT_EQ(bytesOf("file"), "short") << "nothing is left of a longer file";
}

TEST_F(PlatformFiles, ANewFileIsWrittenOnlyWhereNothingIs) {
    EXPECT_TRUE(writeNewFile(text("file").c_str(), "first"));
    EXPECT_EQ(bytesOf("file"), "first");
    EXPECT_FALSE(writeNewFile(text("file").c_str(), "x"));
    EXPECT_EQ(bytesOf("file"), "first");
    fs::create_directory(directory / "dir");
    for (const std::string& none : {text("dir"), text("missing/file"), text("fil?"), std::string()}) {
        EXPECT_FALSE(writeNewFile(none.c_str(), "x")) << none;
    }
    EXPECT_FALSE(writeNewFile(kNull, "x"));
}

TEST_F(PlatformFiles, ANewFileIsMadeWhereALinkToNothingLeads) {
    if (!test::makeFileLink("second", directory / "first") || !test::makeFileLink("target", directory / "second")) {
        GTEST_SKIP() << "no symbolic links on this system";
    }
    EXPECT_TRUE(writeNewFile(text("first").c_str(), "bytes"));
    EXPECT_TRUE(fs::is_symlink(directory / "first"));
    EXPECT_TRUE(fs::is_symlink(directory / "second"));
    EXPECT_EQ(bytesOf("target"), "bytes");
    EXPECT_FALSE(writeNewFile(text("first").c_str(), "x")) << "it leads to something by now";
    EXPECT_EQ(bytesOf("target"), "bytes");
    fs::create_symlink("round", directory / "round");
    EXPECT_FALSE(writeNewFile(text("round").c_str(), "x"));
}

TEST_F(PlatformFiles, ReadsNoMoreThanIsAllowed) {
    write("file", "12345");
    EXPECT_EQ(readFile(text("file").c_str(), 6), "12345");
    EXPECT_EQ(readFile(text("file").c_str(), 5), "12345");
    EXPECT_EQ(readFile(text("file").c_str(), 4), std::nullopt);
    EXPECT_EQ(readFile(text("file").c_str(), 0), std::nullopt);
    write("file", "");
    EXPECT_EQ(readFile(text("file").c_str(), 0), "");
}

TEST_F(PlatformFiles, ReadsNothingThatIsNoFile) {
    write("file", "x");
    for (const std::string& none : {text("missing"), text("missing/file"), text("file") + "\\below",
                                    windowsText(directory.path()), std::string()}) {
        EXPECT_EQ(readFile(none.c_str(), kNoLimit), std::nullopt) << none;
    }
    EXPECT_EQ(readFile(kNull, kNoLimit), std::nullopt);
}

TEST_F(PlatformFiles, WritesNothingWhereNoFileCanBe) {
    write("file", "x");
    for (const std::string& none :
         {text("missing/file"), text("file") + "\\below", windowsText(directory.path()), std::string()}) {
        EXPECT_FALSE(writeFile(none.c_str(), "y")) << none;
    }
    EXPECT_FALSE(writeFile(kNull, "y"));
    EXPECT_FALSE(isThere("missing"));
    EXPECT_EQ(bytesOf("file"), "x");
}

TEST_F(PlatformFiles, ATextWithACharacterOfNoNameNamesNoFile) {
    write("file", "x");
    for (const char character : {'"', '*', '?', '<', '>', '|'}) {
        const std::string none = text("fil") + character;
        EXPECT_FALSE(writeFile(none.c_str(), "y")) << none;
        EXPECT_FALSE(makeDirectories(none.c_str())) << none;
        EXPECT_FALSE(makeDirectories((text("new") + "\\a" + character + "\\b").c_str())) << "nor any parent";
        EXPECT_FALSE(renameFile(text("file").c_str(), none.c_str())) << none;
        EXPECT_FALSE(fileStatus(none.c_str())) << none;
        EXPECT_EQ(readFile(none.c_str(), kNoLimit), std::nullopt) << none;
        EXPECT_FALSE(removeFile(none.c_str())) << none;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 1);
    EXPECT_EQ(bytesOf("file"), "x");
}

TEST_F(PlatformFiles, NamesMayHaveAnyOtherBytes) {
    for (const char* const name : {"caf\xe9", "a b", ".x", "x!#$%&'()+,-;=@[]^_`{}~"}) {
        const std::string path = windowsText(directory.path()) + "\\" + name;
        EXPECT_TRUE(writeFile(path.c_str(), name)) << name;
        EXPECT_EQ(readFile(path.c_str(), kNoLimit), name) << name;
        EXPECT_TRUE(removeFile(path.c_str())) << name;
    }
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST_F(PlatformFiles, TheModulesPathIsThatOfAFile) {
    const std::string path = modulePath();
    const auto status = fileStatus(path.c_str());
    ASSERT_TRUE(status) << path;
    EXPECT_FALSE(status->directory);
    EXPECT_NE(path.find("platform_files_test"), std::string::npos) << path;
}

}  // namespace
}  // namespace zelutil::platform
