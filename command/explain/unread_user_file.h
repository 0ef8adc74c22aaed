#ifndef ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H
#define ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H

#include <string>

#include "command/explain/setting_account.h"
#include "command/output.h"

namespace zelutil::command {

/// Tells `output` a user's file that is there and of which nothing is read, and why.
void tellUnreadUserFile(const SettingAccounts& accounts, Output& output);

/// Does the same of the file that this process has read, or not.
void tellUnreadUserFile(Output& output);

/// Returns whether that file is there and was not read, or cannot be looked for.
bool isUserFileUnread();

/// Returns whether the library has no way to the file of that path: a blank has put the path in quotes, and the file is
/// there, or nothing can have that path here, as the empty one.
bool isOutOfReach(const std::string& path);

/// Says what somebody does whose user's file has such a path.
std::string adviceOnUserPath(const std::string& path);

}  // namespace zelutil::command

#endif
