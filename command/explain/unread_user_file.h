#ifndef ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H
#define ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H

#include <optional>
#include <string>

#include "command/explain/setting_account.h"
#include "command/output.h"

namespace zelutil::command {

/// A user's file that is there and of which nothing was read.
struct UnreadUserFile {
    Finding finding;        ///< Says so, and why.
    std::string condition;  ///< The sentence with the reason.
};

/// Returns the file that this process has not read; nothing where it has, or there is none.
std::optional<UnreadUserFile> unreadUserFile();

/// Returns what is to be told of it once a save has put another file in its place. The copy is where the save has kept
/// it; empty where there was nothing to keep.
Finding findingAfterSave(const UnreadUserFile& unread, const std::string& keptCopy);

/// Tells `output` a user's file that is there and of which nothing is read, and why.
void tellUnreadUserFile(const SettingAccounts& accounts, Output& output);

/// Does the same of the file that this process has read, or not.
void tellUnreadUserFile(Output& output);

/// Returns whether that file is there and was not read, or cannot be looked for.
bool isUserFileUnread();

/// Returns whether the library has no way to the file of that path: a blank has put the path in quotes, and the file is
/// there, or nothing can have that path here, as the empty one.
bool isOutOfReach(const std::string& path);

/// Returns whether a file may be where nobody can look: behind a link to nothing through which a save makes none, as a
/// link to a share that is not mounted, or under a name that is too long. The library takes it as missing.
bool isHidden(const std::string& path);

/// Says what somebody does whose user's file has such a path.
std::string adviceOnUserPath(const std::string& path);

}  // namespace zelutil::command

#endif
