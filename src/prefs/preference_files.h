#ifndef ZELUTIL_PREFS_PREFERENCE_FILES_H
#define ZELUTIL_PREFS_PREFERENCE_FILES_H

#include <zelutil/file/path.h>

#include <optional>
#include <string>

#include "text/search_trace.h"

/// Finds the preference files.
namespace zelutil::prefs {

/// The name of both files.
inline constexpr char kSettingsFileName[] = "tessel_settings.cfg";

/// Returns the value of the variable "tessel_settings", which names the shipped defaults; nothing where it is
/// undefined.
std::optional<std::string> namedDefaultsFile();

/// Returns the path of the shipped defaults: the variable "tessel_settings" names the file itself, else the file is
/// looked for in the installation tree. Empty where there is none, also for want of an installation.
std::string defaultsFilePath();

/// Does the same for the installation in `root`, null for none, and tells the trace the candidates. Nothing is printed.
std::string defaultsFilePath(const ZelU::File::Path* root, text::SearchTrace& trace);

/// Returns the path of the user's file: the first one on the setup path, else the one below the user environment
/// directory, whether it exists or not.
std::string userFilePath();

/// Does the same and tells the trace the candidates.
std::string userFilePath(text::SearchTrace& trace);

/// Returns the path of the user's file as it is written: the one above, or one in the current directory when the
/// variable "regression_testing" was set when this was first called.
std::string writtenUserFilePath();

/// Does the same and tells the trace the candidates.
std::string writtenUserFilePath(text::SearchTrace& trace);

/// Returns whether that variable was set then, so that the file that is written is not the one that is read.
bool isWrittenUserFileRedirected();

/// Returns whether a thread is inside the setup-path search of `userFilePath`. The common library may call back into
/// the host there, and the host into this library.
bool isUserFileSearchInProgress();

}  // namespace zelutil::prefs

#endif
