#ifndef ZELUTIL_PREFS_PREFERENCES_H
#define ZELUTIL_PREFS_PREFERENCES_H

#include <zelutil/prefs/user_preference_manager.h>

#include <string>

#include "prefs/catalogue.h"
#include "prefs/sub_managers.h"
#include "prefs/user_settings_file.h"

namespace zelutil::prefs {

/// Reads both preference files.
Catalogue readPreferenceFiles(UserSettingsFile& userFile);

/// What an exported manager stands on.
struct Preferences {
    /// Reads both files and loads the sub-managers.
    Preferences();

    static const Preferences& of(const UserPreferenceManager& manager) { return *manager.preferences_; }

    UserSettingsFile userFile;
    Catalogue catalogue;
    SubManagers subManagers;
    /// Returned for an unknown name.
    std::string noValue;
};

}  // namespace zelutil::prefs

#endif
