#ifndef ZELUTIL_HOST_ACTION_SEARCH_H
#define ZELUTIL_HOST_ACTION_SEARCH_H

#include "host/action_entries.h"
#include "host/action_families.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>

namespace zelutil::host {

/// Measures how bad a state is; 0 where all actions are as they should be.
using Score = std::function<std::size_t(const ActionState& loaded)>;

/// Goes through the states to which entries for one small group can lead, mostly those first that lose least.
class ActionSearch {
public:
    ActionSearch(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group);

    /// Returns the entries that lead to the best state, or nothing when none is better than `atMost`. It ends after
    /// `loads` loads, which it subtracts.
    std::optional<ActionEntries> best(const Score& score, std::size_t atMost, std::size_t& loads) const;

private:
    ActionGroup group_;
    /// The shipped text of the group alone.
    std::string text_;
    ActionEntries steps_;
};

}  // namespace zelutil::host

#endif
