#ifndef ZELUTIL_HOST_SETTING_DEFINITION_H
#define ZELUTIL_HOST_SETTING_DEFINITION_H

#include <zelutil/host/settings.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "prefs/catalogue.h"
#include "prefs/definition_walk.h"
#include "prefs/setting_name.h"

namespace zelutil::host {

/// A setting that some name finds, at the place of the defaults that defines it. Valid as long as the walk stays there.
struct SettingDefinition {
    const prefs::Setting& setting;
    std::string_view name;
    const std::string& attributePath;
    bool foundInFull;
    bool foundByName;

    /// Returns a key under which it is found.
    std::uint64_t key() const { return foundInFull ? setting.key : prefs::keyOf(name); }
    std::string fullName() const { return attributePath + std::string(prefs::kNameSeparator) + std::string(name); }
};

/// Returns nothing for a record that no name finds: its names belong to settings that were read before it.
inline std::optional<SettingDefinition> settingDefinition(const prefs::Catalogue& catalogue, std::uint32_t number,
                                                          std::string_view name, const std::string& attributePath) {
    const prefs::SettingIndex& settings = catalogue.settings();
    const prefs::Setting& setting = settings.record(number);
    const bool foundInFull = settings.find(setting.key) == &setting;
    const bool foundByName = settings.find(prefs::keyOf(name)) == &setting;
    if (!foundInFull && !foundByName) {
        return std::nullopt;
    }
    return SettingDefinition{setting, name, attributePath, foundInFull, foundByName};
}

/// Returns what hosts are told of a setting; `name` is its own and `section` the attribute path around it.
inline SettingInfo settingInfo(const prefs::Setting& setting, const std::string& section, std::string_view name,
                               bool foundInFull, bool foundByName) {
    SettingInfo info;
    info.section = section;
    info.fullName = section;
    info.fullName.append(prefs::kNameSeparator).append(name);
    if (foundByName) {
        info.bareNames.emplace_back(name);
    }
    info.defaultValue = setting.defaultValue;
    info.value = setting.valueInForce();
    info.setByUser = setting.hasUserValue;
    info.foundByFullName = foundInFull;
    return info;
}

}  // namespace zelutil::host

#endif
