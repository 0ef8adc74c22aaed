#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/environment.h"
#include "support/shared_module.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

// This program does not link the library, so that it is in the process only while a test holds it there.
namespace {

namespace fs = std::filesystem;
using zelutil::test::functionOf;
using zelutil::test::loadModule;
using zelutil::test::moduleIsLoaded;
using zelutil::test::TempDirectory;
using zelutil::test::unloadModule;
using zelutil::test::windowsText;

const fs::path kLibrary = ZELUTIL_TEST_LIBRARY;
const fs::path kPlugin = ZELUTIL_TEST_PLUGIN;

class Load : public ::testing::Test {
protected:
    Load() { zelutil::test::clearProductVariables(); }
};

TEST_F(Load, TheLibraryIsNotThereBeforeAndAfter) {
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
    void* const library = loadModule(kLibrary);
    EXPECT_TRUE(moduleIsLoaded(kLibrary));
    unloadModule(library);
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

TEST_F(Load, UnusedComesAndGoesAThousandTimes) {
    for (int round = 0; round < 1000; ++round) {
        unloadModule(loadModule(kLibrary));
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST_F(Load, APluginTakesTheLibraryWithIt) {
    void* const plugin = loadModule(kPlugin);
    EXPECT_TRUE(moduleIsLoaded(kLibrary));
    unloadModule(plugin);
    EXPECT_FALSE(moduleIsLoaded(kPlugin));
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

TEST_F(Load, FilesEnteredForDeletionGoWithTheLibrary) {
    const TempDirectory directory;
    const fs::path file = directory / "f";
    for (int round = 0; round < 1000; ++round) {
        zelutil::test::writeTextFile(file, "x");
        void* const plugin = loadModule(kPlugin);
        functionOf<void (*)(const char*)>(plugin, "enterForDeletion")(windowsText(file).c_str());
        ASSERT_TRUE(fs::exists(file));
        unloadModule(plugin);
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
        ASSERT_FALSE(fs::exists(file)) << round;
    }
}

}  // namespace
