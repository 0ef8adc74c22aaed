#ifndef ZELUTIL_HOST_ACTION_RESET_H
#define ZELUTIL_HOST_ACTION_RESET_H

#include <zelutil/host/result.h>

#include "actions/action_catalogue.h"

#include <set>
#include <vector>

/// Going back to what is shipped.
namespace zelutil::host {

/// The outcome of a reset.
struct ActionsReset {
    /// The actions that were reset and those that follow them. A plan has to count them as touched.
    std::set<int> touched;
    /// The actions that keep what they have, because another one stands in the way. So do all below them.
    std::vector<NotRestored> refused;
};

/// Gives the actions of these ids, and those below them, what a load of the shipped text alone gives them; a child
/// whose parent is not among them gets what its parent has. An action that cannot have that keeps what it has, and no
/// other one changes. Edits the catalogue, so that observers hear of it.
ActionsReset resetActions(actions::ActionCatalogue& catalogue, const std::vector<int>& ids);

/// The same for all actions.
ActionsReset resetAllActions(actions::ActionCatalogue& catalogue);

}  // namespace zelutil::host

#endif
