// Replacing a file that somebody else has open, with every kind of sharing, and one with attributes.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "platform/platform.h"
#include "support/held_file.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using test::HeldFile;
using test::readTextFile;
using test::TempDirectory;
using test::windowsText;
using test::writeTextFile;

class ReplaceWindowsFile : public testing::Test {
protected:
    ReplaceWindowsFile() { writeTextFile(file_, "old contents"); }

    Replaced replace(std::string_view bytes) { return replaceFile(windowsText(file_).c_str(), bytes); }

    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(directory_.path()), {}); }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
};

struct SharingRow {
    DWORD sharing;
    Replaced replaced;
};

TEST_F(ReplaceWindowsFile, WhileSomebodyHoldsTheFileItIsWrittenWhereTheySharedWriting) {
    const SharingRow rows[] = {
        {0, Replaced::No},
        {FILE_SHARE_READ, Replaced::No},
        {FILE_SHARE_READ | FILE_SHARE_DELETE, Replaced::No},
        {FILE_SHARE_READ | FILE_SHARE_WRITE, Replaced::Yes},
        {FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, Replaced::Yes},
    };
    for (const SharingRow& row : rows) {
        writeTextFile(file_, "old contents");
        {
            const HeldFile held(file_, row.sharing);
            EXPECT_EQ(replace("new"), row.replaced) << row.sharing;
        }
        EXPECT_EQ(readTextFile(file_), row.replaced == Replaced::Yes ? "new" : "old contents") << row.sharing;
        EXPECT_EQ(entries(), 1) << row.sharing;
    }
}

TEST_F(ReplaceWindowsFile, LeavesAReadOnlyFileAsItIs) {
    ASSERT_TRUE(SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(replace("new"), Replaced::No);
    ASSERT_TRUE(SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(readTextFile(file_), "old contents");
    EXPECT_EQ(entries(), 1);
}

TEST_F(ReplaceWindowsFile, ReplacesAgainOnceTheFileIsLetGo) {
    {
        const HeldFile held(file_, 0);
        EXPECT_EQ(replace("new"), Replaced::No);
    }
    EXPECT_EQ(replace("newer"), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), "newer");
}

TEST_F(ReplaceWindowsFile, LeavesTheFileAnotherProcessIsStillWriting) {
    const fs::path written = directory_ / "tessel_settings.cfg.zelutil-00000001-00000000.tmp";
    writeTextFile(written, "half");
    {
        const HeldFile writer(written, 0);
        EXPECT_EQ(replace("new"), Replaced::Yes);
        EXPECT_TRUE(fs::exists(written));
    }
    EXPECT_EQ(replace("newer"), Replaced::Yes);
    EXPECT_FALSE(fs::exists(written));
}

}  // namespace
}  // namespace zelutil::platform
