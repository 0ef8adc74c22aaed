// Tests what resets of shortcuts do to a file that other processes write too.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <string>

#include "host/save_world.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Status = SaveResult::Status;

class SaveReset : public testing::Test {
protected:
    SaveReset() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
    }

    /// Has another process save this element of the list of the actions.
    void saveElsewhere(const std::string& element) const {
        world_.writeUser(
            R"({"meta":[{"header":"Keys","attribute":"keys","submanagerId":100,"overriddensettings":[{"actions":[)" +
            element + "]}]}]}");
    }

    std::string fileText() const { return readTextFile(world_.userFile()); }

    PreferenceWorld world_;
};

TEST_F(SaveReset, TakesOutTheEntryThatAnotherProcessGaveAnActionWhichIsUnchangedHere) {
    saveElsewhere(R"({"id":2,"shortcut":"F9"})");
    const SaveResult result = host::resetShortcuts({2});
    EXPECT_EQ(result.status, Status::Saved);
    EXPECT_THAT(result.savedActions, IsEmpty());
    EXPECT_THAT(result.actionsOfOthers, IsEmpty());
    EXPECT_THAT(fileText(), Not(HasSubstr("F9")));
}

TEST_F(SaveReset, LeavesTheEntriesOfOtherActions) {
    saveElsewhere(R"({"id":2,"shortcut":"F9"},{"id":3,"shortcut":"F8"})");
    EXPECT_THAT(host::resetShortcuts({2}).actionsOfOthers, ElementsAre(3));
    EXPECT_THAT(fileText(), Not(HasSubstr("F9")));
    EXPECT_THAT(fileText(), HasSubstr("F8"));
}

TEST_F(SaveReset, OfAllTakesOutAllEntriesOfActions) {
    saveElsewhere(R"({"id":2,"shortcut":"F9"},{"id":3,"rmb":true})");
    EXPECT_EQ(host::resetAllShortcuts().status, Status::Saved);
    EXPECT_THAT(fileText(), Not(HasSubstr("F9")));
    EXPECT_THAT(fileText(), Not(HasSubstr("true")));
}

TEST_F(SaveReset, IsMadeUpForByTheNextSaveWhereTheFileWasOutOfReach) {
    fs::create_directories(world_.userFile());
    EXPECT_FALSE(host::resetShortcuts({2}).ok());
    EXPECT_FALSE(host::resetShortcuts({3}).ok());
    fs::remove(world_.userFile());
    saveElsewhere(R"({"id":2,"shortcut":"F9"},{"id":3,"shortcut":"F8"},{"id":4,"shortcut":"F7"})");
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(4));
    EXPECT_THAT(fileText(), Not(HasSubstr("F9")));
    EXPECT_THAT(fileText(), Not(HasSubstr("F8")));
    EXPECT_THAT(fileText(), HasSubstr("F7"));
}

TEST_F(SaveReset, IsDoneOnceItIsSaved) {
    EXPECT_TRUE(host::resetShortcuts({2}).ok());
    saveElsewhere(R"({"id":2,"shortcut":"F9"})");
    EXPECT_THAT(host::save({{"part0::value0", "mine"}}).actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(fileText(), HasSubstr("F9"));
}

class SaveResetBeforeALoad : public SaveReset {
protected:
    SaveResetBeforeALoad() {
        fs::create_directories(world_.userFile());
        EXPECT_FALSE(host::resetShortcuts({2}).ok());
        fs::remove(world_.userFile());
        UCPActionManager::instance().load(actionsOfWorld({}), "");
        saveElsewhere(R"({"id":2,"shortcut":"F9"})");
    }
};

TEST_F(SaveResetBeforeALoad, IsForgottenByASave) {
    EXPECT_THAT(host::save({{"part0::value0", "mine"}}).actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(fileText(), HasSubstr("F9"));
}

TEST_F(SaveResetBeforeALoad, IsForgottenByTheNextReset) {
    EXPECT_THAT(host::resetShortcuts({3}).actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(fileText(), HasSubstr("F9"));
}

}  // namespace
}  // namespace zelutil::test
