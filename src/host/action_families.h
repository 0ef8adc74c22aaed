#ifndef ZELUTIL_HOST_ACTION_FAMILIES_H
#define ZELUTIL_HOST_ACTION_FAMILIES_H

#include "host/action_state.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelutil::host {

/// One shipped action.
struct ShippedAction {
    int id = 0;
    /// 0 for a top-level action. No shipped text need define it.
    int parent = 0;
    std::string context;
    std::string command;
    ActionValues values;
    /// In the order of the text.
    std::vector<int> children;
    /// The number of actions above it; 0 also in and below a circle of parents.
    std::size_t depth = 0;
};

/// The shipped actions, as their text defines them and as a load leaves them.
class ShippedActions {
public:
    explicit ShippedActions(std::string_view text);

    const std::string& text() const { return text_; }

    /// In the order of the text.
    const std::vector<ShippedAction>& inOrder() const { return actions_; }

    /// Null for an id that the text does not define.
    const ShippedAction* find(int id) const;

    /// The state that a load of the text alone brings about.
    const ActionState& loaded() const { return loaded_; }

    /// The topmost action above the action, or the action where it is that, where its parents go round in a circle and
    /// where its parent is missing.
    int topAbove(int id) const;

    /// Whether the action has what its parent has after every load, whatever the user's text says.
    bool alwaysFollows(const ShippedAction& action) const;

private:
    void add(const ShippedAction& action);
    void linkChildren();
    void measureDepths();

    std::string text_;
    std::vector<ShippedAction> actions_;
    std::unordered_map<int, std::size_t> places_;
    ActionState loaded_;
};

/// Returns the text that defines only these actions.
std::string shippedTextOf(const std::vector<const ShippedAction*>& actions);

/// Actions that can stand in each other's way, ascending. Actions of different groups never do.
using ActionGroup = std::vector<int>;

/// Returns the groups of the actions on all ways from what is shipped to the aim.
std::vector<ActionGroup> groupsOf(const ShippedActions& shipped, const ActionState& aim);

}  // namespace zelutil::host

#endif
