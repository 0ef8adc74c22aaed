#ifndef ZELUTIL_HOST_ACTION_MENU_PLAN_H
#define ZELUTIL_HOST_ACTION_MENU_PLAN_H

#include "host/action_entries.h"
#include "host/action_families.h"

#include <set>

namespace zelutil::host {

/// Returns the entries that bring the menu flags of the actions of a group back. Where one flag can be brought back
/// only for some, those lose that are in `lost` already.
ActionEntries menuEntries(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group,
                          const std::set<int>& lost);

/// Returns the actions of the group whose flags these entries do not bring back.
std::set<int> lostFlags(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group,
                        const std::set<int>& lost);

}  // namespace zelutil::host

#endif
