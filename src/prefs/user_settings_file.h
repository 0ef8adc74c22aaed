#ifndef ZELUTIL_PREFS_USER_SETTINGS_FILE_H
#define ZELUTIL_PREFS_USER_SETTINGS_FILE_H

#include <string>

/// Writing the user's file.
namespace zelutil::prefs {

/// Replaces the file at `path` by one with this text, making its directory first. Whatever fails, fails quietly, and
/// the old file stays.
///
/// An old file that has something in it but is no JSON may be somebody's settings with one comma too many: the first
/// such file that the process meets is kept as `path` and ".bad".
void writeUserSettingsFile(const std::string& path, std::string text);

}  // namespace zelutil::prefs

#endif
