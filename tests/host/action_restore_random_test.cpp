// Random catalogues, random edits: what the plan of a save does not name is there again after a load.
//
// ZELUTIL_RESTORE_CASES in the environment goes before the number of states that the build gives. A failure prints its
// seed.
#include "host/action_restore.h"
#include "host/action_worlds.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <set>

namespace zelutil::test {
namespace {

using actions::ActionCatalogue;
using actions::ObserverRegistry;
using host::ActionsPlan;

unsigned cases() {
    const char* const given = std::getenv("ZELUTIL_RESTORE_CASES");
    return given == nullptr ? ZELUTIL_RESTORE_CASES : static_cast<unsigned>(std::strtoul(given, nullptr, 10));
}

/// Returns the ids that the plan names.
std::set<int> namedIn(const ActionsPlan& plan) {
    std::set<int> named;
    for (const host::NotRestored& missing : plan.notRestored) {
        named.insert(missing.action);
    }
    return named;
}

struct Tally {
    unsigned states = 0;
    unsigned withNamed = 0;
};

/// Edits a catalogue several times, and after each time a new process must start with what is in force.
void expectRestored(unsigned seed, const Kind& kind, bool nothingNamed, Tally& tally) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    ActionRandom random(seed);
    const std::vector<Shipped> shipped = randomShipped(random, kind);
    const std::string text = shippedText(shipped);
    SCOPED_TRACE(text);
    const ObserverRegistry nobody;
    ActionCatalogue here(nobody);
    ActionCatalogue next(nobody);
    here.load(text, "");
    for (int round = 0; round < 4; ++round) {
        editAtRandom(random, here, shipped, kind, 1 + numberBelow(random, 8));
        const ActionsPlan plan = host::planActions(here, {}, std::nullopt, {}, nothingNamed ? host::kSearchLoads : 200);
        const std::set<int> named = namedIn(plan);
        ++tally.states;
        tally.withNamed += named.empty() ? 0 : 1;
        if (nothingNamed) {
            ASSERT_TRUE(named.empty()) << plan.notRestored.front().text << "\n" << plan.text;
        }
        next.load(text, plan.text);
        const Answers before = answersOf(here, shipped);
        for (const auto& [id, answer] : answersOf(next, shipped)) {
            ASSERT_TRUE(named.count(id) != 0 || answer == before.at(id))
                << id << ": " << before.at(id) << " became " << answer << "\n"
                << plan.text;
        }
        if (numberBelow(random, 3) == 0) {
            here.load(text, plan.text);
        }
    }
}

void expectAllRestored(const Kind& kind, bool nothingNamed) {
    Tally tally;
    for (unsigned seed = 1; tally.states < cases() / 10 && !testing::Test::HasFatalFailure(); ++seed) {
        expectRestored(seed, kind, nothingNamed, tally);
    }
    std::cout << tally.states << " states, " << tally.withNamed << " with actions that are named\n";
}

Kind flat() {
    Kind kind;
    kind.contexts = 2;
    return kind;
}

TEST(ActionRestoreRandom, BringsBackFlatActions) { expectAllRestored(flat(), true); }

TEST(ActionRestoreRandom, BringsBackActionsOfLinkedContexts) {
    Kind kind = flat();
    kind.linked = true;
    kind.contexts = 3;
    expectAllRestored(kind, true);
}

TEST(ActionRestoreRandom, BringsBackManyActionsOfOneContext) {
    Kind kind = flat();
    kind.contexts = 1;
    kind.actions = 12;
    kind.shortcuts = 11;
    expectAllRestored(kind, true);
}

TEST(ActionRestoreRandom, BringsBackActionsThatAreShippedTwice) {
    Kind kind = flat();
    kind.shippedTwice = true;
    expectAllRestored(kind, true);
}

TEST(ActionRestoreRandom, BringsBackManyActionsThatAreShippedTwice) {
    Kind kind = flat();
    kind.contexts = 1;
    kind.actions = 12;
    kind.shortcuts = 6;
    kind.shippedTwice = true;
    expectAllRestored(kind, false);
}

TEST(ActionRestoreRandom, BringsBackSharedCommands) {
    Kind kind = flat();
    kind.contexts = 1;
    kind.actions = 4;
    kind.shortcuts = 3;
    kind.withSharedCommand = 40;
    expectAllRestored(kind, true);
}

TEST(ActionRestoreRandom, BringsBackParentsWithChildren) {
    Kind kind;
    kind.contexts = 3;
    kind.withParent = 50;
    expectAllRestored(kind, false);
}

TEST(ActionRestoreRandom, BringsBackChildrenThatWereEdited) {
    Kind kind;
    kind.contexts = 3;
    kind.withParent = 50;
    kind.editChildren = true;
    expectAllRestored(kind, false);
}

TEST(ActionRestoreRandom, BringsBackFamiliesWithMixedIds) {
    Kind kind;
    kind.contexts = 3;
    kind.withParent = 50;
    kind.mixedIds = true;
    kind.editChildren = true;
    expectAllRestored(kind, false);
}

TEST(ActionRestoreRandom, BringsBackFamiliesWithMissingParents) {
    Kind kind;
    kind.withParent = 30;
    kind.withMissingParent = 30;
    kind.editChildren = true;
    expectAllRestored(kind, false);
}

TEST(ActionRestoreRandom, BringsBackAllOfThatTogether) {
    Kind kind;
    kind.contexts = 3;
    kind.withParent = 40;
    kind.withMissingParent = 10;
    kind.withSharedCommand = 15;
    kind.shippedTwice = true;
    kind.linked = true;
    kind.mixedIds = true;
    kind.editChildren = true;
    expectAllRestored(kind, false);
}

}  // namespace
}  // namespace zelutil::test
