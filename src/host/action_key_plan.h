#ifndef ZELUTIL_HOST_ACTION_KEY_PLAN_H
#define ZELUTIL_HOST_ACTION_KEY_PLAN_H

#include "host/action_entries.h"
#include "host/action_families.h"

#include <map>

/// Entries that bring shortcuts back.
namespace zelutil::host {

/// Says how far to go for a group of actions. Each is tried where the ones before do not bring all back.
enum class Effort {
    /// Names the changed top-level actions, ascending.
    Plain,
    /// Gives shortcuts in an order in which each is accepted, and takes one away first where actions wait for each
    /// other in a circle.
    Ordered,
    /// Then gives them again where another action holds them.
    Repaired,
    /// First has actions lose shortcuts that they show and do not hold, as long as one that is shipped with the same
    /// can take them away by leaving.
    Unheld,
    /// Takes all away first.
    Thorough,
    /// The same from the last action to the first.
    ThoroughBackwards,
    /// `Unheld` from the last action to the first.
    UnheldBackwards,
};

inline constexpr Effort kEfforts[] = {Effort::Plain,          Effort::Ordered,  Effort::Repaired,
                                      Effort::Unheld,         Effort::Thorough, Effort::ThoroughBackwards,
                                      Effort::UnheldBackwards};

/// Returns the entries for the changed top-level actions.
ActionEntries plainEntries(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group);

/// Edits the actions of a group so that they get what they have in the aim. The catalogue is one in the middle of
/// `ActionCatalogue::loadAndEdit`. Returns the edits.
ActionEntries editTowards(actions::ActionCatalogue& catalogue, const ShippedActions& shipped, const ActionState& aim,
                          const ActionGroup& group, Effort effort);

/// Edits the actions of a group, of a catalogue as it is in force, so that they get what they have in the aim, as far
/// as no action outside the group is in the way.
void editBack(actions::ActionCatalogue& catalogue, const ShippedActions& shipped, const ActionState& aim,
              const ActionGroup& group);

/// Applies entries as a load does.
void applyEntries(actions::ActionCatalogue& catalogue, const ActionEntries& entries);

}  // namespace zelutil::host

#endif
