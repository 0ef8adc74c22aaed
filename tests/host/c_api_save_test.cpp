#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/c_api_fixture.h"

namespace zelutil::test {
namespace {

using CApiSave = CApi;
using Result = const zelutil_save_result;

std::vector<int> idsOf(const zelutil_ids& ids) { return {ids.items, ids.items + ids.count}; }

TEST_F(CApiSave, ValuesAreInForceAndInTheFileAndTheResultSaysWhich) {
    const zelutil_value values[] = {{"GRID", "0.25"}, {"none", "1"}, {"units", "mm"}};
    const auto result = handedOut<Result>([&](auto** out) { return zelutil_save(values, 3, out); });
    EXPECT_EQ(result->status, ZELUTIL_OK);
    EXPECT_TRUE(result->written);
    EXPECT_STRNE(result->text, "");
    EXPECT_STREQ(result->keptCopy, "");
    EXPECT_EQ(textsOf(result->changedSettings), std::vector<std::string>{"display::grid"});
    EXPECT_EQ(textsOf(result->unknownSettings), std::vector<std::string>{"none"});
    EXPECT_EQ(result->savedActions.count, 0);
    EXPECT_EQ(result->notRestored.count, 0);
    EXPECT_EQ(result->conflicts.count, 0);
    EXPECT_EQ(result->settingsOfOthers.count, 0);
    EXPECT_EQ(result->actionsOfOthers.count, 0);
    EXPECT_EQ(textOf([&](auto** out) { return zelutil_native_path(result->path, out); }),
              std::filesystem::path(world.userFile()).u8string());
    EXPECT_STREQ(get_user_setting("grid"), "0.25");
    EXPECT_NE(readTextFile(world.userFile()).find("\"0.25\""), std::string::npos);
}

TEST_F(CApiSave, OfTwoValuesForOneNameTheLastCounts) {
    const zelutil_value values[] = {{"grid", "1"}, {"grid", "2"}};
    EXPECT_EQ(zelutil_save(values, 2, nullptr), ZELUTIL_OK);
    EXPECT_STREQ(get_user_setting("grid"), "2");
}

TEST_F(CApiSave, ActionsAreSavedWithoutAnyValue) {
    EXPECT_EQ(zelutil_set_shortcut(2, "F3", nullptr), ZELUTIL_OK);
    const auto result = handedOut<Result>([&](auto** out) { return zelutil_save(nullptr, 0, out); });
    EXPECT_TRUE(result->written);
    EXPECT_EQ(idsOf(result->savedActions), std::vector<int>{2});
    EXPECT_NE(readTextFile(world.userFile()).find("\"F3\""), std::string::npos);
}

TEST_F(CApiSave, ASecondSaveOfTheSameWritesNothing) {
    const zelutil_value value = {"grid", "0.25"};
    EXPECT_EQ(zelutil_save(&value, 1, nullptr), ZELUTIL_OK);
    const auto result = handedOut<Result>([&](auto** out) { return zelutil_save(&value, 1, out); });
    EXPECT_EQ(result->status, ZELUTIL_OK);
    EXPECT_FALSE(result->written);
}

TEST_F(CApiSave, AFileThatCannotBeWrittenHasItsStatusAndAResult) {
    std::filesystem::create_directories(world.userFile());
    const zelutil_value value = {"grid", "0.25"};
    const zelutil_save_result* result = nullptr;
    const zelutil_status status = zelutil_save(&value, 1, &result);
    const Held<Result> held(result);
    EXPECT_TRUE(status == ZELUTIL_NOT_WRITTEN || status == ZELUTIL_NOT_KEPT) << status;
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->status, status);
    EXPECT_FALSE(result->written);
    EXPECT_STREQ(get_user_setting("grid"), "0.25");
}

TEST_F(CApiSave, ResetsGiveTheShippedValuesAgain) {
    const zelutil_value value = {"grid", "0.25"};
    EXPECT_EQ(zelutil_set_shortcut(1, "F2", nullptr), ZELUTIL_OK);
    EXPECT_EQ(zelutil_set_shortcut(2, "F3", nullptr), ZELUTIL_OK);
    EXPECT_EQ(zelutil_save(&value, 1, nullptr), ZELUTIL_OK);

    const char* const names[] = {"display::grid", "none"};
    const auto settings = handedOut<Result>([&](auto** out) { return zelutil_reset(names, 2, out); });
    EXPECT_EQ(textsOf(settings->changedSettings), std::vector<std::string>{"display::grid"});
    EXPECT_EQ(textsOf(settings->unknownSettings), std::vector<std::string>{"none"});
    EXPECT_STREQ(get_user_setting("grid"), "0.5");

    const int ids[] = {1};
    const auto one = handedOut<Result>([&](auto** out) { return zelutil_reset_shortcuts(ids, 1, out); });
    EXPECT_EQ(idsOf(one->savedActions), std::vector<int>{2});
    const auto all = handedOut<Result>([&](auto** out) { return zelutil_reset_all_shortcuts(out); });
    EXPECT_EQ(all->savedActions.count, 0);
    const auto actions = handedOut<const zelutil_action_list>([](auto** out) { return zelutil_get_actions(out); });
    EXPECT_STREQ(actions->items[0]->shortcut, "Ctrl+S");
    EXPECT_STREQ(actions->items[1]->shortcut, "Ctrl+O");
}

TEST_F(CApiSave, TheLaterValueOfASettingCountsHoweverItIsNamed) {
    const zelutil_value bareFirst[] = {{"grid", "2"}, {"GRID", "3"}, {"display::grid", "7"}};
    EXPECT_EQ(zelutil_save(bareFirst, 3, nullptr), ZELUTIL_OK);
    EXPECT_STREQ(get_user_setting("grid"), "7");
    const zelutil_value fullFirst[] = {{"display::grid", "2"}, {"none", "1"}, {"grid", "8"}, {"none", "1"}};
    const auto result = handedOut<Result>([&](auto** out) { return zelutil_save(fullFirst, 4, out); });
    EXPECT_STREQ(get_user_setting("grid"), "8");
    EXPECT_EQ(textsOf(result->unknownSettings), std::vector<std::string>{"none"});
    const zelutil_value again[] = {{"grid", "9"}, {"display::grid", "4"}, {"grid", "5"}};
    EXPECT_EQ(zelutil_save(again, 3, nullptr), ZELUTIL_OK);
    EXPECT_STREQ(get_user_setting("grid"), "5");
}

TEST_F(CApiSave, TheTextOfTheActionsIsThereForHostsThatSaveThemselves) {
    EXPECT_EQ(zelutil_set_shortcut(2, "F3", nullptr), ZELUTIL_OK);
    const auto text =
        handedOut<const zelutil_restorable_text>([](auto** out) { return zelutil_get_restorable_actions_text(out); });
    EXPECT_NE(std::string(text->text).find("\"F3\""), std::string::npos) << text->text;
    EXPECT_EQ(text->text[0], '[');
    EXPECT_EQ(text->notRestored.count, 0);
}

TEST(CApiSaveWithoutDefaults, HasItsStatusAndAResult) {
    const PreferenceWorld world;
    const zelutil_save_result* result = nullptr;
    EXPECT_EQ(zelutil_save(nullptr, 0, &result), ZELUTIL_NO_DEFAULTS);
    const Held<Result> held(result);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->status, ZELUTIL_NO_DEFAULTS);
    EXPECT_FALSE(result->written);
}

}  // namespace
}  // namespace zelutil::test
