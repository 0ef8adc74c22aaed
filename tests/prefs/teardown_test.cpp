// After the manager's destruction. Linked with the static form, so that this program's own exit functions can run after
// it on every system.
#include <gtest/gtest.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

/// Registered before the manager is made, so called after it is gone; the files, made before, are removed last.
void reportAfterTeardown() {
    const char* const user = get_user_setting("s::value");
    bool thrown = false;
    bool thrownByTheOtherFunction = false;
    try {
        UserPreferenceManager::GetInstance();
    } catch (bool value) {
        thrown = value;
    }
    try {
        get_default_user_setting("s::value");
    } catch (bool value) {
        thrownByTheOtherFunction = value;
    }
    std::fprintf(stderr, "user %s, accessor %s, default %s\n", user == nullptr ? "null" : user,
                 thrown ? "threw" : "answered", thrownByTheOtherFunction ? "threw" : "answered");
}

void reportTwice() {
    reportAfterTeardown();
    reportAfterTeardown();
}

TEST(Teardown, OneFunctionAnswersNullAndTheOtherThrowsOddity) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const PreferenceWorld world;
            world.writeDefaults(defaultsWithValue("1"));
            std::atexit(reportTwice);
            if (get_user_setting("s::value") == nullptr || std::strcmp(get_default_user_setting("value"), "1") != 0) {
                std::abort();
            }
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "user null, accessor threw, default threw\nuser null, accessor threw, default threw\n");
}

void reportUnknownName() {
    const std::string& value = UserPreferenceManager::GetInstance().getUserPrefSetting("unknown");
    std::fprintf(stderr, "unknown \"%s\", user %s\n", value.c_str(), get_user_setting("s::value"));
}

// The manager was made before the exit function was registered, but no name had been unknown yet.
TEST(Teardown, UnknownNamesAreAnsweredAsLongAsTheManagerLives) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const PreferenceWorld world;
            world.writeDefaults(defaultsWithValue("1"));
            UserPreferenceManager::GetInstance();
            std::atexit(reportUnknownName);
            UserPreferenceManager::GetInstance().getUserPrefSetting("unknown");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "unknown \"\", user 1\n");
}

TEST(Teardown, HasNotHappenedWhenTheManagerWasNeverMade) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const PreferenceWorld world;
            world.writeDefaults(defaultsWithValue("1"));
            std::atexit(reportAfterTeardown);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "user 1, accessor answered, default answered\n");
}

}  // namespace
}  // namespace zelutil::test
