#ifndef ZELUTIL_COMMAND_SHORTCUTS_UNREAD_ACTIONS_H
#define ZELUTIL_COMMAND_SHORTCUTS_UNREAD_ACTIONS_H

#include <zelutil/host/start.h>

#include <string>
#include <vector>

namespace zelutil::shortcuts {

/// Holds what the user's file says of the actions and nobody reads: only the first section of the actions is read.
struct UnreadActions {
    std::vector<host::StartWarning> warnings;  ///< Those of the start that concern it.
    std::vector<std::string> values;           ///< JSON texts, in the order of the file.
};

/// Reads the user's file again and returns what later sections of the actions hold; nothing where there are none.
UnreadActions unreadActions();

}  // namespace zelutil::shortcuts

#endif
