// The end of a program that has loaded the library. It does not link it, so that it decides what goes after it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "prefs/preference_world.h"
#include "support/shared_module.h"

namespace zelutil::test {
namespace {

using Function = const char* (*)(const char* name);

/// Ends this process after the library was used as a host uses it.
[[noreturn]] void endAfterUse() {
    static const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    world.writeUser(userWithValue("2"));
    void* const late = loadModule(ZELUTIL_TEST_LATE_MODULE);
    void* const library = loadModule(ZELUTIL_TEST_LIBRARY);
    const auto user = functionOf<Function>(library, "get_user_setting");
    const auto shipped = functionOf<Function>(library, "get_default_user_setting");
    functionOf<void (*)(Function, Function)>(late, "askLast")(user, shipped);
    if (std::strcmp(user("value"), "2") != 0 || std::strcmp(shipped("value"), "1") != 0) {
        std::abort();
    }
    std::exit(0);
}

TEST(SharedTeardown, OneFunctionAnswersNullAndTheOtherThrowsOddity) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endAfterUse(), testing::ExitedWithCode(0), "^user null, default threw true\r?\n$");
}

}  // namespace
}  // namespace zelutil::test
