#ifndef ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H
#define ZELUTIL_COMMAND_EXPLAIN_UNREAD_USER_FILE_H

#include "command/explain/setting_account.h"
#include "command/output.h"

namespace zelutil::command {

/// Tells `output` a user's file that is there and of which nothing is read, and why.
void tellUnreadUserFile(const SettingAccounts& accounts, Output& output);

}  // namespace zelutil::command

#endif
