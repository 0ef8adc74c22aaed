// Saves of hosts when something has happened between them: saves by the old calls, loads of the actions, another home.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/save.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "prefs/preference_world.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Status = SaveResult::Status;
using SubManager = UserPreferenceManager::SubManagerType;
using Texts = std::map<SubManager, std::string>;

constexpr char kActions[] = R"({"actions":[
    {"id":1,"context":"c","command":"one","shortcut":"F1"},
    {"id":2,"context":"c","command":"two","shortcut":"F2"},
    {"id":3,"context":"c","command":"three","shortcut":"F3"}]})";
/// One of the sub-managers that the library does not have.
constexpr auto kForeign = static_cast<SubManager>(102);

std::string shipped() {
    return R"({"meta":[
        {"header":"A","attribute":"a","tclCommand":"","defaultsettings":[{"name":"grid","value":"1"},
                                                                         {"name":"unit","value":"mm"}]},
        {"header":"O","attribute":"o","submanagerId":102,"tclCommand":"","defaultsettings":{}},
        {"header":"K","attribute":"keys","submanagerId":100,"tclCommand":"","defaultsettings":)" +
           std::string(kActions) + "}]}";
}

/// A user's file with this element of the list of actions, and with a grid of 3.
std::string userFileWith(const std::string& action) {
    return R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"grid":"3"}]},
        {"header":"K","attribute":"keys","overriddensettings":[{"actions":[)" +
           action + "]}]}]}";
}

class TextObserver : public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    void onSubManagerSettingsChanged(const Texts& changedTexts) override { told += changedTexts.empty() ? 0 : 1; }

    int told = 0;
};

class SaveBetween : public testing::Test {
protected:
    SaveBetween() { world_.writeDefaults(shipped()); }

    static UserPreferenceManager& preferences() { return UserPreferenceManager::GetInstance(); }
    /// The actions, once the preferences have loaded them.
    static UCPActionManager& actions() {
        preferences();
        return UCPActionManager::instance();
    }
    static void saveActionsByTheOldCall() {
        preferences().updateUserPrefSettings({}, {{SubManager::Actions, "[" + actions().getAllUserSettings() + "]"}});
    }

    std::string file() const { return fs::exists(world_.userFile()) ? readTextFile(world_.userFile()) : "(none)"; }

    /// Expects that the file has these changed actions, and that nobody else had a part in that.
    void expectOurs(const SaveResult& result, const std::vector<int>& saved) const {
        EXPECT_TRUE(result.ok()) << result.text;
        EXPECT_EQ(result.savedActions, saved);
        EXPECT_THAT(result.actionsOfOthers, IsEmpty());
        EXPECT_THAT(result.conflicts, IsEmpty());
    }

    PreferenceWorld world_;
};

TEST_F(SaveBetween, AShortcutThatTheOldCallSavedIsGoneWhenItWasSetBack) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    saveActionsByTheOldCall();
    EXPECT_THAT(file(), HasSubstr("F6"));
    ASSERT_TRUE(actions().updateShortcut(2, "F2"));
    expectOurs(host::save(), {});
    EXPECT_THAT(file(), Not(HasSubstr("F6")));
}

TEST_F(SaveBetween, AShortcutThatBothCallsSavedIsGoneWhenItWasSetBack) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    expectOurs(host::save(), {2});
    ASSERT_TRUE(actions().updateShortcut(2, "F7"));
    saveActionsByTheOldCall();
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    expectOurs(host::save(), {2});
    EXPECT_THAT(file(), HasSubstr("F6"));
    EXPECT_THAT(file(), Not(HasSubstr("F7")));
}

TEST_F(SaveBetween, AMenuFlagThatTheOldCallSavedIsGoneWhenItWasSetBack) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    actions().updateRMBMenu(1, true);
    saveActionsByTheOldCall();
    EXPECT_THAT(file(), HasSubstr("true"));
    actions().updateRMBMenu(1, false);
    expectOurs(host::save(), {2});
    EXPECT_THAT(file(), Not(HasSubstr("true")));
}

TEST_F(SaveBetween, AnotherShortcutThanTheOldCallSavedIsNoConflict) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    saveActionsByTheOldCall();
    ASSERT_TRUE(actions().updateShortcut(2, "F7"));
    expectOurs(host::save(), {2});
    EXPECT_THAT(file(), HasSubstr("F7"));
}

TEST_F(SaveBetween, WhatAnotherProcessSavedAfterTheOldCallStays) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    saveActionsByTheOldCall();
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F8"})"));
    const SaveResult result = host::save({{"unit", "inch"}});
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(result.actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(file(), HasSubstr("F8"));
}

TEST_F(SaveBetween, TheOldCallBringsBackTheTextOfTheStartAndTheNextSaveWhatIsInForce) {
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F6"})"));
    ASSERT_TRUE(actions().updateShortcut(2, "F7"));
    expectOurs(host::save(), {2});
    ASSERT_TRUE(actions().updateShortcut(3, "F9"));
    preferences().updateUserPrefSettings({{"grid", "5"}}, {});
    EXPECT_THAT(file(), HasSubstr("F6"));
    expectOurs(host::save(), {2, 3});
    EXPECT_THAT(file(), HasSubstr("F7"));
    EXPECT_THAT(file(), HasSubstr("F9"));
}

TEST_F(SaveBetween, WhatTheOldCallOverwroteOfAnotherProcessIsWrittenAgain) {
    preferences();
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F8"})"));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
    preferences().updateUserPrefSettings({{"unit", "inch"}}, {});
    EXPECT_THAT(file(), Not(HasSubstr("F8")));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(file(), HasSubstr("F8"));
}

TEST_F(SaveBetween, WhatTheTextOfTheStartOverwroteOfAnotherProcessIsWrittenAgain) {
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F6"})"));
    ASSERT_TRUE(actions().updateShortcut(2, "F7"));
    expectOurs(host::save(), {2});
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F8"})"));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
    preferences().updateUserPrefSettings({{"unit", "inch"}}, {});
    EXPECT_THAT(file(), HasSubstr("F6"));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
    EXPECT_THAT(file(), HasSubstr("F8"));
}

TEST_F(SaveBetween, AShortcutThatTheOldCallPutOverAnotherProcesssIsGoneWhenItWasSetBack) {
    preferences();
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F8"})"));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    saveActionsByTheOldCall();
    EXPECT_THAT(file(), Not(HasSubstr("F8")));
    ASSERT_TRUE(actions().updateShortcut(2, "F2"));
    expectOurs(host::save(), {});
    EXPECT_THAT(file(), Not(HasSubstr("F8")));
    EXPECT_THAT(file(), Not(HasSubstr("F6")));
}

/// A load of the text that the old call writes refuses both shortcuts of a swap, since each is still the other's.
TEST_F(SaveBetween, WhatALoadRefusesOfTheOldCallsTextIsNoChangeOfTheUsers) {
    world_.writeUser(userFileWith(R"({"id":1,"shortcut":""},{"id":2,"shortcut":"F1"},{"id":1,"shortcut":"F2"})"));
    ASSERT_EQ(actions().getAction(1).second.shortcut.userValue, "F2");
    world_.writeUser(userFileWith(R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F1"})"));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(1));
    saveActionsByTheOldCall();
    EXPECT_THAT(file(), Not(HasSubstr("F8")));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(1));
    EXPECT_THAT(file(), HasSubstr("F8"));
}

TEST_F(SaveBetween, ATextThatTheOldCallCouldNotWriteIsWritten) {
    preferences();
    fs::create_directories(world_.userFile());
    preferences().updateUserPrefSettings({}, {{kForeign, R"([{"x":1}])"}});
    fs::remove(world_.userFile());
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_THAT(file(), HasSubstr("\"x\""));
}

TEST_F(SaveBetween, ATextThatIsWrittenByNowGivesWayToAnotherProcesss) {
    preferences();
    fs::create_directories(world_.userFile());
    preferences().updateUserPrefSettings({}, {{kForeign, R"([{"x":1}])"}});
    fs::remove(world_.userFile());
    EXPECT_EQ(host::save().status, Status::Saved);
    world_.writeUser(R"({"meta":[{"header":"O","attribute":"o","overriddensettings":[{"theirs":2}]}]})");
    EXPECT_EQ(host::save({{"unit", "inch"}}).status, Status::Saved);
    EXPECT_THAT(file(), HasSubstr("\"theirs\""));
    EXPECT_THAT(file(), Not(HasSubstr("\"x\"")));
}

TEST_F(SaveBetween, ATextThatALaterOldSaveLeftOutIsWrittenAgain) {
    preferences().updateUserPrefSettings({}, {{kForeign, R"([{"x":1}])"}});
    EXPECT_THAT(file(), HasSubstr("\"x\""));
    preferences().updateUserPrefSettings({{"grid", "5"}}, {});
    EXPECT_THAT(file(), Not(HasSubstr("\"x\"")));
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_THAT(file(), HasSubstr("\"x\""));
    EXPECT_EQ(host::save().status, Status::Unchanged);
}

TEST_F(SaveBetween, TheTextOfAnotherSubManagerIsWrittenAgainWhenTheFileIsGone) {
    world_.writeUser(R"({"meta":[{"header":"O","attribute":"o","overriddensettings":[{"x":1}]}]})");
    preferences();
    fs::remove(world_.userFile());
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_THAT(file(), HasSubstr("\"x\""));
}

TEST_F(SaveBetween, WhatAHostHasLoadedItselfIsWrittenWhereThereIsAFile) {
    world_.writeUser(userFileWith(""));
    actions().load(kActions, R"([{"actions":[{"id":2,"shortcut":"F6"}]}])");
    expectOurs(host::save({{"unit", "inch"}}), {2});
    EXPECT_THAT(file(), HasSubstr("F6"));
}

TEST_F(SaveBetween, ALoadAfterASaveIsComparedWithTheFile) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    expectOurs(host::save(), {2});
    actions().load(kActions, R"([{"actions":[{"id":3,"shortcut":"F9"}]}])");
    expectOurs(host::save(), {3});
    EXPECT_THAT(file(), Not(HasSubstr("F6")));
    EXPECT_THAT(file(), HasSubstr("F9"));
}

TEST_F(SaveBetween, ASaveFromInsideALoadLeavesTheActionsOfTheFileAlone) {
    const std::string both = R"([{"actions":[{"id":2,"shortcut":"F6"},{"id":3,"shortcut":"F9"}]}])";
    actions().load(kActions, both);
    expectOurs(host::save(), {2, 3});
    std::vector<SaveResult> results;
    const auto subscription = host::onShortcutChanged([&](int id, const std::string&, const std::string&) {
        if (id == 2) {
            results.push_back(host::save({{"grid", "7"}}));
        }
    });
    actions().load(kActions, both);
    ASSERT_EQ(results.size(), 1U);
    EXPECT_EQ(results.front().status, Status::Saved);
    EXPECT_THAT(file(), HasSubstr("\"7\""));
    EXPECT_THAT(file(), HasSubstr("F9"));
    expectOurs(host::save(), {2, 3});
    EXPECT_THAT(file(), HasSubstr("F9"));
}

TEST_F(SaveBetween, ASaveFromInsideALoadWritesTheActionsOfAFileThatIsGone) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    expectOurs(host::save(), {2});
    fs::remove(world_.userFile());
    const auto subscription =
        host::onShortcutChanged([](int, const std::string&, const std::string&) { host::save(); });
    actions().load(kActions, R"([{"actions":[{"id":3,"shortcut":"F9"}]}])");
    EXPECT_THAT(file(), HasSubstr("F6"));
}

TEST_F(SaveBetween, ObserversOfTheFirstUseFindThePreferencesBeingReadAndNoMore) {
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F6"})"));
    std::vector<SaveResult> results;
    zelutil_status code = ZELUTIL_OK;
    const auto subscription = host::onShortcutChanged([&](int, const std::string&, const std::string&) {
        results.push_back(host::save({{"grid", "9"}}));
        results.push_back(host::reset({"grid"}));
        results.push_back(host::resetAllShortcuts());
        code = zelutil_save(nullptr, 0, nullptr);
        EXPECT_THAT(host::startWarnings(), IsEmpty());
        EXPECT_THAT(host::settings(), IsEmpty());
        EXPECT_FALSE(host::setting("grid"));
        EXPECT_THAT(host::sectionsInFileOrder(), IsEmpty());
        EXPECT_FALSE(host::onSettingChanged("grid", [](const std::string&) {}));
        EXPECT_THAT(host::diagnose(), Not(HasSubstr("Sections in force")));
        int holder = 0;
        zelutil_set_shortcut(3, "F9", &holder);
    });
    preferences();
    ASSERT_EQ(results.size() % 3, 0U);
    ASSERT_GE(results.size(), 3U);
    for (const SaveResult& result : results) {
        EXPECT_EQ(result.status, Status::Starting);
        EXPECT_EQ(result.text, "Nothing was saved, because the preferences are just being read.");
        EXPECT_FALSE(result.ok());
    }
    EXPECT_EQ(code, ZELUTIL_STARTING);
    EXPECT_EQ(preferences().getUserPrefSetting("grid"), "3");
    EXPECT_EQ(actions().getShortcut(2), "F6");
    EXPECT_EQ(host::settings().size(), 2U);
    expectOurs(host::save({{"grid", "9"}}), {2, 3});
    EXPECT_THAT(file(), HasSubstr("\"9\""));
}

TEST_F(SaveBetween, AResetIsWrittenOnceAFileThatWasOutOfReachIsBack) {
    world_.writeUser(userFileWith(""));
    preferences();
    const std::string text = file();
    fs::remove(world_.userFile());
    fs::create_directory(world_.userFile());
    const SaveResult result = host::reset({"grid"});
    EXPECT_EQ(result.status, Status::NotWritten);
    EXPECT_EQ(result.text, "Nothing was saved, because " + result.path +
                               " is there and could not be read, and there is nothing to put in its place.");
    fs::remove(world_.userFile());
    world_.writeUser(text);
    EXPECT_EQ(host::save().status, Status::Saved);
    EXPECT_THAT(file(), Not(HasSubstr("\"3\"")));
}

TEST_F(SaveBetween, AResetOverAFileThatIsNoJsonByNowIsWrittenAndTheFileKept) {
    world_.writeUser(userFileWith(""));
    preferences();
    world_.writeUser(userFileWith("") + ",");
    const SaveResult result = host::reset({"grid"});
    EXPECT_EQ(result.status, Status::Saved);
    EXPECT_EQ(result.keptCopy, result.path + ".bad");
    EXPECT_THAT(file(), Not(HasSubstr("\"3\"")));
}

TEST_F(SaveBetween, AnEmptyFileAndNothingToSayIsNoChange) {
    world_.writeUser("");
    EXPECT_EQ(host::save().status, Status::Unchanged);
    EXPECT_EQ(file(), "");
}

TEST_F(SaveBetween, WhereNothingIsToBeSavedNoDirectoryIsMade) {
    EXPECT_EQ(host::save().status, Status::Unchanged);
    EXPECT_FALSE(fs::exists(world_.userFile().parent_path()));
}

TEST_F(SaveBetween, AListWithoutActionsStaysAndNobodyIsTold) {
    world_.writeUser(R"({"meta":[{"header":"K","attribute":"keys","overriddensettings":[{"actions":[]}]}]})");
    TextObserver observer;
    const auto subscription = host::observe(observer);
    const std::string before = file();
    host::save();
    EXPECT_EQ(host::save().status, Status::Unchanged);
    EXPECT_EQ(observer.told, 0);
    EXPECT_THAT(file(), HasSubstr("\"actions\""));
}

TEST_F(SaveBetween, ObserversOfTextsAreToldOfOtherActionsAndNotOfAnotherText) {
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F2"})"));
    TextObserver observer;
    const auto subscription = host::observe(observer);
    EXPECT_TRUE(host::resetShortcuts({2}).ok());
    EXPECT_THAT(file(), Not(HasSubstr("F2")));
    EXPECT_EQ(observer.told, 0);
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    EXPECT_TRUE(host::save().ok());
    EXPECT_EQ(observer.told, 1);
}

TEST_F(SaveBetween, OfAChangeThatCannotBeWrittenObserversOfTextsAreToldOnce) {
    ASSERT_TRUE(actions().updateShortcut(2, "F6"));
    fs::create_directories(world_.userFile());
    TextObserver observer;
    const auto subscription = host::observe(observer);
    EXPECT_FALSE(host::save().ok());
    EXPECT_FALSE(host::save().ok());
    EXPECT_EQ(observer.told, 1);
    ASSERT_TRUE(actions().updateShortcut(2, "F7"));
    EXPECT_FALSE(host::save().ok());
    EXPECT_EQ(observer.told, 2);
}

TEST_F(SaveBetween, IntoAnotherFileAllThatTheUserSetIsWritten) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F6"})"));
    preferences();
    const TempDirectory other;
    const fs::path there = other / "tessel_settings.cfg";
    writeTextFile(there, R"({"meta":[{"header":"N","attribute":"newer","overriddensettings":[{"its":"own"}]}]})");
    commonLibrary.foundPath = systemText(there);
    const SaveResult result = host::save({{"unit", "inch"}});
    expectOurs(result, {2});
    EXPECT_THAT(result.settingsOfOthers, IsEmpty());
    const std::string text = readTextFile(there);
    EXPECT_THAT(text, HasSubstr("\"3\""));
    EXPECT_THAT(text, HasSubstr("\"inch\""));
    EXPECT_THAT(text, HasSubstr("\"F6\""));
    EXPECT_THAT(text, HasSubstr("\"own\""));
    // From then on that file is the one that is shared.
    writeTextFile(there, userFileWith(""));
    EXPECT_THAT(host::save().actionsOfOthers, ElementsAre(2));
}

TEST_F(SaveBetween, AFileUnderAnotherNameIsKnown) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F6"})"));
    preferences();
    EXPECT_TRUE(host::save().ok());
    commonLibrary.foundPath = systemText(world_.userFile().parent_path() / "." / "tessel_settings.cfg");
    EXPECT_TRUE(host::save().ok());
    world_.writeUser(userFileWith(""));
    const SaveResult result = host::save({{"unit", "inch"}});
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(result.actionsOfOthers, ElementsAre(2));
}

TEST_F(SaveBetween, TheWarningsOfTheStartStayWhenAHostLoadsOtherActions) {
    world_.writeUser(userFileWith(R"({"id":2,"shortcut":"F1"})"));
    const auto before = host::startWarnings();
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(before.front().kind, host::StartWarning::Kind::ShortcutRefused);
    actions().load(R"({"actions":[]})", "");
    const auto after = host::startWarnings();
    ASSERT_EQ(after.size(), 1U);
    EXPECT_EQ(after.front().text, before.front().text);
}

}  // namespace
}  // namespace zelutil::test
