#ifndef ZELUTIL_PREFS_PREFERENCES_H
#define ZELUTIL_PREFS_PREFERENCES_H

#include <memory>
#include <string>

#include "prefs/catalogue.h"
#include "prefs/preference_files.h"
#include "prefs/sub_managers.h"
#include "prefs/user_settings_file.h"

namespace zelutil::prefs {

/// Reads both preference files.
Catalogue readPreferenceFiles(const std::string& defaultsFile, UserSettingsFile& userFile);

/// Everything that an exported manager holds. Assignment keeps the objects and changes what is in them, because hosts
/// have references to them.
struct Preferences {
    /// Reads both files and loads the sub-managers.
    Preferences();

    /// The path of the shipped defaults, as they were looked for; empty where there was none.
    std::string defaultsFile = defaultsFilePath();
    /// A manager and its copies write one file, so they share what is known of it.
    std::shared_ptr<UserSettingsFile> userFile = std::make_shared<UserSettingsFile>();
    Catalogue catalogue;
    SubManagers subManagers;
};

}  // namespace zelutil::prefs

#endif
