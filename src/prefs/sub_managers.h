#ifndef ZELUTIL_PREFS_SUB_MANAGERS_H
#define ZELUTIL_PREFS_SUB_MANAGERS_H

#include <zelutil/prefs/user_settings_manager.h>

#include <map>
#include <string>

#include "prefs/catalogue.h"

namespace zelutil::prefs {

/// A manager is loaded with it when the user's file has nothing for its section.
inline constexpr char kNoUserSettings[] = "{}";

/// The managers of the sections that belong to one, by type. They are not owned.
class SubManagers {
public:
    /// Loads and registers the manager of each section that belongs to one.
    void initialize(const Catalogue& catalogue);

    /// Loads and registers the manager of that type; does nothing for a type that has none.
    void initialize(SubManagerType type, const std::string& defaultSettings, const std::string& userSettings);

    /// Registers a manager unless there is one of the type.
    void add(SubManagerType type, IUserSettingsManager* manager);

    /// Returns null where none is registered.
    IUserSettingsManager* find(SubManagerType type) const;

    /// Asks each modified manager for its text, and drops it.
    void applyChanges() const;

private:
    std::map<SubManagerType, IUserSettingsManager*> managers_;
};

}  // namespace zelutil::prefs

#endif
