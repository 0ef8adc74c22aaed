#ifndef ZELUTIL_TESTS_SUPPORT_ACTION_WORLD_H
#define ZELUTIL_TESTS_SUPPORT_ACTION_WORLD_H

#include "support/action_twin.h"

#include <random>
#include <string>
#include <vector>

namespace zelutil::test {

/// Random actions are made from this, and this is asked and edited.
struct ActionStock {
    /// 0 and -1 are no ids of actions, and the last two are defined by no text.
    std::vector<int> ids;
    std::vector<std::string> contexts;
    std::vector<std::string> commands;
    std::vector<std::string> shortcuts;
};

/// So small that ids, commands and shortcuts collide often.
const ActionStock& smallStock();

/// With a context and a shortcut for each action.
const ActionStock& familyStock();

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

/// Draws from the small stock: conflicting shortcuts, chains, circles and missing parents, members that lack or have a
/// wrong type, and texts of a wrong shape.
ActionWorld randomActionWorld(Random& random);

/// Draws from the stock for families: long chains and trees with ascending, descending and mixed ids, most actions with
/// a context and a shortcut of their own, some strangers in their way.
ActionWorld randomActionFamilies(Random& random);

}  // namespace zelutil::test

#endif
