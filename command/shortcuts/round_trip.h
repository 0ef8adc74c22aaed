#ifndef ZELUTIL_COMMAND_SHORTCUTS_ROUND_TRIP_H
#define ZELUTIL_COMMAND_SHORTCUTS_ROUND_TRIP_H

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/result.h>
#include <zelutil/host/start.h>

#include <map>
#include <string>
#include <vector>

#include "command/shortcuts/unread_actions.h"
#include "command/shortcuts/wish_plan.h"

/// Tells what of the user's shortcuts and menu flags a restart does not bring back. Nothing is written.
namespace zelutil::shortcuts {

struct RoundTrip {
    /// Lists the entries of the user's file that did nothing at the last start.
    std::vector<host::StartWarning> withoutEffect;
    /// The shortcuts and menu flags that entries ask for, read or not, and that their actions do not have, and the way
    /// to those that can be had.
    std::vector<KeyWish> wishes;
    std::map<int, bool> menuWishes;
    PartialPlan cure;
    /// Lists what is in force now and would not come back after a save of the library.
    std::vector<host::NotRestored> notRestored;
    /// The actions of which a host that saves by the old calls, as docs/saving-by-the-old-calls.md has it, would lose
    /// something.
    std::vector<int> lostByOldCalls;
    /// The user's text for the actions that brings back what is in force.
    std::string text;
};

/// Returns this for the actions as they are loaded and edited now, and for what the file has for them beside.
RoundTrip roundTrip(const UCPActionManager& manager, const UnreadActions& unread);

}  // namespace zelutil::shortcuts

#endif
