#ifndef ZELUTIL_COMMAND_SHORTCUTS_UNREAD_ACTIONS_H
#define ZELUTIL_COMMAND_SHORTCUTS_UNREAD_ACTIONS_H

#include <zelutil/host/start.h>

#include <string>
#include <vector>

namespace zelutil::shortcuts {

/// What the user's file has for the actions beside the value that is read: that of the first section.
struct UnreadActions {
    std::vector<host::StartWarning> warnings;  ///< Those of the start that concern it.
    std::vector<std::string> values;           ///< JSON texts, in the order of the file.
};

UnreadActions unreadActions();

}  // namespace zelutil::shortcuts

#endif
