#ifndef ZELUTIL_COMMAND_SHORTCUTS_BREAK_CIRCLES_H
#define ZELUTIL_COMMAND_SHORTCUTS_BREAK_CIRCLES_H

#include <cstddef>
#include <map>
#include <set>

namespace zelutil::shortcuts {

/// Maps the id of each action that waits to those that it waits for.
using Waiting = std::map<int, std::set<int>>;

struct Breaks {
    /// Nobody waits in a circle once these have given way.
    std::set<int> ids;
    /// Whether no smaller set does.
    bool isFewest = true;
};

/// Returns the fewest who break all circles. Where that takes a look at more than `most` of those who wait, counted as
/// often as they are looked at, it returns some who do.
Breaks breakCircles(const Waiting& waiting, std::size_t most);

}  // namespace zelutil::shortcuts

#endif
