#ifndef ZELUTIL_HOST_SAVE_STATE_H
#define ZELUTIL_HOST_SAVE_STATE_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "host/action_restore.h"

namespace zelutil::host {

/// Holds what this process remembers of its saves. The catalogue of the settings remembers what concerns these.
struct SaveState {
    /// The file for which all of this, and the journal of the settings, holds; nothing before the first save.
    std::optional<std::string> path;
    ActionsBase actions;
    /// Actions that were reset and whose entries no save has taken out of the file yet.
    std::set<int> resetActions;
    /// The load of the actions for which they were.
    std::uint64_t resetLoad = 0;
    /// The text for the actions of which the observers of sub-managers were told and that no file has yet.
    std::optional<std::string> toldActions;
};

/// Returns the state of this process.
SaveState& saveState();

}  // namespace zelutil::host

#endif
