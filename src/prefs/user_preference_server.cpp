#include <zelutil/prefs/user_preference_server.h>

#include "util/notification.h"
#include "util/process_wide.h"

namespace ZelU {
namespace Marl {
namespace {

template <typename Observer>
void attachTo(std::set<Observer*>& observers, Observer* observer) {
    if (observer != nullptr) {
        observers.insert(observer);
    }
}

}  // namespace

UserPreferenceServer& UserPreferenceServer::getInstance() {
    static zelutil::ProcessWide<UserPreferenceServer> server([] { return new UserPreferenceServer; });
    return server.get();
}

void UserPreferenceServer::attach(IUserPreferenceObserver* observer) { attachTo(observers_, observer); }

void UserPreferenceServer::attach(IUserPreferenceSubManagerObserver* observer) {
    attachTo(subManagerObservers_, observer);
}

void UserPreferenceServer::detach(IUserPreferenceObserver* observer) { observers_.erase(observer); }

void UserPreferenceServer::detach(IUserPreferenceSubManagerObserver* observer) { subManagerObservers_.erase(observer); }

void UserPreferenceServer::notifyUserSettingsChanged(
    const std::set<std::string>& changedNames,
    const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) {
    const zelutil::Notification<UserPreferenceServer> notification;
    for (IUserPreferenceObserver* const observer : observers_) {
        observer->onUserSettingsChanged(changedNames);
    }
    for (IUserPreferenceSubManagerObserver* const observer : subManagerObservers_) {
        observer->onSubManagerSettingsChanged(changedTexts);
    }
}

}  // namespace Marl
}  // namespace ZelU
