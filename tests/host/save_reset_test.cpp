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

/// A process that has started with shortcuts of actions 3 and 6 that are exchanged, in a form of the user's own.
class SaveResetOfASwap : public testing::Test {
protected:
    SaveResetOfASwap() {
        world_.writeDefaults(defaultsOfWorld());
        world_.writeUser(kSwapped);
        UserPreferenceManager::GetInstance();
    }

    static constexpr char kSwapped[] =
        R"({"meta":[{"header":"Keys","attribute":"keys","submanagerId":100,"overriddensettings":[{"actions":[)"
        R"({"id":6,"shortcut":"","note":"mine"},{"id":3,"shortcut":"Ctrl+6"},{"id":6,"shortcut":"Ctrl+3"}]}]}]})";

    PreferenceWorld world_;
};

TEST_F(SaveResetOfASwap, LeavesTheFileWhereNothingCanBeReset) {
    const SaveResult result = host::resetShortcuts({3});
    EXPECT_EQ(result.status, Status::Unchanged);
    ASSERT_EQ(result.notRestored.size(), 1U);
    EXPECT_EQ(result.notRestored[0].text,
              "Action 3 (context0, command3) does not get back the shortcut \"Ctrl+3\": action 6 (context0, command6) "
              "has it.");
    EXPECT_THAT(result.savedActions, ElementsAre(3, 6));
    EXPECT_EQ(readTextFile(world_.userFile()), kSwapped);
}

TEST_F(SaveResetOfASwap, LeavesTheFileWhereNothingIsToBeReset) {
    EXPECT_EQ(host::resetShortcuts({4, 5}).status, Status::Unchanged);
    EXPECT_EQ(readTextFile(world_.userFile()), kSwapped);
}

TEST_F(SaveResetOfASwap, WritesTheFileWhereTheTwoAreResetTogether) {
    EXPECT_EQ(host::resetShortcuts({3, 6}).status, Status::Saved);
    EXPECT_THAT(readTextFile(world_.userFile()), Not(HasSubstr("Ctrl+")));
}

}  // namespace
}  // namespace zelutil::test
