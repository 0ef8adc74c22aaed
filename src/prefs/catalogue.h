#ifndef ZELUTIL_PREFS_CATALOGUE_H
#define ZELUTIL_PREFS_CATALOGUE_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "prefs/section.h"
#include "prefs/setting.h"
#include "prefs/setting_index.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {

/// Every section and setting there is, as values: the catalogue knows neither the files they come from nor the parts
/// of the library that use them. A reader fills it once (catalogue_reader.h); afterwards only values of the user
/// change, when a save puts new ones in force.
///
/// A copy shares the records of settings and sections with the original.
class Catalogue {
public:
    /// A value of the user for the setting found under `key`.
    struct NewValue {
        std::uint64_t key;
        std::string value;
    };

    const Sections& sections() const { return sections_; }

    /// Returns the setting of that name, bare or in full, in any case; null for an unknown one.
    const Setting* find(std::string_view name) const { return settings().find(keyOf(name)); }
    const Setting* find(const char* name) const { return settings().find(keyOf(name)); }

    const SettingIndex& settings() const { return *settings_; }
    SettingIndex& settings() { return *settings_; }

    /// Returns whom the section belongs to; `None` also for an unknown one.
    SubManagerType subManagerOf(const std::string& attributePath) const;

    /// The text of the defaults, as it was read.
    const std::string& defaultsText() const { return defaultsText_; }

    /// Return what the sections of sub-managers hold in the defaults, and in the user's text.
    const SubManagerTexts& defaultSubManagerTexts() const { return defaultSubManagerTexts_; }
    const SubManagerTexts& userSubManagerTexts() const { return userSubManagerTexts_; }

    /// Makes the values the user's, one after another. A key without a setting is ignored.
    void putInForce(std::vector<NewValue> newValues) noexcept;

    // For the reader. What is there already stays: the first of a path, and the first text of a type.
    void addSection(std::shared_ptr<Section> section);
    void addDefaultSubManagerText(SubManagerType type, std::string text);
    void addUserSubManagerText(SubManagerType type, std::string text);
    void setSettings(SettingIndex settings);
    void setDefaultsText(std::string text);

private:
    Sections sections_;
    std::shared_ptr<SettingIndex> settings_ = std::make_shared<SettingIndex>();
    SubManagerTexts defaultSubManagerTexts_;
    SubManagerTexts userSubManagerTexts_;
    std::string defaultsText_;
};

}  // namespace zelutil::prefs

#endif
