#ifndef ZELUTIL_TESTS_HOST_ACTION_WORLDS_H
#define ZELUTIL_TESTS_HOST_ACTION_WORLDS_H

#include "actions/action_catalogue.h"

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Small random catalogues of actions, what users do with them, and what queries return of them.
namespace zelutil::test {

/// One action of a shipped text.
struct Shipped {
    int id = 0;
    int parent = 0;
    std::string context;
    std::string command;
    std::string shortcut;
    bool inMenu = false;
};

/// Says what random catalogues are made of.
struct Kind {
    int actions = 6;
    int contexts = 2;
    int shortcuts = 4;
    /// In hundred actions.
    int withParent = 0;
    int withMissingParent = 0;
    int withSharedCommand = 0;
    /// Whether two actions of one context, or of linked ones, may be shipped with one shortcut.
    bool shippedTwice = false;
    bool linked = false;
    /// Whether parents may have higher ids than their children.
    bool mixedIds = false;
    /// Whether children are edited themselves, too.
    bool editChildren = false;
};

using ActionRandom = std::mt19937;

int numberBelow(ActionRandom& random, int count);
std::vector<Shipped> randomShipped(ActionRandom& random, const Kind& kind);
std::string shippedText(const std::vector<Shipped>& shipped);

/// Edits the actions as a user would, so that about as many edits are accepted as asked for.
void editAtRandom(ActionRandom& random, actions::ActionCatalogue& catalogue, const std::vector<Shipped>& shipped,
                  const Kind& kind, int edits);

/// Writes down what all queries return of each action: the shortcuts that it holds, the commands that these run, its
/// shortcut, and after "#" its menu flag.
using Answers = std::map<int, std::string>;

Answers answersOf(const actions::ActionCatalogue& catalogue, const std::vector<Shipped>& shipped);

}  // namespace zelutil::test

#endif
