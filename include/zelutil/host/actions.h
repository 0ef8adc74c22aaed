#ifndef ZELUTIL_HOST_ACTIONS_H
#define ZELUTIL_HOST_ACTIONS_H

#include <zelutil/actions/action_item.h>
#include <zelutil/export.h>

#include <optional>
#include <string>
#include <vector>

namespace zelutil::host {

/// Tells where the shortcut of an action comes from.
enum class ShortcutSource {
    /// It is the shipped one.
    Shipped,
    /// The user gave it, or took it away. An action that has a parent was edited alone then, until the next load.
    User,
    /// The action has a parent, which decides about its shortcut.
    Parent,
    /// No shipped text defines the action: it stands in for a parent that is missing.
    StandIn,
};

/// One action, as it is now.
struct ActionInfo {
    /// The id under which it is found. `item.id` is 0 for one that stands in for a missing parent.
    int id = 0;
    /// The action as `UCPActionManager::getAction` copies it.
    UCPActionItem item;
    /// The shortcut in force, which the action shows; empty for none.
    std::string shortcut;
    /// The shipped one, before the action took over its parent's.
    std::string shippedShortcut;
    /// Whether the right-mouse-button menu shows the action.
    bool inMenu = false;
    /// Whether the menu shows it as shipped, before it took over its parent's flag.
    bool shippedInMenu = false;
    /// Tells where the shortcut comes from.
    ShortcutSource source = ShortcutSource::Shipped;
    /// Whether the shortcut runs this action in its context: false when there is none, and when another action holds
    /// it there.
    bool runs = false;
    /// The action that holds the shortcut instead; 0 for none.
    int heldBy = 0;
};

// These make the first use of the preferences, which loads the actions, where nothing has loaded them yet. While the
// preferences are being made, and when they have been destroyed, there may be no actions.

/// Returns every action, ascending by id.
ZELUTIL_API std::vector<ActionInfo> actions();

/// Returns the action of that id; nothing for an unknown one. For a child the shipped text is read again, so who wants
/// many asks `actions`.
ZELUTIL_API std::optional<ActionInfo> action(int id);

}  // namespace zelutil::host

#endif
