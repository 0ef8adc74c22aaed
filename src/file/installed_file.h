#ifndef ZELUTIL_FILE_INSTALLED_FILE_H
#define ZELUTIL_FILE_INSTALLED_FILE_H

#include <zelutil/file/path.h>

#include <string>

#include "text/search_trace.h"

namespace zelutil::file {

/// The path, to be opened as it is, of the shipped settings file `name` in the installation tree. Empty when there is
/// none, and when there is no installation: the message about that is printed, no exception leaves.
std::string installedSettingsFile(const char* name);

/// Does the same for the installation in `root`, null for none, and tells the trace the candidates. Nothing is printed.
std::string installedSettingsFile(const char* name, const ZelU::File::Path* root, text::SearchTrace& trace);

/// Returns where that file is looked for below a root, whether it is there or not.
ZelU::File::Path placeOfSettingsFile(const ZelU::File::Path& root, const char* name);

}  // namespace zelutil::file

#endif
