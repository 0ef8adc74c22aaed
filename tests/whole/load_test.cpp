#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/common_library_stand_in.h"
#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/sanitized.h"
#include "support/shared_module.h"
#include "support/temp_directory.h"
#include "support/text_file.h"
#include "support/wait_until.h"

// This program does not link the library, so that it is in the process only while a test holds it there.
namespace {

namespace fs = std::filesystem;
using zelutil::test::functionOf;
using zelutil::test::InstallationTree;
using zelutil::test::loadModule;
using zelutil::test::moduleIsLoaded;
using zelutil::test::setVariable;
using zelutil::test::TempDirectory;
using zelutil::test::unloadModule;
using zelutil::test::waitUntil;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

constexpr int kRounds = zelutil::test::casesInTime(1000, 60);
constexpr int kSomeRounds = zelutil::test::casesInTime(100, 20);
const fs::path kLibrary = ZELUTIL_TEST_LIBRARY;
const fs::path kPlugin = ZELUTIL_TEST_PLUGIN;

/// The shipped defaults with this value of the setting "grid".
std::string settingsWithGrid(const std::string& value) {
    return R"({"meta": [
        {"header": "Display", "attribute": "display", "tclCommand": "", "defaultsettings": [
            {"name": "grid", "value": ")" +
           value + R"("}]},
        {"header": "Keys", "attribute": "keys", "tclCommand": "", "submanagerId": 100, "defaultsettings": {"actions": [
            {"id": 1, "context": "ucpedit", "command": "file save", "shortcut": "Ctrl+S"}]}}]})";
}

class Load : public ::testing::Test {
protected:
    Load() {
        zelutil::test::clearProductVariables();
        tree.nameInEnvironment();
        writeTextFile(tree / "share/qtxsetup/canvas/resources/tessel/facet_settings.cfg",
                      R"({"meta": [{"header": "Net", "facets": [{"name": "Length", "type": "Numerical"}]}]})");
        setGrid("0.635");
    }

    void setGrid(const std::string& value) const {
        writeTextFile(tree / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg", settingsWithGrid(value));
    }

    InstallationTree tree;
};

std::string answered;

void keepAnswer(const char* value) { answered = value == nullptr ? "null" : value; }

TEST_F(Load, TheLibraryIsNotThereBeforeAndAfter) {
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
    void* const library = loadModule(kLibrary);
    EXPECT_TRUE(moduleIsLoaded(kLibrary));
    unloadModule(library);
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

TEST_F(Load, UnusedItComesAndGoes) {
    for (int round = 0; round < kSomeRounds; ++round) {
        unloadModule(loadModule(kLibrary));
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST_F(Load, UsedItComesAfreshAndGoesManyTimes) {
    for (int round = 1; round <= kRounds; ++round) {
        const std::string grid = std::to_string(round);
        setGrid(grid);
        void* const library = loadModule(kLibrary);
        ASSERT_STREQ(functionOf<const char* (*)(const char*)>(library, "get_user_setting")("grid"), grid.c_str());
        ASSERT_EQ(functionOf<int (*)(const char*, const char*)>(library, "ZelUGetFacetType")("Net", "Length"), 1);
        ASSERT_EQ(functionOf<int (*)(int, int)>(library, "SetActiveAppId")(round, 0), 0);
        unloadModule(library);
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST_F(Load, APluginTakesTheLibraryWithItManyTimes) {
    for (int round = 0; round < kRounds; ++round) {
        void* const plugin = loadModule(kPlugin);
        ASSERT_TRUE(moduleIsLoaded(kLibrary));
        ASSERT_TRUE(functionOf<bool (*)()>(plugin, "useClasses")()) << round;
        unloadModule(plugin);
        ASSERT_FALSE(moduleIsLoaded(kPlugin)) << round;
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST_F(Load, AThreadThatHasEndedOutlivesNeitherPluginNorLibrary) {
    for (int round = 0; round < 2 * kSomeRounds; ++round) {
        void* const plugin = loadModule(kPlugin);
        ASSERT_TRUE(functionOf<bool (*)(bool)>(plugin, "runThread")(round % 2 == 0)) << round;
        unloadModule(plugin);
        // On Windows the thread may be the one that takes the library out.
        ASSERT_TRUE(waitUntil([] { return !moduleIsLoaded(kLibrary); })) << round;
        ASSERT_FALSE(moduleIsLoaded(kPlugin)) << round;
    }
}

TEST_F(Load, AKilledThreadOutlivesNeitherPluginNorLibrary) {
    for (int round = 0; round < kSomeRounds / 2; ++round) {
        void* const plugin = loadModule(kPlugin);
        functionOf<void (*)()>(plugin, "killThread")();
        unloadModule(plugin);
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
        ASSERT_FALSE(moduleIsLoaded(kPlugin)) << round;
    }
}

TEST_F(Load, APluginCatchesTheLibrarysExceptions) {
    zelutil::test::clearProductVariables();
    setVariable("PATH", "");
    void* const plugin = loadModule(kPlugin);
    EXPECT_TRUE(functionOf<bool (*)()>(plugin, "catchesExceptions")());
    unloadModule(plugin);
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

TEST_F(Load, FilesEnteredForDeletionGoWithTheLibrary) {
    const TempDirectory directory;
    const fs::path file = directory / "f";
    for (int round = 0; round < kSomeRounds; ++round) {
        writeTextFile(file, "x");
        void* const plugin = loadModule(kPlugin);
        functionOf<void (*)(const char*)>(plugin, "enterForDeletion")(windowsText(file).c_str());
        ASSERT_TRUE(fs::exists(file));
        unloadModule(plugin);
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
        ASSERT_FALSE(fs::exists(file)) << round;
    }
}

TEST_F(Load, APluginIsTornDownBeforeTheLibrary) {
    void* const plugin = loadModule(kPlugin);
    ASSERT_TRUE(functionOf<bool (*)()>(plugin, "useClasses")());
    functionOf<void (*)(void (*)(const char*))>(plugin, "askAtUnload")(keepAnswer);
    EXPECT_EQ(answered, "");
    unloadModule(plugin);
    EXPECT_EQ(answered, "0.635");
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

int destroyedValues = 0;

TEST_F(Load, APluginsValueInTheRegistryIsDestroyedAtUnload) {
    for (int round = 1; round <= 10; ++round) {
        void* const plugin = loadModule(kPlugin);
        functionOf<void (*)(void (*)())>(plugin, "installValue")([] { ++destroyedValues; });
        EXPECT_EQ(destroyedValues, round - 1);
        unloadModule(plugin);
        EXPECT_EQ(destroyedValues, round);
        EXPECT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST_F(Load, LoadingAndUnloadingAloneDoesNotLookForTheCommonLibrary) {
    const TempDirectory directory;
    const fs::path library = directory / kLibrary.filename().string();
    const fs::path commonLibrary = directory / zelutil::test::moduleFileName("qtxCommon");
    fs::copy_file(kLibrary, library);
    fs::copy_file(zelutil::test::commonLibraryDirectory() / commonLibrary.filename(), commonLibrary);
    void* const module = loadModule(library);
    EXPECT_FALSE(moduleIsLoaded(commonLibrary));
    unloadModule(module);
    EXPECT_FALSE(moduleIsLoaded(library));
    EXPECT_FALSE(moduleIsLoaded(commonLibrary));
}

TEST_F(Load, TheCommonLibraryOnceBoundStays) {
    auto& commonLibrary = zelutil::test::loadCommonLibrary();
    for (int round = 1; round <= 3; ++round) {
        void* const library = loadModule(kLibrary);
        EXPECT_STREQ(functionOf<const char* (*)(const char*)>(library, "get_user_setting")("grid"), "0.635");
        unloadModule(library);
        EXPECT_FALSE(moduleIsLoaded(kLibrary));
        EXPECT_EQ(commonLibrary.searchCalls, round);
    }
}

}  // namespace
