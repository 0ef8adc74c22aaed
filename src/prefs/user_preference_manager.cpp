#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <algorithm>

#include "prefs/manager_access.h"
#include "prefs/preferences.h"
#include "prefs/save.h"
#include "prefs/setting_name.h"

using zelutil::prefs::Preferences;
using zelutil::prefs::Setting;

namespace {

thread_local bool isManagerBeingMade = false;

std::unique_ptr<Preferences> makePreferences() {
    struct Mark {
        Mark() { isManagerBeingMade = true; }
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;
        ~Mark() { isManagerBeingMade = false; }
    };
    const Mark mark;
    return std::make_unique<Preferences>();
}

/// Returned for an unknown name by every manager, so that the reference outlives each of them.
const std::string& noValue() {
    static const std::string empty;
    return empty;
}

}  // namespace

std::atomic<bool> UserPreferenceManager::s_bKilled{false};

UserPreferenceManager& UserPreferenceManager::GetInstance() {
    // Copies come and go; only the end of this object is the teardown.
    struct Singleton {
        // A save ends by telling the server's observers. So the server is there before the manager and goes after it.
        ZelU::Marl::UserPreferenceServer& server = ZelU::Marl::UserPreferenceServer::getInstance();
        UserPreferenceManager manager;
        ~Singleton() { s_bKilled = true; }
    };
    static Singleton singleton;
    if (s_bKilled) {
        throw true;
    }
    return singleton.manager;
}

bool zelutil::prefs::ManagerAccess::isBeingMadeHere() { return isManagerBeingMade; }

UserPreferenceManager::UserPreferenceManager() : preferences_(makePreferences()) {
    // Made before the manager is complete, the text is destroyed after it and its copies.
    noValue();
}

// NOLINTBEGIN(performance-unnecessary-value-param): the types are part of the interface.
const std::string& UserPreferenceManager::getUserPrefSetting(std::string name) const {
    const Setting* const setting = preferences_->catalogue.find(name);
    return setting == nullptr ? noValue() : setting->valueInForce();
}

const std::string& UserPreferenceManager::getDefaultPrefSetting(std::string name) const {
    const Setting* const setting = preferences_->catalogue.find(name);
    return setting == nullptr ? noValue() : setting->defaultValue;
}
// NOLINTEND(performance-unnecessary-value-param)

const std::map<std::string, std::shared_ptr<UserPreferenceManager::UserPreferenceUISection>>&
UserPreferenceManager::getAllUserPrefUISettings() {
    return preferences_->catalogue.sections();
}

IUserSettingsManager* UserPreferenceManager::GetSubManager(SubManagerType type) {
    return preferences_->subManagers.find(type);
}

void UserPreferenceManager::ApplySubManagersChanges() const { preferences_->subManagers.applyChanges(); }

void UserPreferenceManager::updateUserPrefSettings(const std::map<std::string, std::string>& settings,
                                                   const std::map<SubManagerType, std::string>& subManagerSettings) {
    // The save calls the host back, which may assign this manager and so end its share.
    const std::shared_ptr<zelutil::prefs::UserSettingsFile> userFile = preferences_->userFile;
    zelutil::prefs::save(preferences_->catalogue, *userFile, {settings, subManagerSettings});
}

void UserPreferenceManager::convertSettingToLowercase(std::string& name) {
    std::transform(name.begin(), name.end(), name.begin(), zelutil::ascii::lowerCase);
}

std::size_t UserPreferenceManager::computeHash(const std::string& name) const { return zelutil::prefs::hashOf(name); }
