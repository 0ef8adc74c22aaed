// The server tells observers of changes; these tests show whom, of what, and in which order.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/prefs/user_preference_server.h>
#include <zelutil/prefs/user_preference_settings.h>

#include <array>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using ZelU::Marl::IUserPreferenceObserver;
using ZelU::Marl::IUserPreferenceSubManagerObserver;
using ZelU::Marl::UserPreferenceServer;
using Type = UserPreferenceManager::SubManagerType;
using Names = std::set<std::string>;
using Texts = std::map<Type, std::string>;

std::vector<std::pair<const void*, std::string>> calls;

struct Observer : IUserPreferenceObserver {
    void onUserSettingsChanged(const Names& changed) override {
        calls.emplace_back(this, "settings");
        names = changed;
    }
    Names names = {"never told"};
};

struct SubManagerObserver : IUserPreferenceSubManagerObserver {
    void onSubManagerSettingsChanged(const Texts& changed) override {
        calls.emplace_back(this, "texts");
        texts = changed;
    }
    Texts texts = {{Type{0}, "never told"}};
};

struct BothKinds : IUserPreferenceObserver, IUserPreferenceSubManagerObserver {
    void onUserSettingsChanged(const Names&) override { calls.emplace_back(this, "settings"); }
    void onSubManagerSettingsChanged(const Texts&) override { calls.emplace_back(this, "texts"); }
};

using Calls = decltype(calls);

class Server : public testing::Test {
protected:
    Server() { calls.clear(); }

    UserPreferenceServer server_;
};

TEST_F(Server, PassesTheSameNamesAndTextsToAll) {
    std::array<Observer, 2> observers;
    std::array<SubManagerObserver, 2> subManagerObservers;
    for (std::size_t i = 0; i < 2; ++i) {
        server_.attach(&observers[i]);
        server_.attach(&subManagerObservers[i]);
    }
    const Names names = {"a::b", "c::d"};
    const Texts texts = {{Type::Actions, "[]"}, {Type{102}, "{}"}};
    server_.notifyUserSettingsChanged(names, texts);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(observers[i].names, names);
        EXPECT_EQ(subManagerObservers[i].texts, texts);
    }
    EXPECT_EQ(calls.size(), 4U);
}

TEST_F(Server, DeliversEmptyOnesToo) {
    Observer observer;
    SubManagerObserver subManagerObserver;
    server_.attach(&observer);
    server_.attach(&subManagerObserver);
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_TRUE(observer.names.empty());
    EXPECT_TRUE(subManagerObserver.texts.empty());
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Server, TellsSettingsFirstAndEachKindByAddress) {
    std::array<Observer, 3> observers;
    std::array<SubManagerObserver, 3> subManagerObservers;
    for (const std::size_t i : {1U, 2U, 0U}) {
        server_.attach(&subManagerObservers[i]);
        server_.attach(&observers[i]);
    }
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls, (Calls{{&observers[0], "settings"},
                            {&observers[1], "settings"},
                            {&observers[2], "settings"},
                            {&subManagerObservers[0], "texts"},
                            {&subManagerObservers[1], "texts"},
                            {&subManagerObservers[2], "texts"}}));
}

TEST_F(Server, AttachedTwiceIsToldOnceAndDetachedByOnce) {
    Observer observer;
    SubManagerObserver subManagerObserver;
    for (int i = 0; i < 2; ++i) {
        server_.attach(&observer);
        server_.attach(&subManagerObserver);
    }
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 2U);
    server_.detach(&observer);
    server_.detach(&subManagerObserver);
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Server, AnObserverOfBothKindsGetsBothCallsSettingsFirst) {
    BothKinds observer;
    server_.attach(static_cast<IUserPreferenceSubManagerObserver*>(&observer));
    server_.attach(static_cast<IUserPreferenceObserver*>(&observer));
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls, (Calls{{&observer, "settings"}, {&observer, "texts"}}));
    server_.detach(static_cast<IUserPreferenceObserver*>(&observer));
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.back(), (std::pair<const void*, std::string>{&observer, "texts"}));
    EXPECT_EQ(calls.size(), 3U);
}

TEST_F(Server, IgnoresNullAndStrangers) {
    Observer observer;
    Observer stranger;
    server_.attach(&observer);
    server_.attach(static_cast<IUserPreferenceObserver*>(nullptr));
    server_.attach(static_cast<IUserPreferenceSubManagerObserver*>(nullptr));
    server_.detach(static_cast<IUserPreferenceObserver*>(nullptr));
    server_.detach(static_cast<IUserPreferenceSubManagerObserver*>(nullptr));
    server_.detach(&stranger);
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls, (Calls{{&observer, "settings"}}));
}

TEST_F(Server, CopiesAndMovesByMembers) {
    Observer observer;
    server_.attach(&observer);
    UserPreferenceServer copy = server_;
    copy.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 1U);
    copy.detach(&observer);
    server_.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 2U);
    UserPreferenceServer moved = std::move(server_);
    moved.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 3U);
    copy = moved;
    moved = UserPreferenceServer();
    moved.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 3U);
    copy.notifyUserSettingsChanged({}, {});
    EXPECT_EQ(calls.size(), 4U);
}

TEST_F(Server, IsOneInTheProcess) {
    EXPECT_EQ(&UserPreferenceServer::getInstance(), &UserPreferenceServer::getInstance());
    EXPECT_NE(&UserPreferenceServer::getInstance(), &server_);
    Observer observer;
    server_.attach(&observer);
    UserPreferenceServer::getInstance().notifyUserSettingsChanged({}, {});
    EXPECT_TRUE(calls.empty());
}

TEST(ManagersSubManagers, AreFoundByType) {
    const PreferenceWorld world;
    world.writeDefaults(R"({"meta":[
        {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}},
        {"header":"X","attribute":"x","submanagerId":102,"tclCommand":"t","defaultsettings":{}}]})");
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    EXPECT_EQ(manager.GetSubManager(Type::Actions), &UCPActionManager::instance());
    EXPECT_EQ(manager.GetSubManager(Type::None), nullptr);
    EXPECT_EQ(manager.GetSubManager(Type{102}), nullptr);
}

TEST(ManagersSubManagers, AreNoneWithoutTheirSection) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsWithValue("1"));
    EXPECT_EQ(UserPreferenceManager::GetInstance().GetSubManager(Type::Actions), nullptr);
}

TEST(ManagersSubManagers, ApplyingTheirChangesSavesNothingOddity) {
    const PreferenceWorld world;
    world.writeDefaults(R"({"meta":[{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":
        {"actions":[{"id":1,"context":"c","command":"new","shortcut":"N"}]}}]})");
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    ASSERT_TRUE(UCPActionManager::instance().updateShortcut(1, "M"));
    SubManagerObserver observer;
    UserPreferenceServer::getInstance().attach(&observer);
    calls.clear();
    manager.ApplySubManagersChanges();
    EXPECT_TRUE(UCPActionManager::instance().isModified());
    EXPECT_EQ(UCPActionManager::instance().getShortcut(1), "M");
    EXPECT_FALSE(std::filesystem::exists(world.userFile().parent_path()));
    EXPECT_TRUE(calls.empty());
    UserPreferenceServer::getInstance().detach(&observer);
}

struct FixedSettings : IUserPreferenceSettings {
    const std::string& getUserPrefSetting(std::string name) const override { return name == "a" ? user : none; }
    const std::string& getDefaultPrefSetting(std::string name) const override { return name == "a" ? shipped : none; }
    std::string user = "1";
    std::string shipped = "2";
    std::string none;
};

TEST(PreferenceSettingsInterface, IsForHostsToImplement) {
    const FixedSettings fixed;
    const IUserPreferenceSettings& settings = fixed;
    EXPECT_EQ(settings.getUserPrefSetting("a"), "1");
    EXPECT_EQ(settings.getDefaultPrefSetting("a"), "2");
    EXPECT_EQ(settings.getUserPrefSetting("b"), "");
    static_assert(std::is_abstract_v<IUserPreferenceSettings>);
}

}  // namespace
}  // namespace zelutil::test
