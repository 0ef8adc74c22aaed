// Saves and what is around them: where the file goes, when what is seen, and what happens when it cannot be written.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/common_library_stand_in.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using Type = UserPreferenceManager::SubManagerType;

class Save : public testing::Test {
protected:
    Save() { world_.writeDefaults(defaultsWithValue("default")); }

    PreferenceWorld world_;
};

TEST_F(Save, MakesTheMissingDirectories) {
    ASSERT_FALSE(fs::exists(world_.home() / "pcbenv"));
    save("1");
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("1"));
    EXPECT_EQ(std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}), 1);
}

TEST_F(Save, PutsTheNewValueInForceAndLeavesTheDefault) {
    EXPECT_STREQ(get_user_setting("value"), "default");
    save("1");
    EXPECT_STREQ(get_user_setting("value"), "1");
    EXPECT_STREQ(get_user_setting("S::VALUE"), "1");
    EXPECT_STREQ(get_default_user_setting("value"), "default");
    EXPECT_STREQ(get_user_setting("other"), "o");
    save("");
    EXPECT_EQ(get_user_setting("value"), nullptr);
    EXPECT_STREQ(get_default_user_setting("value"), "default");
}

TEST_F(Save, ToldObserversSeeTheNewValueAndTheNewFile) {
    std::string value;
    std::string text;
    const Listener listener([&] {
        value = get_user_setting("value");
        text = readTextFile(world_.userFile());
    });
    save("1");
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(listener.names, std::set<std::string>{"s::value"});
    EXPECT_EQ(value, "1");
    EXPECT_EQ(text, savedText("1"));
}

TEST_F(Save, AnObserverMaySaveInItsTurn) {
    const Listener listener([] { UserPreferenceManager::GetInstance().updateUserPrefSettings({{"other", "2"}}, {}); });
    save("1");
    EXPECT_EQ(listener.calls, 2);
    EXPECT_EQ(listener.names, std::set<std::string>{"s::value"});
    EXPECT_STREQ(get_user_setting("value"), "1");
    EXPECT_STREQ(get_user_setting("other"), "2");
}

TEST_F(Save, GoesToTheFileThatTheCommonLibraryFindsThen) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    save("1");
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("1"));
    commonLibrary.foundPath = systemText(world_.home() / "moved/found.cfg");
    save("2");
    EXPECT_EQ(readTextFile(world_.home() / "moved/found.cfg"), savedText("2"));
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("1"));
    // Once to read, and at every save.
    EXPECT_EQ(commonLibrary.searchCalls, 3);
}

TEST_F(Save, MakesTheDirectoriesOfAnOddlyWrittenPath) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = systemText(world_.home().path()) + "/a//b\\\\/found.cfg";
    save("1");
    EXPECT_EQ(readTextFile(world_.home() / "a/b/found.cfg"), savedText("1"));
}

TEST_F(Save, GoesToTheCurrentDirectoryWhenThePathHasNone) {
    fs::current_path(world_.home().path());
    loadCommonLibrary().foundPath = "found.cfg";
    save("1");
    EXPECT_EQ(readTextFile(world_.home() / "found.cfg"), savedText("1"));
}

TEST_F(Save, DuringItsSearchTheCFunctionAnswersNull) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    UserPreferenceManager::GetInstance();
    int nulls = 0;
    commonLibrary.duringSearch = [&] {
        nulls += get_user_setting("value") == nullptr ? 1 : 0;
        EXPECT_STREQ(get_default_user_setting("value"), "default");
    };
    save("1");
    EXPECT_EQ(nulls, 1);
    EXPECT_STREQ(get_user_setting("value"), "1");
}

// The values that a save writes are those of its beginning, also when the host saves others during the search.
TEST_F(Save, GoesOnWithTheValuesOfItsBeginningAfterASaveDuringItsSearch) {
    world_.writeDefaults(
        R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"u","value":"0"},)"
        R"({"name":"v","value":"0"},{"name":"w","value":"0"},{"name":"x","value":"0"}]}]})");
    world_.writeUser(R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"u":"1"}]}]})");
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = systemText(world_.userFile());
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    std::map<std::string, std::string> handedOver = {{"w", "9"}};
    std::string innerText;
    commonLibrary.duringSearch = [&] {
        if (!innerText.empty()) {
            return;
        }
        innerText = "(being saved)";
        handedOver = {{"x", "8"}};
        manager.updateUserPrefSettings({{"u", "2"}, {"v", "2"}}, {});
        innerText = readTextFile(world_.userFile());
    };
    const Listener listener;
    manager.updateUserPrefSettings(handedOver, {});
    const auto textWith = [](const std::string& first, const std::string& second) {
        return "{\n"
               "    \"meta\": [\n"
               "        {\n"
               "            \"header\": \"S\",\n"
               "            \"attribute\": \"s\",\n"
               "            \"overriddensettings\": [\n"
               "                {\n"
               "                    " +
               first +
               "\n"
               "                },\n"
               "                {\n"
               "                    " +
               second +
               "\n"
               "                }\n"
               "            ]\n"
               "        }\n"
               "    ]\n"
               "}";
    };
    EXPECT_EQ(innerText, textWith(R"("u": "2")", R"("v": "2")"));
    EXPECT_EQ(readTextFile(world_.userFile()), textWith(R"("u": "1")", R"("w": "9")"));
    EXPECT_EQ(manager.getUserPrefSetting("u"), "1");
    EXPECT_EQ(manager.getUserPrefSetting("v"), "2");
    EXPECT_EQ(manager.getUserPrefSetting("w"), "9");
    EXPECT_EQ(manager.getUserPrefSetting("x"), "0");
    EXPECT_EQ(listener.calls, 2);
    EXPECT_EQ(listener.names, (std::set<std::string>{"s::u", "s::w"}));
}

TEST_F(Save, GoesToTheCurrentDirectoryWithRegressionTesting) {
    setVariable("regression_testing", "");
    world_.writeUser(userWithValue("user"));
    EXPECT_STREQ(get_user_setting("value"), "user");
    fs::current_path(world_.home().path());
    save("1");
    EXPECT_EQ(readTextFile(world_.home() / "tessel_settings.cfg"), savedText("1"));
    EXPECT_EQ(readTextFile(world_.userFile()), userWithValue("user"));
    // The variable is remembered, the current directory is not.
    unsetVariable("regression_testing");
    fs::create_directory(world_.home() / "below");
    fs::current_path(world_.home() / "below");
    save("2");
    EXPECT_EQ(readTextFile(world_.home() / "below/tessel_settings.cfg"), savedText("2"));
    EXPECT_EQ(readTextFile(world_.userFile()), userWithValue("user"));
}

TEST_F(Save, DoesNotNoticeRegressionTestingLater) {
    fs::current_path(world_.home().path());
    save("1");
    setVariable("regression_testing", "1");
    save("2");
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("2"));
    EXPECT_FALSE(fs::exists(world_.home() / "tessel_settings.cfg"));
}

TEST_F(Save, ThatCannotBeWrittenIsLostQuietlyButInForce) {
    fs::create_directories(world_.userFile());
    const Listener listener;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    save("1");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(fs::is_empty(world_.userFile()));
    EXPECT_EQ(std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}), 1);
    EXPECT_STREQ(get_user_setting("value"), "1");
    EXPECT_EQ(listener.calls, 1);
}

TEST_F(Save, WhoseDirectoryCannotBeMadeIsLostQuietlyButInForce) {
    writeTextFile(world_.home() / "pcbenv", "a file in the way");
    const Listener listener;
    save("1");
    EXPECT_EQ(readTextFile(world_.home() / "pcbenv"), "a file in the way");
    EXPECT_STREQ(get_user_setting("value"), "1");
    EXPECT_EQ(listener.calls, 1);
}

TEST_F(Save, BelowAHomeWithABlankMakesNothingOddity) {
    const fs::path home = world_.home() / "with blank";
    fs::create_directory(home);
    fs::current_path(home);
    world_.setHome(home);
    const Listener listener;
    save("1");
    EXPECT_TRUE(fs::is_empty(home));
    EXPECT_STREQ(get_user_setting("value"), "1");
    EXPECT_EQ(listener.calls, 1);
}

TEST_F(Save, InACurrentDirectoryWithABlankMakesNothingOddity) {
    const fs::path directory = world_.home() / "with blank";
    fs::create_directory(directory);
    fs::current_path(directory);
    setVariable("regression_testing", "1");
    save("1");
    EXPECT_TRUE(fs::is_empty(directory));
    EXPECT_FALSE(fs::exists(world_.userFile()));
}

TEST_F(Save, RemovesWhatAKilledSaveLeft) {
    const fs::path left = world_.userFile().string() + ".zelutil-0000abcd-00000001.tmp";
    const fs::path somebodysOwn = world_.userFile().string() + ".tmp";
    writeTextFile(left, "half");
    writeTextFile(somebodysOwn, "mine");
    save("1");
    EXPECT_FALSE(fs::exists(left));
    EXPECT_EQ(readTextFile(somebodysOwn), "mine");
    EXPECT_EQ(readTextFile(world_.userFile()), savedText("1"));
}

TEST_F(Save, KeepsAFileThatIsNoJsonAlsoAtALaterSave) {
    save("1");
    world_.writeUser("half {");
    save("2");
    EXPECT_EQ(readTextFile(world_.userFile().string() + ".bad"), "half {");
}

TEST_F(Save, WritesNoTextThatCouldNotBeReadBack) {
    world_.writeDefaults(
        R"({"meta":[{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}}]})");
    world_.writeUser("{}");
    // The text stands three levels deep in the file: in the object, its array, and the section.
    const auto nested = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };
    const Listener listener;
    runOnSmallStack([&] {
        UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
        manager.updateUserPrefSettings({}, {{Type::Actions, nested(1022)}});
        EXPECT_EQ(listener.calls, 1);
        EXPECT_EQ(readTextFile(world_.userFile()), "{}");
        manager.updateUserPrefSettings({}, {{Type::Actions, nested(1021)}});
        EXPECT_EQ(listener.calls, 2);
        EXPECT_NE(readTextFile(world_.userFile()), "{}");
        // Deeper than any text may be: it counts as not handed over.
        manager.updateUserPrefSettings({}, {{Type::Actions, nested(1025)}});
        EXPECT_EQ(listener.calls, 2);
    });
}

TEST_F(Save, BringsShortcutsBackWhenTheirTextIsWrapped) {
    world_.writeDefaults(
        R"({"meta":[{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":
        {"actions":[{"id":1,"context":"c","command":"new","shortcut":"N"}]}}]})");
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    ASSERT_TRUE(UCPActionManager::instance().updateShortcut(1, "M"));
    manager.updateUserPrefSettings(
        {}, {{Type::Actions, "[" + manager.GetSubManager(Type::Actions)->getAllUserSettings() + "]"}});
    EXPECT_EQ(readTextFile(world_.userFile()),
              "{\n"
              "    \"meta\": [\n"
              "        {\n"
              "            \"header\": \"K\",\n"
              "            \"attribute\": \"k\",\n"
              "            \"submanagerId\": 100,\n"
              "            \"overriddensettings\": [\n"
              "                {\n"
              "                    \"actions\": [\n"
              "                        {\n"
              "                            \"id\": 1,\n"
              "                            \"shortcut\": \"M\"\n"
              "                        }\n"
              "                    ]\n"
              "                }\n"
              "            ]\n"
              "        }\n"
              "    ]\n"
              "}");
}

}  // namespace
}  // namespace zelutil::test
