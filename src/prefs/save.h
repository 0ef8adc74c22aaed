#ifndef ZELUTIL_PREFS_SAVE_H
#define ZELUTIL_PREFS_SAVE_H

#include "prefs/catalogue.h"
#include "prefs/save_plan.h"
#include "prefs/user_settings_file.h"

namespace zelutil::prefs {

/// Saves what the host hands over: puts the new values in force, writes the user's file and notifies the observers.
/// When nothing changes, nothing is done.
void save(Catalogue& catalogue, UserSettingsFile& file, const SaveRequest& request);

}  // namespace zelutil::prefs

#endif
