#include <gtest/gtest.h>
#include <windows.h>
#include <zelutil/version.h>

#include <string>
#include <vector>

// The version that Windows shows of a file, asked of it as the explorer and installers ask.
namespace {

class VersionResource {
public:
    explicit VersionResource(const char* file) : bytes_(GetFileVersionInfoSizeA(file, nullptr)) {
        EXPECT_NE(GetFileVersionInfoA(file, 0, static_cast<DWORD>(bytes_.size()), bytes_.data()), 0) << file;
    }

    /// Returns a text of the part in English and Unicode; empty where there is none of that name.
    std::string text(const std::string& name) const {
        return static_cast<const char*>(value("\\StringFileInfo\\040904b0\\" + name));
    }

    const VS_FIXEDFILEINFO& numbers() const { return *static_cast<const VS_FIXEDFILEINFO*>(value("\\")); }

private:
    const void* value(const std::string& name) const {
        void* found = nullptr;
        UINT length = 0;
        return VerQueryValueA(bytes_.data(), name.c_str(), &found, &length) != 0 ? found : "";
    }

    std::vector<char> bytes_;
};

void expectVersion(const VersionResource& resource) {
    const DWORD high = ZELUTIL_VERSION_MAJOR * 0x10000 + ZELUTIL_VERSION_MINOR;
    const DWORD low = ZELUTIL_VERSION_PATCH * 0x10000;
    const VS_FIXEDFILEINFO& numbers = resource.numbers();
    EXPECT_EQ(numbers.dwFileVersionMS, high);
    EXPECT_EQ(numbers.dwFileVersionLS, low);
    EXPECT_EQ(numbers.dwProductVersionMS, high);
    EXPECT_EQ(numbers.dwProductVersionLS, low);
    EXPECT_EQ(resource.text("FileVersion"), ZELUTIL_VERSION);
    EXPECT_EQ(resource.text("ProductVersion"), ZELUTIL_VERSION);
    EXPECT_EQ(resource.text("ProductName"), "zelutil");
    EXPECT_EQ(resource.text("CompanyName"), "");
}

TEST(VersionResource, OfTheLibrary) {
    const VersionResource resource(ZELUTIL_TEST_LIBRARY);
    ASSERT_FALSE(HasFailure());
    expectVersion(resource);
    EXPECT_EQ(resource.text("OriginalFilename"), "zelutil.dll");
    EXPECT_EQ(resource.text("FileDescription"), "Shared utility library of a printed-circuit-board design suite");
    EXPECT_EQ(resource.numbers().dwFileType, static_cast<DWORD>(VFT_DLL));
}

#ifdef ZELUTIL_TEST_COMMAND  // The command is built where the headers it needs are there.
TEST(VersionResource, OfTheCommand) {
    const VersionResource resource(ZELUTIL_TEST_COMMAND);
    ASSERT_FALSE(HasFailure());
    expectVersion(resource);
    EXPECT_EQ(resource.text("OriginalFilename"), "zelutil.exe");
    EXPECT_EQ(resource.text("FileDescription"), "Preferences and shortcuts of the design suite, from a shell");
    EXPECT_EQ(resource.numbers().dwFileType, static_cast<DWORD>(VFT_APP));
}
#endif

}  // namespace
