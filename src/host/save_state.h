#ifndef ZELUTIL_HOST_SAVE_STATE_H
#define ZELUTIL_HOST_SAVE_STATE_H

#include <cstdint>
#include <set>

#include "host/action_restore.h"

namespace zelutil::host {

/// What this process remembers of its saves. The catalogue of the settings remembers what concerns these.
struct SaveState {
    ActionsBase actions;
    /// Actions that were reset and whose entries no save has taken out of the file yet.
    std::set<int> resetActions;
    /// The load of the actions for which they were.
    std::uint64_t resetLoad = 0;
    /// Whether a save of this process has written the file, wherever that is.
    bool hasWritten = false;
};

/// Returns the state of this process.
SaveState& saveState();

}  // namespace zelutil::host

#endif
