// Tests the decisions of a replacement on values: Wine makes no symbolic links and gives every file the archive
// attribute.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "platform/windows/replace_rules.h"

namespace zelutil::platform::windows {
namespace {

TEST(ReplaceRules, ANewFileIsToBeArchivedAndHasTheVisibleAttributesOfTheOld) {
    EXPECT_EQ(attributesOfNewFile(FILE_ATTRIBUTE_NORMAL), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(attributesOfNewFile(FILE_ATTRIBUTE_ARCHIVE), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(attributesOfNewFile(FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM),
              DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(attributesOfNewFile(FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_READONLY),
              DWORD{FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ARCHIVE});
}

TEST(ReplaceRules, TheContentsAreNoNamedStream) {
    EXPECT_FALSE(isNamedStream(L"::$DATA"));
    EXPECT_TRUE(isNamedStream(L":note:$DATA"));
    EXPECT_TRUE(isNamedStream(L":Zone.Identifier:$DATA"));
}

struct RoomRow {
    std::wstring full;
    std::wstring expected;
};

TEST(ReplaceRules, APathWithoutRoomBesideItIsExtended) {
    const std::wstring drive = L"C:\\" + std::wstring(216, L'n');
    const std::wstring longDrive = L"C:\\" + std::wstring(217, L'n');
    const std::wstring longest = L"C:\\" + std::wstring(256, L'n');
    const std::wstring tooLong = L"C:\\" + std::wstring(257, L'n');
    const std::wstring network = L"\\\\server\\share\\" + std::wstring(220, L'n');
    const std::wstring device = L"\\\\.\\" + std::wstring(230, L'n');
    const std::wstring extended = L"\\\\?\\C:\\" + std::wstring(230, L'n');
    const RoomRow rows[] = {
        {L"C:\\a", L"C:\\a"},
        {drive, drive},
        {longDrive, L"\\\\?\\" + longDrive},
        {longest, L"\\\\?\\" + longest},
        {tooLong, tooLong},
        {network, L"\\\\?\\UNC\\server\\share\\" + std::wstring(220, L'n')},
        {device, device},
        {extended, extended},
    };
    for (const RoomRow& row : rows) {
        EXPECT_EQ(pathWithRoomBeside(row.full, row.full), row.expected);
    }
    EXPECT_EQ(pathWithRoomBeside(L"relative", L"C:\\relative"), L"relative");
    EXPECT_EQ(pathWithRoomBeside(L"relative", longDrive), L"\\\\?\\" + longDrive);
}

constexpr std::uint32_t kMountPointTag = 0xA0000003;
constexpr std::uint32_t kSymbolicLinkTag = 0xA000000C;

/// Reparse data as the system has it, with a second name, which is for people, in front of the one that counts.
std::string reparseData(std::uint32_t tag, const std::wstring& name, bool isRelative) {
    const std::wstring shown = L"shown";
    const auto length = static_cast<std::uint16_t>(name.size() * sizeof(wchar_t));
    const auto shownLength = static_cast<std::uint16_t>(shown.size() * sizeof(wchar_t));
    std::string data(20U + shownLength + length, '\0');
    const auto put = [&](std::size_t place, const void* value, std::size_t size) {
        std::memcpy(data.data() + place, value, size);
    };
    const std::uint32_t flags = isRelative ? 1 : 0;
    put(0, &tag, sizeof tag);
    put(8, &shownLength, sizeof shownLength);
    put(10, &length, sizeof length);
    put(14, &shownLength, sizeof shownLength);
    put(16, &flags, sizeof flags);
    put(20, shown.data(), shownLength);
    put(20U + shownLength, name.data(), length);
    return data;
}

struct LinkRow {
    const wchar_t* link;
    const wchar_t* name;
    bool isRelative;
    const wchar_t* target;
};

TEST(ReplaceRules, ALinkNamesAFile) {
    constexpr LinkRow kRows[] = {
        {L"C:\\a\\link", L"b", true, L"C:\\a\\b"},
        {L"C:\\a\\link", L"..\\b", true, L"C:\\a\\..\\b"},
        {L"C:/a/link", L"b", true, L"C:/a/b"},
        {L"link", L"b", true, L"b"},
        {L"\\\\?\\C:\\a\\link", L"..\\b", true, L"C:\\a\\..\\b"},
        {L"\\\\?\\UNC\\server\\share\\link", L"b", true, L"\\\\server\\share\\b"},
        {L"C:\\a\\link", L"\\??\\D:\\b", false, L"D:\\b"},
        {L"C:\\a\\link", L"\\??\\UNC\\server\\share\\b", false, L"\\\\server\\share\\b"},
    };
    for (const LinkRow& row : kRows) {
        const auto target = targetOfLink(reparseData(kSymbolicLinkTag, row.name, row.isRelative), row.link);
        ASSERT_TRUE(target);
        EXPECT_EQ(*target, row.target);
    }
}

TEST(ReplaceRules, OtherOrDamagedDataNameNone) {
    const std::string data = reparseData(kSymbolicLinkTag, L"b", true);
    EXPECT_FALSE(targetOfLink(reparseData(kMountPointTag, L"b", true), L"C:\\link"));
    EXPECT_FALSE(targetOfLink(reparseData(kSymbolicLinkTag, L"", true), L"C:\\link"));
    for (std::size_t size = 0; size < data.size(); ++size) {
        EXPECT_FALSE(targetOfLink(data.substr(0, size), L"C:\\link")) << size;
    }
    std::string odd = data;
    odd[10] = 1;
    EXPECT_FALSE(targetOfLink(odd, L"C:\\link"));
}

}  // namespace
}  // namespace zelutil::platform::windows
