#include "prefs/preference_model.h"

#include <zelutil/actions/action_manager.h>

#include "json/document.h"
#include "platform/platform.h"
#include "prefs/preference_files.h"
#include "prefs/setting_name.h"

using zelutil::prefs::keyOf;
namespace platform = zelutil::platform;
namespace prefs = zelutil::prefs;

namespace {

/// What a section's sub-manager gets when the user's file has nothing for it.
constexpr char kNoUserSettings[] = "{}";

/// What every failed look-up answers.
const std::string& emptyText() {
    static const std::string text;
    return text;
}

}  // namespace

// What is made first goes last: the manager answers with this text as long as it lives.
UserPreferenceManager::Model::Model() { emptyText(); }

const UserPreferenceManager::Model::SubManagerTexts& UserPreferenceManager::Model::readDefaultJson() {
    const std::string path = prefs::getUserSettingsFullPathname(prefs::kSettingsFileName);
    takeDefaults(platform::readFile(path.c_str(), zelutil::json::kMaximumTextSize).value_or(""));
    return defaultSubManagerSettings_;
}

const UserPreferenceManager::Model::SubManagerTexts& UserPreferenceManager::Model::readOverriddenCfg() {
    userFile_.read(prefs::getUserFileName(), [this](std::string_view text) { return takeUserSettings(text); });
    return userSubManagerSettings_;
}

void UserPreferenceManager::Model::initializeSubManagers() {
    for (const auto& [attributePath, section] : uiSections_) {
        const SubManagerType type{section->submanagerId};
        const auto defaults = defaultSubManagerSettings_.find(type);
        if (type == SubManagerType::None || defaults == defaultSubManagerSettings_.end()) {
            continue;
        }
        const auto user = userSubManagerSettings_.find(type);
        initializeSubManager(type, defaults->second,
                             user == userSubManagerSettings_.end() ? kNoUserSettings : user->second);
    }
}

void UserPreferenceManager::Model::initializeSubManager(SubManagerType type, const std::string& defaultSettings,
                                                        const std::string& userSettings) {
    if (type != SubManagerType::Actions) {
        return;
    }
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(defaultSettings, userSettings);
    registerSubManager(type, &actions);
}

IUserSettingsManager* UserPreferenceManager::Model::subManager(SubManagerType type) const {
    const auto found = subManagers_.find(type);
    return found == subManagers_.end() ? nullptr : found->second;
}

void UserPreferenceManager::Model::registerSubManager(SubManagerType type, IUserSettingsManager* manager) {
    subManagers_.try_emplace(type, manager);
}

// Kept deliberately: the texts are asked for and dropped. Hosts save them by handing them to a save, and count on this
// call writing nothing.
void UserPreferenceManager::Model::applySubManagersChanges() const {
    for (const auto& [type, manager] : subManagers_) {
        if (manager != nullptr && manager->isModified()) {
            manager->getAllUserSettings();
        }
    }
}

UserPreferenceManager::MetaSettings* UserPreferenceManager::Model::findSetting(std::string_view name) const {
    return settingsByHash_.find(keyOf(name));
}

UserPreferenceManager::MetaSettings* UserPreferenceManager::Model::findSetting(const char* name) const {
    return settingsByHash_.find(keyOf(name));
}

const std::string& UserPreferenceManager::Model::getMergedValueForSetting(const MetaSettings* setting) {
    if (setting == nullptr) {
        return emptyText();
    }
    return setting->hasUserValue ? setting->userValue : setting->defaultValue;
}

const std::string& UserPreferenceManager::Model::getDefaultValueForSetting(const MetaSettings* setting) {
    return setting == nullptr ? emptyText() : setting->defaultValue;
}
