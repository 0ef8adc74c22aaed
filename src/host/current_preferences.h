#ifndef ZELUTIL_HOST_CURRENT_PREFERENCES_H
#define ZELUTIL_HOST_CURRENT_PREFERENCES_H

#include "prefs/preferences.h"

namespace zelutil::host {

/// Returns what this process's preference manager holds, made now where this is the first use; null once the manager's
/// destruction has begun.
prefs::Preferences* currentPreferences();

}  // namespace zelutil::host

#endif
