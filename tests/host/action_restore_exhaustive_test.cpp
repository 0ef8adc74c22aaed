// Small catalogues, all that any text of the user can make of them: no text brings back all that the plan of a save
// brings back, and more.
//
// ZELUTIL_EXHAUSTIVE_CASES in the environment goes before the number of catalogues that the build gives. A failure
// prints its seed.
#include "host/action_restore.h"
#include "host/action_worlds.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <functional>
#include <iostream>
#include <set>
#include <sstream>

namespace zelutil::test {
namespace {

using actions::ActionCatalogue;
using actions::ObserverRegistry;

unsigned cases() {
    const char* const given = std::getenv("ZELUTIL_EXHAUSTIVE_CASES");
    return given == nullptr ? ZELUTIL_EXHAUSTIVE_CASES : static_cast<unsigned>(std::strtoul(given, nullptr, 10));
}

using Edit = std::function<void(ActionCatalogue&)>;
using Path = std::vector<std::size_t>;

/// All that texts can bring about, of shortcuts or of menu flags alone: neither entry changes what the other says.
class Reachable {
public:
    Reachable(const std::vector<Shipped>& shipped, std::vector<Edit> edits)
        : shipped_(shipped), text_(shippedText(shipped)), edits_(std::move(edits)) {
        visit({});
        while (!open_.empty()) {
            const Path path = open_.front();
            open_.pop_front();
            for (std::size_t edit = 0; edit < edits_.size(); ++edit) {
                Path longer = path;
                longer.push_back(edit);
                visit(longer);
            }
        }
    }

    const std::set<Answers>& states() const { return states_; }

private:
    void visit(const Path& path) {
        std::string before;
        catalogue_.loadAndEdit(text_, [&](ActionCatalogue& loading) {
            for (const std::size_t edit : path) {
                edits_[edit](loading);
            }
            before = keyOf(loading);
        });
        if (seen_.insert(before).second) {
            states_.insert(answersOf(catalogue_, shipped_));
            open_.push_back(path);
        }
    }

    std::string keyOf(const ActionCatalogue& catalogue) const {
        std::string key;
        for (const auto& [id, answer] : answersOf(catalogue, shipped_)) {
            key += answer + "|" + catalogue.find(id)->boundTo() + "|";
        }
        return key;
    }

    const std::vector<Shipped>& shipped_;
    std::string text_;
    std::vector<Edit> edits_;
    ObserverRegistry nobody_;
    ActionCatalogue catalogue_{nobody_};
    std::deque<Path> open_;
    std::set<std::string> seen_;
    std::set<Answers> states_;
};

std::vector<Edit> shortcutEdits(const std::vector<Shipped>& shipped, const Kind& kind) {
    std::vector<Edit> edits;
    for (const Shipped& action : shipped) {
        // One more than the stock has, so that there is one that nobody has.
        for (int key = 0; key <= kind.shortcuts + 1; ++key) {
            edits.emplace_back([id = action.id, shortcut = key == 0 ? std::string() : "F" + std::to_string(key)](
                                   ActionCatalogue& loading) { loading.updateShortcut(id, shortcut); });
        }
    }
    return edits;
}

std::vector<Edit> flagEdits(const std::vector<Shipped>& shipped) {
    std::vector<Edit> edits;
    for (const Shipped& action : shipped) {
        for (const bool inMenu : {false, true}) {
            edits.emplace_back([id = action.id, inMenu](ActionCatalogue& loading) { loading.updateMenu(id, inMenu); });
        }
    }
    return edits;
}

/// Returns the half of a line that shortcuts, or menu flags, decide about.
std::string half(const std::string& line, bool flags) {
    const std::size_t bar = line.find('#');
    return flags ? line.substr(bar) : line.substr(0, bar);
}

/// The sets of actions that some state of these has as the aim has them, without those that are part of another.
std::set<std::set<int>> restorable(const std::set<Answers>& states, const Answers& aim, bool flags) {
    std::set<std::set<int>> sets;
    for (const Answers& state : states) {
        std::set<int> same;
        for (const auto& [id, line] : state) {
            if (half(line, flags) == half(aim.at(id), flags)) {
                same.insert(id);
            }
        }
        sets.insert(same);
    }
    return sets;
}

std::set<int> common(const std::set<int>& left, const std::set<int>& right) {
    std::set<int> both;
    std::set_intersection(left.begin(), left.end(), right.begin(), right.end(), std::inserter(both, both.end()));
    return both;
}

std::string listed(const std::set<int>& ids) {
    std::string text;
    for (const int id : ids) {
        text += std::to_string(id) + " ";
    }
    return text;
}

/// Returns the shortcut that an action with this line shows.
std::string shown(const std::string& line) {
    const std::string keys = half(line, false);
    std::istringstream item(keys.substr(keys.find_last_of(' ') + 1));
    std::string shipped;
    std::string user;
    std::string reset;
    std::string last;
    std::getline(item, shipped, ',');
    std::getline(item, user, ',');
    std::getline(item, reset, ',');
    std::getline(item, last, ',');
    return last == "user" ? user : shipped;
}

/// Counts the top-level actions that show the shortcut that the user chose for them.
std::size_t chosenCount(const Answers& state, const Answers& aim, const Answers& loaded,
                        const std::vector<Shipped>& shipped) {
    std::size_t count = 0;
    for (const Shipped& action : shipped) {
        const std::string wanted = shown(aim.at(action.id));
        const bool chosen = action.parent == 0 && wanted != shown(loaded.at(action.id));
        count += chosen && shown(state.at(action.id)) == wanted ? 1U : 0U;
    }
    return count;
}

/// Holds what a catalogue has with a text of the user's.
Answers answersWith(const std::vector<Shipped>& shipped, const std::string& userText) {
    const ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    catalogue.load(shippedText(shipped), userText);
    return answersOf(catalogue, shipped);
}

/// No text brings back more of what the user chose, and none that brings back as much of it all of the rest and more.
void expectNoBetter(const host::ActionsPlan& plan, const Answers& aim, const Reachable& keys, const Reachable& flags,
                    const std::vector<Shipped>& shipped) {
    std::set<int> restored;
    for (const auto& [id, answer] : aim) {
        restored.insert(id);
    }
    for (const host::NotRestored& missing : plan.notRestored) {
        restored.erase(missing.action);
    }
    const Answers loaded = answersWith(shipped, "");
    const std::size_t chosen = chosenCount(answersWith(shipped, plan.text), aim, loaded, shipped);
    std::set<Answers> asGood;
    for (const Answers& state : keys.states()) {
        const std::size_t count = chosenCount(state, aim, loaded, shipped);
        ASSERT_LE(count, chosen) << "some text brings back more of what was chosen than\n" << plan.text;
        if (count == chosen) {
            asGood.insert(state);
        }
    }
    const std::set<std::set<int>> byFlags = restorable(flags.states(), aim, true);
    for (const std::set<int>& byKeys : restorable(asGood, aim, false)) {
        for (const std::set<int>& byFlag : byFlags) {
            const std::set<int> both = common(byKeys, byFlag);
            const bool better = both.size() > restored.size() &&
                                std::includes(both.begin(), both.end(), restored.begin(), restored.end());
            ASSERT_FALSE(better) << "some text brings back " << listed(both) << ", the plan " << listed(restored)
                                 << "\n"
                                 << plan.text;
        }
    }
}

struct Tally {
    unsigned states = 0;
    unsigned withNamed = 0;
};

void expectBest(unsigned seed, const Kind& kind, Tally& tally) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    ActionRandom random(seed);
    const std::vector<Shipped> shipped = randomShipped(random, kind);
    const std::string text = shippedText(shipped);
    SCOPED_TRACE(text);
    const Reachable keys(shipped, shortcutEdits(shipped, kind));
    const Reachable flags(shipped, flagEdits(shipped));
    const ObserverRegistry nobody;
    ActionCatalogue here(nobody);
    here.load(text, "");
    for (int round = 0; round < 8; ++round) {
        editAtRandom(random, here, shipped, kind, 1 + numberBelow(random, 6));
        const host::ActionsPlan plan = host::planActions(here, {}, std::nullopt);
        ++tally.states;
        tally.withNamed += plan.notRestored.empty() ? 0 : 1;
        const Answers aim = answersOf(here, shipped);
        ASSERT_NO_FATAL_FAILURE(expectNoBetter(plan, aim, keys, flags, shipped)) << testing::PrintToString(aim);
        if (numberBelow(random, 3) == 0) {
            here.load(text, plan.text);
        }
    }
}

void expectBestFor(const Kind& kind, unsigned part = 1) {
    Tally tally;
    for (unsigned seed = 1; seed <= cases() / part && !testing::Test::HasFatalFailure(); ++seed) {
        expectBest(seed, kind, tally);
    }
    std::cout << tally.states << " states, " << tally.withNamed << " with actions that are named\n";
}

Kind small() {
    Kind kind;
    kind.actions = 3;
    kind.shortcuts = 2;
    kind.editChildren = true;
    return kind;
}

TEST(ActionRestoreExhaustive, NamesNoFlatAction) {
    Kind kind = small();
    kind.shippedTwice = true;
    kind.linked = true;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesNoActionOfASharedCommand) {
    Kind kind = small();
    kind.contexts = 1;
    kind.withSharedCommand = 60;
    kind.shippedTwice = true;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesOnlyWhatAParentForces) {
    Kind kind = small();
    kind.withParent = 60;
    kind.shippedTwice = true;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesOnlyWhatAParentWithAHigherIdForces) {
    Kind kind = small();
    kind.withParent = 70;
    kind.mixedIds = true;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesOnlyWhatAMissingParentForces) {
    Kind kind = small();
    kind.withParent = 40;
    kind.withMissingParent = 40;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesOnlyWhatAllOfThatForces) {
    Kind kind = small();
    kind.contexts = 3;
    kind.withParent = 40;
    kind.withMissingParent = 10;
    kind.withSharedCommand = 30;
    kind.shippedTwice = true;
    kind.linked = true;
    kind.mixedIds = true;
    expectBestFor(kind);
}

TEST(ActionRestoreExhaustive, NamesOnlyWhatFourActionsForce) {
    Kind kind = small();
    kind.actions = 4;
    kind.withParent = 50;
    kind.mixedIds = true;
    kind.linked = true;
    kind.shippedTwice = true;
    expectBestFor(kind, 10);
}

}  // namespace
}  // namespace zelutil::test
