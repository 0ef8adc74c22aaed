#ifndef ZELUTIL_COMMAND_LINT_FILE_KIND_H
#define ZELUTIL_COMMAND_LINT_FILE_KIND_H

#include "json/view.h"

namespace zelutil::lint {

/// The kinds of files that the library reads, the texts for the actions that hosts keep in files of their own, and what
/// the command writes for another installation.
enum class FileKind { Defaults, User, Actions, UserActions, Facets, Profile, Unknown };

/// Tells a file by its content. One member that is misspelt does not make it another.
FileKind kindOf(json::View root);

/// Returns "defaults", "user's preferences" and so on.
const char* nameOf(FileKind kind);

}  // namespace zelutil::lint

#endif
