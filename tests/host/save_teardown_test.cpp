// After the preference manager's destruction. Linked with the static form, so that this program's own exit functions
// can run after it on every system.
#include <gtest/gtest.h>
#include <zelutil/host/save.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "host/save_world.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

void tell(const host::SaveResult& result) {
    std::fprintf(stderr, "%d %s\n", static_cast<int>(result.status), result.text.c_str());
}

/// Registered before the manager is made, so called after it is gone; the files, made before, are removed last.
void saveAfterTeardown() {
    tell(host::save({{"part0::value0", "late"}}));
    tell(host::reset({"part0::value0"}));
    tell(host::resetShortcuts({1}));
    tell(host::resetAllShortcuts());
    std::fprintf(stderr, "%d warnings, a path %s\n", static_cast<int>(host::startWarnings().size()),
                 host::userFilePath().empty() ? "lacks" : "is there");
}

TEST(SaveTeardown, ASaveAfterThePreferencesAreGoneDoesNothingAndSaysSo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const PreferenceWorld world;
            world.writeDefaults(defaultsOfWorld());
            std::atexit(saveAfterTeardown);
            if (!host::save({{"part0::value0", "in time"}}).ok()) {
                std::abort();
            }
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "2 Nothing was saved, because the preferences are gone at the end of the process.\n"
        "2 Nothing was saved, because the preferences are gone at the end of the process.\n"
        "2 Nothing was saved, because the preferences are gone at the end of the process.\n"
        "2 Nothing was saved, because the preferences are gone at the end of the process.\n"
        "0 warnings, a path is there\n");
}

}  // namespace
}  // namespace zelutil::test
