#ifndef ZELUTIL_HOST_ACTION_STATE_H
#define ZELUTIL_HOST_ACTION_STATE_H

#include "actions/action_catalogue.h"
#include "host/action_restore.h"

#include <map>
#include <set>
#include <string>
#include <utility>

namespace zelutil::host {

/// All that queries can find out about the actions and that a user can change.
struct ActionState {
    using Place = std::pair<std::string, std::string>;

    /// By the id under which the action stands.
    std::map<int, ActionValues> values;
    /// The holder of each shortcut, by context and shortcut.
    std::map<Place, int> holders;
};

ActionState stateOf(const actions::ActionCatalogue& catalogue);

/// Returns the values of the action, and empty ones for an id that the state lacks.
const ActionValues& valuesOf(const ActionState& state, int id);

/// Returns the actions of which a query returns something else in the second state. Menu flags do not count.
std::set<int> differentKeys(const ActionState& aim, const ActionState& other);

/// Returns the actions whose menu flags differ.
std::set<int> differentFlags(const ActionState& aim, const ActionState& other);

}  // namespace zelutil::host

#endif
