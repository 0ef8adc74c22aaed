#ifndef ZELUTIL_COMMAND_HTML_PREFERENCE_PLACES_H
#define ZELUTIL_COMMAND_HTML_PREFERENCE_PLACES_H

#include <filesystem>

namespace zelutil::command {

/// Returns whether the path is one of the files that hold preferences: the user's file as it is read and as it is
/// written, what saves keep and leave beside it, the shipped defaults and the facets. None of them need be there, and
/// any file that has such a name counts, since it may be that of another installation or user. Links are followed.
bool isPlaceOfPreferences(const std::filesystem::path& path);

}  // namespace zelutil::command

#endif
