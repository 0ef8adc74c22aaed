// The end of a program that has loaded the library, which goes before the program's own objects.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

#include "prefs/preference_world.h"
#include "support/shared_module.h"

namespace zelutil::test {
namespace {

[[noreturn]] void endAfterUse() {
    static const PreferenceWorld world;
    world.writeDefaults(R"({"meta":[{"header":"Keys","attribute":"keys","tclCommand":"","submanagerId":100,
        "defaultsettings":{"actions":[{"id":1,"context":"c","command":"save","shortcut":"Ctrl+S"}]}}]})");
    void* const late = loadModule(ZELUTIL_TEST_LATE_CALLER);
    void* const library = loadModule(ZELUTIL_TEST_LIBRARY);
    const auto facetType = functionOf<int (*)(const char*, const char*)>(library, "ZelUGetFacetType");
    const auto getShortcut = functionOf<void (*)(int, char*, int)>(library, "ucp_action_manager_get_shortcut");
    const auto setActiveAppId = functionOf<int (*)(int, int)>(library, "SetActiveAppId");
    const auto activeAppId = functionOf<int (*)()>(library, "MarlActiveAppId");
    functionOf<const char* (*)(const char*)>(library, "get_user_setting")("loads the actions");
    std::array<char, 8> shortcut{};
    getShortcut(1, shortcut.data(), static_cast<int>(shortcut.size()));
    if (shortcut.data() != std::string("Ctrl+S") || facetType("Net", "Length") != -1 || setActiveAppId(5, 0) != 0) {
        std::abort();
    }
    functionOf<void (*)(decltype(facetType), decltype(getShortcut), decltype(setActiveAppId), decltype(activeAppId))>(
        late, "callLast")(facetType, getShortcut, setActiveAppId, activeAppId);
    std::exit(0);
}

// All that there was is gone, and what is asked for is made anew. (On Windows the installation is gone too by then, and
// the search for it says so.)
TEST(LateCaller, IsAnsweredAsIfNothingHadBeenUsedYet) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endAfterUse(), testing::ExitedWithCode(0), "facet -1, shortcut \"\", application 0, then 7\r?\n$");
}

}  // namespace
}  // namespace zelutil::test
