#ifndef ZELUTIL_HOST_SETTING_NAMES_H
#define ZELUTIL_HOST_SETTING_NAMES_H

#include <cstdint>
#include <string>
#include <vector>

#include "prefs/catalogue.h"

namespace zelutil::host {

/// The names of all settings and sections, which the records do not hold: they stand in the text of the defaults. They
/// never change, so they are read once, when somebody asks.
class SettingNames {
public:
    explicit SettingNames(const prefs::Catalogue& catalogue);

    struct Names {
        std::uint32_t number;   ///< `Setting::number`.
        std::string name;       ///< The setting's own.
        std::uint32_t section;  ///< The place of its section in `sections`.
        bool foundInFull;
        bool foundByName;
    };

    /// Returns the settings that some name finds, in the order of the defaults, which is that of their numbers.
    const std::vector<Names>& settings() const { return settings_; }

    /// Returns the names of one of these settings; null for another record.
    const Names* find(const prefs::Setting& setting) const;

    /// Returns the attribute paths of the sections, in the order of the defaults.
    const std::vector<std::string>& sections() const { return sections_; }

private:
    std::vector<Names> settings_;
    std::vector<std::string> sections_;
};

}  // namespace zelutil::host

#endif
