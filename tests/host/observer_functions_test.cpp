// Functions that are called for a setting, a section, the actions or the applications.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/observers.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::Subscription;
using Names = std::set<std::string>;
using Calls = std::vector<Names>;
using Values = std::vector<std::string>;
using ZelU::Marl::Server;
using ZelU::Marl::UserPreferenceServer;

/// "display" has "grid" and "display::fine" another one; "dis" begins like them, and "Display" differs in case. In
/// "odd", which lends no bare names, a setting has a name with a separator.
constexpr char kDefaults[] = R"({"meta":[
    {"header":"Display","attribute":"display","tclCommand":"","defaultsettings":[{"name":"Grid","value":"1"},{"name":"units","value":"mm"}],
     "childsettings":[]},
    {"header":"Dis","attribute":"dis","tclCommand":"","defaultsettings":[{"name":"play","value":"p"},{"name":"grid","value":"d"}]},
    {"header":"Fine","attribute":"display::fine","tclCommand":"","defaultsettings":[{"name":"step","value":"2"}]},
    {"header":"Displays","attribute":"displays","tclCommand":"","defaultsettings":[{"name":"count","value":"3"}]}]})";

class ObserverFunctions : public ::testing::Test {
protected:
    ObserverFunctions() { world_.writeDefaults(kDefaults); }

    static void save(const std::map<std::string, std::string>& settings) {
        UserPreferenceManager::GetInstance().updateUserPrefSettings(settings, {});
    }

private:
    PreferenceWorld world_;
};

// --- Settings -------------------------------------------------------------------------------------------------------

TEST_F(ObserverFunctions, ASaveCallsWithTheFullNames) {
    Calls calls;
    Subscription subscription = host::onSettingsChanged([&](const Names& names) { calls.push_back(names); });
    save({{"GRID", "5"}, {"step", "6"}, {"nothing", "7"}});
    EXPECT_EQ(calls, (Calls{{"display::Grid", "display::fine::step"}}));
    subscription.cancel();
    save({{"grid", "8"}});
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(ObserverFunctions, NobodyIsCalledWhereNoSettingChanged) {
    int calls = 0;
    const Subscription all = host::onSettingsChanged([&](const Names&) { ++calls; });
    const Subscription one = host::onSettingChanged("grid", [&](const std::string&) { ++calls; });
    const Subscription section = host::onSectionChanged("display", [&](const Names&) { ++calls; });
    save({{"grid", "1"}});
    UserPreferenceServer::getInstance().notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls, 0);
}

struct NameRow {
    const char* name;
    /// The values that are saved, and what the function of `name` is called with; null for no call.
    const char* saved;
    const char* value;
};

void PrintTo(const NameRow& row, std::ostream* out) { *out << row.name << " by " << row.saved; }

constexpr NameRow kNames[] = {
    {"grid", "display::grid", "5"},
    {"Grid", "display::grid", "5"},
    {"gRID", "GRID", "5"},
    {"display::grid", "grid", "5"},
    {"DISPLAY::Grid", "display::GRID", "5"},
    {"display::fine::step", "step", "5"},
    {"STEP", "display::fine::step", "5"},
    // The bare name belongs to the section that was read first.
    {"dis::grid", "dis::grid", "5"},
    {"dis::grid", "grid", nullptr},
    {"grid", "dis::grid", nullptr},
    {"display::grid", "units", nullptr},
    {"play", "grid", nullptr},
};

class ObserverOfAName : public ObserverFunctions, public ::testing::WithParamInterface<NameRow> {};

TEST_P(ObserverOfAName, IsCalledForThatSettingAlone) {
    const NameRow& row = GetParam();
    Values values;
    const Subscription subscription =
        host::onSettingChanged(row.name, [&](const std::string& value) { values.push_back(value); });
    EXPECT_TRUE(subscription);
    save({{row.saved, "5"}});
    EXPECT_EQ(values, row.value == nullptr ? Values{} : Values{row.value}) << row.name << ", saved " << row.saved;
}

INSTANTIATE_TEST_SUITE_P(Names, ObserverOfAName, ::testing::ValuesIn(kNames));

TEST_F(ObserverFunctions, AnUnknownNameGivesAnEmptySubscription) {
    for (const char* const name : {"", "nothing", "display", "display::", "::grid", "display::step"}) {
        EXPECT_FALSE(host::onSettingChanged(name, [](const std::string&) {})) << name;
    }
}

TEST_F(ObserverFunctions, AValueStaysWhatItWasThoughTheFunctionSavesAnother) {
    Values values;
    const Subscription subscription = host::onSettingChanged("grid", [&](const std::string& value) {
        if (value == "a value that needs memory of its own, so that a change would move it") {
            save({{"grid", "another value that is longer than that one, so that it needs new memory, too"}});
        }
        values.push_back(value);
    });
    save({{"grid", "a value that needs memory of its own, so that a change would move it"}});
    EXPECT_EQ(values, (Values{"another value that is longer than that one, so that it needs new memory, too",
                              "a value that needs memory of its own, so that a change would move it"}));
}

struct SectionRow {
    const char* path;
    Names changed;
};

TEST_F(ObserverFunctions, ASectionIsToldOfItsOwnAndOfThoseInside) {
    const SectionRow rows[] = {
        {"display", {"display::Grid", "display::fine::step"}},
        {"display::fine", {"display::fine::step"}},
        {"dis", {"dis::grid"}},
        {"displays", {"displays::count"}},
        {"Display", {}},
        {"display::", {}},
        {"display::Grid", {}},
        {"display::fin", {}},
        {"di", {}},
        {"", {}},
        {"nowhere", {}},
    };
    for (const SectionRow& row : rows) {
        Calls calls;
        const Subscription subscription =
            host::onSectionChanged(row.path, [&](const Names& names) { calls.push_back(names); });
        EXPECT_TRUE(subscription) << row.path;
        UserPreferenceServer::getInstance().notifyUserSettingsChanged(
            {"dis::grid", "display::Grid", "display::fine::step", "displays::count"}, {});
        EXPECT_EQ(calls, row.changed.empty() ? Calls{} : Calls{row.changed}) << row.path;
    }
}

TEST_F(ObserverFunctions, ASectionIsToldOfASave) {
    Calls calls;
    const Subscription subscription =
        host::onSectionChanged("display", [&](const Names& names) { calls.push_back(names); });
    save({{"dis::grid", "4"}, {"count", "4"}});
    EXPECT_EQ(calls, Calls{});
    save({{"dis::grid", "5"}, {"units", "inch"}, {"step", "5"}});
    EXPECT_EQ(calls, (Calls{{"display::units", "display::fine::step"}}));
}

// --- Actions and applications ---------------------------------------------------------------------------------------

void loadTwoActions() {
    UCPActionManager::instance().load(R"({"actions":[
        {"id":1,"context":"c","command":"save","shortcut":"F1"},
        {"id":2,"context":"c","command":"open"}]})",
                                      "");
}

TEST(ObserverFunction, ShortcutsAreToldToTheOneAndMenuFlagsToTheOther) {
    loadTwoActions();
    Values calls;
    Subscription shortcuts = host::onShortcutChanged([&](int id, const std::string& before, const std::string& now) {
        calls.push_back(std::to_string(id) + " " + before + "->" + now);
    });
    Subscription menu = host::onMenuChanged(
        [&](int id, bool inMenu) { calls.push_back(std::to_string(id) + (inMenu ? " in" : " out")); });
    UCPActionManager::instance().updateShortcut(1, "F3");
    UCPActionManager::instance().updateShortcut(2, "F1");
    UCPActionManager::instance().updateRMBMenu(2, true);
    UCPActionManager::instance().updateShortcut(1, "");
    EXPECT_EQ(calls, (Values{"1 F1->F3", "2 ->F1", "2 in", "1 F3->"}));
    shortcuts.cancel();
    UCPActionManager::instance().updateShortcut(1, "F4");
    UCPActionManager::instance().updateRMBMenu(1, true);
    EXPECT_EQ(calls.size(), 5U);
    EXPECT_EQ(calls.back(), "1 in");
    menu.cancel();
    UCPActionManager::instance().updateRMBMenu(1, false);
    EXPECT_EQ(calls.size(), 5U);
}

TEST(ObserverFunction, ApplicationsAreToldWithTheSwitch) {
    std::vector<std::pair<int, bool>> calls;
    Subscription subscription = host::onActiveApplicationChanged(
        [&](int appId, bool editorSwitch) { calls.emplace_back(appId, editorSwitch); });
    Server::getInstance().setActiveAppId(6, true);
    Server::getInstance().setActiveAppId(6, true);
    Server::getInstance().setActiveAppId(7, false);
    EXPECT_EQ(calls, (std::vector<std::pair<int, bool>>{{6, true}, {7, false}}));
    subscription.cancel();
    Server::getInstance().setActiveAppId(8, false);
    EXPECT_EQ(calls.size(), 2U);
}

// --- What goes for all functions ------------------------------------------------------------------------------------

TEST_F(ObserverFunctions, AnEmptyFunctionGivesAnEmptySubscription) {
    EXPECT_FALSE(host::onSettingsChanged(nullptr));
    EXPECT_FALSE(host::onSettingChanged("grid", nullptr));
    EXPECT_FALSE(host::onSectionChanged("display", nullptr));
    EXPECT_FALSE(host::onShortcutChanged(nullptr));
    EXPECT_FALSE(host::onMenuChanged(nullptr));
    EXPECT_FALSE(host::onActiveApplicationChanged(nullptr));
    save({{"grid", "5"}});
}

TEST(ObserverFunction, IsDestroyedWithItsSubscription) {
    const auto captured = std::make_shared<int>(1);
    Subscription subscription = host::onMenuChanged([captured](int, bool) {});
    EXPECT_EQ(captured.use_count(), 2);
    subscription.cancel();
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(ObserverFunction, LivesToItsEndThoughItEndsItsSubscription) {
    const auto captured = std::make_shared<int>(1);
    long countInside = 0;
    Subscription subscription;
    subscription = host::onActiveApplicationChanged([&subscription, &countInside, captured](int, bool) {
        subscription.cancel();
        countInside = captured.use_count();
    });
    Server::getInstance().setActiveAppId(6, false);
    EXPECT_EQ(countInside, 2);
    EXPECT_EQ(captured.use_count(), 1);
}

}  // namespace
}  // namespace zelutil::test
