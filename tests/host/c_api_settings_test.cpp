#include <filesystem>
#include <string>
#include <vector>

#include "host/c_api_fixture.h"

namespace zelutil::test {
namespace {

using ::testing::Test;

class CApiSettings : public CApi {
protected:
    CApiSettings() {
        world.writeUser(R"({"meta": [
            {"header": "Display", "attribute": "display", "overriddensettings": [{"layers": " 12 "}, {"units": "mil"}]}
        ]})");
    }
};

TEST_F(CApiSettings, AllAreHandedOutInTheOrderOfTheFile) {
    const auto list = handedOut<const zelutil_setting_list>([](auto** out) { return zelutil_get_settings(out); });
    ASSERT_EQ(list->count, 5);
    std::vector<std::string> names;
    for (int i = 0; i < list->count; ++i) {
        names.emplace_back(list->items[i]->fullName);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"display::grid", "display::rats", "display::layers", "display::units",
                                               "display::colors::grid"}));
}

TEST_F(CApiSettings, OneIsFoundByAnyOfItsNamesWithAllThatIsKnownOfIt) {
    const auto list =
        handedOut<const zelutil_setting_list>([](auto** out) { return zelutil_find_setting("UNITS", out); });
    ASSERT_EQ(list->count, 1);
    const zelutil_setting& units = *list->items[0];
    EXPECT_STREQ(units.fullName, "display::units");
    EXPECT_EQ(textsOf(units.bareNames), std::vector<std::string>{"units"});
    EXPECT_STREQ(units.section, "display");
    EXPECT_STREQ(units.defaultValue, "mm");
    EXPECT_STREQ(units.value, "mil");
    EXPECT_TRUE(units.setByUser);
    EXPECT_TRUE(units.foundByFullName);

    const auto other = handedOut<const zelutil_setting_list>(
        [](auto** out) { return zelutil_find_setting("display::colors::grid", out); });
    EXPECT_STREQ(other->items[0]->section, "display::colors");
    EXPECT_EQ(other->items[0]->bareNames.count, 0);
    EXPECT_FALSE(other->items[0]->setByUser);
}

TEST_F(CApiSettings, AnUnknownNameFindsNone) {
    handedOut<const zelutil_setting_list>(ZELUTIL_UNKNOWN, [](auto** out) { return zelutil_find_setting("", out); });
    handedOut<const zelutil_setting_list>(ZELUTIL_UNKNOWN,
                                          [](auto** out) { return zelutil_find_setting("colors::grid", out); });
}

TEST_F(CApiSettings, SectionsAreHandedOutInTheOrderOfTheFile) {
    const auto sections = handedOut<const zelutil_names>([](auto** out) { return zelutil_get_sections(out); });
    EXPECT_EQ(textsOf(*sections), (std::vector<std::string>{"display", "display::colors", "keys"}));
}

TEST_F(CApiSettings, AValueIsReadAsItsType) {
    bool rats = false;
    int layers = 0;
    double grid = 0;
    EXPECT_EQ(zelutil_read_bool("rats", &rats), ZELUTIL_OK);
    EXPECT_EQ(zelutil_read_int("layers", &layers), ZELUTIL_OK);
    EXPECT_EQ(zelutil_read_double("display::grid", &grid), ZELUTIL_OK);
    EXPECT_TRUE(rats);
    EXPECT_EQ(layers, 12);
    EXPECT_EQ(grid, 0.5);
    EXPECT_EQ(textOf([](auto** out) { return zelutil_read_text("layers", out); }), " 12 ");
}

TEST_F(CApiSettings, AValueOfAnotherTypeAndAnUnknownNameLeaveTheFallback) {
    bool rats = true;
    int layers = 7;
    double grid = 7;
    EXPECT_EQ(zelutil_read_bool("units", &rats), ZELUTIL_WRONG_TYPE);
    EXPECT_EQ(zelutil_read_bool("none", &rats), ZELUTIL_UNKNOWN);
    EXPECT_EQ(zelutil_read_int("grid", &layers), ZELUTIL_WRONG_TYPE);
    EXPECT_EQ(zelutil_read_int("none", &layers), ZELUTIL_UNKNOWN);
    EXPECT_EQ(zelutil_read_double("units", &grid), ZELUTIL_WRONG_TYPE);
    EXPECT_EQ(zelutil_read_double("none", &grid), ZELUTIL_UNKNOWN);
    EXPECT_TRUE(rats);
    EXPECT_EQ(layers, 7);
    EXPECT_EQ(grid, 7);
    handedOut<const zelutil_text>(ZELUTIL_UNKNOWN, [](auto** out) { return zelutil_read_text("none", out); });
}

TEST_F(CApiSettings, AValueBecomesTheTextThatIsReadBack) {
    EXPECT_EQ(textOf([](auto** out) { return zelutil_text_of_bool(true, out); }), "true");
    EXPECT_EQ(textOf([](auto** out) { return zelutil_text_of_bool(false, out); }), "false");
    EXPECT_EQ(textOf([](auto** out) { return zelutil_text_of_int(-7, out); }), "-7");
    EXPECT_EQ(textOf([](auto** out) { return zelutil_text_of_double(0.5, out); }), "0.5");
}

// --- The start ------------------------------------------------------------------------------------------------------

TEST_F(CApi, TheRootAndTheUsersFileHaveTheirPathsAndTheirNativeOnes) {
    EXPECT_EQ(textOf([](auto** out) { return zelutil_get_root(out); }), windowsText(world.product().root()));
    const std::string path = textOf([](auto** out) { return zelutil_get_user_file_path(out); });
    const std::string native = textOf([&](auto** out) { return zelutil_native_path(path.c_str(), out); });
    EXPECT_EQ(std::filesystem::u8path(native).lexically_normal(), world.userFile());
    EXPECT_EQ(textOf([&](auto** out) { return zelutil_path_from_native(world.home().path().u8string().c_str(), out); }),
              windowsText(world.home().path()));
}

TEST_F(CApi, AnOptionIsSetBeforeTheFirstUseOnly) {
    bool on = true;
    EXPECT_EQ(zelutil_get_option(ZELUTIL_PATHS_WITH_BLANKS, &on), ZELUTIL_OK);
    EXPECT_FALSE(on);
    EXPECT_EQ(zelutil_set_option(ZELUTIL_PATHS_WITH_BLANKS, true), ZELUTIL_OK);
    EXPECT_EQ(zelutil_get_option(ZELUTIL_PATHS_WITH_BLANKS, &on), ZELUTIL_OK);
    EXPECT_TRUE(on);
    EXPECT_STREQ(get_user_setting("units"), "mm");
    EXPECT_EQ(zelutil_set_option(ZELUTIL_PATHS_WITH_BLANKS, true), ZELUTIL_OK);
    EXPECT_EQ(zelutil_set_option(ZELUTIL_PATHS_WITH_BLANKS, false), ZELUTIL_TOO_LATE);
    EXPECT_EQ(zelutil_get_option(ZELUTIL_PATHS_WITH_BLANKS, &on), ZELUTIL_OK);
    EXPECT_TRUE(on);
}

TEST_F(CApi, AStartWithoutDamageHasNoWarnings) {
    EXPECT_EQ(handedOut<const zelutil_warning_list>([](auto** out) { return zelutil_get_start_warnings(out); })->count,
              0);
}

TEST_F(CApi, AWarningSaysWhatWasFoundWhere) {
    world.writeUser(R"({"meta": [
        {"header": "Display", "attribute": "display", "overriddensettings": [{"gird": "1"}]},
        {"header": "Keys", "attribute": "keys", "overriddensettings": [{"actions": [{"id": 1, "shortcut": "Ctrl+O"}]}]}
    ]})");
    const auto list = handedOut<const zelutil_warning_list>([](auto** out) { return zelutil_get_start_warnings(out); });
    ASSERT_EQ(list->count, 2);
    EXPECT_EQ(list->items[0]->kind, ZELUTIL_ENTRY_WITHOUT_EFFECT);
    EXPECT_STREQ(list->items[0]->name, "gird");
    EXPECT_EQ(list->items[0]->action, 0);
    EXPECT_EQ(list->items[1]->kind, ZELUTIL_SHORTCUT_REFUSED);
    EXPECT_STREQ(list->items[1]->name, "");
    EXPECT_EQ(list->items[1]->action, 1);
    EXPECT_EQ(list->items[1]->holder, 2);
    EXPECT_STRNE(list->items[1]->text, "");
}

TEST_F(CApi, ADiagnosisNamesTheInstallation) {
    const std::string lines = textOf([](auto** out) { return zelutil_diagnose(out); });
    EXPECT_NE(lines.find(windowsText(world.product().root())), std::string::npos) << lines;
    EXPECT_EQ(lines.back(), '\n');
}

TEST(CApiWithoutAnInstallation, TheFirstCallThatNeedsTheRootSaysSo) {
    clearProductVariables();
    setVariable("PATH", "");
    handedOut<const zelutil_text>(ZELUTIL_NO_INSTALLATION, [](auto** out) { return zelutil_get_root(out); });
}

}  // namespace
}  // namespace zelutil::test
