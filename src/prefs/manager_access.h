#ifndef ZELUTIL_PREFS_MANAGER_ACCESS_H
#define ZELUTIL_PREFS_MANAGER_ACCESS_H

#include <zelutil/prefs/user_preference_manager.h>

#include "prefs/preferences.h"

namespace zelutil::prefs {

/// Lets the C functions reach what the manager holds: they look a name up as it is given, without a copy of it. The
/// saves of `zelutil::host` change it too.
struct ManagerAccess {
    static const Preferences& preferencesOf(const UserPreferenceManager& manager) { return *manager.preferences_; }
    static Preferences& preferencesOf(UserPreferenceManager& manager) { return *manager.preferences_; }

    /// Returns whether this process's manager is being made by the calling thread, which has come here by an observer
    /// of the actions or the common library: it must not ask for the manager.
    static bool isBeingMadeHere();
};

}  // namespace zelutil::prefs

#endif
