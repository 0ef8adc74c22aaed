#ifndef ZELUTIL_HOST_ACTION_LOSS_H
#define ZELUTIL_HOST_ACTION_LOSS_H

#include "host/action_families.h"

#include <cstddef>
#include <set>

namespace zelutil::host {

/// Holds what the merge knows beside the aim.
struct ActionsKnown {
    /// The ids of the actions that were changed here since the file was last shared.
    std::set<int> changedHere;
    /// Holds the ids of those whose shortcut was changed, and not the menu flag alone.
    std::set<int> shortcutChangedHere;
    /// The ids of the actions that have what the aim wants here and in the file.
    std::set<int> settled;
};

/// Counts how much of a group does not come back. Of two losses the one is smaller whose first different count is
/// smaller.
struct Loss {
    /// Settled actions, in a group of which nothing was changed here: such a save changes nothing for the worse.
    std::size_t settled = 0;
    /// Top-level actions that show another shortcut than the one that the user chose.
    std::size_t chosenShortcuts = 0;
    /// Top-level actions that the user changed.
    std::size_t chosen = 0;
    std::size_t all = 0;

    /// Returns a number that is smaller for a smaller loss, and 0 for none. The group has at most `most` actions.
    std::size_t rank(std::size_t most) const;
};

bool operator<(const Loss& left, const Loss& right);

/// Lists what a load does not bring back of one group.
struct LostActions {
    /// The actions whose shortcuts do not come back, those of them for which the user chose another shortcut than they
    /// show then, and the actions of which anything does not come back.
    std::set<int> keys;
    std::set<int> chosenShortcuts;
    std::set<int> all;
    Loss loss;
};

/// Returns those of the ids that are in the group.
std::set<int> among(const std::set<int>& ids, const ActionGroup& group);

/// Compares what loads bring about with an aim.
class LossJudge {
public:
    LossJudge(const ShippedActions& shipped, const ActionState& aim, const ActionsKnown& known);

    /// Returns what is lost of the group. The shortcuts of the actions `different` are not those of the aim.
    LostActions lostOf(const ActionGroup& group, const ActionState& reached, const std::set<int>& different) const;

    /// Returns what is lost of one group and of another, whose actions it then has too.
    LostActions joined(const ActionGroup& both, LostActions first, const LostActions& second) const;

    /// Whether less than that might be lost.
    bool isOpen(const LostActions& lost) const;

private:
    void weigh(const ActionGroup& group, LostActions& lost) const;
    bool isSettled(const ActionGroup& group) const;

    const ShippedActions& shipped_;
    const ActionState& aim_;
    const ActionsKnown& known_;
    /// The top-level actions whose shortcuts are not the shipped ones, and those of which anything is not.
    std::set<int> chosenShortcuts_;
    std::set<int> chosen_;
};

}  // namespace zelutil::host

#endif
