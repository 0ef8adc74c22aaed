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
