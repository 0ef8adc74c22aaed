// Observers of the library's own interfaces, attached for the lifetime of a subscription.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/observers.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::observe;
using host::Subscription;
using ZelU::Marl::IServerObserver;
using ZelU::Marl::IUserPreferenceObserver;
using ZelU::Marl::IUserPreferenceSubManagerObserver;
using ZelU::Marl::Server;
using ZelU::Marl::UserPreferenceServer;
using Lines = std::vector<std::string>;

static_assert(!std::is_copy_constructible_v<Subscription> && !std::is_copy_assignable_v<Subscription>);
static_assert(std::is_nothrow_move_constructible_v<Subscription> && std::is_nothrow_move_assignable_v<Subscription>);

/// Observes everything and writes down what it is told.
class Recorder : public IUserPreferenceObserver,
                 public IUserPreferenceSubManagerObserver,
                 public IUCPActionObserver,
                 public IServerObserver {
public:
    explicit Recorder(Lines& lines, std::string name = "") : lines_(lines), name_(std::move(name)) {}

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        std::string line = name_ + "settings";
        for (const std::string& name : changedNames) {
            line += " " + name;
        }
        lines_.push_back(line);
    }
    void onSubManagerSettingsChanged(
        const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) override {
        std::string line = name_ + "texts";
        for (const auto& [type, text] : changedTexts) {
            line += " " + std::to_string(static_cast<int>(type)) + " " + text;
        }
        lines_.push_back(line);
    }
    void onShortcutChanged(int actionId, const std::string& before, const std::string& now) override {
        lines_.push_back(name_ + "shortcut " + std::to_string(actionId) + " " + before + " -> " + now);
    }
    void onRMBMenuChanged(int actionId, bool inMenu) override {
        lines_.push_back(name_ + "menu " + std::to_string(actionId) + (inMenu ? " in" : " out"));
    }
    void activeAppChanged(int appId, bool editorSwitch) override {
        lines_.push_back(name_ + "application " + std::to_string(appId) + (editorSwitch ? " switch" : ""));
    }

private:
    Lines& lines_;
    std::string name_;
};

void tellSettings(const std::set<std::string>& names) {
    UserPreferenceServer::getInstance().notifyUserSettingsChanged(names, {});
}

void tellTexts() {
    UserPreferenceServer::getInstance().notifyUserSettingsChanged(
        {}, {{UserPreferenceManager::SubManagerType::Actions, "[1]"}});
}

void loadThreeActions() {
    UCPActionManager::instance().load(R"({"actions":[
        {"id":1,"context":"c","command":"save","shortcut":"F1"},
        {"id":2,"context":"c","command":"open","shortcut":"F2"},
        {"id":3,"parent_id":1,"context":"d","command":"save all","shortcut":"F1"}]})",
                                      "");
}

// --- One of each kind -----------------------------------------------------------------------------------------------

TEST(Subscription, AnEmptyOneDoesNothing) {
    Subscription subscription;
    EXPECT_FALSE(subscription);
    subscription.cancel();
    const Subscription moved = std::move(subscription);
    EXPECT_FALSE(moved);
}

TEST(Subscription, ObservesSettingsAsLongAsItLives) {
    Lines lines;
    Recorder recorder(lines);
    {
        const Subscription subscription = observe(static_cast<IUserPreferenceObserver&>(recorder));
        EXPECT_TRUE(subscription);
        EXPECT_EQ(lines, Lines{});
        tellSettings({"a::x", "b"});
        EXPECT_EQ(lines, Lines{"settings a::x b"});
    }
    tellSettings({"a::x"});
    EXPECT_EQ(lines.size(), 1U);
}

TEST(Subscription, PassesOnThatNoSettingChangedAsTheServerDoes) {
    Lines lines;
    Recorder recorder(lines);
    const Subscription subscription = observe(static_cast<IUserPreferenceObserver&>(recorder));
    tellTexts();
    EXPECT_EQ(lines, Lines{"settings"});
}

TEST(Subscription, ObservesSubManagers) {
    Lines lines;
    Recorder recorder(lines);
    Subscription subscription = observe(static_cast<IUserPreferenceSubManagerObserver&>(recorder));
    tellTexts();
    EXPECT_EQ(lines, Lines{"texts 100 [1]"});
    subscription.cancel();
    tellTexts();
    EXPECT_EQ(lines.size(), 1U);
}

TEST(Subscription, ObservesAllActions) {
    loadThreeActions();
    Lines lines;
    Recorder recorder(lines);
    Subscription subscription = observe(static_cast<IUCPActionObserver&>(recorder));
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(1, "F5"));
    UCPActionManager::instance().updateRMBMenu(2, true);
    UCPActionManager::instance().updateRMBMenu(2, false);
    // A child is told before its parent.
    EXPECT_EQ(lines, (Lines{"shortcut 3 F1 -> F5", "shortcut 1 F1 -> F5", "menu 2 in", "menu 2 out"}));
    subscription.cancel();
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F6"));
    EXPECT_EQ(lines.size(), 4U);
}

TEST(Subscription, ObservesOneAction) {
    loadThreeActions();
    Lines lines;
    Recorder recorder(lines);
    Subscription subscription = observe(1, recorder);
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(1, "F5"));
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F6"));
    UCPActionManager::instance().updateRMBMenu(1, true);
    UCPActionManager::instance().updateRMBMenu(2, true);
    EXPECT_EQ(lines, (Lines{"shortcut 1 F1 -> F5", "menu 1 in"}));
    subscription.cancel();
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(1, "F7"));
    EXPECT_EQ(lines.size(), 2U);
}

TEST(Subscription, IsEmptyForAnUnknownAction) {
    Lines lines;
    Recorder recorder(lines);
    EXPECT_FALSE(observe(1, recorder));
    loadThreeActions();
    EXPECT_TRUE(observe(1, recorder));
    EXPECT_FALSE(observe(4, recorder));
    EXPECT_FALSE(observe(0, recorder));
    EXPECT_FALSE(observe(-1, recorder));
}

TEST(Subscription, StaysWithAnActionThroughALoad) {
    loadThreeActions();
    Lines lines;
    Recorder recorder(lines);
    const Subscription subscription = observe(2, recorder);
    loadThreeActions();
    EXPECT_TRUE(UCPActionManager::instance().updateShortcut(2, "F6"));
    EXPECT_EQ(lines, Lines{"shortcut 2 F2 -> F6"});
}

TEST(Subscription, EndsWhereTheOldDoorHasNoEnd) {
    Lines lines;
    Recorder recorder(lines);
    {
        const Subscription subscription = observe(static_cast<IServerObserver&>(recorder));
        Server::getInstance().setActiveAppId(3, false);
        Server::getInstance().notifyEditorSwitch(nullptr);
        EXPECT_EQ(lines, (Lines{"application 3", "application 0 switch"}));
    }
    Server::getInstance().setActiveAppId(4, false);
    EXPECT_EQ(lines.size(), 2U);
}

TEST(Subscription, OneObserverMayHaveSeveral) {
    Lines lines;
    Recorder recorder(lines);
    Subscription first = observe(static_cast<IServerObserver&>(recorder));
    const Subscription second = observe(static_cast<IServerObserver&>(recorder));
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines, (Lines{"application 3", "application 3"}));
    first.cancel();
    Server::getInstance().setActiveAppId(4, false);
    EXPECT_EQ(lines, (Lines{"application 3", "application 3", "application 4"}));
}

TEST(Subscription, LeavesObserversOfTheServersAlone) {
    Lines lines;
    Recorder old(lines, "old ");
    Recorder other(lines, "new ");
    UserPreferenceServer::getInstance().attach(static_cast<IUserPreferenceObserver*>(&old));
    Subscription subscription = observe(static_cast<IUserPreferenceObserver&>(other));
    subscription.cancel();
    tellSettings({"x"});
    EXPECT_EQ(lines, Lines{"old settings x"});
    UserPreferenceServer::getInstance().detach(static_cast<IUserPreferenceObserver*>(&old));
}

TEST(Subscription, TellsInTheOrderOfAttachmentWhateverTheAddresses) {
    Lines lines;
    std::array<std::optional<Recorder>, 3> recorders;
    std::vector<Subscription> subscriptions;
    for (const std::size_t place : {2U, 0U, 1U}) {
        recorders[place].emplace(lines, std::to_string(place) + " ");
        subscriptions.push_back(observe(static_cast<IServerObserver&>(*recorders[place])));
    }
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines, (Lines{"2 application 3", "0 application 3", "1 application 3"}));
}

TEST(Subscription, OfACopiedServerIsToldToo) {
    Lines lines;
    Recorder recorder(lines);
    std::optional<Subscription> subscription = observe(static_cast<IServerObserver&>(recorder));
    Server copy = Server::getInstance();
    copy.setActiveAppId(3, false);
    EXPECT_EQ(lines, Lines{"application 3"});
    subscription.reset();
    copy.setActiveAppId(4, false);
    EXPECT_EQ(lines.size(), 1U);
}

// --- Moving ---------------------------------------------------------------------------------------------------------

TEST(Subscription, MayBeMoved) {
    Lines lines;
    Recorder recorder(lines);
    Subscription first = observe(static_cast<IServerObserver&>(recorder));
    Subscription second = std::move(first);
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): it is empty then.
    EXPECT_TRUE(second);
    first.cancel();
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines, Lines{"application 3"});
}

TEST(Subscription, AssigningEndsWhatWasThere) {
    Lines lines;
    Recorder a(lines, "a ");
    Recorder b(lines, "b ");
    Subscription subscription = observe(static_cast<IServerObserver&>(a));
    subscription = observe(static_cast<IServerObserver&>(b));
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines, Lines{"b application 3"});
    subscription = Subscription();
    Server::getInstance().setActiveAppId(4, false);
    EXPECT_EQ(lines.size(), 1U);
}

TEST(Subscription, AssignedToItselfItStays) {
    Lines lines;
    Recorder recorder(lines);
    Subscription subscription = observe(static_cast<IServerObserver&>(recorder));
    Subscription& same = subscription;
    subscription = std::move(same);
    EXPECT_TRUE(subscription);
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines, Lines{"application 3"});
}

TEST(Subscription, ManyMayMoveAsAVectorGrows) {
    Lines lines;
    Recorder recorder(lines);
    std::vector<Subscription> subscriptions;
    for (int count = 0; count < 100; ++count) {
        subscriptions.push_back(observe(static_cast<IServerObserver&>(recorder)));
    }
    subscriptions.erase(subscriptions.begin(), subscriptions.begin() + 97);
    Server::getInstance().setActiveAppId(3, false);
    EXPECT_EQ(lines.size(), 3U);
}

}  // namespace
}  // namespace zelutil::test
