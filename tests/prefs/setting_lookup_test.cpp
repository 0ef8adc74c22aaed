// Look-ups through the class and the C functions, from the first request to the teardown.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "prefs/preference_world.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

constexpr char kDefaults[] = R"({"meta":[
    {"header":"Display","attribute":"display","tclCommand":"t",
     "defaultsettings":[{"name":"grid","value":"0.635"},{"name":"ratsnest","value":"true"},{"name":"font","value":""}]},
    {"header":"Files","attribute":"files","unique":false,"tclCommand":"t",
     "defaultsettings":[{"name":"path","value":"/a"}]},
    {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"t","defaultsettings":
     {"actions":[{"id":1,"context":"ucpedit","command":"new","shortcut":"N"}]}}]})";
constexpr char kUser[] = R"({"meta":[
    {"header":"Display","attribute":"display","overriddensettings":[{"grid":"0.5"},{"ratsnest":""}]},
    {"header":"Keys","attribute":"keys","overriddensettings":[{"actions":[{"id":1,"shortcut":"M"}]}]}]})";

class Lookup : public testing::Test {
protected:
    Lookup() {
        world_.writeDefaults(kDefaults);
        world_.writeUser(kUser);
    }

    PreferenceWorld world_;
};

TEST_F(Lookup, AnswersTheUsersValueElseTheDefault) {
    const UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    struct Row {
        const char* name;
        const char* value;
        const char* defaultValue;
    };
    constexpr Row kRows[] = {
        {"display::grid", "0.5", "0.635"},
        {"grid", "0.5", "0.635"},
        {"GRID", "0.5", "0.635"},
        {"Display::Grid", "0.5", "0.635"},
        {"ratsnest", "", "true"},
        {"font", "", ""},
        {"files::path", "/a", "/a"},
        {"path", "", ""},
        {"keys::actions", "", ""},
        {"", "", ""},
        {"grid ", "", ""},
        {"display::grid::", "", ""},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(manager.getUserPrefSetting(row.name), row.value) << row.name;
        EXPECT_EQ(manager.getDefaultPrefSetting(row.name), row.defaultValue) << row.name;
        const auto orNull = [](const char* text) { return *text == '\0' ? nullptr : text; };
        EXPECT_STREQ(get_user_setting(row.name), orNull(row.value)) << row.name;
        EXPECT_STREQ(get_default_user_setting(row.name), orNull(row.defaultValue)) << row.name;
    }
}

TEST_F(Lookup, AnswersTheManagersOwnText) {
    const UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    const char* const grid = get_user_setting("DISPLAY::GRID");
    EXPECT_NE(grid, nullptr);
    EXPECT_EQ(grid, get_user_setting("display::grid"));
    EXPECT_EQ(grid, get_user_setting("grid"));
    EXPECT_EQ(grid, manager.getUserPrefSetting("grid").c_str());
    EXPECT_EQ(get_default_user_setting("grid"), manager.getDefaultPrefSetting("Display::grid").c_str());
    // Every failed look-up answers one and the same empty text.
    EXPECT_EQ(&manager.getUserPrefSetting("none"), &manager.getDefaultPrefSetting("neither"));
}

TEST_F(Lookup, LeavesTheHostsNameAsItIs) {
    const std::string name = "DISPLAY::GRID";
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting(name), "0.5");
    EXPECT_EQ(name, "DISPLAY::GRID");
}

TEST_F(Lookup, OfAnEmptyValueOfTheUsersIsNullThoughTheDefaultIsNot) {
    EXPECT_EQ(get_user_setting("display::ratsnest"), nullptr);
    EXPECT_STREQ(get_default_user_setting("display::ratsnest"), "true");
}

TEST_F(Lookup, LoadsTheActionsFromBothTexts) {
    UserPreferenceManager::GetInstance();
    EXPECT_EQ(UCPActionManager::instance().getActionIdByCommand("ucpedit", "new"), 1);
    EXPECT_EQ(UCPActionManager::instance().getShortcut(1), "M");
}

TEST_F(Lookup, LoadsNoActionsWithoutTheirSection) {
    world_.writeDefaults(defaultsWithValue("1"));
    UserPreferenceManager::GetInstance();
    EXPECT_TRUE(UCPActionManager::instance().getAllActions().empty());
}

TEST_F(Lookup, LoadsTheShippedActionsWithoutAUsersFile) {
    std::filesystem::remove(world_.userFile());
    UserPreferenceManager::GetInstance();
    EXPECT_EQ(UCPActionManager::instance().getShortcut(1), "N");
    EXPECT_FALSE(UCPActionManager::instance().isModified());
}

TEST_F(Lookup, OfTwoActionSectionsTheFirstTextsCount) {
    world_.writeDefaults(R"({"meta":[
        {"header":"Z","attribute":"z","submanagerId":100,"tclCommand":"t","defaultsettings":
         {"actions":[{"id":1,"context":"c","command":"first","shortcut":"A"}]}},
        {"header":"A","attribute":"a","submanagerId":100,"tclCommand":"t","defaultsettings":
         {"actions":[{"id":2,"context":"c","command":"second","shortcut":"B"}]}}]})");
    world_.writeUser(R"({"meta":[
        {"header":"A","attribute":"a","overriddensettings":[{"actions":[{"id":1,"shortcut":"1"}]}]},
        {"header":"Z","attribute":"z","overriddensettings":[{"actions":[{"id":1,"shortcut":"2"}]}]}]})");
    UserPreferenceManager::GetInstance();
    EXPECT_EQ(UCPActionManager::instance().getAllActions().size(), 1U);
    EXPECT_EQ(UCPActionManager::instance().getShortcut(1), "1");
}

TEST_F(Lookup, SectionsOfOtherSubManagersLoadNothing) {
    world_.writeDefaults(R"({"meta":[
        {"header":"X","attribute":"x","submanagerId":102,"tclCommand":"t","defaultsettings":
         {"actions":[{"id":1,"context":"c","command":"first","shortcut":"A"}]}}]})");
    EXPECT_EQ(UserPreferenceManager::GetInstance().getAllUserPrefUISettings().size(), 1U);
    EXPECT_TRUE(UCPActionManager::instance().getAllActions().empty());
}

TEST_F(Lookup, AnswersNullFromInsideTheSearchForTheUsersFile) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = systemText(world_.userFile());
    int calls = 0;
    commonLibrary.duringSearch = [&] {
        ++calls;
        EXPECT_EQ(get_user_setting("display::grid"), nullptr);
        // From another thread too: it does not wait for the construction.
        std::thread([] { EXPECT_EQ(get_user_setting("display::grid"), nullptr); }).join();
    };
    EXPECT_STREQ(get_user_setting("display::grid"), "0.5");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(commonLibrary.searchCalls, 1);
}

// The other function does not look whether a search is going on, so another thread gets its answer, but late.
TEST_F(Lookup, ADefaultWaitsForTheSearchForTheUsersFileOddity) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    std::atomic<bool> searching{false};
    std::atomic<bool> answeredWhileSearching{false};
    std::thread other;
    std::string answer;
    commonLibrary.duringSearch = [&] {
        searching = true;
        other = std::thread([&] {
            const char* const value = get_default_user_setting("grid");
            answeredWhileSearching = searching.load();
            answer = value == nullptr ? "(null)" : value;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        searching = false;
    };
    EXPECT_STREQ(get_user_setting("grid"), "0.5");
    other.join();
    EXPECT_FALSE(answeredWhileSearching);
    EXPECT_EQ(answer, "0.635");
    EXPECT_EQ(commonLibrary.searchCalls, 1);
}

TEST_F(Lookup, FindsValuesAgainAfterASearchThatFoundNothing) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    int calls = 0;
    commonLibrary.duringSearch = [&] { calls += get_user_setting("grid") == nullptr ? 1 : 100; };
    EXPECT_STREQ(get_user_setting("grid"), "0.5");
    EXPECT_EQ(calls, 1);
}

TEST_F(Lookup, ConstructsOnceWhenManyThreadsAskFirst) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = systemText(world_.userFile());
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                const UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
                wrong += manager.getUserPrefSetting("Display::Grid") == "0.5" ? 0 : 1;
                wrong += std::string(get_user_setting("GRID")) == "0.5" ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(commonLibrary.searchCalls, 1);
}

TEST_F(Lookup, GoesOnAfterACopyIsGone) {
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    {
        UserPreferenceManager copy = manager;
        EXPECT_EQ(copy.getUserPrefSetting("grid"), "0.5");
        EXPECT_EQ(&copy.getUserPrefSetting("grid"), &manager.getUserPrefSetting("grid"));
        EXPECT_NE(&copy.getAllUserPrefUISettings(), &manager.getAllUserPrefUISettings());
        copy = manager;
        EXPECT_EQ(copy.getUserPrefSetting("files::path"), "/a");
    }
    EXPECT_NO_THROW(UserPreferenceManager::GetInstance());
    EXPECT_STREQ(get_user_setting("grid"), "0.5");
}

TEST_F(Lookup, ReferencesOutliveAnAssignment) {
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    const std::string* unknown = nullptr;
    {
        UserPreferenceManager copy = manager;
        unknown = &copy.getUserPrefSetting("unknown");
        const auto& sections = copy.getAllUserPrefUISettings();
        const auto& value = copy.getUserPrefSetting("grid");
        copy = manager;
        EXPECT_EQ(&copy.getUserPrefSetting("unknown"), unknown);
        EXPECT_EQ(&copy.getAllUserPrefUISettings(), &sections);
        EXPECT_EQ(sections, manager.getAllUserPrefUISettings());
        EXPECT_EQ(value, "0.5");
        UserPreferenceManager& itself = copy;
        copy = itself;
        EXPECT_EQ(sections, manager.getAllUserPrefUISettings());
        EXPECT_EQ(copy.getUserPrefSetting("grid"), "0.5");
        EXPECT_EQ(copy.GetSubManager(UserPreferenceManager::SubManagerType::Actions), &UCPActionManager::instance());
    }
    EXPECT_EQ(*unknown, "");
    EXPECT_EQ(&manager.getUserPrefSetting("unknown"), unknown);
    EXPECT_EQ(&manager.getDefaultPrefSetting("unknown"), unknown);
}

TEST_F(Lookup, ListsTheSectionsByAttributePath) {
    auto& sections = UserPreferenceManager::GetInstance().getAllUserPrefUISettings();
    ASSERT_EQ(sections.size(), 3U);
    EXPECT_EQ(sections.begin()->first, "display");
    EXPECT_EQ(sections.at("keys")->submanagerId, 100);
    EXPECT_EQ(&sections, &UserPreferenceManager::GetInstance().getAllUserPrefUISettings());
}

TEST_F(Lookup, HashesBytesAsTheyStand) {
    const UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    EXPECT_EQ(manager.computeHash(""), 0xcbf29ce484222325U);
    EXPECT_EQ(manager.computeHash("foobar"), 0x85944171f73967e8U);
    EXPECT_NE(manager.computeHash("Foobar"), manager.computeHash("foobar"));
}

TEST(Lowercase, ChangesTheLettersOfAsciiOnly) {
    struct Row {
        std::string name;
        std::string lower;
    };
    const Row rows[] = {
        {"", ""},
        {"Display::GRID_2", "display::grid_2"},
        {"@[`{", "@[`{"},
        {"\xC4\xD6\xFF", "\xC4\xD6\xFF"},
        {std::string("A\0B", 3), std::string("a\0b", 3)},
    };
    for (const Row& row : rows) {
        std::string name = row.name;
        UserPreferenceManager::convertSettingToLowercase(name);
        EXPECT_EQ(name, row.lower);
    }
}

static_assert(!std::is_default_constructible_v<UserPreferenceManager>);
static_assert(static_cast<int>(UserPreferenceManager::SubManagerType::Actions) == 100);
static_assert(static_cast<int>(UserPreferenceManager::SubManagerType::None) == 101);
static_assert(sizeof(UserPreferenceManager::SubManagerType) == 4);

}  // namespace
}  // namespace zelutil::test
