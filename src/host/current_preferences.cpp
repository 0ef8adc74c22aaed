#include "host/current_preferences.h"

#include "prefs/manager_access.h"

namespace zelutil::host {

prefs::Preferences* currentPreferences() {
    if (arePreferencesBeingMade()) {
        return nullptr;
    }
    try {
        return &prefs::ManagerAccess::preferencesOf(UserPreferenceManager::GetInstance());
    } catch (bool) {
        return nullptr;
    }
}

bool arePreferencesBeingMade() { return prefs::ManagerAccess::isBeingMadeHere(); }

}  // namespace zelutil::host
