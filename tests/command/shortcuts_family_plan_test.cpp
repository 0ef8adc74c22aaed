// The planner beside the search that tries every order, for all small families whose members are in each other's way.
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "command/every_order.h"
#include "command/shortcuts/wish_plan.h"
#include "host/action_worlds.h"

namespace {

using namespace zelutil::shortcuts;
using zelutil::test::EveryOrder;
using zelutil::test::haveTheirWishes;
using zelutil::test::Loaded;
using zelutil::test::Shipped;
using Outcome = WishPlan::Outcome;

/// Action 1 has the children 2 and 3, or the child 2 and the grandchild 3; action 4 is a stranger.
struct Shape {
    const char* contexts[4];
    int parentOfLast;
};

constexpr Shape kShapes[] = {
    {{"a", "c", "c", "c"}, 1}, {{"a", "ucpedit", "brisk3d", "brisk3d"}, 1},       {{"c", "d", "c", "c"}, 2},
    {{"c", "d", "c", "d"}, 2}, {{"ucpedit", "brisk3d", "ucpedit", "brisk3d"}, 1},
};

constexpr const char* kKeys[] = {"", "F1", "F2", "F3"};

std::vector<Shipped> shippedOf(const Shape& shape, const int (&keys)[4]) {
    std::vector<Shipped> shipped;
    for (int place = 0; place < 4; ++place) {
        Shipped action;
        action.id = place + 1;
        action.parent = place == 1 ? 1 : place == 2 ? shape.parentOfLast : 0;
        action.context = shape.contexts[place];
        action.command = "command" + std::to_string(action.id);
        action.shortcut = kKeys[keys[place]];
        shipped.push_back(action);
    }
    return shipped;
}

struct FamilyTally {
    int cases = 0;
    int possible = 0;
    int impossible = 0;
    int unknown = 0;
    /// Some order grants the wishes, and the planner has found none.
    int missed = 0;
    int wrong = 0;
};

void compare(const std::string& text, const std::vector<KeyWish>& wishes, FamilyTally& tally) {
    const Loaded now(text, "");
    const WishPlan plan = planWishes(now.catalogue, wishes);
    const std::optional<std::size_t> fewest = EveryOrder(text, "", wishes).fewest();
    ++tally.cases;
    tally.possible += plan.outcome == Outcome::Possible ? 1 : 0;
    tally.impossible += plan.outcome == Outcome::Impossible ? 1 : 0;
    tally.unknown += plan.outcome == Outcome::Unknown ? 1 : 0;
    tally.missed += plan.outcome == Outcome::Unknown && fewest ? 1 : 0;
    if (plan.outcome == Outcome::Possible) {
        Loaded after(text, "");
        for (const KeyWish& edit : plan.edits) {
            EXPECT_TRUE(after.catalogue.updateShortcut(edit.action, edit.shortcut));
        }
        EXPECT_TRUE(haveTheirWishes(after.catalogue, wishes));
    }
    const bool isWrong = (plan.outcome == Outcome::Impossible && fewest) ||
                         (plan.outcome == Outcome::Possible && !fewest) ||
                         (plan.outcome == Outcome::Possible && plan.isMinimal && plan.edits.size() != *fewest);
    tally.wrong += isWrong ? 1 : 0;
    EXPECT_FALSE(isWrong) << text << "\n1 = " << wishes.front().shortcut << ", " << wishes.back().action << " = "
                          << wishes.back().shortcut;
}

/// Of all cases the test takes every so many.
constexpr int kEvery = 331;

/// Calls `call` with the shipped text and the wishes for 1, 4 or both of every case in turn.
template <typename Call>
void forEachCase(Call call) {
    for (const Shape& shape : kShapes) {
        for (int code = 0; code < 256; ++code) {
            const int keys[4] = {code & 3, code >> 2 & 3, code >> 4 & 3, code >> 6};
            const std::string text = shippedText(shippedOf(shape, keys));
            for (int wished = 1; wished < 25; ++wished) {
                std::vector<KeyWish> wishes;
                if (wished % 5 != 0) {
                    wishes.push_back({1, kKeys[wished % 5 - 1]});
                }
                if (wished / 5 != 0) {
                    wishes.push_back({4, kKeys[wished / 5 - 1]});
                }
                call(text, wishes);
            }
        }
    }
}

TEST(FamilyPlan, ClaimsNothingThatEveryOrderRefutes) {
    FamilyTally tally;
    int number = 0;
    forEachCase([&](const std::string& text, const std::vector<KeyWish>& wishes) {
        if (++number % kEvery == 0) {
            compare(text, wishes, tally);
        }
    });
    std::printf("%d cases: %d possible, %d impossible, %d unknown (%d of them possible), %d wrong\n", tally.cases,
                tally.possible, tally.impossible, tally.unknown, tally.missed, tally.wrong);
    EXPECT_GT(tally.possible, 60);
    EXPECT_GT(tally.impossible, 0);
    EXPECT_LT(tally.missed * 20, tally.cases);
}

/// 3 holds F3, which it is shipped with: 2 was the first of the two to follow 1, which has its wish. Once 1 has lost F1
/// and got it again, 3 holds nothing.
TEST(FamilyPlan, AFamilyThatHasItsWishStillMakesWay) {
    const std::string text = shippedText(shippedOf(kShapes[0], {1, 2, 3, 0}));
    const Loaded now(text, "");
    EXPECT_EQ(now.catalogue.idByShortcut("c", "F3"), 3);
    const WishPlan plan = planWishes(now.catalogue, {{1, "F1"}, {4, "F3"}});
    EXPECT_EQ(plan.outcome, Outcome::Possible);
    ASSERT_EQ(plan.edits.size(), 3U);
    EXPECT_EQ(plan.edits[0].action, 1);
    EXPECT_EQ(plan.edits[0].shortcut, "");
}

}  // namespace
