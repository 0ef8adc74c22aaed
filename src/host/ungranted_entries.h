#ifndef ZELUTIL_HOST_UNGRANTED_ENTRIES_H
#define ZELUTIL_HOST_UNGRANTED_ENTRIES_H

#include "actions/action_catalogue.h"
#include "host/action_entries.h"
#include "host/action_families.h"
#include "host/action_state.h"

#include <set>

namespace zelutil::host {

/// Returns the entries of a file whose shortcuts were refused, because another action held them; `loaded` is the state
/// after the load of the file. The actions `replaced` are passed over. So are children: they follow their parents, and
/// an entry for one may only make room for others during the load.
///
/// An example is {"id":1,"shortcut":"Ctrl+O"}, where action 3 is shipped with Ctrl+O. The user asked for it all the
/// same, and may get it from a later version.
ActionEntries ungrantedEntries(const ShippedActions& shipped, const ActionEntries& inFile, const ActionState& loaded,
                               const std::set<int>& replaced);

/// Adds to the entries as many of the ungranted ones as leave what a load of them brings about as it is. Returns
/// whether none is left out. An action that the entries give a shortcut has no need of another.
bool keepUngranted(const actions::ActionCatalogue& current, const ActionEntries& ungranted, ActionEntries& entries);

}  // namespace zelutil::host

#endif
