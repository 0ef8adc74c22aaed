// Replacing a file that somebody else has open, with every kind of sharing, and one with attributes.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/replace_file.h"
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

TEST_F(ReplaceWindowsFile, KeepsTheAttributes) {
    for (const DWORD attributes : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN}) {
        ASSERT_TRUE(SetFileAttributesW(file_.c_str(), attributes));
        EXPECT_EQ(replace("new"), Replaced::Yes);
        EXPECT_EQ(GetFileAttributesW(file_.c_str()), attributes | FILE_ATTRIBUTE_ARCHIVE);
    }
}

/// The access rights of the file, as the system tells them.
std::vector<unsigned char> rightsOf(const fs::path& file) {
    DWORD size = 0;
    GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<unsigned char> rights(size);
    EXPECT_TRUE(GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size));
    return rights;
}

TEST_F(ReplaceWindowsFile, KeepsTheAccessRights) {
    const auto usual = rightsOf(file_);
    auto fewer = usual;
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    PACL list = nullptr;
    ASSERT_TRUE(GetSecurityDescriptorDacl(fewer.data(), &present, &list, &defaulted));
    ASSERT_NE(list, nullptr);
    ASSERT_TRUE(DeleteAce(list, list->AceCount - 1U));
    ASSERT_TRUE(SetFileSecurityW(file_.c_str(), DACL_SECURITY_INFORMATION, fewer.data()));
    const auto before = rightsOf(file_);
    ASSERT_NE(before, usual);
    EXPECT_EQ(replace("new"), Replaced::Yes);
    EXPECT_EQ(rightsOf(file_), before);
    EXPECT_EQ(entries(), 1);
}

TEST_F(ReplaceWindowsFile, MakesAndReplacesFilesOfPathsThatLeaveNoRoomBeside) {
    fs::path parent = directory_.path();
    while (parent.native().size() < 190) {
        parent /= std::string(20, 'd');
    }
    fs::create_directories(parent);
    for (const std::size_t length : {228U, 229U, 230U, 245U, 258U, 259U}) {
        const fs::path file = parent / std::string(length - parent.native().size() - 1, 'n');
        ASSERT_EQ(file.native().size(), length);
        const std::string text = windowsText(file);
        EXPECT_EQ(replaceFile(text.c_str(), "first"), Replaced::Yes) << length;
        EXPECT_EQ(replaceFile(text.c_str(), "second"), Replaced::Yes) << length;
        EXPECT_EQ(readTextFile(file), "second") << length;
        EXPECT_EQ(std::distance(fs::directory_iterator(parent), {}), 1) << length;
        EXPECT_TRUE(keepCopy(text.c_str())) << length;
        EXPECT_EQ(std::distance(fs::directory_iterator(parent), {}), 2) << length;
        fs::remove_all(parent);
        fs::create_directories(parent);
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
