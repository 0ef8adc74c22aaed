// Random catalogues, random entries of users, random resets: an action that is reset is as it is shipped or as it was.
//
// ZELUTIL_RESET_CASES in the environment goes before the number of resets of each kind. A failure prints its seed.
#include "host/action_families.h"
#include "host/action_reset.h"
#include "host/action_worlds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

namespace zelutil::test {
namespace {

using actions::ActionCatalogue;
using host::ActionState;

std::string keyAt(int number) { return number == 0 ? std::string() : "F" + std::to_string(number); }

/// Writes down elements of a user's text in any order, of which a load may refuse some.
class RandomEntries {
public:
    RandomEntries(ActionRandom& random, const std::vector<Shipped>& shipped, const Kind& kind)
        : random_(random), shipped_(shipped), keys_(kind.shortcuts + 3) {
        for (int count = below(5); count > 0; --count) {
            below(3) == 0 ? addAny() : addTheft();
        }
    }

    std::string text() const { return "[{\"actions\":[" + elements_ + "]}]"; }

private:
    int below(int count) { return numberBelow(random_, count); }
    const Shipped& any() { return shipped_[static_cast<std::size_t>(below(static_cast<int>(shipped_.size())))]; }

    void addAny() {
        const std::string key = below(5) == 0 ? "" : ",\"shortcut\":\"" + keyAt(below(keys_)) + '"';
        const std::string flag = below(4) != 0 ? "" : std::string(",\"rmb\":") + (below(2) == 0 ? "true" : "false");
        add(any().id, key + flag + (below(4) == 0 ? ",\"note\":1" : ""));
    }

    /// Gives an action what another one is shipped with.
    void addTheft() {
        const Shipped& from = any();
        add(from.id, ",\"shortcut\":\"" + keyAt(below(keys_)) + '"');
        add(any().id, ",\"shortcut\":\"" + from.shortcut + '"');
    }

    void add(int id, const std::string& members) {
        elements_ += (elements_.empty() ? "{\"id\":" : ",{\"id\":") + std::to_string(id) + members + '}';
    }

    ActionRandom& random_;
    const std::vector<Shipped>& shipped_;
    int keys_;
    std::string elements_;
};

/// One reset of actions of one catalogue, and a restart with what is saved then.
class RandomReset {
public:
    RandomReset(unsigned seed, const Kind& kind)
        : random_(seed), shipped_(randomShipped(random_, kind)), text_(shippedText(shipped_)), defaults_(text_) {
        file_ = RandomEntries(random_, shipped_, kind).text();
        for (const Shipped& action : shipped_) {
            if (numberBelow(random_, 3) == 0) {
                ids_.push_back(action.id);
            }
        }
        here_.load(text_, file_);
        before_ = host::stateOf(here_);
        collect(ids_);
    }

    void run() {
        SCOPED_TRACE(text_ + "\n" + file_ + "\n" + testing::PrintToString(ids_));
        const host::ActionsReset reset = host::resetActions(here_, ids_);
        for (const host::NotRestored& refused : reset.refused) {
            named_.insert(refused.action);
        }
        expectAsPromised(host::stateOf(here_));
        host::ActionsPlan plan = host::planActions(here_, {}, file_, reset.touched, 50);
        host::keepTextOfFile(plan, here_, file_, reset.touched);
        if (host::stateOf(here_).values == before_.values && host::stateOf(here_).holders == before_.holders &&
            !hasEntryOf(reset.touched)) {
            EXPECT_EQ(plan.text, file_);
        }
        for (const host::NotRestored& lost : plan.notRestored) {
            lost_.insert(lost.action);
        }
        ActionCatalogue next(nobody_);
        next.load(text_, plan.text);
        SCOPED_TRACE("after a restart with " + plan.text);
        expectAsPromised(host::stateOf(next));
        EXPECT_TRUE(host::resetActions(here_, ids_).refused.size() == reset.refused.size());
    }

    bool refusedAny() const { return !named_.empty(); }
    bool lostAny() const { return !lost_.empty(); }

private:
    void collect(std::vector<int> pending) {
        while (!pending.empty()) {
            const int id = pending.back();
            pending.pop_back();
            if (family_.insert(id).second) {
                const std::vector<int>& children = here_.childIds(id);
                pending.insert(pending.end(), children.begin(), children.end());
            }
        }
    }

    bool hasEntryOf(const std::set<int>& ids) const {
        return std::any_of(ids.begin(), ids.end(), [this](int id) {
            return file_.find("{\"id\":" + std::to_string(id) + ",") != std::string::npos ||
                   file_.find("{\"id\":" + std::to_string(id) + "}") != std::string::npos;
        });
    }

    static int holderOf(const ActionState& state, const Shipped& action) {
        const std::string& shortcut = host::valuesOf(state, action.id).shortcut;
        const auto found = state.holders.find({action.context, shortcut});
        return found == state.holders.end() ? 0 : found->second;
    }

    /// Returns whether the action has what is shipped for it and runs by it, or the one does that runs by it after a
    /// load of the shipped text alone.
    bool isAsShipped(const ActionState& now, const Shipped& action) const {
        if (host::valuesOf(now, action.id) != host::valuesOf(defaults_.loaded(), action.id)) {
            return false;
        }
        const int holder = holderOf(now, action);
        const bool isNone = host::valuesOf(now, action.id).shortcut.empty();
        return isNone || holder == action.id || holder == holderOf(defaults_.loaded(), action);
    }

    /// A child follows its parent in the next process, whatever the file says.
    bool isAsBefore(const ActionState& now, const Shipped& action) const {
        return host::valuesOf(now, action.id) == host::valuesOf(before_, action.id) &&
               (holderOf(now, action) == action.id) == (holderOf(before_, action) == action.id);
    }

    std::string textOf(const ActionState& now, const Shipped& action) const {
        std::string text = ": " + std::to_string(action.id);
        for (const ActionState* const state : {&before_, &now}) {
            const host::ActionValues& values = host::valuesOf(*state, action.id);
            text += (state == &now ? ", now \"" : ", before \"") + values.shortcut +
                    (values.inMenu ? "\" in" : "\" not in") + " the menu, which " +
                    std::to_string(holderOf(*state, action)) + " holds";
        }
        return text;
    }

    void expectAsPromised(const ActionState& now) const {
        for (const Shipped& action : shipped_) {
            const bool isAsked = std::count(ids_.begin(), ids_.end(), action.id) != 0;
            if (lost_.count(action.id) != 0 || lost_.count(holderOf(now, action)) != 0) {
                continue;
            }
            if (family_.count(action.id) == 0) {
                EXPECT_TRUE(isAsBefore(now, action)) << "not among them" << textOf(now, action);
            } else if (isAsked && action.parent == 0) {
                EXPECT_TRUE(named_.count(action.id) != 0 ? isAsBefore(now, action) : isAsShipped(now, action))
                    << (named_.count(action.id) != 0 ? "named" : "not named") << textOf(now, action);
            }
        }
    }

    ActionRandom random_;
    std::vector<Shipped> shipped_;
    std::string text_;
    host::ShippedActions defaults_;
    std::string file_;
    std::vector<int> ids_;
    /// Those, and all below them.
    std::set<int> family_;
    const actions::ObserverRegistry nobody_;
    ActionCatalogue here_{nobody_};
    ActionState before_;
    std::set<int> named_;
    /// The actions that the plan of the save says it cannot bring back: without their shortcuts or with others'.
    std::set<int> lost_;
};

unsigned cases() {
    const char* const given = std::getenv("ZELUTIL_RESET_CASES");
    return given == nullptr ? 30 : static_cast<unsigned>(std::strtoul(given, nullptr, 10));
}

void expectPromisesKept(const Kind& kind) {
    unsigned refusals = 0;
    unsigned losses = 0;
    for (unsigned seed = 1; seed <= cases() && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomReset reset(seed, kind);
        reset.run();
        refusals += reset.refusedAny() ? 1 : 0;
        losses += reset.lostAny() ? 1 : 0;
    }
    EXPECT_GT(refusals, cases() / 30);
    EXPECT_LT(losses, cases() / 5);
}

TEST(ActionResetRandom, KeepsItsPromisesOfFlatActions) {
    Kind kind;
    kind.linked = true;
    kind.contexts = 3;
    expectPromisesKept(kind);
}

TEST(ActionResetRandom, KeepsItsPromisesOfActionsThatAreShippedTwice) {
    Kind kind;
    kind.linked = true;
    kind.shippedTwice = true;
    expectPromisesKept(kind);
}

TEST(ActionResetRandom, KeepsItsPromisesOfFamilies) {
    Kind kind;
    kind.linked = true;
    kind.contexts = 3;
    kind.withParent = 40;
    expectPromisesKept(kind);
}

TEST(ActionResetRandom, KeepsItsPromisesOfFamiliesThatAreShippedTwice) {
    Kind kind;
    kind.actions = 8;
    kind.linked = true;
    kind.contexts = 3;
    kind.withParent = 40;
    kind.shippedTwice = true;
    expectPromisesKept(kind);
}

}  // namespace
}  // namespace zelutil::test
