#ifndef ZELUTIL_COMMAND_SHORTCUTS_PLAIN_WISHES_H
#define ZELUTIL_COMMAND_SHORTCUTS_PLAIN_WISHES_H

#include <set>
#include <vector>

#include "actions/action_catalogue.h"
#include "command/shortcuts/wish_plan.h"
#include "host/action_families.h"

/// Tells where a proof about wishes is easy. An edit of the topmost action moves a plain family as a whole: it leaves
/// one shortcut everywhere and gets another one everywhere, or is refused.
namespace zelutil::shortcuts {

/// Returns whether the families of these topmost actions are plain. None of a plain family
///
/// - shares its command with an action before it, or a keyboard with one of the family that is neither its parent nor
///   its child;
/// - is bound to a shortcut that a stranger or nobody holds, or to which its parent is not bound. One that could not
///   follow its parent may be bound to none. The topmost one is bound to what it shows.
bool arePlain(const actions::ActionCatalogue& catalogue, const host::ShippedActions& shipped,
              const std::set<int>& tops);

/// Returns whether nobody of these families is bound to a shortcut that a stranger holds. One who were would take it
/// from the stranger by leaving it; otherwise strangers keep what they hold, whatever is edited of these families.
bool leaveStrangersAlone(const actions::ActionCatalogue& catalogue, const host::ShippedActions& shipped,
                         const std::set<int>& tops);

/// Returns whether all of these families are bound to what they show: everybody has followed the parent.
bool haveAllFollowed(const actions::ActionCatalogue& catalogue, const host::ShippedActions& shipped,
                     const std::set<int>& tops);

/// Returns the wishes of plain families, of whom all have followed, that are for the shortcut of a wish before them,
/// whose family has it on a keyboard of theirs, and so can never be granted beside that one.
std::vector<InTheWay> clashesOf(const std::vector<KeyWish>& wishes, const host::ShippedActions& shipped);

}  // namespace zelutil::shortcuts

#endif
