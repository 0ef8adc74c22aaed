#ifndef ZELUTIL_HOST_ACTION_AIM_PLAN_H
#define ZELUTIL_HOST_ACTION_AIM_PLAN_H

#include "host/action_entries.h"
#include "host/action_families.h"

#include <vector>

namespace zelutil::host {

/// Entries for an aim, and what they miss.
struct AimPlan {
    ActionEntries entries;
    std::vector<NotRestored> notRestored;
};

/// Returns the fewest entries found that bring about the aim, tried out by loads of a catalogue of its own.
/// Where nothing simpler brings all back, a search may take as many loads.
AimPlan planAim(const ShippedActions& shipped, const ActionState& aim, std::size_t searchLoads);

}  // namespace zelutil::host

#endif
