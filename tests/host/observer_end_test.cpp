// Subscriptions at the end of a program, and of the library. This program does not link the library, so that it decides
// what goes after it.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/child_process.h"
#include "support/environment.h"
#include "support/printed.h"
#include "support/shared_module.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

const fs::path kLibrary = ZELUTIL_TEST_LIBRARY;
const fs::path kPlugin = ZELUTIL_TEST_PLUGIN;

/// Returns what observers of all servers say in that round. The observers are those of tests/host/observers_of_all.h,
/// which needs the library and is not included here.
std::string saidOf(int round) {
    const std::string name = std::to_string(round);
    return "settings " + name + "\ntexts 0\nshortcut " + name + "\napplication " + name + "\n";
}

// --- A program that is linked with the library ----------------------------------------------------------------------

std::string saidBy(const char* who) {
    const ChildResult result = run({ZELUTIL_TEST_HOST, {who}, withoutProductVariables(), fs::temp_directory_path()});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    return result.err;
}

TEST(ObserversAtTheEnd, AreToldAsLongAsTheyLive) {
    for (const char* const who : {"static", "local"}) {
        EXPECT_EQ(saidBy(who), saidOf(1) + "end\n" + saidOf(2)) << who;
    }
}

TEST(ObserversAtTheEnd, MayBeReplacedByAnExitFunction) {
    EXPECT_EQ(saidBy("function"), saidOf(1) + "end\n" + saidOf(2) + saidOf(4));
}

TEST(ObserversAtTheEnd, NeedNoEnd) { EXPECT_EQ(saidBy("never"), saidOf(1)); }

// --- A plug-in ------------------------------------------------------------------------------------------------------

TEST(ObserversOfAPlugin, GoWithItAndTheLibraryGoesToo) {
    clearProductVariables();
    for (int round = 1; round <= 100; ++round) {
        const std::string said = reportedBy([&] {
            void* const plugin = loadModule(kPlugin);
            functionOf<void (*)()>(plugin, "observeUntilUnload")();
            functionOf<void (*)(int)>(plugin, "changeEverything")(round);
            unloadModule(plugin);
        });
        ASSERT_EQ(said, saidOf(round));
        ASSERT_FALSE(moduleIsLoaded(kPlugin)) << round;
        ASSERT_FALSE(moduleIsLoaded(kLibrary)) << round;
    }
}

TEST(ObserversOfAPlugin, AreGoneFromALibraryThatStays) {
    clearProductVariables();
    void* const library = loadModule(kLibrary);
    const auto setActiveAppId = functionOf<int (*)(int, int)>(library, "SetActiveAppId");
    for (int round = 1; round <= 100; ++round) {
        const std::string said = reportedBy([&] {
            void* const plugin = loadModule(kPlugin);
            functionOf<void (*)()>(plugin, "observeUntilUnload")();
            functionOf<void (*)(int)>(plugin, "changeEverything")(round);
            unloadModule(plugin);
            setActiveAppId(1000 + round, 0);
        });
        ASSERT_EQ(said, saidOf(round));
        ASSERT_FALSE(moduleIsLoaded(kPlugin)) << round;
        ASSERT_TRUE(moduleIsLoaded(kLibrary)) << round;
    }
    unloadModule(library);
    EXPECT_FALSE(moduleIsLoaded(kLibrary));
}

/// An object that was there before the library. On systems without an order of unloading, what the library has is gone
/// when this one goes; its code is there.
struct LateHolder {
    ~LateHolder() {
        if (plugin == nullptr) {
            return;
        }
        functionOf<void (*)(void*)>(plugin, "endObserving")(observers);
        std::fprintf(stderr, "ended\n");
        std::fflush(stderr);
        void* const again = functionOf<void* (*)()>(plugin, "beginObserving")();
        functionOf<void (*)(int)>(plugin, "changeEverything")(2);
        functionOf<void (*)(void*)>(plugin, "endObserving")(again);
        functionOf<void (*)(int)>(plugin, "changeEverything")(3);
    }

    void* plugin = nullptr;
    void* observers = nullptr;
};

LateHolder lateHolder;

[[noreturn]] void endWhileObserving() {
    clearProductVariables();
    void* const plugin = loadModule(kPlugin);
    lateHolder.observers = functionOf<void* (*)()>(plugin, "beginObserving")();
    functionOf<void (*)(int)>(plugin, "changeEverything")(1);
    lateHolder.plugin = plugin;
    std::exit(0);
}

TEST(ObserversOfAPlugin, MayOutliveTheServersAndBeginAgain) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    std::string expected = "^" + saidOf(1) + "ended\n" + saidOf(2) + "$";
    for (std::size_t at = 0; (at = expected.find('\n', at)) != std::string::npos; at += 3) {
        expected.insert(at, "\r?");
    }
    EXPECT_EXIT(endWhileObserving(), testing::ExitedWithCode(0), expected);
}

}  // namespace
}  // namespace zelutil::test
