#include <zelutil/host/save.h>

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_server.h>

#include <optional>
#include <utility>

#include "host/current_preferences.h"
#include "host/save_text.h"
#include "prefs/save_plan.h"

namespace zelutil::host {
namespace {

using prefs::UserSettingsFile;

SaveResult::Status statusOf(UserSettingsFile::Written written) {
    switch (written) {
        case UserSettingsFile::Written::Yes:
            return SaveResult::Status::Saved;
        case UserSettingsFile::Written::NoPath:
            return SaveResult::Status::NoPath;
        case UserSettingsFile::Written::NotKept:
            return SaveResult::Status::NotKept;
        case UserSettingsFile::Written::Torn:
            return SaveResult::Status::Torn;
        case UserSettingsFile::Written::No:
            break;
    }
    return SaveResult::Status::NotWritten;
}

prefs::SubManagerTexts textsOfSubManagers() {
    const std::string edits = UCPActionManager::instance().getAllUserSettings();
    return edits.empty() ? prefs::SubManagerTexts()
                         : prefs::SubManagerTexts{{prefs::SubManagerType::Actions, "[" + edits + "]"}};
}

void saveInto(SaveResult& result, prefs::Preferences& preferences, const std::map<std::string, std::string>& settings) {
    const auto texts = textsOfSubManagers();
    const prefs::SaveValues values(preferences.catalogue, {settings, texts});
    auto plan = prefs::planSave(preferences.catalogue, values);
    if (!plan || !plan->fileText) {
        return;
    }
    preferences.catalogue.putInForce(std::move(plan->newValues));
    auto written = preferences.userFile->write(result.path, *plan->fileText);
    result.status = statusOf(written.written);
    result.keptCopy = std::move(written.keptCopy);
    result.changedSettings = plan->changedNames;
    ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged(plan->changedNames, plan->changedTexts);
}

}  // namespace

SaveResult save(const std::map<std::string, std::string>& settings) {
    SaveResult result;
    prefs::Preferences* const preferences = currentPreferences();
    if (preferences == nullptr || preferences->catalogue.defaultsText().empty()) {
        result.status = SaveResult::Status::NoDefaults;
    } else {
        result.path = userFilePath();
        saveInto(result, *preferences, settings);
    }
    result.text = textOf(result);
    return result;
}

SaveResult reset(const std::vector<std::string>& settings) {
    std::map<std::string, std::string> defaults;
    prefs::Preferences* const preferences = currentPreferences();
    for (const std::string& name : settings) {
        if (const prefs::Setting* const setting = preferences ? preferences->catalogue.find(name) : nullptr) {
            defaults[name] = setting->defaultValue;
        }
    }
    return save(defaults);
}

SaveResult resetShortcuts(const std::vector<int>&) { return save(); }

SaveResult resetAllShortcuts() { return save(); }

}  // namespace zelutil::host
