// Values and sub-managers' texts of any length are read, put in force and saved.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"

namespace zelutil::test {
namespace {

using Type = UserPreferenceManager::SubManagerType;

class LongText : public testing::TestWithParam<std::size_t> {
protected:
    static std::string longText() { return std::string(GetParam(), 'v'); }

    /// A file with a section of the action manager, which has that member.
    static std::string actionsFile(const std::string& rest) {
        return R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":"1"}]},
                           {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t",)" +
               rest + "}]}";
    }

    static std::string shortcut() { return UCPActionManager::instance().getShortcut(1); }

    PreferenceWorld world_;
};

TEST_P(LongText, IsADefault) {
    world_.writeDefaults(defaultsWithValue(longText()));
    EXPECT_EQ(get_default_user_setting("value"), longText());
    EXPECT_EQ(get_user_setting("s::value"), longText());
}

TEST_P(LongText, IsAUsersValue) {
    world_.writeDefaults(defaultsWithValue("default"));
    world_.writeUser(userWithValue(longText()));
    EXPECT_EQ(get_user_setting("value"), longText());
}

TEST_P(LongText, IsSaved) {
    world_.writeDefaults(defaultsWithValue("default"));
    save(longText());
    EXPECT_EQ(get_user_setting("value"), longText());
    EXPECT_EQ(readTextFile(world_.userFile()), savedText(longText()));
}

TEST_P(LongText, IsTheActionManagersDefault) {
    world_.writeDefaults(actionsFile(
        R"("defaultsettings":{"actions":[{"id":1,"context":"c","command":"new","shortcut":")" + longText() + "\"}]}"));
    UserPreferenceManager::GetInstance();
    EXPECT_EQ(shortcut(), longText());
}

TEST_P(LongText, IsTheActionManagersUserTextAndStaysWhenASettingIsSaved) {
    world_.writeDefaults(
        actionsFile(R"("defaultsettings":{"actions":[{"id":1,"context":"c","command":"new","shortcut":"N"}]})"));
    world_.writeUser(actionsFile(R"("overriddensettings":[{"actions":[{"id":1,"shortcut":")" + longText() + "\"}]}]"));
    UserPreferenceManager::GetInstance();
    EXPECT_EQ(shortcut(), longText());
    save("2");
    EXPECT_NE(readTextFile(world_.userFile()).find("\"shortcut\": \"" + longText() + "\""), std::string::npos);
}

TEST_P(LongText, IsASavedTextOfTheActionManager) {
    world_.writeDefaults(actionsFile(R"("defaultsettings":{})"));
    UserPreferenceManager::GetInstance().updateUserPrefSettings({}, {{Type::Actions, "[\"" + longText() + "\"]"}});
    EXPECT_NE(readTextFile(world_.userFile()).find("\"" + longText() + "\""), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Bytes, LongText, testing::Values(990, 1001, 70000, 2000000));

}  // namespace
}  // namespace zelutil::test
