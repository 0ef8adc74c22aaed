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

/// An action without a wish that loses shortcuts or comes to hold some, which it shows all the same.
struct SideEffect {
    int action = 0;
    std::vector<std::string> lost;
    std::vector<std::string> gained;
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
    /// All who are in the way of wishes and are not moved by one: they have no wish, or are to have the shortcut by
    /// one.
    std::vector<InTheWay> inTheWay;
    /// The actions whose wishes are to be left out for the others, ascending, and who is in their way: those of
    /// `inTheWay`, and actions whose wishes are left out, too. Where nobody is known to be, all that are not granted.
    std::vector<int> refused;
    std::vector<InTheWay> becauseOf;
    /// Lists the actions that no wish is for and that hold something else after the edits, ascending. Children that
    /// follow a wish do not count.
    std::vector<SideEffect> sideEffects;
};

/// Plans edits of the actions with a wish, and of no others, from what is in force in the catalogue, which stays as it
/// is. Each action has one wish at most, and none has a parent.
///
/// An order is found by giving what can be given until all have to wait. Where they wait for each other, in circles,
/// the fewest of them that break all circles first lose what they have; `kMostBreaks` limits the search for them. It is
/// proved that there is no order where somebody is in the way who has no wish, or where two are to have the same and
/// their families are plain, as plain_wishes.h says.
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

/// So many waiting actions may be looked at, each as often as it is, for the fewest that break all circles.
inline constexpr std::size_t kMostBreaks = 200000;

}  // namespace zelutil::shortcuts

#endif
