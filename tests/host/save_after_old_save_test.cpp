// Saves of hosts after one by the old calls, which writes again what the file held for the actions at the start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <string>

#include "host/save_world.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::SaveResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SaveAfterAnOldSave : public testing::Test {
protected:
    SaveAfterAnOldSave() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
    }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    static void saveByTheOldCall(const std::string& value) {
        UserPreferenceManager::GetInstance().updateUserPrefSettings({{"part0::value0", value}}, {});
    }

private:
    PreferenceWorld world_;
};

TEST_F(SaveAfterAnOldSave, ActionsThatThisProcessSavedAreWrittenAgain) {
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F9"));
    EXPECT_EQ(host::save().status, SaveResult::Status::Saved);
    EXPECT_THAT(fileText(), HasSubstr("F9"));
    saveByTheOldCall("new");
    EXPECT_THAT(fileText(), Not(HasSubstr("F9")));
    const SaveResult result = host::save();
    EXPECT_EQ(result.status, SaveResult::Status::Saved);
    EXPECT_THAT(result.actionsOfOthers, IsEmpty());
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(result.savedActions, ElementsAre(2));
    EXPECT_THAT(fileText(), HasSubstr("F9"));
    EXPECT_THAT(fileText(), HasSubstr("new"));
}

TEST_F(SaveAfterAnOldSave, AChangeSinceThenIsNoConflict) {
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F9"));
    EXPECT_EQ(host::save().status, SaveResult::Status::Saved);
    saveByTheOldCall("new");
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F8"));
    const SaveResult result = host::save();
    EXPECT_EQ(result.status, SaveResult::Status::Saved);
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(fileText(), HasSubstr("F8"));
}

TEST_F(SaveAfterAnOldSave, TheTextThatItWasHandedIsKnown) {
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F9"));
    EXPECT_EQ(host::save().status, SaveResult::Status::Saved);
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(3, "F8"));
    UserPreferenceManager::GetInstance().updateUserPrefSettings(
        {}, {{UserPreferenceManager::SubManagerType::Actions,
              "[" + UCPActionManager::instance().getAllUserSettings() + "]"}});
    const SaveResult result = host::save();
    EXPECT_TRUE(result.ok());
    EXPECT_THAT(result.actionsOfOthers, IsEmpty());
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(result.savedActions, ElementsAre(2, 3));
}

}  // namespace
}  // namespace zelutil::test
