#ifndef ZELUTIL_PREFS_PREFERENCE_FILES_H
#define ZELUTIL_PREFS_PREFERENCE_FILES_H

#include <string>

/// Where the preference files are.
namespace zelutil::prefs {

/// Both files have this name.
inline constexpr char kSettingsFileName[] = "tessel_settings.cfg";

/// Path of the shipped defaults: the variable "tessel_settings" names the file itself, else the file `name` is looked
/// for in the installation tree. Empty where there is none, also for want of an installation.
std::string getUserSettingsFullPathname(const char* name);

/// Path of the user's file: the first one on the setup path, else the one below the user environment directory, whether
/// it exists or not. Empty, which names no file, when that directory is no path.
std::string getUserFileName();

/// Path of the user's file as it is written: the one above, or one in the current directory when the variable
/// "regression_testing" was set when this was first called; empty when the current directory cannot be told.
std::string getWrittenUserFileName();

/// Whether a thread is inside the setup-path search of `getUserFileName`. The common library may call back into the
/// host there, and the host into this library.
bool isUserFileSearchInProgress();

}  // namespace zelutil::prefs

#endif
