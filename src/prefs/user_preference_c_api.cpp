#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include "prefs/manager_access.h"
#include "prefs/preference_files.h"

namespace {

using zelutil::prefs::charactersOrNull;
using zelutil::prefs::ManagerAccess;
using zelutil::prefs::Setting;

const Setting* find(const char* name) {
    return ManagerAccess::preferencesOf(UserPreferenceManager::GetInstance()).catalogue.find(name);
}

}  // namespace

const char* get_user_setting(const char* name) {
    if (zelutil::prefs::isUserFileSearchInProgress()) {
        return nullptr;
    }
    try {
        const Setting* const setting = find(name);
        return setting == nullptr ? nullptr : charactersOrNull(setting->valueInForce());
    } catch (bool) {
        return nullptr;
    }
}

// Kept deliberately: unlike its sibling, this function neither looks whether the user's file is being searched for nor
// catches the exception of the teardown. Part of the published behaviour; hosts may depend on it.
const char* get_default_user_setting(const char* name) {
    const Setting* const setting = find(name);
    return setting == nullptr ? nullptr : charactersOrNull(setting->defaultValue);
}
