// Tests what observers are promised whatever else hosts do with the servers.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/save.h>

#include <functional>
#include <string>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::Subscription;
using Names = std::set<std::string>;
using Texts = std::map<UserPreferenceManager::SubManagerType, std::string>;
using Values = std::vector<std::string>;
using ZelU::Marl::Server;
using ZelU::Marl::UserPreferenceServer;

/// "x" of "a::b" has the full name of "b::x" of "a", which is read first, and so is found by its bare name only.
constexpr char kDefaultsOfPromises[] = R"({"meta":[
    {"header":"A","attribute":"a","tclCommand":"","defaultsettings":[{"name":"grid","value":"1"},{"name":"b::x","value":"1"}]},
    {"header":"AB","attribute":"a::b","tclCommand":"","defaultsettings":[{"name":"x","value":"1"}]},
    {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"","defaultsettings":{"actions":[
        {"id":1,"context":"c","command":"one","shortcut":"F1"},
        {"id":2,"context":"c","command":"two","shortcut":"F2"}]}}]})";

class ObserverPromise : public ::testing::Test {
protected:
    ObserverPromise() {
        world_.writeDefaults(kDefaultsOfPromises);
        UserPreferenceManager::GetInstance();
    }

private:
    PreferenceWorld world_;
};

// --- One setting ----------------------------------------------------------------------------------------------------

TEST_F(ObserverPromise, ASettingIsNotCalledForTheOneThatOwnsItsFullName) {
    Values values;
    const Subscription subscription = host::onSettingChanged("x", [&](const auto& value) { values.push_back(value); });
    host::save({{"b::x", "7"}});
    EXPECT_EQ(values, Values{});
    host::save({{"x", "8"}});
    EXPECT_EQ(values, Values{"8"});
    host::save({{"b::x", "9"}});
    EXPECT_EQ(values, Values{"8"});
    host::save({{"x", "1"}});
    EXPECT_EQ(values, (Values{"8", "1"}));
}

TEST_F(ObserverPromise, ASettingThatAnotherObserverSavesMeanwhileIsToldOnce) {
    const Subscription saving = host::onSettingsChanged([](const Names&) {
        if (UserPreferenceManager::GetInstance().getUserPrefSetting("grid") == "2") {
            host::save({{"grid", "3"}});
        }
    });
    Values values;
    const Subscription hearing = host::onSettingChanged("grid", [&](const auto& value) { values.push_back(value); });
    host::save({{"grid", "2"}});
    EXPECT_EQ(values, Values{"3"});
}

// --- The first subscription, made inside a notification of the server itself
// ------------------------------------------

/// Is attached to the servers themselves. When it is told first, it does something.
class FirstTold final : public ZelU::Marl::IUserPreferenceObserver,
                        public IUCPActionObserver,
                        public ZelU::Marl::IServerObserver {
public:
    std::function<void()> act;

    void onUserSettingsChanged(const Names&) override { once(); }
    void onShortcutChanged(int, const std::string&, const std::string&) override { once(); }
    void onRMBMenuChanged(int, bool) override { once(); }
    void activeAppChanged(int, bool) override { once(); }

private:
    void once() {
        if (act) {
            std::exchange(act, nullptr)();
        }
    }
};

// The server tells in the order of addresses, so the program's own objects come before those of the library it loads.
FirstTold firstTold;

TEST_F(ObserverPromise, AnActionsFirstSubscriptionIsToldFromTheNextTimeOn) {
    UCPActionManager& actions = UCPActionManager::instance();
    actions.attachObserver(2, &firstTold);
    int shortcuts = 0;
    int flags = 0;
    std::vector<Subscription> subscriptions;
    firstTold.act = [&] {
        subscriptions.push_back(host::onShortcutChanged([&](int, const auto&, const auto&) { ++shortcuts; }));
        subscriptions.push_back(host::onMenuChanged([&](int, bool) { ++flags; }));
    };
    ASSERT_TRUE(actions.updateShortcut(2, "F9"));
    ASSERT_EQ(subscriptions.size(), 2U);
    EXPECT_EQ(shortcuts, 0);
    ASSERT_TRUE(actions.updateShortcut(2, "F8"));
    EXPECT_EQ(shortcuts, 1);
    actions.updateRMBMenu(2, true);
    EXPECT_EQ(flags, 1);
    actions.detachObserver(&firstTold);
}

TEST_F(ObserverPromise, ASubscriptionMadeInsideHearsANotificationThatBeginsInside) {
    UCPActionManager& actions = UCPActionManager::instance();
    actions.attachObserver(2, &firstTold);
    std::vector<int> told;
    Subscription subscription;
    firstTold.act = [&] {
        subscription = host::onShortcutChanged([&](int id, const auto&, const auto&) { told.push_back(id); });
        actions.updateShortcut(1, "F7");
    };
    ASSERT_TRUE(actions.updateShortcut(2, "F9"));
    EXPECT_EQ(told, std::vector<int>{1});
    actions.detachObserver(&firstTold);
}

TEST_F(ObserverPromise, TheFirstSubscriptionToSettingsIsToldFromTheNextTimeOn) {
    auto& server = UserPreferenceServer::getInstance();
    server.attach(&firstTold);
    int calls = 0;
    Subscription subscription;
    firstTold.act = [&] { subscription = host::onSettingsChanged([&](const Names&) { ++calls; }); };
    server.notifyUserSettingsChanged({"a::grid"}, {});
    ASSERT_TRUE(subscription);
    EXPECT_EQ(calls, 0);
    server.notifyUserSettingsChanged({"a::grid"}, {});
    EXPECT_EQ(calls, 1);
    server.detach(&firstTold);
}

struct CountingTexts final : ZelU::Marl::IUserPreferenceSubManagerObserver {
    int calls = 0;
    void onSubManagerSettingsChanged(const Texts&) override { ++calls; }
};

TEST_F(ObserverPromise, TheFirstObserverOfSubManagersIsToldFromTheNextTimeOn) {
    auto& server = UserPreferenceServer::getInstance();
    server.attach(&firstTold);
    CountingTexts texts;
    Subscription subscription;
    firstTold.act = [&] { subscription = host::observe(texts); };
    server.notifyUserSettingsChanged({"a::grid"}, {});
    ASSERT_TRUE(subscription);
    EXPECT_EQ(texts.calls, 0);
    server.notifyUserSettingsChanged({"a::grid"}, {});
    EXPECT_EQ(texts.calls, 1);
    server.detach(&firstTold);
}

TEST_F(ObserverPromise, TheFirstSubscriptionToApplicationsIsToldFromTheNextTimeOn) {
    Server& server = Server::getInstance();
    server.attach(&firstTold);
    std::vector<int> told;
    Subscription subscription;
    firstTold.act = [&] {
        subscription = host::onActiveApplicationChanged([&](int appId, bool) { told.push_back(appId); });
    };
    server.setActiveAppId(5, false);
    ASSERT_TRUE(subscription);
    EXPECT_EQ(told, std::vector<int>{});
    server.setActiveAppId(6, false);
    EXPECT_EQ(told, std::vector<int>{6});
}

// --- A server that is assigned to
// ---------------------------------------------------------------------------------------

TEST_F(ObserverPromise, ASaveTellsThoseThatAnAssignedServerHasForgotten) {
    auto& server = UserPreferenceServer::getInstance();
    const UserPreferenceServer before(server);
    int calls = 0;
    CountingTexts texts;
    const Subscription settings = host::onSettingsChanged([&](const Names&) { ++calls; });
    const Subscription subManagers = host::observe(texts);
    server = before;
    ASSERT_TRUE(UCPActionManager::instance().updateShortcut(2, "F9"));
    host::save({{"grid", "5"}});
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(texts.calls, 1);
    server = before;
    host::reset({"grid"});
    EXPECT_EQ(calls, 2);
}

TEST_F(ObserverPromise, ASubscriptionMakesAnAssignedServerKnowTheEarlierOnesAgain) {
    auto& server = UserPreferenceServer::getInstance();
    const UserPreferenceServer before(server);
    int calls = 0;
    const Subscription first = host::onSettingsChanged([&](const Names&) { ++calls; });
    server = before;
    const Subscription second = host::onSettingsChanged([](const Names&) {});
    UserPreferenceManager::GetInstance().updateUserPrefSettings({{"grid", "5"}}, {});
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace zelutil::test
