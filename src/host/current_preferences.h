#ifndef ZELUTIL_HOST_CURRENT_PREFERENCES_H
#define ZELUTIL_HOST_CURRENT_PREFERENCES_H

#include "prefs/preferences.h"

namespace zelutil::host {

/// Returns what this process's preference manager holds, made now where this is the first use; null once the manager's
/// destruction has begun, and while the calling thread is making it.
prefs::Preferences* currentPreferences();

/// Returns whether the calling thread is making the preferences and has come here by something that it calls meanwhile.
bool arePreferencesBeingMade();

}  // namespace zelutil::host

#endif
