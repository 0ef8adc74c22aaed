#ifndef ZELUTIL_TESTS_HOST_OBSERVERS_OF_ALL_H
#define ZELUTIL_TESTS_HOST_OBSERVERS_OF_ALL_H

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/observers.h>

#include <cstdio>
#include <string>
#include <vector>

namespace zelutil::test {

inline void say(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
    std::fflush(stderr);
}

/// Observes every server and says on standard error what it is told.
class ObserversOfAll final : public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    ObserversOfAll() {
        subscriptions_.push_back(
            host::onSettingsChanged([](const std::set<std::string>& names) { say("settings " + *names.begin()); }));
        subscriptions_.push_back(host::observe(*this));
        subscriptions_.push_back(
            host::onShortcutChanged([](int, const std::string&, const std::string& now) { say("shortcut " + now); }));
        subscriptions_.push_back(
            host::onActiveApplicationChanged([](int appId, bool) { say("application " + std::to_string(appId)); }));
    }
    ObserversOfAll(const ObserversOfAll&) = delete;
    ObserversOfAll& operator=(const ObserversOfAll&) = delete;

    void onSubManagerSettingsChanged(
        const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) override {
        say("texts " + std::to_string(changedTexts.size()));
    }

private:
    std::vector<host::Subscription> subscriptions_;
};

/// Has every server tell its observers of something, which depends on the round.
inline void changeAll(int round) {
    const std::string name = std::to_string(round);
    ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged({name}, {});
    UCPActionManager::instance().load(R"({"actions":[{"id":1,"context":"c","command":"a"}]})", "");
    UCPActionManager::instance().updateShortcut(1, name);
    ZelU::Marl::Server::getInstance().setActiveAppId(round, false);
}

}  // namespace zelutil::test

#endif
