// Observers that save, attach and detach while they are told.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/save.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::kMaximumNotificationDepth;
using host::Subscription;
using Names = std::set<std::string>;
using Values = std::vector<std::string>;
using ZelU::Marl::Server;

static_assert(kMaximumNotificationDepth == 16);

class NestedObservers : public ::testing::Test {
protected:
    NestedObservers() { world_.writeDefaults(defaultsWithValue("1")); }

    static void save(const std::string& value) {
        UserPreferenceManager::GetInstance().updateUserPrefSettings({{"s::value", value}}, {});
    }
    static const std::string& value() { return UserPreferenceManager::GetInstance().getUserPrefSetting("s::value"); }

private:
    PreferenceWorld world_;
};

TEST_F(NestedObservers, ASaveInsideANotificationIsToldToAllAndTheOuterOneGoesOn) {
    Values told;
    const Subscription first = host::onSettingChanged("value", [&](const std::string& now) {
        told.push_back("first " + now);
        if (now == "2") {
            save("3");
        }
    });
    const Subscription second =
        host::onSettingChanged("value", [&](const std::string& now) { told.push_back("second " + now); });
    save("2");
    EXPECT_EQ(told, (Values{"first 2", "first 3", "second 3"}));
    EXPECT_EQ(value(), "3");
}

TEST_F(NestedObservers, MoveSubscriptionsInsideANotification) {
    Values told;
    Subscription first;
    Subscription second;
    Subscription elsewhere;
    first = host::onSettingsChanged([&](const Names&) {
        told.emplace_back("first");
        elsewhere = std::move(first);
        std::swap(second, elsewhere);
    });
    second = host::onSettingsChanged([&](const Names&) { told.emplace_back("second"); });
    save("2");
    EXPECT_EQ(told, (Values{"first", "second"}));
    EXPECT_FALSE(first);
    EXPECT_TRUE(second);
    EXPECT_TRUE(elsewhere);
    // Now what `first` holds, which is nothing, takes the place of the second one.
    save("3");
    EXPECT_EQ(told, (Values{"first", "second", "first"}));
}

TEST_F(NestedObservers, OneMayReplaceItself) {
    Values told;
    Subscription subscription;
    subscription = host::onSettingsChanged([&](const Names&) {
        told.emplace_back("old");
        subscription = host::onSettingsChanged([&](const Names&) { told.emplace_back("new"); });
    });
    save("2");
    EXPECT_EQ(told, Values{"old"});
    save("3");
    EXPECT_EQ(told, (Values{"old", "new"}));
}

TEST_F(NestedObservers, AllMayGoAndOthersComeDuringASave) {
    Values told;
    std::vector<Subscription> subscriptions;
    for (int number = 0; number < 5; ++number) {
        subscriptions.push_back(host::onSettingsChanged([&told, &subscriptions, number](const Names&) {
            told.push_back(std::to_string(number));
            if (number == 2) {
                std::vector<Subscription> others;
                others.push_back(host::onSettingsChanged([&told](const Names&) { told.emplace_back("other"); }));
                std::vector<std::string>& kept = told;
                subscriptions.swap(others);
                others.clear();
                kept.emplace_back("swapped");
            }
        }));
    }
    save("2");
    EXPECT_EQ(told, (Values{"0", "1", "2", "swapped"}));
    save("3");
    EXPECT_EQ(told, (Values{"0", "1", "2", "swapped", "other"}));
}

TEST_F(NestedObservers, WhatOneThrowsEndsTheRoundAndPassesThroughTheSave) {
    Values told;
    bool throws = true;
    const Subscription first = host::onSettingsChanged([&](const Names&) {
        told.emplace_back("first");
        if (std::exchange(throws, false)) {
            throw std::runtime_error("first");
        }
    });
    const Subscription second = host::onSettingsChanged([&](const Names&) { told.emplace_back("second"); });
    EXPECT_THROW(save("2"), std::runtime_error);
    EXPECT_EQ(told, Values{"first"});
    EXPECT_EQ(value(), "2");
    save("3");
    EXPECT_EQ(told, (Values{"first", "first", "second"}));
}

// --- Without end ----------------------------------------------------------------------------------------------------

TEST_F(NestedObservers, ASaveAtEachNotificationComesToAnEnd) {
    int calls = 0;
    const Subscription subscription = host::onSettingsChanged([&](const Names&) {
        ++calls;
        save("value " + std::to_string(calls));
    });
    save("2");
    // One call for each depth. The last of them saved, and nobody was told.
    EXPECT_EQ(calls, 16);
    EXPECT_EQ(value(), "value 16");
    // The end of one is not the end of all.
    save("3");
    EXPECT_EQ(calls, 32);
}

TEST_F(NestedObservers, SeveralThatSaveAtEachNotificationMakeNoTree) {
    int calls = 0;
    const auto saveAnother = [&](const Names&) {
        ++calls;
        save("value " + std::to_string(calls));
    };
    const Subscription first = host::onSettingsChanged(saveAnother);
    const Subscription second = host::onSettingsChanged(saveAnother);
    save("2");
    // 16 rounds were begun before the first one was refused, and each tells both.
    EXPECT_EQ(calls, 32);
}

TEST_F(NestedObservers, ADepthThatIsAllowedIsToldInFull) {
    int calls = 0;
    int others = 0;
    const Subscription first = host::onSettingsChanged([&](const Names&) {
        if (++calls < kMaximumNotificationDepth) {
            save("value " + std::to_string(calls));
        }
    });
    const Subscription second = host::onSettingsChanged([&](const Names&) { ++others; });
    save("2");
    EXPECT_EQ(calls, 16);
    EXPECT_EQ(others, 16);
}

TEST_F(NestedObservers, ThatAnswerEachOtherThroughSeveralServersComeToAnEndToo) {
    int applications = 0;
    int saves = 0;
    const Subscription application = host::onActiveApplicationChanged([&](int appId, bool) {
        ++applications;
        save("value " + std::to_string(appId));
    });
    const Subscription settings = host::onSettingsChanged([&](const Names&) {
        ++saves;
        Server::getInstance().setActiveAppId(100 + saves, false);
    });
    save("2");
    EXPECT_EQ(saves, 8);
    EXPECT_EQ(applications, 8);
}

TEST_F(NestedObservers, SavesOfTheHostsAreStoppedAndNamed) {
    int calls = 0;
    std::vector<host::SaveResult::Status> statuses;
    const Subscription subscription = host::onSettingsChanged([&](const Names&) {
        ++calls;
        statuses.push_back(host::save({{"value", "value " + std::to_string(calls)}}).status);
    });
    EXPECT_EQ(host::save({{"value", "2"}}).status, host::SaveResult::Status::Saved);
    // Eight saves inside each other, each of which was told, and the ninth.
    EXPECT_EQ(calls, 8);
    ASSERT_EQ(statuses.size(), 8U);
    EXPECT_EQ(statuses.front(), host::SaveResult::Status::TooDeep);
    for (std::size_t place = 1; place < statuses.size(); ++place) {
        EXPECT_EQ(statuses[place], host::SaveResult::Status::Saved) << place;
    }
    EXPECT_EQ(value(), "value 7");
}

TEST_F(NestedObservers, AnExceptionFromTheDepthLeavesTheDepthFree) {
    int calls = 0;
    const Subscription subscription = host::onSettingsChanged([&](const Names&) {
        if (++calls % 16 == 0) {
            throw std::runtime_error("deep");
        }
        save("value " + std::to_string(calls));
    });
    EXPECT_THROW(save("2"), std::runtime_error);
    EXPECT_EQ(calls, 16);
    EXPECT_THROW(save("3"), std::runtime_error);
    EXPECT_EQ(calls, 32);
}

TEST_F(NestedObservers, ShortcutsThatChangeEachOtherComeToAnEnd) {
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(R"({"actions":[{"id":1,"context":"c","command":"a"},{"id":2,"context":"c","command":"b"}]})", "");
    int calls = 0;
    const Subscription subscription = host::onShortcutChanged([&](int id, const std::string&, const std::string&) {
        ++calls;
        actions.updateShortcut(3 - id, "Ctrl+" + std::to_string(calls));
    });
    EXPECT_TRUE(actions.updateShortcut(1, "F1"));
    EXPECT_EQ(calls, 16);
    EXPECT_EQ(actions.getShortcut(1), "Ctrl+16");
    EXPECT_EQ(actions.getShortcut(2), "Ctrl+15");
}

}  // namespace
}  // namespace zelutil::test
