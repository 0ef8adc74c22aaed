// Enumerating settings and sections, as a host does it.
#include <gtest/gtest.h>
#include <zelutil/host/settings.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <string>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::setting;
using host::SettingInfo;
using host::settings;
using Names = std::vector<std::string>;

// The section "view" is the first of the file and lends "grid"; "zoom" is defined twice; "colors" lends no bare names;
// "keys" belongs to the actions; "group" only groups.
constexpr char kDefaults[] = R"({"meta":[
    {"header":"View","attribute":"view","tclCommand":"","defaultsettings":[
        {"name":"Grid","value":"on"},{"name":"zoom","value":"1"}],
     "children":[{"header":"Colors","attribute":"colors","unique":false,"tclCommand":"","defaultsettings":[
        {"name":"pad","value":"red"}]}]},
    {"header":"Group","attribute":"group","children":[
        {"header":"Board","attribute":"board","tclCommand":"","defaultsettings":[{"name":"grid","value":"off"}]},
        {"header":"Empty","attribute":"empty","tclCommand":"","defaultsettings":[]}]},
    {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"","defaultsettings":[{"actions":[]}]},
    {"header":"View","attribute":"view","tclCommand":"","defaultsettings":[{"name":"zoom","value":"2"}]}]})";

constexpr char kUser[] = R"({"meta":[
    {"header":"View","attribute":"view","overriddensettings":[{"zoom":"1"}]},
    {"header":"Group","attribute":"group","children":[
        {"header":"Board","attribute":"board","overriddensettings":[{"group::board::grid":"dots"}]}]}]})";

class SettingsEnumerating : public testing::Test {
protected:
    SettingsEnumerating() {
        world_.writeDefaults(kDefaults);
        world_.writeUser(kUser);
    }

    PreferenceWorld world_;
};

Names fullNamesOf(const std::vector<SettingInfo>& infos) {
    Names names;
    for (const SettingInfo& info : infos) {
        names.push_back(info.fullName);
    }
    return names;
}

TEST_F(SettingsEnumerating, HasEverySettingOnceInTheOrderOfTheFile) {
    EXPECT_EQ(fullNamesOf(settings()), (Names{"view::Grid", "view::zoom", "view::colors::pad", "group::board::grid"}));
}

TEST_F(SettingsEnumerating, TellsTheNamesThatFindASetting) {
    const std::vector<SettingInfo> infos = settings();
    ASSERT_EQ(infos.size(), 4U);
    EXPECT_EQ(infos[0].bareNames, Names{"Grid"});
    EXPECT_EQ(infos[1].bareNames, Names{"zoom"});
    EXPECT_EQ(infos[2].bareNames, Names{});
    // The bare name belongs to the view's.
    EXPECT_EQ(infos[3].bareNames, Names{});
    for (const SettingInfo& info : infos) {
        EXPECT_TRUE(info.foundByFullName) << info.fullName;
    }
}

TEST_F(SettingsEnumerating, TellsValueDefaultAndWhetherTheUserSetIt) {
    const std::vector<SettingInfo> infos = settings();
    ASSERT_EQ(infos.size(), 4U);
    EXPECT_EQ(infos[0].value, "on");
    EXPECT_FALSE(infos[0].setByUser);
    // The user set it to the default.
    EXPECT_EQ(infos[1].value, "1");
    EXPECT_EQ(infos[1].defaultValue, "1");
    EXPECT_TRUE(infos[1].setByUser);
    EXPECT_EQ(infos[2].section, "view::colors");
    EXPECT_EQ(infos[3].value, "dots");
    EXPECT_EQ(infos[3].defaultValue, "off");
    EXPECT_EQ(infos[3].section, "group::board");
    EXPECT_TRUE(infos[3].setByUser);
}

TEST_F(SettingsEnumerating, FollowsTheValuesInForce) {
    ASSERT_EQ(setting("grid")->value, "on");
    UserPreferenceManager::GetInstance().updateUserPrefSettings({{"grid", "5"}}, {});
    EXPECT_EQ(setting("grid")->value, "5");
    EXPECT_TRUE(setting("grid")->setByUser);
    EXPECT_EQ(settings()[0].value, "5");
}

TEST_F(SettingsEnumerating, FindsOneByAnyNameInAnyCase) {
    EXPECT_EQ(setting("GRID")->fullName, "view::Grid");
    EXPECT_EQ(setting("Group::Board::Grid")->fullName, "group::board::grid");
    EXPECT_EQ(setting("view::colors::pad")->defaultValue, "red");
    EXPECT_FALSE(setting("pad"));
    EXPECT_FALSE(setting(""));
    EXPECT_FALSE(setting("keys"));
    EXPECT_FALSE(setting("group"));
}

TEST_F(SettingsEnumerating, HasTheSectionsInTheOrderOfTheFile) {
    EXPECT_EQ(host::sectionsInFileOrder(), (Names{"view", "view::colors", "group::board", "group::empty", "keys"}));
    EXPECT_EQ(host::sectionsInFileOrder().size(),
              UserPreferenceManager::GetInstance().getAllUserPrefUISettings().size());
}

// Read in order: "b::x" of "a" is found by its name, which is the full name of the x of "b", which has the bare one.
TEST(SettingsEnumeratingOddNames, ASettingWhoseFullNameMeansAnotherIsListedByItsBareName) {
    const PreferenceWorld world;
    world.writeDefaults(R"({"meta":[
        {"header":"A","attribute":"a","tclCommand":"","defaultsettings":[{"name":"b::x","value":"1"}]},
        {"header":"B","attribute":"b","tclCommand":"","defaultsettings":[{"name":"x","value":"2"}]},
        {"header":"E","attribute":"","tclCommand":"","defaultsettings":[{"name":"","value":"3"}]}]})");
    const std::vector<SettingInfo> infos = settings();
    ASSERT_EQ(fullNamesOf(infos), (Names{"a::b::x", "b::x", "::"}));
    EXPECT_EQ(infos[0].bareNames, Names{"b::x"});
    EXPECT_TRUE(infos[0].foundByFullName);
    EXPECT_EQ(infos[1].bareNames, Names{"x"});
    EXPECT_FALSE(infos[1].foundByFullName);
    EXPECT_EQ(infos[2].bareNames, Names{""});
    EXPECT_EQ(infos[2].section, "");
    EXPECT_EQ(setting("b::x")->defaultValue, "1");
    EXPECT_EQ(setting("x")->defaultValue, "2");
    EXPECT_EQ(setting("")->defaultValue, "3");
}

TEST(SettingsEnumeratingWithoutDefaults, ThereIsNothing) {
    const PreferenceWorld world;
    EXPECT_TRUE(settings().empty());
    EXPECT_TRUE(host::sectionsInFileOrder().empty());
    EXPECT_FALSE(setting("x"));
}

}  // namespace
}  // namespace zelutil::test
