#ifndef ZELUTIL_HOST_ACTION_AIM_PLAN_H
#define ZELUTIL_HOST_ACTION_AIM_PLAN_H

#include "host/action_entries.h"
#include "host/action_families.h"
#include "host/action_loss.h"

#include <vector>

namespace zelutil::host {

/// Entries for an aim, and what they miss.
struct AimPlan {
    ActionEntries entries;
    std::vector<NotRestored> notRestored;
};

/// Returns the fewest entries found that bring about the aim, tried out by loads of a catalogue of its own. Where not
/// all can come back, what the user chose for top-level actions goes before what follows from it, and then the number
/// of actions counts. The entries `inFile` that the file has now are tried too, and where nothing simpler brings all
/// back, a search may take as many loads.
AimPlan planAim(const ShippedActions& shipped, const ActionState& aim, const ActionsKnown& known,
                const ActionEntries& inFile, std::size_t searchLoads);

}  // namespace zelutil::host

#endif
