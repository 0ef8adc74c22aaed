#ifndef ZELUTIL_PREFS_USER_SETTINGS_MANAGER_H
#define ZELUTIL_PREFS_USER_SETTINGS_MANAGER_H

#include <zelutil/export.h>

#include <string>

/// A sub-manager of the preferences: it keeps the settings of one section that are too rich for names and values, and
/// gets and gives them as JSON texts. The library never deletes one through this interface.
class ZELUTIL_API IUserSettingsManager {
public:
    IUserSettingsManager() = default;
    IUserSettingsManager(const IUserSettingsManager&) = default;
    IUserSettingsManager(IUserSettingsManager&&) = default;
    IUserSettingsManager& operator=(const IUserSettingsManager&) = default;
    IUserSettingsManager& operator=(IUserSettingsManager&&) = default;

    /// Replaces the whole state by what the section's shipped text and the user's text say. A text that cannot be used
    /// counts as one that says nothing.
    virtual void load(const std::string& defaultSettings, const std::string& userSettings) = 0;

    /// The user's part of the current state as JSON text.
    virtual const std::string getAllUserSettings() const = 0;

    /// Returns whether the state differs from what was loaded.
    virtual bool isModified() const = 0;

protected:
    ~IUserSettingsManager() = default;
};

#endif
