#ifndef ZELUTIL_HOST_ACTION_MERGE_H
#define ZELUTIL_HOST_ACTION_MERGE_H

#include "host/action_families.h"
#include "host/action_loss.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace zelutil::host {

using ActionValuesById = std::map<int, ActionValues>;

/// Holds what two processes have made of the actions.
struct ActionSides {
    /// In force here: now, and when this process last shared the file.
    const ActionState& here;
    const ActionValuesById& hereBefore;
    /// The state that the file was to bring about then.
    ActionState aimBefore;
    /// The states that the file brings about: now, and then.
    const ActionState& file;
    const ActionState& fileBefore;
    /// Counts as changed here.
    const std::set<int>& touched;
};

struct MergedActions {
    ActionState aim;
    std::vector<Conflict> conflicts;
    /// The actions for which the aim is not what is in force here.
    std::vector<int> ofOthers;
    ActionsKnown known;
};

/// Merges action by action, the shortcut and the menu flag each for itself: what was changed here stays, else what was
/// changed in the file. Where both want one shortcut for different actions, the action of the other process goes back
/// to what the file had for it before, to what it has here or to what it is shipped with, whatever is free first; else
/// it has none.
MergedActions mergeActions(const ShippedActions& shipped, const ActionSides& sides);

}  // namespace zelutil::host

#endif
