// Tests what a save does and says of it, in one process with real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_server.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::SaveResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Status = SaveResult::Status;
using Texts = std::map<UserPreferenceManager::SubManagerType, std::string>;

/// Listens to the texts of sub-managers.
class TextListener : public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    TextListener() { ZelU::Marl::UserPreferenceServer::getInstance().attach(this); }
    TextListener(const TextListener&) = delete;
    TextListener& operator=(const TextListener&) = delete;
    ~TextListener() { ZelU::Marl::UserPreferenceServer::getInstance().detach(this); }

    void onSubManagerSettingsChanged(const Texts& changedTexts) override { told.push_back(changedTexts); }

    std::vector<Texts> told;
};

const std::string& valueOf(const std::string& name) {
    return UserPreferenceManager::GetInstance().getUserPrefSetting(name);
}

class SaveOutcome : public testing::Test {
protected:
    SaveOutcome() { world_.writeDefaults(defaultsOfWorld()); }

    std::string fileText() const { return fs::exists(world_.userFile()) ? readTextFile(world_.userFile()) : "(none)"; }

    /// Expects that the result names the file that was written.
    void expectSaved(const SaveResult& result) const {
        EXPECT_EQ(result.status, Status::Saved) << result.text;
        EXPECT_TRUE(result.ok());
        EXPECT_EQ(result.text, "Saved in " + result.path + ".");
        EXPECT_EQ(fileOfText(result.path).lexically_normal(), world_.userFile().lexically_normal());
        EXPECT_EQ(result.path, host::userFilePath());
    }

    PreferenceWorld world_;
};

TEST_F(SaveOutcome, SettingsAndActionsAreSavedTogether) {
    UserPreferenceManager::GetInstance();
    ASSERT_TRUE(UCPActionManager::instance().updateShortcut(3, "F3"));
    const SaveResult result =
        host::save({{"part1::value0", "mine"}, {"VALUE1", "by its bare name"}, {"nobody's", "x"}});
    expectSaved(result);
    EXPECT_THAT(result.changedSettings, ElementsAre("part0::value1", "part1::value0"));
    EXPECT_THAT(result.unknownSettings, ElementsAre("nobody's"));
    EXPECT_THAT(result.savedActions, ElementsAre(3));
    EXPECT_THAT(result.notRestored, IsEmpty());
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(result.settingsOfOthers, IsEmpty());
    EXPECT_THAT(result.actionsOfOthers, IsEmpty());
    EXPECT_EQ(result.keptCopy, "");
    EXPECT_EQ(valueOf("part1::value0"), "mine");
    EXPECT_EQ(valueOf("part0::value1"), "by its bare name");
    EXPECT_THAT(fileText(), HasSubstr("\"mine\""));
    EXPECT_THAT(fileText(), HasSubstr("\"F3\""));
}

TEST_F(SaveOutcome, WhatTheFileHasAlreadyIsNotWrittenAgain) {
    UCPActionManager& actions = UCPActionManager::instance();
    expectSaved(host::save({{"part0::value0", "mine"}}));
    ASSERT_TRUE(actions.updateShortcut(3, "F3"));
    expectSaved(host::save());
    const auto then = fs::last_write_time(world_.userFile()) - std::chrono::hours(1);
    fs::last_write_time(world_.userFile(), then);
    const Listener listener;
    const TextListener textListener;
    for (const SaveResult& result : {host::save(), host::save({{"part0::value0", "mine"}}), host::reset({}),
                                     host::reset({"part0::value1"}), host::reset({"nobody's"})}) {
        EXPECT_EQ(result.status, Status::Unchanged);
        EXPECT_TRUE(result.ok());
        EXPECT_EQ(result.text, "Nothing has changed since the last save in " + host::userFilePath() + ".");
        EXPECT_THAT(result.changedSettings, IsEmpty());
    }
    EXPECT_EQ(fs::last_write_time(world_.userFile()), then);
    EXPECT_EQ(listener.calls, 0);
    EXPECT_THAT(textListener.told, IsEmpty());
}

TEST_F(SaveOutcome, AFileThatOnlyLooksDifferentIsNotWrittenAgain) {
    expectSaved(host::save({{"part0::value0", "mine"}}));
    const std::string laidOut = "\n \n" + fileText() + "\n";
    writeTextFile(world_.userFile(), laidOut);
    EXPECT_EQ(host::save().status, Status::Unchanged);
    EXPECT_EQ(fileText(), laidOut);
}

TEST_F(SaveOutcome, WithoutAnythingOfTheUsersNoFileIsMade) {
    EXPECT_EQ(host::save().status, Status::Unchanged);
    EXPECT_EQ(host::resetAllShortcuts().status, Status::Unchanged);
    EXPECT_EQ(fileText(), "(none)");
}

TEST_F(SaveOutcome, AFileThatWentAwayIsWrittenAgain) {
    expectSaved(host::save({{"part0::value0", "mine"}}));
    const std::string text = fileText();
    fs::remove_all(world_.home() / "pcbenv");
    expectSaved(host::save());
    EXPECT_EQ(fileText(), text);
}

TEST_F(SaveOutcome, ASettingSetToItsDefaultIsTheUsers) {
    expectSaved(host::save({{"part0::value0", "mine"}}));
    expectSaved(host::save({{"part0::value0", defaultOfWorld(0)}}));
    EXPECT_THAT(fileText(), HasSubstr("\"part0::value0\": \"default 0\""));
    expectSaved(host::reset({"Part0::Value0"}));
    EXPECT_EQ(fileText().find("default 0"), std::string::npos);
}

TEST_F(SaveOutcome, TheObserversAreToldOnceWhenTheFileIsThere) {
    UserPreferenceManager::GetInstance();
    UCPActionManager::instance().updateShortcut(3, "F3");
    std::string seen;
    const Listener listener([&] { seen = fileText(); });
    const TextListener textListener;
    expectSaved(host::save({{"part0::value0", "mine"}}));
    EXPECT_EQ(listener.calls, 1);
    EXPECT_THAT(listener.names, ElementsAre("part0::value0"));
    EXPECT_EQ(seen, fileText());
    const auto type = UserPreferenceManager::SubManagerType::Actions;
    EXPECT_THAT(textListener.told, ElementsAre(Texts{{type, R"([{"actions":[{"id":3,"shortcut":"F3"}]}])"}}));
    // The same holds for actions alone, with no setting changed, and for a reset.
    UCPActionManager::instance().updateShortcut(3, "F4");
    expectSaved(host::save());
    EXPECT_EQ(listener.calls, 2);
    EXPECT_THAT(listener.names, IsEmpty());
    EXPECT_EQ(textListener.told.size(), 2U);
    expectSaved(host::reset({"part0::value0"}));
    EXPECT_EQ(listener.calls, 3);
    EXPECT_THAT(listener.names, ElementsAre("part0::value0"));
    EXPECT_EQ(valueOf("part0::value0"), "default 0");
    EXPECT_THAT(textListener.told.back(), IsEmpty());
}

TEST_F(SaveOutcome, AnObserverMaySaveMore) {
    SaveResult inner;
    bool isDone = false;
    const Listener listener([&] {
        if (!isDone) {
            isDone = true;
            inner = host::save({{"part1::value1", "inner"}});
        }
    });
    const auto start = std::chrono::steady_clock::now();
    expectSaved(host::save({{"part0::value0", "outer"}}));
    expectSaved(inner);
    // Nobody waited for a turn.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2500));
    EXPECT_EQ(listener.calls, 2);
    EXPECT_THAT(fileText(), HasSubstr("\"outer\""));
    EXPECT_THAT(fileText(), HasSubstr("\"inner\""));
}

TEST_F(SaveOutcome, AnObserverThatSavesWithoutEndIsStopped) {
    int saves = 0;
    std::vector<SaveResult> tooDeep;
    const auto saveOneMore = [&] {
        const SaveResult result = host::save({{"part0::value0", std::to_string(++saves)}});
        if (result.status == Status::TooDeep) {
            tooDeep.push_back(result);
        }
    };
    const Listener listener(saveOneMore);
    const Listener another(saveOneMore);
    expectSaved(host::save({{"part0::value0", "first"}}));
    // As many as may be inside each other, and each that was begun after that in an observer that was told.
    EXPECT_EQ(listener.calls + another.calls, 2 * host::kMaximumSaveDepth);
    EXPECT_EQ(saves, 2 * host::kMaximumSaveDepth);
    ASSERT_EQ(tooDeep.size(), static_cast<std::size_t>(host::kMaximumSaveDepth + 1));
    EXPECT_EQ(tooDeep.front().text,
              "Nothing was saved, because the observers of saves save again and again, 8 times inside each other.");
    EXPECT_FALSE(tooDeep.front().ok());
    EXPECT_THAT(tooDeep.front().changedSettings, IsEmpty());
    EXPECT_EQ(valueOf("part0::value0"), std::to_string(host::kMaximumSaveDepth - 1));
    // The next one from outside goes its way.
    tooDeep.clear();
    expectSaved(host::save({{"part0::value1", "later"}}));
}

TEST_F(SaveOutcome, WithoutDefaultsNothingIsSaved) {
    world_.writeDefaults("");
    const SaveResult result = host::save({{"part0::value0", "mine"}});
    EXPECT_EQ(result.status, Status::NoDefaults);
    EXPECT_FALSE(result.ok());
    EXPECT_EQ(result.text, "Nothing was saved, because there are no shipped defaults.");
    EXPECT_THAT(result.unknownSettings, ElementsAre("part0::value0"));
    EXPECT_EQ(host::resetAllShortcuts().status, Status::NoDefaults);
    EXPECT_EQ(fileText(), "(none)");
    EXPECT_FALSE(fs::exists(world_.home() / "pcbenv" / "tessel" / "tessel_settings.cfg"));
}

TEST_F(SaveOutcome, WithoutAPlaceNothingIsSavedButTheValuesAreInForce) {
    setVariable("HOMEPATH", "\\no\\such*home");
    const SaveResult result = host::save({{"part0::value0", "mine"}});
    EXPECT_EQ(result.status, Status::NoPath) << result.text;
    EXPECT_THAT(result.text, HasSubstr("Nothing was saved, because there is no place for the file"));
    EXPECT_THAT(result.changedSettings, ElementsAre("part0::value0"));
    EXPECT_EQ(valueOf("part0::value0"), "mine");
}

TEST_F(SaveOutcome, AFileThatCannotBeWrittenIsToldAndTheNextSaveTriesAgain) {
    expectSaved(host::save({{"part0::value0", "before"}}));
    const std::string before = fileText();
    fs::remove(world_.userFile());
    // A directory stands where the file is to be.
    fs::create_directory(world_.userFile());
    UCPActionManager::instance().updateShortcut(3, "F3");
    const Listener listener;
    const SaveResult result = host::save({{"part0::value1", "mine"}});
    EXPECT_FALSE(result.ok());
    EXPECT_THAT(result.text, HasSubstr("Nothing was saved, because"));
    EXPECT_THAT(result.text, HasSubstr(result.path));
    EXPECT_THAT(result.changedSettings, ElementsAre("part0::value1"));
    EXPECT_EQ(valueOf("part0::value1"), "mine");
    EXPECT_EQ(listener.calls, 1);
    fs::remove(world_.userFile());
    // The old file comes back, as from a share that was away.
    writeTextFile(world_.userFile(), before);
    expectSaved(host::save());
    EXPECT_THAT(fileText(), HasSubstr("\"mine\""));
    EXPECT_THAT(fileText(), HasSubstr("\"F3\""));
    EXPECT_THAT(fileText(), HasSubstr("\"before\""));
}

TEST_F(SaveOutcome, AFileThatIsNoJsonIsKeptAndToldOf) {
    world_.writeUser("{ half");
    const auto warnings = host::startWarnings();
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings.front().kind, host::StartWarning::Kind::FileNotRead);
    EXPECT_EQ(warnings.front().name, "");
    EXPECT_EQ(warnings.front().text, "The file " + host::userFilePath() +
                                         " could not be read or is no JSON, so the shipped defaults are in force. A "
                                         "copy of it is kept before it is first overwritten.");
    const SaveResult result = host::save({{"part0::value0", "mine"}});
    EXPECT_EQ(result.status, Status::Saved);
    EXPECT_EQ(result.keptCopy, result.path + ".bad");
    EXPECT_EQ(result.text, "Saved in " + result.path + "; what was there and could not be taken over is kept as " +
                               result.path + ".bad.");
    EXPECT_EQ(readTextFile(fileOfText(result.keptCopy)), "{ half");
    EXPECT_EQ(host::save({{"part0::value0", "next"}}).keptCopy, "");
    // One that was spoilt later is kept too, and what is in force is written whole.
    writeTextFile(world_.userFile(), "[");
    const SaveResult again = host::save({{"part0::value1", "mine"}});
    EXPECT_EQ(again.keptCopy, result.path + ".bad.2");
    EXPECT_THAT(fileText(), HasSubstr("\"next\""));
}

TEST_F(SaveOutcome, EntriesThatMeanNothingHereStay) {
    world_.writeUser(R"({"meta":[{"header":"O","attribute":"other product","overriddensettings":[{"its":"value"}]},
        {"header":"Part","attribute":"part0","overriddensettings":[{"value0":"read"},{"newer":"setting"}]}]})");
    expectSaved(host::save({{"part1::value0", "mine"}}));
    EXPECT_THAT(fileText(), HasSubstr("\"other product\""));
    EXPECT_THAT(fileText(), HasSubstr("\"its\""));
    EXPECT_THAT(fileText(), HasSubstr("\"newer\""));
    EXPECT_THAT(fileText(), HasSubstr("\"read\""));
}

TEST_F(SaveOutcome, InARegressionTestTheFileIsWrittenInTheCurrentDirectory) {
    const TempDirectory current;
    fs::current_path(current.path());
    setVariable("regression_testing", "");
    world_.writeUser(R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[{"value0":"read"}]}]})");
    // An earlier run left it; what is in it is none of this one's.
    writeTextFile(current / "tessel_settings.cfg",
                  R"({"meta":[{"header":"Part","attribute":"part1","overriddensettings":[{"value0":"stale"}]}]})");
    const SaveResult result = host::save({{"part0::value1", "mine"}});
    EXPECT_EQ(result.status, Status::Saved);
    EXPECT_EQ(fileOfText(result.path).lexically_normal(), (current / "tessel_settings.cfg").lexically_normal());
    const std::string text = readTextFile(current / "tessel_settings.cfg");
    EXPECT_THAT(text, HasSubstr("\"read\""));
    EXPECT_THAT(text, HasSubstr("\"mine\""));
    EXPECT_EQ(text.find("stale"), std::string::npos);
    // From then on it is a file that is shared as any other.
    std::string edited = text;
    edited.replace(edited.find("\"read\""), 6, "\"else\"");
    writeTextFile(current / "tessel_settings.cfg", edited);
    EXPECT_THAT(host::save({{"part0::value1", "more"}}).settingsOfOthers, ElementsAre("part0::value0"));
    EXPECT_THAT(readTextFile(current / "tessel_settings.cfg"), HasSubstr("\"else\""));
    fs::current_path(world_.home().path());
}

TEST_F(SaveOutcome, ActionsWithoutASectionAreNamed) {
    world_.writeDefaults(defaultsWithValue("default"));
    UserPreferenceManager::GetInstance();
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(actionsOfWorld({}), "");
    EXPECT_THAT(host::save({{"s::value", "mine"}}).notRestored, IsEmpty());
    ASSERT_TRUE(actions.updateShortcut(3, "F3"));
    actions.updateRMBMenu(5, false);
    const SaveResult result = host::save({{"s::value", "more"}});
    expectSaved(result);
    EXPECT_THAT(result.savedActions, IsEmpty());
    ASSERT_EQ(result.notRestored.size(), 2U);
    EXPECT_EQ(result.notRestored[0].action, 3);
    EXPECT_EQ(result.notRestored[1].action, 5);
    EXPECT_EQ(result.notRestored[0].obstacle, host::Obstacle::NoPlaceInFile);
    EXPECT_EQ(result.notRestored[0].text,
              "Action 3 cannot be saved, because the shipped defaults have no section for actions.");
}

TEST_F(SaveOutcome, AResetOfSomeShortcutsLeavesTheOthersAndTellsOfRefusedOnes) {
    UCPActionManager& actions = UCPActionManager::instance();
    UserPreferenceManager::GetInstance();
    ASSERT_TRUE(actions.updateShortcut(1, "F1"));
    ASSERT_TRUE(actions.updateShortcut(2, "F2"));
    // It has the same context as the first one.
    ASSERT_TRUE(actions.updateShortcut(4, "Ctrl+1"));
    actions.updateRMBMenu(2, true);
    expectSaved(host::save());
    SaveResult result = host::resetShortcuts({2, 999});
    expectSaved(result);
    EXPECT_THAT(result.savedActions, ElementsAre(1, 4));
    EXPECT_THAT(result.notRestored, IsEmpty());
    EXPECT_EQ(actions.getShortcut(2), "Ctrl+2");
    EXPECT_FALSE(actions.getAction(2).second.hasOverwrite());
    result = host::resetShortcuts({1});
    EXPECT_EQ(result.status, Status::Unchanged);
    ASSERT_EQ(result.notRestored.size(), 1U);
    EXPECT_EQ(result.notRestored[0].action, 1);
    EXPECT_EQ(result.notRestored[0].otherAction, 4);
    EXPECT_EQ(actions.getShortcut(1), "F1");
    result = host::resetShortcuts({4, 1});
    expectSaved(result);
    EXPECT_THAT(result.savedActions, IsEmpty());
    EXPECT_EQ(actions.getShortcut(1), "Ctrl+1");
}

TEST_F(SaveOutcome, AHostThatIsCalledBackDuringTheSearchForTheFileMaySave) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = systemText(world_.userFile());
    fs::create_directories(world_.userFile().parent_path());
    UserPreferenceManager::GetInstance();
    std::map<std::string, std::string> values = {{"part0::value0", "outer"}};
    SaveResult inner;
    bool isDone = false;
    commonLibrary.duringSearch = [&] {
        if (!isDone) {
            isDone = true;
            values = {{"part0::value0", "changed meanwhile"}};
            inner = host::save({{"part1::value1", "inner"}, {"part0::value0", "inner"}});
        }
    };
    EXPECT_EQ(host::save(values).status, Status::Saved);
    EXPECT_EQ(inner.status, Status::Saved);
    EXPECT_EQ(valueOf("part0::value0"), "outer");
    EXPECT_EQ(valueOf("part1::value1"), "inner");
    EXPECT_THAT(fileText(), HasSubstr("value0\": \"outer\""));
    EXPECT_THAT(fileText(), HasSubstr("value1\": \"inner\""));
}

TEST_F(SaveOutcome, ASaveWithoutEndInTheSearchIsStopped) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    UserPreferenceManager::GetInstance();
    int tooDeep = 0;
    commonLibrary.duringSearch = [&] { tooDeep += host::save().status == Status::TooDeep ? 1 : 0; };
    EXPECT_TRUE(host::save({{"part0::value0", "mine"}}).ok());
    EXPECT_EQ(tooDeep, 1);
}

TEST_F(SaveOutcome, TheOldDoorsSavesAreTouchedHereToo) {
    UserPreferenceManager& preferences = UserPreferenceManager::GetInstance();
    preferences.updateUserPrefSettings({{"part0::value0", "old door"}}, {});
    const SaveResult result = host::save({{"part0::value1", "new door"}});
    expectSaved(result);
    EXPECT_THAT(result.conflicts, IsEmpty());
    EXPECT_THAT(fileText(), HasSubstr("\"old door\""));
    EXPECT_THAT(fileText(), HasSubstr("\"new door\""));
}

}  // namespace
}  // namespace zelutil::test
