// The first use of the process, by two subsystems at once. Both need the installation root.
#include <gtest/gtest.h>
#include <zelutil/c_api.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "prefs/preference_world.h"
#include "support/child_process.h"

namespace zelutil::test {
namespace {

TEST(FirstUse, OfPreferencesAndFacetsAtOnceFindsBoth) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("shipped"));
    writeTextFile(world.product() / "share/qtxsetup/canvas/resources/tessel/facet_settings.cfg",
                  R"({"meta":[{"header":"Net","facets":[{"name":"Length","type":"Numerical"}]}]})");
    // The tree is the last of many directories, so that the two searches overlap.
    unsetVariable("QTXROOT");
    std::vector<std::string> directories;
    for (int number = 0; number < 500; ++number) {
        directories.push_back(systemText(world.product() / std::to_string(number)));
    }
    directories.push_back(systemText(world.product() / "tools/bin"));
    setVariable("PATH", systemList(directories));

    std::atomic<int> ready{0};
    const auto waitForBoth = [&ready] {
        for (++ready; ready < 2;) {
        }
    };
    std::string value;
    int type = -1;
    std::thread preferences([&] {
        waitForBoth();
        const char* const found = get_user_setting("s::value");
        value = found == nullptr ? "null" : found;
    });
    std::thread facets([&] {
        waitForBoth();
        type = ZelUGetFacetType("Net", "Length");
    });
    preferences.join();
    facets.join();
    EXPECT_EQ(value, "shipped");
    EXPECT_EQ(type, 1);
}

}  // namespace
}  // namespace zelutil::test
