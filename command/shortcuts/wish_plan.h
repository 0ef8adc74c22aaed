#ifndef ZELUTIL_COMMAND_SHORTCUTS_WISH_PLAN_H
#define ZELUTIL_COMMAND_SHORTCUTS_WISH_PLAN_H

#include <zelutil/host/result.h>

#include <string>
#include <vector>

#include "actions/action_catalogue.h"

/// Finds the order in which the library accepts the shortcuts that are wished for.
namespace zelutil::shortcuts {

/// An action and the shortcut that it is to have, empty for none; or an edit that gives or takes it away.
struct KeyWish {
    int action = 0;
    std::string shortcut;
};

/// Somebody who is in the way of a wish and whom no wish moves.
struct InTheWay {
    int action = 0;  ///< The one with the wish.
    std::string shortcut;
    int asked = 0;  ///< The same, or the one below it that could not follow.
    int holder = 0;
};

struct WishPlan {
    enum class Outcome {
        Possible,
        Impossible,  ///< `inTheWay` says why.
        Unknown,     ///< No order was found, and there may be one.
    };

    Outcome outcome = Outcome::Possible;
    /// The edits, in an order in which the library accepts each; the empty shortcut takes one away. None but for
    /// `Possible`.
    std::vector<KeyWish> edits;
    /// Whether it is certain that fewer edits of these actions do not do.
    bool isMinimal = false;
    /// All who are in the way of wishes and are not moved by one: they have no wish, or have got the shortcut by one.
    std::vector<InTheWay> inTheWay;
    /// The actions whose wishes are not granted, some of them only because others are not.
    std::vector<int> refused;
    /// Lists the actions that no wish is for and for which a look-up finds something else after the edits, ascending.
    /// Children that follow a wish do not count.
    std::vector<int> sideEffects;
};

/// Plans edits of the actions with a wish, and of no others, from what is in force in the catalogue, which stays as it
/// is. Each action has one wish at most, and none has a parent.
///
/// An order is found by giving what can be given until all have to wait. Whoever waits for an action without an open
/// wish waits in vain. Where all wait for each other, in circles, the fewest of them that break all circles first lose
/// what they have; up to `kMostBreaks` sets are looked at for that.
WishPlan planWishes(const actions::ActionCatalogue& current, const std::vector<KeyWish>& wishes);

/// Returns the actions that no save brings back as they are after these edits.
std::vector<host::NotRestored> notRestoredAfter(const actions::ActionCatalogue& current,
                                                const std::vector<KeyWish>& edits);

/// The plan for those of the wishes that can be granted together, and who was in the way of the others.
struct PartialPlan {
    WishPlan plan;
    std::vector<InTheWay> inTheWay;
    std::vector<int> refused;
};

/// Leaves out the wishes with somebody in the way, until an order is found for the others.
PartialPlan planWhatCanBe(const actions::ActionCatalogue& current, std::vector<KeyWish> wishes);

inline constexpr std::size_t kMostBreaks = 20000;

}  // namespace zelutil::shortcuts

#endif
