// Paths of a system with drives, in its own encoding and in the narrow one.
#include <gtest/gtest.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/native_path.h>

#include <filesystem>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::fromNative;
using host::nativePath;
using ZelU::File::Path;

struct ToRow {
    const char* text;
    const wchar_t* file;
};

TEST(NativePathWithDrives, OfPaths) {
    const ToRow rows[] = {
        {"C:\\home\\ann", L"C:\\home\\ann"},
        {"c:/home/ann", L"c:\\home\\ann"},
        {"Z:\\x", L"Z:\\x"},
        // A drive alone would be the current directory of that drive.
        {"C:", L"C:\\"},
        {"C:\\", L"C:\\"},
        {"\\\\server\\share\\x", L"\\\\server\\share\\x"},
        {"C:\\two words", L"C:\\two words"},
        // In the code page of western Europe.
        {"C:\\\xE4", L"C:\\\u00E4"},
    };
    for (const ToRow& row : rows) {
        EXPECT_EQ(nativePath(Path(std::string(row.text))).native(), row.file) << row.text;
    }
}

struct FromRow {
    const wchar_t* file;
    const char* text;
};

TEST(NativePathWithDrives, OfFiles) {
    const FromRow rows[] = {
        {L"C:\\", "C:"},
        {L"C:/", "C:"},
        {L"C:\\home", "C:\\home"},
        {L"C:/home/ann/", "C:\\home\\ann"},
        {L"c:\\home\\..\\x", "c:\\x"},
        {L"\\\\server\\share\\x", "\\\\server\\share\\x"},
        {L"C:\\two words", "C:\\two words"},
        {L"C:\\\u00E4", "C:\\\xE4"},
    };
    for (const FromRow& row : rows) {
        EXPECT_STREQ(fromNative(row.file), row.text) << row.text;
    }
}

TEST(NativePathWithDrives, OfFilesThatNoTextNames) {
    // The superscript four is not in the code page, and a plain four would name another file.
    for (const wchar_t* const file :
         {L"C:\\\u0394\u65e5", L"C:\\\u2074", L"C:\\a?b", L"C:\\a*b", L"C:\\a\"b", L"C:\\a|b", L"\\\\?\\C:\\home",
          // The system takes it for a device, whose name a path would change.
          L"con"}) {
        EXPECT_STREQ(fromNative(file), "");
    }
}

TEST(NativePathWithDrives, OfBytesThatAreNoUtf8ThereIsNone) {
    const zelutil_text* text = nullptr;
    ASSERT_EQ(zelutil_path_from_native("C:\\\xff\xfe", &text), ZELUTIL_OK);
    EXPECT_STREQ(text->text, "");
    zelutil_text_free(text);
}

TEST(NativePathWithDrives, OfAFileBeyondAscii) {
    const TempDirectory directory;
    const fs::path file = directory.path() / L"\u00E4\u00F6";
    writeTextFile(file, "bytes");
    ASSERT_TRUE(fromNative(file).Exists());
    EXPECT_EQ(readTextFile(nativePath(fromNative(file))), "bytes");
    EXPECT_EQ(nativePath(fromNative(file)), file);
}

}  // namespace
}  // namespace zelutil::test
