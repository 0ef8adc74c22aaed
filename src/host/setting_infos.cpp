#include <zelutil/host/settings.h>

#include "host/current_preferences.h"
#include "host/setting_definition.h"
#include "host/setting_names.h"
#include "util/process_wide.h"

namespace zelutil::host {
namespace {

/// Returns the names for the manager of this process. It and its copies share their settings, so they have one set of
/// names.
const SettingNames& names() {
    static ProcessWide<SettingNames> names([] {
        const prefs::Preferences* const preferences = currentPreferences();
        return preferences == nullptr ? new SettingNames(prefs::Catalogue()) : new SettingNames(preferences->catalogue);
    });
    return names.get();
}

SettingInfo infoOf(const prefs::Setting& setting, const SettingNames::Names& named) {
    return settingInfo(setting, names().sections()[named.section], named.name, named.foundInFull, named.foundByName);
}

}  // namespace

std::vector<SettingInfo> settings() {
    std::vector<SettingInfo> infos;
    const prefs::Preferences* const preferences = currentPreferences();
    if (preferences == nullptr) {
        return infos;
    }
    infos.reserve(names().settings().size());
    for (const SettingNames::Names& named : names().settings()) {
        infos.push_back(infoOf(preferences->catalogue.settings().record(named.number), named));
    }
    return infos;
}

std::optional<SettingInfo> setting(std::string_view name) {
    const prefs::Preferences* const preferences = currentPreferences();
    const prefs::Setting* const found = preferences == nullptr ? nullptr : preferences->catalogue.find(name);
    const SettingNames::Names* const named = found == nullptr ? nullptr : names().find(*found);
    return named == nullptr ? std::nullopt : std::optional<SettingInfo>(infoOf(*found, *named));
}

std::vector<std::string> sectionsInFileOrder() {
    return currentPreferences() == nullptr ? std::vector<std::string>() : names().sections();
}

}  // namespace zelutil::host
