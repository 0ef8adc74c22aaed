#ifndef ZELUTIL_PREFS_USER_PREFERENCE_SETTINGS_H
#define ZELUTIL_PREFS_USER_PREFERENCE_SETTINGS_H

#include <zelutil/export.h>

#include <string>

/// Returns settings by name, as `UserPreferenceManager` does. It is there for hosts that want to put something else in
/// its place; nothing in this library implements it.
class ZELUTIL_API IUserPreferenceSettings {
public:
    IUserPreferenceSettings() = default;
    IUserPreferenceSettings(const IUserPreferenceSettings&) = default;
    IUserPreferenceSettings(IUserPreferenceSettings&&) = default;
    IUserPreferenceSettings& operator=(const IUserPreferenceSettings&) = default;
    IUserPreferenceSettings& operator=(IUserPreferenceSettings&&) = default;

    /// The value in force for the setting; the empty string for an unknown name.
    virtual const std::string& getUserPrefSetting(std::string name) const = 0;

    /// The shipped default of the setting; the empty string for an unknown name.
    virtual const std::string& getDefaultPrefSetting(std::string name) const = 0;

protected:
    ~IUserPreferenceSettings() = default;
};

#endif
