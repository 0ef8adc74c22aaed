#include "host/current_preferences.h"

#include "prefs/manager_access.h"

namespace zelutil::host {

prefs::Preferences* currentPreferences() {
    try {
        return &prefs::ManagerAccess::preferencesOf(UserPreferenceManager::GetInstance());
    } catch (bool) {
        return nullptr;
    }
}

}  // namespace zelutil::host
