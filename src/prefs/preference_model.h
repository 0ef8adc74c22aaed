#ifndef ZELUTIL_PREFS_PREFERENCE_MODEL_H
#define ZELUTIL_PREFS_PREFERENCE_MODEL_H

#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_settings_manager.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "json/view.h"
#include "prefs/setting_index.h"
#include "prefs/user_settings_file.h"
#include "prefs/values_by_hash.h"

/// What the preference manager knows and does. The manager is the process-wide, exported shell around one of these.
///
/// Sections and defaults come from the text of the defaults file, the user's values from the text of the user's file,
/// which has the same layout. The model is filled once, in this order; afterwards only a save changes it, and only the
/// user's values. A text is never refused: what cannot be used of it is passed over, element by element.
class UserPreferenceManager::Model {
public:
    using SubManagerTexts = std::map<SubManagerType, std::string>;
    using ValuesByHash = zelutil::prefs::ValuesByHash;
    using Sections = std::map<std::string, std::shared_ptr<UserPreferenceUISection>>;

    Model();

    /// The half behind `manager`, for the functions with C linkage.
    static const Model& of(const UserPreferenceManager& manager) { return *manager.model_; }

    /// Reads the defaults file, sets up the index and answers the texts of the sub-managers' sections.
    const SubManagerTexts& readDefaultJson();
    /// Reads the user's file over the defaults and answers the user's texts of the sub-managers' sections.
    const SubManagerTexts& readOverriddenCfg();
    /// Loads the sub-manager of each section that belongs to one.
    void initializeSubManagers();

    /// What the two files hold, as far as it is theirs to tell: the same without files.
    void takeDefaults(std::string text);
    /// Returns whether the text is JSON.
    bool takeUserSettings(std::string_view text);

    /// Null for an unknown name.
    MetaSettings* findSetting(std::string_view name) const;
    MetaSettings* findSetting(const char* name) const;
    /// Empty for null.
    static const std::string& getMergedValueForSetting(const MetaSettings* setting);
    static const std::string& getDefaultValueForSetting(const MetaSettings* setting);

    /// Loads the sub-manager of that type, if there is one, and registers it.
    void initializeSubManager(SubManagerType type, const std::string& defaultSettings, const std::string& userSettings);

    /// Null where none is registered.
    IUserSettingsManager* subManager(SubManagerType type) const;
    void registerSubManager(SubManagerType type, IUserSettingsManager* manager);
    void applySubManagersChanges() const;

    const Sections& sections() const { return uiSections_; }

    /// Saves what the host hands over, as `UserPreferenceManager` says.
    void updateUserPrefSettings(const std::map<std::string, std::string>& settings,
                                const SubManagerTexts& subManagerSettings);
    /// What a save writes: the user's values by the key of the full name, and the sub-managers' texts, all of them
    /// JSON.
    ValuesByHash valuesToSave(const std::map<std::string, std::string>& settings) const;
    SubManagerTexts subManagerTextsToSave(const SubManagerTexts& subManagerSettings) const;
    /// Puts these in force and answers the text of the user's file, or nothing when that changes nothing.
    std::optional<std::string> overrideUserSettings(ValuesByHash valuesByHash, const SubManagerTexts& subManagerTexts);

    /// What the last save changed.
    const std::set<std::string>& changedSettingNames() const { return changedSettingNames_; }
    const SubManagerTexts& changedSubManagerSettings() const { return changedSubManagerSettings_; }

    /// Whether the section belongs to a sub-manager; `type` is then its type, and `*manager`, where one is registered,
    /// that sub-manager.
    bool doesClientHaveSubmanager(const std::string& attributePath, IUserSettingsManager** manager,
                                  SubManagerType& type) const;

private:
    class DefaultsWalk;
    class UserSettingsWalk;
    class SavingWalk;

    void parseJsonObject(zelutil::json::View metaArray, const std::string& parentHeader,
                         const std::string& parentAttribute);
    void parseUserAreaJsonObject(zelutil::json::View metaArray, const std::string& parentAttribute);
    void updatePreferenceManager(ValuesByHash valuesByHash, const SubManagerTexts& subManagerTexts);
    static std::string convertJsonToString(zelutil::json::View value);

    std::map<SubManagerType, IUserSettingsManager*> subManagers_;
    SubManagerTexts defaultSubManagerSettings_;
    SubManagerTexts userSubManagerSettings_;
    Sections uiSections_;
    zelutil::prefs::SettingIndex settingsByHash_;
    /// The text of the defaults file as it was read.
    std::string defaultText_;
    std::set<std::string> changedSettingNames_;
    SubManagerTexts changedSubManagerSettings_;
    zelutil::prefs::UserSettingsFile userFile_;
};

#endif
