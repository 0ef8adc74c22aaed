#include <gtest/gtest.h>
#include <zelutil/host/c_api.h>
#include <zelutil/version.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/environment.h"
#include "support/shared_module.h"
#include "support/temp_directory.h"

// This program does not link the library: it loads it by each of the names that its file has on Linux.
namespace {

namespace fs = std::filesystem;
using zelutil::test::functionOf;
using zelutil::test::loadModule;
using zelutil::test::moduleIsLoaded;
using zelutil::test::TempDirectory;
using zelutil::test::unloadModule;
using zelutil::test::windowsText;

const fs::path kDirectory = fs::path(ZELUTIL_TEST_LIBRARY).parent_path();
const char* const kOfHosts = "libzelutil.so";
const char* const kOfTheLoader = "libzelutil.so.1";
const std::string kOfTheFile = std::string(kOfHosts) + "." ZELUTIL_VERSION;

class LibraryNames : public ::testing::Test {
protected:
    LibraryNames() {
        zelutil::test::clearProductVariables();
        fs::create_directories(programs);
        for (const std::string& name : names) {
            fs::copy(kDirectory / name, programs / name, fs::copy_options::copy_symlinks);
        }
    }

    const std::vector<std::string> names = {kOfTheFile, kOfTheLoader, kOfHosts};
    TempDirectory product;
    fs::path programs = product / "tools/bin";
};

std::string rootOf(void* library) {
    const zelutil_text* text = nullptr;
    EXPECT_EQ(functionOf<decltype(&zelutil_get_root)>(library, "zelutil_get_root")(&text), ZELUTIL_OK);
    std::string root = text->text;
    functionOf<decltype(&zelutil_text_free)>(library, "zelutil_text_free")(text);
    return root;
}

TEST_F(LibraryNames, EachLeadsToTheNext) {
    EXPECT_EQ(fs::read_symlink(kDirectory / kOfHosts), kOfTheLoader);
    EXPECT_EQ(fs::read_symlink(kDirectory / kOfTheLoader), kOfTheFile);
    EXPECT_FALSE(fs::is_symlink(kDirectory / kOfTheFile));
}

TEST_F(LibraryNames, LoadOneLibraryWhichTheLoaderKnowsByItsMajorVersion) {
    for (const std::string& name : names) {
        void* const library = loadModule(programs / name);
        for (const std::string& other : names) {
            EXPECT_TRUE(moduleIsLoaded(programs / other)) << name << ", " << other;
        }
        EXPECT_TRUE(moduleIsLoaded(kOfTheLoader)) << name;
        unloadModule(library);
        EXPECT_FALSE(moduleIsLoaded(kOfTheLoader)) << name;
    }
}

TEST_F(LibraryNames, AllLetTheLibraryFindItsInstallation) {
    for (const std::string& name : names) {
        void* const library = loadModule(programs / name);
        EXPECT_EQ(rootOf(library), windowsText(product.path())) << name;
        unloadModule(library);
    }
}

}  // namespace
