// Catalogues of the size that products have, and larger ones.
#include "host/action_fixture.h"
#include "host/action_worlds.h"

#include <ctime>
#include <iostream>

namespace zelutil::test {
namespace {

constexpr int kActions = 1105;
constexpr int kContexts = 238;
constexpr unsigned kSequences = ZELUTIL_SWAP_SEQUENCES;

/// Actions of many contexts, most of them with a shortcut; every tenth has a parent in another context.
std::vector<std::string> product() {
    std::vector<std::string> shipped;
    for (int id = 1; id <= kActions; ++id) {
        const std::string context = "context" + std::to_string(id % kContexts);
        const bool isChild = id % 10 == 0;
        shipped.push_back(shippedAction(id, context, isChild ? "" : "F" + std::to_string(id), isChild ? id - 1 : 0));
    }
    return shipped;
}

/// A top-level action.
int anyTop(ActionRandom& random) {
    while (true) {
        const int id = 1 + numberBelow(random, kActions);
        if (id % 10 != 0) {
            return id;
        }
    }
}

/// Another top-level action of the same context.
int anyBeside(ActionRandom& random, int id) {
    while (true) {
        const int other = id % kContexts + kContexts * numberBelow(random, 5);
        if (other != id && other % 10 != 0 && other > 0 && other <= kActions) {
            return other;
        }
    }
}

unsigned differences(const ActionProcess& left, const ActionProcess& right) {
    unsigned count = 0;
    left.catalogue.forEachAction([&](int id, const actions::ActionCatalogue::Action&) {
        count += left.shortcut(id) != right.shortcut(id) || left.inMenu(id) != right.inMenu(id) ? 1U : 0U;
    });
    return count;
}

TEST(ActionRestoreGrowth, RestoresAllSwapsOfARealSizedCatalogue) {
    const std::vector<std::string> shipped = product();
    ActionProcess next(shipped);
    unsigned sequencesLost = 0;
    unsigned actionsLost = 0;
    for (unsigned sequence = 1; sequence <= kSequences; ++sequence) {
        ActionRandom random(sequence);
        ActionProcess here(shipped);
        const int swaps = 1 + numberBelow(random, 8);
        for (int swap = 0; swap < swaps; ++swap) {
            const int first = anyTop(random);
            here.swap(first, anyBeside(random, first));
        }
        next.restart("[" + here.catalogue.userText() + "]");
        const unsigned lost = differences(here, next);
        sequencesLost += lost == 0 ? 0 : 1;
        actionsLost += lost;
        const host::ActionsPlan plan = here.plan();
        ASSERT_TRUE(plan.notRestored.empty()) << "sequence " << sequence << ": " << plan.notRestored.front().text;
        next.restart(plan.text);
        ASSERT_EQ(differences(here, next), 0U) << "sequence " << sequence;
    }
    std::cout << "By the text of the changed actions alone, " << sequencesLost << " of " << kSequences
              << " sequences are not restored, with " << actionsLost << " other shortcuts.\n";
}

/// Gives every action the shortcut of the next, all in one context and in one circle.
double secondsFor(int count, bool plain) {
    std::vector<std::string> shipped;
    for (int id = 1; id <= count; ++id) {
        shipped.push_back(shippedAction(id, "board", "F" + std::to_string(id)));
    }
    ActionProcess here(shipped);
    for (int id = 1; id <= count && !plain; ++id) {
        here.catalogue.updateShortcut(id, "");
    }
    for (int id = 1; id <= count; ++id) {
        EXPECT_TRUE(
            here.catalogue.updateShortcut(id, plain ? "G" + std::to_string(id) : "F" + std::to_string(id % count + 1)));
    }
    // The time of this process, whatever else the machine does.
    const std::clock_t start = std::clock();
    const host::ActionsPlan plan = here.plan();
    const double taken = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_TRUE(plan.notRestored.empty());
    EXPECT_EQ(plan.savedActions.size(), static_cast<std::size_t>(count));
    return taken;
}

/// Ten times the actions may take far less than a hundred times as long.
TEST(ActionRestoreGrowth, GrowsWithTheActionsAndNotWithTheirSquare) {
    for (const bool plain : {true, false}) {
        const double few = secondsFor(500, plain);
        const double many = secondsFor(5000, plain);
        std::cout << (plain ? "Plain: " : "In a circle: ") << few * 1000 << " ms for 500, " << many * 1000
                  << " ms for 5000 actions\n";
        EXPECT_LT(many, 40 * few + 0.2);
    }
}

TEST(ActionRestoreGrowth, TakesLongFamiliesInItsStride) {
    constexpr int kMembers = 3000;
    std::vector<std::string> chain{shippedAction(1, "context1", "F1")};
    std::vector<std::string> star{shippedAction(1, "board", "F1")};
    for (int id = 2; id <= kMembers; ++id) {
        chain.push_back(shippedAction(id, "context" + std::to_string(id), "", id - 1));
        star.push_back(shippedAction(id, "context" + std::to_string(id), "", 1));
    }
    for (const std::vector<std::string>& shipped : {chain, star}) {
        ActionProcess here(shipped);
        here.catalogue.updateShortcut(1, "F2");
        here.catalogue.updateMenu(1, true);
        const host::ActionsPlan plan = here.plan();
        EXPECT_EQ(plan.text, userText(R"({"id":1,"shortcut":"F2","rmb":true})"));
        EXPECT_TRUE(plan.notRestored.empty());
    }
}

}  // namespace
}  // namespace zelutil::test
