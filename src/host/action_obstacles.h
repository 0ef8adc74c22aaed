#ifndef ZELUTIL_HOST_ACTION_OBSTACLES_H
#define ZELUTIL_HOST_ACTION_OBSTACLES_H

#include <zelutil/host/result.h>

#include "host/action_entries.h"
#include "host/action_families.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::host {

/// Returns the context that is linked with this one, or the context itself.
std::string linkedContext(const std::string& context);

/// Returns one name for the contexts that are linked.
std::string_view keyboardOf(std::string_view context);

/// Whether it is clear without a search that no entries bring the action back together with all that are not `lost`: it
/// follows a missing parent, or one that is not lost and has something else.
bool followsAnother(const ShippedActions& shipped, const ActionState& aim, const std::set<int>& lost, int id);

/// Returns why a load leaves the action as in `reached` and not as in the aim.
NotRestored obstacleOf(const ShippedActions& shipped, const ActionState& aim, const ActionState& reached, int id);

/// Returns what a load of the entries does not bring back of the aim.
std::vector<NotRestored> notRestoredBy(const ShippedActions& shipped, const ActionState& aim,
                                       const ActionEntries& entries);

}  // namespace zelutil::host

#endif
