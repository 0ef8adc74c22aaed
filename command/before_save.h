#ifndef ZELUTIL_COMMAND_BEFORE_SAVE_H
#define ZELUTIL_COMMAND_BEFORE_SAVE_H

#include <zelutil/host/result.h>

#include <optional>
#include <string>

#include "command/explain/unread_user_file.h"
#include "command/output.h"

namespace zelutil::command {

/// Holds what a save changes of the places that it writes to, as it was before.
struct BeforeSave {
    /// The user's file of which nothing was read, which a save replaces.
    std::optional<UnreadUserFile> unread;
    /// The topmost directory above the file that was not there, in the system's own spelling; empty for none.
    std::string missingDirectory;
};

/// Looks at the user's file that was read and at the one that a save would write.
BeforeSave lookBeforeSave();

/// Returns the directory that was made; empty for none.
std::string madeDirectory(const BeforeSave& before);

/// Has a warning of an unread file, which `output` was told at the start, say what the save has made of that file.
void putRight(const BeforeSave& before, const host::SaveResult& result, Output& output);

}  // namespace zelutil::command

#endif
