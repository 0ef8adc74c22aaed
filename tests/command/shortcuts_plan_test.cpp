// The reading of wish lists, and the planner beside a search that tries every order.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command/every_order.h"
#include "command/shortcuts/break_circles.h"
#include "command/shortcuts/key_answer.h"
#include "command/shortcuts/wish_plan.h"
#include "command/shortcuts/wish_text.h"
#include "host/action_restore.h"
#include "host/action_worlds.h"

namespace {

using namespace zelutil::shortcuts;
using zelutil::test::ActionRandom;
using zelutil::test::EveryOrder;
using zelutil::test::haveTheirWishes;
using zelutil::test::Loaded;
using zelutil::test::numberBelow;
using Outcome = WishPlan::Outcome;

// --- The texts
// --------------------------------------------------------------------------------------------------------

/// Returns the wishes, "3 c|d = F1 rmb" and so on, and then the faults, each with its place.
std::string toldOf(const WishText& text) {
    std::string told;
    for (const Wish& wish : text.wishes) {
        told += std::to_string(wish.place) + ": " + std::to_string(wish.id) + " " + wish.context + "|" + wish.command +
                " = " + wish.shortcut.value_or("(nothing)") + (wish.inMenu ? *wish.inMenu ? " in" : " out" : "") + "\n";
    }
    for (const WishFault& fault : text.faults) {
        told += std::to_string(fault.place) + "! " + fault.text + "\n";
    }
    return told + text.unreadable;
}

TEST(WishText, ListsAreReadLineByLine) {
    EXPECT_EQ(toldOf(readWishes("# a comment\n\n33 = Ctrl+Home\r\n ucpedit  view zoom_fit=F2\n4=\n5 = =\n")),
              "3: 33 | = Ctrl+Home\n4: 0 ucpedit|view zoom_fit = F2\n5: 4 | = \n6: 5 | = =\n");
    EXPECT_EQ(toldOf(readWishes("33\nucpedit = F1\n0 = F1\n99999999999 = F1\n= F1\n")),
              "1! It has no equals sign: write ID = KEY or CONTEXT COMMAND = KEY, such as 1 = Ctrl+O.\n"
              "2! It names no action: that is an id, or a context and a command.\n"
              "3! It names no action: that is an id, or a context and a command.\n"
              "4! It names no action: that is an id, or a context and a command.\n"
              "5! It names no action: that is an id, or a context and a command.\n");
    EXPECT_EQ(toldOf(readWishes("")), "");
    EXPECT_EQ(toldOf(readWishes("\xEF\xBB\xBF"
                                "7 = F1")),
              "1: 7 | = F1\n");
}

TEST(WishText, LinesEndAndHaveCommentsAsPeopleWriteThem) {
    EXPECT_EQ(toldOf(readWishes("1 = F1\r2 = F2\r\r4 = F4\r\n5 = F5\n\r7 = F7")),
              "1: 1 | = F1\n2: 2 | = F2\n4: 4 | = F4\n5: 5 | = F5\n7: 7 | = F7\n");
    EXPECT_EQ(toldOf(readWishes("1 = Ctrl+Home # mine\n2 = # none\n3 = #\n4 = Ctrl+#\n5 = Ctrl + #\n"
                                "6 = Ctrl+# # a key\n7 = F#\n8 = F1\t#\n")),
              "1: 1 | = Ctrl+Home\n2: 2 | = \n3: 3 | = #\n4: 4 | = Ctrl+#\n5: 5 | = Ctrl + #\n"
              "6: 6 | = Ctrl+#\n7: 7 | = F#\n8: 8 | = F1\n");
}

TEST(WishText, TextsThatNobodyCanReadAreFaults) {
    constexpr char kFault[] = "! It has a control character or a byte that is no UTF-8.\n";
    EXPECT_EQ(toldOf(readWishes("1 = F\x07\n2 = \xC3\xA4\n3 = \xE4\nc d\x1b = F1\n")),
              "2: 2 | = \xC3\xA4\n1" + std::string(kFault) + "3" + kFault + "4" + kFault);
    EXPECT_EQ(toldOf(readProfile(R"({"zelutilProfile":1,"actions":[{"id":1,"shortcut":"F\u0000"},)"
                                 R"({"context":"c","command":"d\n","inMenu":true},{"id":3,"shortcut":"F3"}]})")),
              "3: 3 | = F3\n1" + std::string(kFault) + "2" + kFault);
}

TEST(WishText, ListsMayBeJson) {
    EXPECT_EQ(toldOf(readWishes(R"( {"actions":[{"id":1,"shortcut":"F1"},{"context":"c","command":"d","shortcut":""},)"
                                R"({"id":2,"inMenu":false}]})")),
              "1: 1 | = F1\n2: 0 c|d = \n3: 2 | = (nothing) out\n");
    EXPECT_EQ(toldOf(readWishes("{")), "It is no JSON.");
    EXPECT_EQ(toldOf(readWishes("{}")), "It has no array \"actions\".");
    EXPECT_EQ(toldOf(readWishes(R"({"zelutilProfile":2,"actions":[]})")),
              "It is a profile of form 2, and this command reads form 1.");
}

TEST(WishText, ElementsThatSayNothingAreNamed) {
    EXPECT_EQ(toldOf(readProfile(R"({"zelutilProfile":1,"actions":[3,{"shortcut":"F1"},{"id":1},)"
                                 R"({"id":1,"shortcut":7},{"id":1,"inMenu":"yes"},{"id":-4,"context":"c",)"
                                 R"("command":"d","shortcut":"F2"}]})")),
              "6: 0 c|d = F2\n"
              "1! It is no object.\n"
              "2! It names no action: that is an \"id\" of 1 or more, or a \"context\" and a \"command\".\n"
              "3! It has neither a \"shortcut\" nor \"inMenu\".\n"
              "4! Its \"shortcut\" is no text, or its \"inMenu\" is neither true nor false.\n"
              "5! Its \"shortcut\" is no text, or its \"inMenu\" is neither true nor false.\n");
    EXPECT_EQ(toldOf(readProfile(R"({"actions":[]})")), "It is no profile: it has no member \"zelutilProfile\".");
    EXPECT_EQ(toldOf(readProfile(R"({"zelutilProfile":"1","actions":[]})")),
              "Its member \"zelutilProfile\" is no number.");
    EXPECT_EQ(toldOf(readProfile("1 = F1")), "It is no JSON.");
}

TEST(Spelling, OneKeyHasOne) {
    EXPECT_EQ(oneSpelling("Ctrl+Shift+S"), "ctrl+shift+s");
    EXPECT_EQ(oneSpelling("shift + CTRL + s"), "ctrl+shift+s");
    EXPECT_EQ(oneSpelling("Ctrl++"), oneSpelling("ctrl + +"));
    EXPECT_NE(oneSpelling("Ctrl++"), oneSpelling("Ctrl+-"));
    EXPECT_EQ(oneSpelling("Del"), oneSpelling("Delete"));
    EXPECT_NE(oneSpelling("S"), oneSpelling("Shift+S"));
    EXPECT_EQ(oneSpelling(""), "");
}

// --- The circles
// ------------------------------------------------------------------------------------------------------

TEST(Circles, TheFewestAreFound) {
    EXPECT_EQ(breakCircles({{1, {2}}, {2, {3}}}, 100).ids, (std::set<int>{}));
    EXPECT_EQ(breakCircles({{1, {2}}, {2, {1}}, {3, {1}}}, 100).ids, (std::set<int>{1}));
    EXPECT_EQ(breakCircles({{4, {4}}}, 100).ids, (std::set<int>{4}));
    // Two circles share 2, and two others are apart.
    EXPECT_EQ(breakCircles({{1, {2}}, {2, {1, 3}}, {3, {2}}, {7, {8}}, {8, {7}}}, 100).ids, (std::set<int>{2, 7}));
    // All wait for all.
    const Breaks all = breakCircles({{1, {2, 3, 4}}, {2, {1, 3, 4}}, {3, {1, 2, 4}}, {4, {1, 2, 3}}}, 100);
    EXPECT_EQ(all.ids.size(), 3U);
    EXPECT_TRUE(all.isFewest);
}

TEST(Circles, WithoutALookAtAllSetsSomeAreFound) {
    const Breaks some = breakCircles({{1, {2, 3, 4}}, {2, {1, 3, 4}}, {3, {1, 2, 4}}, {4, {1, 2, 3}}}, 2);
    EXPECT_EQ(some.ids.size(), 3U);
    EXPECT_FALSE(some.isFewest);
}

TEST(Circles, LongOnesAreBrokenByOne) {
    constexpr int kLength = 2000;
    Waiting ring;
    for (int id = 1; id <= kLength; ++id) {
        ring[id] = {id % kLength + 1};
        ring[kLength + id] = {id};
    }
    const Breaks breaks = breakCircles(ring, kMostBreaks);
    EXPECT_EQ(breaks.ids, (std::set<int>{1}));
    EXPECT_TRUE(breaks.isFewest);
}

// --- The planner
// ------------------------------------------------------------------------------------------------------

struct Case {
    std::string shipped;
    std::string user;
    std::vector<KeyWish> wishes;
};

/// So little is searched for a text of the user: any will do.
constexpr std::size_t kFewLoads = 20;

Case randomCase(ActionRandom& random, const zelutil::test::Kind& kind) {
    Case made;
    const std::vector<zelutil::test::Shipped> shipped = randomShipped(random, kind);
    made.shipped = shippedText(shipped);
    Loaded edited(made.shipped, "");
    editAtRandom(random, edited.catalogue, shipped, kind, numberBelow(random, 6));
    made.user = zelutil::host::planActions(edited.catalogue, {}, std::nullopt, {}, kFewLoads).text;
    const std::size_t most = 1 + static_cast<std::size_t>(numberBelow(random, 3));
    for (const zelutil::test::Shipped& action : shipped) {
        if (action.parent == 0 && made.wishes.size() < most && numberBelow(random, 2) == 0) {
            const int key = numberBelow(random, kind.shortcuts + 1);
            made.wishes.push_back({action.id, key == 0 ? "" : "F" + std::to_string(key)});
        }
    }
    return made;
}

struct PlanTally {
    int possible = 0;
    int impossible = 0;
    int unknown = 0;
    int notProved = 0;
};

/// Every edit is accepted, and in the end all wishes are granted.
void expectCarriedOut(const Case& made, const WishPlan& plan) {
    Loaded loaded(made.shipped, made.user);
    for (const KeyWish& edit : plan.edits) {
        const auto before = loaded.catalogue.work().changes;
        EXPECT_TRUE(loaded.catalogue.updateShortcut(edit.action, edit.shortcut));
        EXPECT_GT(loaded.catalogue.work().changes, before);
    }
    EXPECT_TRUE(haveTheirWishes(loaded.catalogue, made.wishes));
}

void compareWithEveryOrder(const Case& made, PlanTally& tally) {
    const Loaded now(made.shipped, made.user);
    const WishPlan plan = planWishes(now.catalogue, made.wishes);
    const std::optional<std::size_t> fewest = EveryOrder(made.shipped, made.user, made.wishes).fewest();
    switch (plan.outcome) {
        case Outcome::Possible:
            ++tally.possible;
            tally.notProved += plan.isMinimal ? 0 : 1;
            expectCarriedOut(made, plan);
            ASSERT_TRUE(fewest);
            EXPECT_GE(plan.edits.size(), *fewest);
            if (plan.isMinimal) {
                EXPECT_EQ(plan.edits.size(), *fewest);
            }
            break;
        case Outcome::Impossible:
            ++tally.impossible;
            EXPECT_FALSE(fewest);
            EXPECT_FALSE(plan.inTheWay.empty());
            EXPECT_TRUE(plan.edits.empty());
            break;
        case Outcome::Unknown:
            ++tally.unknown;
    }
}

PlanTally compareAtRandom(const char* name, const zelutil::test::Kind& kind, int cases) {
    PlanTally tally;
    for (int number = 0; number < cases && !testing::Test::HasFailure(); ++number) {
        ActionRandom random(static_cast<unsigned>(number));
        const Case made = randomCase(random, kind);
        std::string wishes;
        for (const KeyWish& wish : made.wishes) {
            wishes += std::to_string(wish.action) + " = " + wish.shortcut + "\n";
        }
        SCOPED_TRACE(std::to_string(number) + "\n" + made.shipped + "\n" + made.user + "\n" + wishes);
        compareWithEveryOrder(made, tally);
    }
    std::printf("%s: %d possible (%d not proved minimal), %d impossible, %d unknown\n", name, tally.possible,
                tally.notProved, tally.impossible, tally.unknown);
    return tally;
}

constexpr int kCases = 100;

TEST(Plan, OfPlainActionsIsMinimalOrAProof) {
    zelutil::test::Kind kind;
    kind.shortcuts = 3;
    const PlanTally tally = compareAtRandom("plain", kind, kCases);
    EXPECT_EQ(tally.unknown, 0);
    EXPECT_EQ(tally.notProved, 0);
    EXPECT_GT(tally.impossible, 20);
    EXPECT_GT(tally.possible, 40);
}

TEST(Plan, OfLinkedContextsIsMinimalOrAProof) {
    zelutil::test::Kind kind;
    kind.shortcuts = 3;
    kind.linked = true;
    kind.contexts = 3;
    const PlanTally tally = compareAtRandom("linked", kind, kCases);
    EXPECT_EQ(tally.unknown, 0);
    EXPECT_EQ(tally.notProved, 0);
}

TEST(Plan, OfFamiliesIsMinimalOrAProof) {
    zelutil::test::Kind kind;
    kind.shortcuts = 3;
    kind.linked = true;
    kind.contexts = 3;
    kind.actions = 8;
    kind.withParent = 40;
    kind.mixedIds = true;
    const PlanTally tally = compareAtRandom("families", kind, kCases / 2);
    EXPECT_LE(tally.unknown, 1);
    EXPECT_LE(tally.notProved, 1);
    EXPECT_GT(tally.impossible, 10);
    EXPECT_GT(tally.possible, 25);
}

TEST(Plan, OfOddActionsClaimsNothingThatIsNotSo) {
    zelutil::test::Kind kind;
    kind.shortcuts = 3;
    kind.linked = true;
    kind.contexts = 2;
    kind.withParent = 20;
    kind.withMissingParent = 5;
    kind.withSharedCommand = 30;
    kind.shippedTwice = true;
    const PlanTally tally = compareAtRandom("odd", kind, kCases);
    EXPECT_GT(tally.possible, 30);
}

/// Returns the text of actions in one context: action n has the shortcut Kn.
std::string rowOfActions(int count) {
    std::vector<zelutil::test::Shipped> shipped;
    for (int id = 1; id <= count; ++id) {
        shipped.push_back({id, 0, "c", "command" + std::to_string(id), "K" + std::to_string(id), false});
    }
    return shippedText(shipped);
}

/// In a permutation, each action that moves takes one edit, and each circle one more.
TEST(Plan, OfPermutationsHasOneMoreEditForEachCircle) {
    constexpr int kActions = 300;
    const Loaded now(rowOfActions(kActions), "");
    for (unsigned seed = 0; seed < 5; ++seed) {
        ActionRandom random(seed);
        std::vector<int> keys(kActions);
        std::iota(keys.begin(), keys.end(), 1);
        std::shuffle(keys.begin(), keys.end(), random);
        std::vector<KeyWish> wishes;
        for (int id = 1; id <= kActions; ++id) {
            wishes.push_back({id, "K" + std::to_string(keys[static_cast<std::size_t>(id - 1)])});
        }
        std::size_t expected = 0;
        std::set<int> seen;
        for (int id = 1; id <= kActions; ++id) {
            int next = keys[static_cast<std::size_t>(id - 1)];
            if (next == id || seen.count(id) != 0) {
                continue;
            }
            ++expected;
            for (int at = id; seen.insert(at).second; at = keys[static_cast<std::size_t>(at - 1)]) {
                ++expected;
            }
        }
        const WishPlan plan = planWishes(now.catalogue, wishes);
        EXPECT_EQ(plan.outcome, Outcome::Possible);
        EXPECT_EQ(plan.edits.size(), expected);
        EXPECT_TRUE(plan.isMinimal);
    }
}

TEST(Plan, NamesAllWhoAreInTheWay) {
    // 1 has a child in "brisk3d" and one in "d"; strangers hold F1 in "ucpedit", linked with the first, and in "d".
    const Loaded now(R"({"actions":[{"id":1,"context":"c","command":"a"},
        {"id":2,"parent_id":1,"context":"brisk3d","command":"b"},{"id":3,"parent_id":1,"context":"d","command":"b"},
        {"id":7,"context":"ucpedit","command":"x","shortcut":"F1"},
        {"id":8,"context":"d","command":"y","shortcut":"F1"},{"id":9,"context":"c","command":"z"}]})",
                     "");
    const WishPlan plan = planWishes(now.catalogue, {{1, "F1"}, {9, "F2"}});
    EXPECT_EQ(plan.outcome, Outcome::Impossible);
    EXPECT_EQ(plan.refused, (std::vector<int>{1}));
    ASSERT_EQ(plan.inTheWay.size(), 2U);
    EXPECT_EQ(plan.inTheWay[0].asked, 2);
    EXPECT_EQ(plan.inTheWay[0].holder, 7);
    EXPECT_EQ(plan.inTheWay[1].asked, 3);
    EXPECT_EQ(plan.inTheWay[1].holder, 8);
    const PartialPlan partial = planWhatCanBe(now.catalogue, {{1, "F1"}, {9, "F2"}});
    EXPECT_EQ(partial.refused, (std::vector<int>{1}));
    ASSERT_EQ(partial.plan.edits.size(), 1U);
    EXPECT_EQ(partial.plan.edits[0].action, 9);
}

/// 1 waits for a stranger, and 2 and 3 for 1; they also want the same.
TEST(Plan, AProofNamesAllWhoAreInTheWayAlsoBehindOthers) {
    const Loaded now(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},
        {"id":2,"context":"c","command":"b"},{"id":3,"context":"c","command":"d"},
        {"id":4,"context":"c","command":"e","shortcut":"F9"}]})",
                     "");
    const std::vector<KeyWish> wishes{{1, "F9"}, {2, "F1"}, {3, "F1"}};
    const WishPlan plan = planWishes(now.catalogue, wishes);
    EXPECT_EQ(plan.outcome, Outcome::Impossible);
    ASSERT_EQ(plan.inTheWay.size(), 2U);
    EXPECT_EQ(plan.inTheWay[0].action, 1);
    EXPECT_EQ(plan.inTheWay[0].holder, 4);
    EXPECT_EQ(plan.inTheWay[1].action, 3);
    EXPECT_EQ(plan.inTheWay[1].holder, 2);
    EXPECT_EQ(plan.refused, (std::vector<int>{1, 2, 3}));
    const PartialPlan partial = planWhatCanBe(now.catalogue, wishes);
    EXPECT_EQ(partial.refused, (std::vector<int>{1, 2, 3}));
    ASSERT_EQ(partial.inTheWay.size(), 3U);
    EXPECT_EQ(partial.inTheWay[1].holder, 1);
    EXPECT_EQ(partial.inTheWay[2].holder, 1);
}

/// The first of two for one shortcut is left out because of a stranger, so the second gets it.
TEST(Plan, WhoeverIsLeftOutIsInNobodysWay) {
    const Loaded now(R"({"actions":[{"id":1,"context":"c","command":"a"},
        {"id":2,"parent_id":1,"context":"d","command":"a"},{"id":3,"context":"c","command":"b"},
        {"id":4,"context":"d","command":"e","shortcut":"F1"}]})",
                     "");
    const PartialPlan partial = planWhatCanBe(now.catalogue, {{1, "F1"}, {3, "F1"}});
    EXPECT_EQ(partial.refused, (std::vector<int>{1}));
    ASSERT_EQ(partial.plan.edits.size(), 1U);
    EXPECT_EQ(partial.plan.edits[0].action, 3);
}

/// 21 could not follow 2 to M, which 22 holds. Once 22 has left it, it is free for 5.
TEST(Plan, AChildThatHasNotFollowedIsInNobodysWay) {
    const Loaded now(R"({"actions":[{"id":2,"context":"c","command":"a","shortcut":"M"},
        {"id":21,"parent_id":2,"context":"panel","command":"a"},
        {"id":22,"context":"panel","command":"b","shortcut":"M"},{"id":5,"context":"panel","command":"d"}]})",
                     "");
    const WishPlan plan = planWishes(now.catalogue, {{2, "M"}, {22, "F1"}, {5, "M"}});
    EXPECT_EQ(plan.outcome, Outcome::Possible);
    EXPECT_EQ(plan.edits.size(), 2U);
    EXPECT_TRUE(plan.isMinimal);
}

/// Two of linked contexts are shipped with F1, and each has it in its own.
TEST(Plan, ThoseWhoHaveTheSameAlreadyKeepIt) {
    const Loaded now(R"({"actions":[{"id":1,"context":"ucpedit","command":"a","shortcut":"F1"},
        {"id":2,"context":"brisk3d","command":"b","shortcut":"F1"}]})",
                     "");
    const WishPlan plan = planWishes(now.catalogue, {{1, "F1"}, {2, "F1"}});
    EXPECT_EQ(plan.outcome, Outcome::Possible);
    EXPECT_TRUE(plan.edits.empty());
}

/// Each of a long row wishes for what the next one has, and the last one for what a stranger has.
TEST(Plan, ALongRowIsLeftOutAtOnce) {
    constexpr int kActions = 300;
    const Loaded now(rowOfActions(kActions), "");
    std::vector<KeyWish> wishes;
    for (int id = 1; id < kActions; ++id) {
        wishes.push_back({id, "K" + std::to_string(id + 1)});
    }
    const PartialPlan partial = planWhatCanBe(now.catalogue, wishes);
    EXPECT_EQ(partial.refused.size(), wishes.size());
    EXPECT_EQ(partial.inTheWay.size(), wishes.size());
    EXPECT_TRUE(partial.plan.edits.empty());
    wishes.push_back({kActions, ""});
    EXPECT_EQ(planWhatCanBe(now.catalogue, wishes).plan.edits.size(), wishes.size());
}

/// 2 and 3 both wish for F1, in linked contexts, and its holder waits for 2.
TEST(Plan, TwoWishesForOneShortcutAreFoundBehindACircle) {
    const Loaded now(R"({"actions":[{"id":1,"context":"ucpedit","command":"a","shortcut":"F1"},
        {"id":2,"context":"ucpedit","command":"b","shortcut":"F2"},{"id":3,"context":"brisk3d","command":"c"}]})",
                     "");
    const WishPlan plan = planWishes(now.catalogue, {{1, "F2"}, {2, "F1"}, {3, "F1"}});
    EXPECT_EQ(plan.outcome, Outcome::Impossible);
    ASSERT_EQ(plan.inTheWay.size(), 1U);
    EXPECT_EQ(plan.inTheWay[0].action, 3);
    EXPECT_EQ(plan.inTheWay[0].holder, 2);
}

/// 2 shows F1, which 1 holds: both are shipped with it. When 2 leaves F1, 1 loses it too.
TEST(Plan, TellsWhomItChangesBesides) {
    const Loaded now(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},
        {"id":2,"context":"c","command":"b","shortcut":"F1"}]})",
                     "");
    const WishPlan plan = planWishes(now.catalogue, {{2, "F2"}});
    EXPECT_EQ(plan.outcome, Outcome::Possible);
    ASSERT_EQ(plan.sideEffects.size(), 1U);
    EXPECT_EQ(plan.sideEffects.front().action, 1);
    EXPECT_EQ(plan.sideEffects.front().lost, (std::vector<std::string>{"F1"}));
    EXPECT_EQ(plan.sideEffects.front().gained, (std::vector<std::string>{}));
}

/// The library's own question about one conflict and the one about all agree.
TEST(Plan, TheFirstOfAllConflictsIsTheOneThatTheLibraryTells) {
    zelutil::test::Kind kind;
    kind.actions = 10;
    kind.contexts = 3;
    kind.linked = true;
    kind.withParent = 40;
    kind.shippedTwice = true;
    int several = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        ActionRandom random(seed);
        const Loaded loaded(shippedText(randomShipped(random, kind)), "");
        for (int id = 0; id <= kind.actions + 1; ++id) {
            for (const char* const shortcut : {"", "F1", "F2", "F3", "F4"}) {
                const auto all = loaded.catalogue.conflicts(id, shortcut);
                EXPECT_EQ(all.empty() ? 0 : all.front().holder, loaded.catalogue.shortcutTakenBy(id, shortcut));
                several += all.size() > 1 ? 1 : 0;
                for (const auto& conflict : all) {
                    const auto holders = loaded.catalogue.find(conflict.id)->allInTheWay(shortcut);
                    EXPECT_EQ(std::count(holders.begin(), holders.end(), conflict.holder), 1);
                }
            }
        }
    }
    EXPECT_GT(several, 100);
}

}  // namespace
