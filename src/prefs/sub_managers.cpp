#include "prefs/sub_managers.h"

#include <zelutil/actions/action_manager.h>

namespace zelutil::prefs {
void SubManagers::initialize(const Catalogue& catalogue) {
    for (const auto& [attributePath, section] : catalogue.sections()) {
        const SubManagerType type{section->submanagerId};
        const auto defaults = catalogue.defaultSubManagerTexts().find(type);
        if (type == SubManagerType::None || defaults == catalogue.defaultSubManagerTexts().end()) {
            continue;
        }
        const auto user = catalogue.userSubManagerTexts().find(type);
        initialize(type, defaults->second,
                   user == catalogue.userSubManagerTexts().end() ? kNoUserSettings : user->second);
    }
}

void SubManagers::initialize(SubManagerType type, const std::string& defaultSettings, const std::string& userSettings) {
    if (type != SubManagerType::Actions) {
        return;
    }
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(defaultSettings, userSettings);
    add(type, &actions);
}

void SubManagers::add(SubManagerType type, IUserSettingsManager* manager) { managers_.try_emplace(type, manager); }

IUserSettingsManager* SubManagers::find(SubManagerType type) const {
    const auto found = managers_.find(type);
    return found == managers_.end() ? nullptr : found->second;
}

// Kept deliberately: the texts are asked for and dropped, and nothing is written. Part of the published behaviour;
// hosts may depend on it.
void SubManagers::applyChanges() const {
    for (const auto& [type, manager] : managers_) {
        if (manager != nullptr && manager->isModified()) {
            manager->getAllUserSettings();
        }
    }
}

}  // namespace zelutil::prefs
