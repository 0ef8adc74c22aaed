#ifndef ZELUTIL_TESTS_SUPPORT_ACTION_WORLD_H
#define ZELUTIL_TESTS_SUPPORT_ACTION_WORLD_H

#include "support/action_twin.h"

#include <array>
#include <random>
#include <string>
#include <vector>

namespace zelutil::test {

// The small stock from which random actions are made, so that ids, commands and shortcuts collide often.

/// 0 and -1 are no ids of actions; 1 to 6 may be defined, 7 and 8 only be named as parents.
inline constexpr std::array<int, 10> kWorldIds = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8};
extern const std::array<std::string, 4> kWorldContexts;
extern const std::array<std::string, 5> kWorldCommands;
extern const std::array<std::string, 4> kWorldShortcuts;

/// A shipped and a user's text, and what they mean.
struct ActionWorld {
    std::string defaultsText;
    std::string userText;
    std::vector<TwinDefinition> definitions;
    std::vector<TwinUserEntry> entries;
};

using Random = std::mt19937;

/// 0 to `count` - 1, the same on every platform.
int below(Random& random, int count);

/// One of the stock.
template <typename Stock>
const auto& oneOf(Random& random, const Stock& stock) {
    return stock[static_cast<std::size_t>(below(random, static_cast<int>(stock.size())))];
}

/// Conflicting shortcuts, chains, circles and missing parents, members that lack or have a wrong type, and texts of
/// a wrong shape.
ActionWorld randomActionWorld(Random& random);

}  // namespace zelutil::test

#endif
