#include "prefs/preference_model.h"

#include <zelutil/actions/action_manager.h>

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

const UserPreferenceManager::Model::SubManagerTexts& UserPreferenceManager::Model::readDefaultJson() {
    const std::string path = prefs::getUserSettingsFullPathname(prefs::kSettingsFileName);
    takeDefaults(platform::readFile(path.c_str(), zelutil::json::kMaximumTextSize).value_or(""));
    return defaultSubManagerSettings_;
}

const UserPreferenceManager::Model::SubManagerTexts& UserPreferenceManager::Model::readOverriddenCfg() {
    const std::string path = prefs::getUserFileName();
    takeUserSettings(platform::readFile(path.c_str(), zelutil::json::kMaximumTextSize).value_or(""));
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
        InitializeSubManager(type, defaults->second,
                             user == userSubManagerSettings_.end() ? kNoUserSettings : user->second);
    }
}

void UserPreferenceManager::Model::InitializeSubManager(SubManagerType type, const std::string& defaultSettings,
                                                        const std::string& userSettings) {
    if (type != SubManagerType::Actions) {
        return;
    }
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(defaultSettings, userSettings);
    subManagers_.try_emplace(type, &actions);
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
