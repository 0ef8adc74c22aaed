#include "prefs/preferences.h"

#include "json/document.h"
#include "platform/files.h"
#include "prefs/catalogue_reader.h"
#include "prefs/preference_files.h"

namespace zelutil::prefs {

Catalogue readPreferenceFiles(const std::string& defaultsFile, UserSettingsFile& userFile) {
    Catalogue catalogue;
    readDefaults(platform::readFile(defaultsFile.c_str(), json::kMaximumTextSize).value_or(""), catalogue);
    userFile.read(userFilePath(), [&catalogue](std::string_view text) { return readUserSettings(text, catalogue); });
    return catalogue;
}

Preferences::Preferences() : catalogue(readPreferenceFiles(defaultsFile, *userFile)) {
    subManagers.initialize(catalogue);
}

}  // namespace zelutil::prefs
