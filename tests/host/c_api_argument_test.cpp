// Every function of the C interface is given what it must not be given.
#include "host/c_api_fixture.h"

#include <set>
#include <string>
#include <string_view>

namespace zelutil::test {
namespace {

void ignoreNames(const zelutil_names*, void*) {}
void ignoreValue(const char*, void*) {}

/// Expects that a call refuses its arguments and leaves null in the place for a handle, which it is given.
template <typename Handle, typename Call>
void expectRefused(Call call) {
    handedOut<Handle>(ZELUTIL_BAD_ARGUMENT, call);
}

TEST_F(CApi, APlaceForAHandleMustBeThere) {
    EXPECT_EQ(zelutil_get_root(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_user_file_path(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_diagnose(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_native_path("Z:\\a", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_native_path(nullptr, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_path_from_native("a", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_start_warnings(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_settings(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_find_setting("grid", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_sections(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_text("grid", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_text_of_bool(true, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_text_of_int(1, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_text_of_double(1, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_actions(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_find_action(1, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_command("ucpedit", "Ctrl+S", false, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_get_restorable_actions_text(nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_on_settings_changed(ignoreNames, nullptr, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_on_setting_changed("grid", ignoreValue, nullptr, nullptr), ZELUTIL_BAD_ARGUMENT);
}

TEST_F(CApi, ATextMustBeThere) {
    expectRefused<const zelutil_text>([](auto** out) { return zelutil_native_path(nullptr, out); });
    expectRefused<const zelutil_text>([](auto** out) { return zelutil_path_from_native(nullptr, out); });
    expectRefused<const zelutil_setting_list>([](auto** out) { return zelutil_find_setting(nullptr, out); });
    expectRefused<const zelutil_text>([](auto** out) { return zelutil_read_text(nullptr, out); });
    expectRefused<const zelutil_text>([](auto** out) { return zelutil_get_command(nullptr, "F1", false, out); });
    expectRefused<const zelutil_text>([](auto** out) { return zelutil_get_command("ucpedit", nullptr, false, out); });
    expectRefused<zelutil_subscription>(
        [](auto** out) { return zelutil_on_setting_changed(nullptr, ignoreValue, nullptr, out); });
    expectRefused<zelutil_subscription>(
        [](auto** out) { return zelutil_on_section_changed(nullptr, ignoreNames, nullptr, out); });
}

TEST_F(CApi, AFunctionToCallMustBeThere) {
    using Handle = zelutil_subscription;
    expectRefused<Handle>([](auto** out) { return zelutil_on_settings_changed(nullptr, nullptr, out); });
    expectRefused<Handle>([](auto** out) { return zelutil_on_setting_changed("grid", nullptr, nullptr, out); });
    expectRefused<Handle>([](auto** out) { return zelutil_on_section_changed("display", nullptr, nullptr, out); });
    expectRefused<Handle>([](auto** out) { return zelutil_on_shortcut_changed(nullptr, nullptr, out); });
    expectRefused<Handle>([](auto** out) { return zelutil_on_menu_changed(nullptr, nullptr, out); });
    expectRefused<Handle>([](auto** out) { return zelutil_on_active_application_changed(nullptr, nullptr, out); });
}

TEST_F(CApi, APlaceForAValueMustBeThereAndANameToo) {
    bool truth = true;
    int number = 7;
    double amount = 7;
    EXPECT_EQ(zelutil_read_bool("rats", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_int("layers", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_double("grid", nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_bool(nullptr, &truth), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_int(nullptr, &number), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_read_double(nullptr, &amount), ZELUTIL_BAD_ARGUMENT);
    EXPECT_TRUE(truth);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(amount, 7);
}

TEST_F(CApi, AListMustBeThereForItsCountAndHaveNoHoles) {
    const zelutil_value holes[] = {{"grid", "1"}, {"units", nullptr}};
    const zelutil_value nameless[] = {{nullptr, "1"}};
    using Handle = const zelutil_save_result;
    expectRefused<Handle>([&](auto** out) { return zelutil_save(nullptr, 1, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_save(holes, -1, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_save(holes, 2, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_save(nameless, 1, out); });
    const char* const names[] = {"grid", nullptr};
    expectRefused<Handle>([&](auto** out) { return zelutil_reset(nullptr, 1, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_reset(names, -1, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_reset(names, 2, out); });
    const int ids[] = {1};
    expectRefused<Handle>([&](auto** out) { return zelutil_reset_shortcuts(nullptr, 1, out); });
    expectRefused<Handle>([&](auto** out) { return zelutil_reset_shortcuts(ids, -1, out); });
    EXPECT_STREQ(get_user_setting("grid"), "0.5");
    EXPECT_FALSE(std::filesystem::exists(world.userFile()));
}

TEST_F(CApi, AShortcutMustBeThereAndAHolderNeedNot) {
    int holder = 7;
    EXPECT_EQ(zelutil_set_shortcut(1, nullptr, &holder), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(holder, 0);
    EXPECT_EQ(zelutil_set_shortcut(1, nullptr, nullptr), ZELUTIL_BAD_ARGUMENT);
    EXPECT_EQ(zelutil_set_shortcut(1, "Ctrl+O", nullptr), ZELUTIL_REFUSED);
}

TEST_F(CApi, AnOptionMustBeOne) {
    bool on = true;
    for (const int option : {-1, 0, 2, 1000000}) {
        EXPECT_EQ(zelutil_set_option(option, true), ZELUTIL_BAD_ARGUMENT) << option;
        EXPECT_EQ(zelutil_get_option(option, &on), ZELUTIL_BAD_ARGUMENT) << option;
    }
    EXPECT_TRUE(on);
    EXPECT_EQ(zelutil_get_option(ZELUTIL_PATHS_WITH_BLANKS, nullptr), ZELUTIL_BAD_ARGUMENT);
}

TEST(CApiFreeing, NullDoesNothing) {
    zelutil_text_free(nullptr);
    zelutil_names_free(nullptr);
    zelutil_warning_list_free(nullptr);
    zelutil_setting_list_free(nullptr);
    zelutil_action_list_free(nullptr);
    zelutil_save_result_free(nullptr);
    zelutil_restorable_text_free(nullptr);
    zelutil_cancel(nullptr);
}

TEST(CApiStatus, EachHasASentenceOfItsOwnAndSoHasANumberThatIsNone) {
    std::set<std::string> texts;
    for (int status = ZELUTIL_OK; status <= ZELUTIL_FAILED; ++status) {
        texts.insert(zelutil_status_text(status));
    }
    for (int status = ZELUTIL_NO_DEFAULTS; status <= ZELUTIL_STARTING; ++status) {
        texts.insert(zelutil_status_text(status));
    }
    EXPECT_EQ(texts.size(), 16u);
    const std::string unknown = zelutil_status_text(-1);
    EXPECT_EQ(texts.count(unknown), 0u);
    EXPECT_EQ(zelutil_status_text(9), unknown);
    EXPECT_EQ(zelutil_status_text(27), unknown);
    for (const std::string& text : texts) {
        EXPECT_EQ(text.back(), '.') << text;
    }
}

}  // namespace
}  // namespace zelutil::test
