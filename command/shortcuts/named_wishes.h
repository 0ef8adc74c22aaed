#ifndef ZELUTIL_COMMAND_SHORTCUTS_NAMED_WISHES_H
#define ZELUTIL_COMMAND_SHORTCUTS_NAMED_WISHES_H

#include <map>
#include <string>
#include <vector>

#include "actions/action_catalogue.h"
#include "command/shortcuts/wish_plan.h"
#include "command/shortcuts/wish_text.h"

/// Finds the actions that wishes are for.
namespace zelutil::shortcuts {

/// A wish, or what stands in its place, that is left out, and why.
struct SkippedWish {
    int place = 0;
    /// 0 where no action was found.
    int action = 0;
    std::string text;
    /// Says what to do instead; empty where nothing is known.
    std::string advice = {};
};

/// The wishes by action. An action that has a parent takes over its parent's shortcut, so it has none of its own.
struct NamedWishes {
    std::vector<KeyWish> keys;
    std::map<int, bool> menuFlags;
    std::vector<SkippedWish> skipped;
    /// The places of the wishes, by action.
    std::map<int, int> places;
};

/// Finds the action of each wish: the one of its id, unless the wish names another context or command than that one
/// has; else the one of its context and command. An element that cannot be read is among those left out.
NamedWishes nameWishes(const WishText& text, const actions::ActionCatalogue& catalogue);

/// Returns "line 3" or "element 3".
std::string placeIn(const WishText& text, int place);

}  // namespace zelutil::shortcuts

#endif
