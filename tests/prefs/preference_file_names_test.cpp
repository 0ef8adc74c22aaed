// The names of the user's file where a directory that should hold it is none.
#include <gtest/gtest.h>

#include "prefs/preference_files.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

class PreferenceFileNames : public testing::Test {
protected:
    PreferenceWorld world_;
};

TEST_F(PreferenceFileNames, AreBelowTheUserEnvironmentDirectory) {
    EXPECT_EQ(prefs::userFilePath(), windowsText(world_.home() / "pcbenv") + "/tessel/tessel_settings.cfg");
    EXPECT_EQ(prefs::writtenUserFilePath(), prefs::userFilePath());
}

// The home directory lies above the root, so there is no environment directory.
TEST_F(PreferenceFileNames, NoEnvironmentDirectoryHoldsNoFile) {
    setVariable("HOMEPATH", "\\..");
    EXPECT_EQ(prefs::userFilePath(), "");
    EXPECT_EQ(prefs::writtenUserFilePath(), "");
}

}  // namespace
}  // namespace zelutil::test
