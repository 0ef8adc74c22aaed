// The name of the user's file where the current directory cannot be told.
#include <gtest/gtest.h>

#include <filesystem>

#include "prefs/preference_files.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

TEST(PreferenceFileNames, NoCurrentDirectoryHoldsNoFile) {
    const PreferenceWorld world;
    setVariable("regression_testing", "1");
    const auto vanishing = world.home() / "vanishing";
    std::filesystem::create_directory(vanishing);
    std::filesystem::current_path(vanishing);
    EXPECT_EQ(prefs::writtenUserFilePath(), windowsText(vanishing) + "/tessel_settings.cfg");
    std::filesystem::remove(vanishing);
    EXPECT_EQ(prefs::writtenUserFilePath(), "");
}

}  // namespace
}  // namespace zelutil::test
