// File operations where memory runs out at every possible place.
#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <string>

#include "support/scarce_memory.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

using ZelU::File::Path;
using zelutil::test::failsWith;
using zelutil::test::readTextFile;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

TEST(FilesOutOfMemory, AFileThatCannotBeEnteredForDeletionStays) {
    const TempDirectory directory;
    writeTextFile(directory / "file", "x");
    Path path(windowsText(directory / "file"));
    int failures = 0;
    // More entries than the list takes without growing.
    for (int entry = 0; entry < 100; ++entry) {
        int allowed = 0;
        while (failsWith(allowed, [&] { path.DeleteMeOnExit(); })) {
            ++allowed;
            ASSERT_TRUE(path.Exists()) << "entry " << entry << ", allocation " << allowed;
        }
        failures += allowed;
    }
    EXPECT_GE(failures, 100);
    EXPECT_TRUE(path.Exists());
}

struct Change {
    const char* name;
    void (*make)(Path& path);
};

const std::string kLongText =
    "c:/a directory whose text is longer than any that lies in the object/" + std::string(200, 'x');
const std::string kLongRelative = "a relative path/" + std::string(200, 'x');
const Path kLongPath(kLongText);

const Change kChanges[] = {
    {"absolute text", [](Path& path) { path = kLongText.c_str(); }},
    {"relative text", [](Path& path) { path = kLongRelative.c_str(); }},
    {"text with dots", [](Path& path) { path = (kLongText + "/../b/./c").c_str(); }},
    {"string", [](Path& path) { path = kLongRelative; }},
    {"path", [](Path& path) { path = kLongPath; }},
    {"moved path", [](Path& path) { path = Path(kLongRelative); }},
    {"component", [](Path& path) { path += kLongText.c_str(); }},
    {"component string", [](Path& path) { path += kLongText; }},
};

/// All that can be asked of it.
std::string answersOf(const Path& path) {
    Path relative = path;
    relative = "r";
    return std::string(path) + '|' + path.Name() + '|' + std::string(path.Parent()) + '|' + path.Extension() + '|' +
           path.GetPath4Shell() + '|' + path.GetURI(false) + '|' + std::string(relative) +
           (path.Exists() ? "there" : "not there");
}

TEST(PathsOutOfMemory, AChangeThatFailsLeavesThePathAsItWas) {
    const Path kBefore[] = {Path(), Path("c:/short"), Path("c:/with blank"), Path("relative path"), kLongPath};
    for (const Change& change : kChanges) {
        for (const Path& before : kBefore) {
            const std::string answers = answersOf(before);
            Path path = before;
            int allowed = 0;
            while (failsWith(allowed, [&] { change.make(path); })) {
                EXPECT_EQ(answersOf(path), answers) << change.name << ", allocation " << allowed;
                ++allowed;
            }
            Path expected = before;
            change.make(expected);
            EXPECT_EQ(answersOf(path), answersOf(expected)) << change.name;
        }
    }
}

TEST(FilesOutOfMemory, ACopyThatCannotBeMadeLeavesTheTargetAsItWas) {
    const TempDirectory directory;
    writeTextFile(directory / "from", "some bytes that are more than a short text has room for");
    writeTextFile(directory / "to", "old");
    Path from(windowsText(directory / "from"));
    const Path to(windowsText(directory / "to"));
    bool copied = false;
    int allowed = 0;
    while (failsWith(allowed, [&] { copied = from.CopyTheFile(to); })) {
        ++allowed;
        EXPECT_FALSE(copied);
        EXPECT_EQ(readTextFile(directory / "to"), "old");
    }
    EXPECT_TRUE(copied);
    EXPECT_EQ(readTextFile(directory / "to"), readTextFile(directory / "from"));
    if (allowed == 0) {
        GTEST_SKIP() << "texts get their memory from the runtime's own library on this system";
    }
}

}  // namespace
