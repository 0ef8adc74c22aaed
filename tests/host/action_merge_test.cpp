// Two processes of one user that save in turn.
#include "host/action_fixture.h"
#include "host/action_warnings.h"
#include "host/action_worlds.h"

namespace zelutil::test {
namespace {

using host::ActionsPlan;

const std::vector<std::string> kFour = {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F2"),
                                        shippedAction(3, "board", "F3"), shippedAction(4, "board", "F4")};

TEST(ActionMerge, KeepsWhatAnotherProcessSaved) {
    ActionProcess here(kFour);
    ActionProcess there(kFour);
    std::string file;
    there.catalogue.updateShortcut(2, "F9");
    there.catalogue.updateMenu(3, true);
    there.save(file);
    here.catalogue.updateShortcut(1, "F8");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F9"},{"id":3,"rmb":true})"));
    EXPECT_EQ(plan.ofOthers, (std::vector<int>{2, 3}));
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_TRUE(plan.notRestored.empty());
    EXPECT_EQ(here.shortcut(2), "F2");
}

TEST(ActionMerge, KeepsItAlsoAtTheNextSaveOfThisProcess) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":2,"shortcut":"F9"})");
    here.save(file);
    EXPECT_EQ(file, userText(R"({"id":2,"shortcut":"F9"})"));
    here.catalogue.updateShortcut(1, "F8");
    EXPECT_EQ(here.save(file).ofOthers, std::vector<int>{2});
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F9"})"));
    // A change here is newer than what the other process saved.
    here.catalogue.updateShortcut(2, "F7");
    EXPECT_TRUE(here.save(file).conflicts.empty());
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"},{"id":2,"shortcut":"F7"})"));
}

TEST(ActionMerge, LetsAnotherProcessGoBackToWhatIsShipped) {
    ActionProcess here(kFour, userText(R"({"id":2,"shortcut":"F9"})"));
    std::string file;
    here.catalogue.updateShortcut(1, "F8");
    EXPECT_EQ(here.save(file).ofOthers, std::vector<int>{2});
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"})"));
}

TEST(ActionMerge, MergesShortcutAndMenuFlagEachForItself) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":1,"rmb":true})");
    here.catalogue.updateShortcut(1, "F8");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8","rmb":true})"));
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_EQ(plan.ofOthers, std::vector<int>{1});
}

TEST(ActionMerge, SavesItsOwnAndNamesTheConflictWhereBothChangedOneAction) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":1,"shortcut":"F9"})");
    here.catalogue.updateShortcut(1, "F8");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"})"));
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 1);
    EXPECT_EQ(plan.conflicts[0].ours, "F8");
    EXPECT_EQ(plan.conflicts[0].theirs, "F9");
}

TEST(ActionMerge, NamesNoConflictWhereBothMadeTheSameChange) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":1,"shortcut":"F8"})");
    here.catalogue.updateShortcut(1, "F8");
    const ActionsPlan plan = here.save(file);
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_TRUE(plan.ofOthers.empty());
}

TEST(ActionMerge, GivesAShortcutThatBothGaveAwayToItsOwnActionAndTheOtherGoesBack) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":2,"shortcut":"F9"})");
    here.catalogue.updateShortcut(3, "F9");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":3,"shortcut":"F9"})"));
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 2);
    EXPECT_EQ(plan.conflicts[0].ours, "F2");
    EXPECT_EQ(plan.conflicts[0].theirs, "F9");
    EXPECT_TRUE(plan.notRestored.empty());
}

TEST(ActionMerge, LeavesTheOtherWithoutAShortcutWhereItCannotGoBack) {
    ActionProcess here(kFour);
    // Elsewhere 2 got F9. Here 3 got F9 and 4 got what 2 had.
    std::string file = userText(R"({"id":2,"shortcut":"F9"})");
    here.catalogue.updateShortcut(3, "F9");
    here.catalogue.updateShortcut(2, "");
    here.catalogue.updateShortcut(4, "F2");
    here.catalogue.updateShortcut(2, "F5");
    here.save(file);
    EXPECT_EQ(here.shortcut(2), "F5");
    ActionProcess third(kFour);
    std::string other = userText(R"({"id":2,"shortcut":"F9"},{"id":4,"shortcut":"F2"})");
    third.catalogue.updateShortcut(3, "F9");
    const ActionsPlan plan = third.save(other);
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 2);
    EXPECT_EQ(plan.conflicts[0].ours, "");
    third.restart(other);
    EXPECT_EQ(third.shortcut(2), "");
    EXPECT_EQ(third.shortcut(3), "F9");
    EXPECT_EQ(third.shortcut(4), "F2");
}

TEST(ActionMerge, LetsTheOtherGoBackToWhatItHasHereWhereTheFileHadNothingElse) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":3,"shortcut":"F9"})");
    here.save(file);
    here.catalogue.updateShortcut(4, "F9");
    const ActionsPlan plan = here.save(file);
    // The file had F9 for 3 at the save before, and here it has always had F3.
    EXPECT_EQ(file, userText(R"({"id":4,"shortcut":"F9"})"));
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 3);
    EXPECT_EQ(plan.conflicts[0].ours, "F3");
}

TEST(ActionMerge, LetsTheOtherGoBackToWhatItIsShippedWithWhereNothingElseIsFree) {
    ActionProcess here(kFour, userText(R"({"id":3,"shortcut":"F8"})"));
    std::string file = userText(R"({"id":2,"shortcut":"F8"},{"id":3,"shortcut":"F9"})");
    here.save(file);
    here.catalogue.updateShortcut(4, "F9");
    const ActionsPlan plan = here.save(file);
    // The file had F9 for 3 at the save before; F8, which 3 has here, belongs to 2 now.
    EXPECT_EQ(file, userText(R"({"id":2,"shortcut":"F8"},{"id":4,"shortcut":"F9"})"));
    EXPECT_TRUE(plan.notRestored.empty());
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 3);
    EXPECT_EQ(plan.conflicts[0].ours, "F3");
}

TEST(ActionMerge, LetsTheOtherGoBackToWhatTheFileHadBeforeWhatItHasHere) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":3,"shortcut":"F8"})");
    here.save(file);
    file = userText(R"({"id":3,"shortcut":"F9"})");
    here.catalogue.updateShortcut(4, "F9");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":3,"shortcut":"F8"},{"id":4,"shortcut":"F9"})"));
    EXPECT_TRUE(plan.notRestored.empty());
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 3);
    EXPECT_EQ(plan.conflicts[0].ours, "F8");
    EXPECT_EQ(plan.conflicts[0].theirs, "F9");
}

TEST(ActionMerge, GivesOneShortcutToParentAndChildWhereBothProcessesWantIt) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "board", "", 1)});
    std::string file = userText(R"({"id":1,"shortcut":"F9"})");
    EXPECT_TRUE(here.catalogue.updateShortcut(2, "F9"));
    const ActionsPlan plan = here.save(file);
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_EQ(plan.ofOthers, std::vector<int>{1});
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F9");
    EXPECT_EQ(here.shortcut(2), "F9");
}

// Leaving F1, action 2 takes it from action 1, which still shows it, and then gets it.
TEST(ActionMerge, TakesOverWhoHoldsAShortcutThatIsShippedTwice) {
    ActionProcess here({shippedAction(1, "board", "F1"), shippedAction(2, "board", "F1")},
                       userText(R"({"id":1,"shortcut":"F5"},{"id":2,"shortcut":"F6"})"));
    std::string file = userText("");
    EXPECT_EQ(here.save(file).ofOthers, (std::vector<int>{1, 2}));
    file = userText(R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})");
    EXPECT_EQ(here.save(file).ofOthers, (std::vector<int>{1, 2}));
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F1");
    EXPECT_EQ(here.shortcut(2), "F1");
    EXPECT_EQ(here.holder("board", "F1"), 2);
}

TEST(ActionMerge, SettlesOneShortcutOfLinkedContexts) {
    ActionProcess here({shippedAction(7, "ucpedit", "F7"), shippedAction(9, "brisk3d", "F9")});
    std::string file = userText(R"({"id":9,"shortcut":"F1"})");
    here.catalogue.updateShortcut(7, "F1");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":7,"shortcut":"F1"})"));
    ASSERT_EQ(plan.conflicts.size(), 1U);
    EXPECT_EQ(plan.conflicts[0].action, 9);
}

TEST(ActionMerge, LetsAFamilyGoBackTogether) {
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1), shippedAction(3, "panel", "F3")});
    std::string file = userText(R"({"id":1,"shortcut":"F9"})");
    here.catalogue.updateShortcut(3, "F9");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":3,"shortcut":"F9"})"));
    EXPECT_EQ(plan.conflicts.size(), 2U);
    EXPECT_TRUE(plan.notRestored.empty());
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F1");
    EXPECT_EQ(here.shortcut(2), "F1");
}

TEST(ActionMerge, MergesSwapsOfDifferentActions) {
    ActionProcess here(kFour);
    ActionProcess there(kFour);
    std::string file;
    there.swap(1, 2);
    there.save(file);
    here.swap(3, 4);
    EXPECT_TRUE(here.save(file).notRestored.empty());
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F2");
    EXPECT_EQ(here.shortcut(2), "F1");
    EXPECT_EQ(here.shortcut(3), "F4");
    EXPECT_EQ(here.shortcut(4), "F3");
}

TEST(ActionMerge, WritesAllThatIsInForceWhereTheFileIsGone) {
    ActionProcess here(kFour, userText(R"({"id":2,"shortcut":"F9"})"));
    here.catalogue.updateMenu(1, true);
    EXPECT_EQ(here.plan().text, userText(R"({"id":1,"rmb":true},{"id":2,"shortcut":"F9"})"));
}

TEST(ActionMerge, GoesOnNamingWhatCannotComeBack) {
    ActionProcess here(
        {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "", 1), shippedAction(3, "board", "F3")});
    std::string file;
    here.catalogue.updateShortcut(2, "F9");
    EXPECT_EQ(here.save(file).notRestored.size(), 1U);
    here.catalogue.updateShortcut(3, "F8");
    const ActionsPlan plan = here.save(file);
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].action, 2);
    EXPECT_TRUE(plan.ofOthers.empty());
}

TEST(ActionMerge, TakesAnEntryOfAnotherProcessOutWhereTheActionIsTouched) {
    ActionProcess here(kFour);
    std::string file = userText(R"({"id":2,"shortcut":"F9"})");
    const ActionsPlan plan = here.save(file, {2});
    EXPECT_EQ(file, userText(""));
    EXPECT_TRUE(plan.ofOthers.empty());
}

TEST(ActionMerge, CountsWhatALoadChangesAsChangedHere) {
    ActionProcess here(kFour);
    std::string file;
    here.catalogue.updateShortcut(1, "F8");
    here.save(file);
    here.restart("");
    // The file has what this process wrote, and the load has taken it back.
    EXPECT_EQ(here.save(file).ofOthers, std::vector<int>{});
    EXPECT_EQ(file, userText(""));
}

TEST(ActionMerge, KeepsEntriesForUnknownActionsOfTheFileAsItIsNow) {
    ActionProcess here(kFour, userText(R"({"id":50,"rmb":true})"));
    std::string file = userText(R"({"id":60,"shortcut":"F6"})");
    here.catalogue.updateShortcut(1, "F8");
    here.save(file);
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F8"},{"id":60,"shortcut":"F6"})"));
}

TEST(ActionMerge, KeepsWhatTheFileHasWhereNoActionsAreLoaded) {
    const actions::ObserverRegistry nobody;
    const actions::ActionCatalogue none(nobody);
    const std::string file = userText(R"({"id":2,"shortcut":"F9"})");
    const ActionsPlan plan = host::planActions(none, {}, file);
    EXPECT_EQ(plan.text, file);
    EXPECT_EQ(plan.savedActions, std::vector<int>{2});
    EXPECT_TRUE(plan.notRestored.empty());
    EXPECT_EQ(host::planActions(none, plan.base, file).text, file);
}

/// Two processes change actions at random, each its own half, and save in random order.
TEST(ActionMerge, LosesNothingWhereTwoProcessesChangeDifferentActionsInTurn) {
    for (unsigned seed = 1; seed <= ZELUTIL_MERGE_CASES; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ActionRandom random(seed);
        std::vector<std::string> shipped;
        for (int id = 1; id <= 8; ++id) {
            shipped.push_back(shippedAction(id, id <= 4 ? "board" : "panel", "F" + std::to_string(id)));
        }
        ActionProcess first(shipped);
        ActionProcess second(shipped);
        std::string file;
        for (int turn = 0; turn < 12; ++turn) {
            const bool isFirst = numberBelow(random, 2) == 0;
            ActionProcess& process = isFirst ? first : second;
            const int base = isFirst ? 1 : 5;
            const int one = base + numberBelow(random, 4);
            const int other = base + numberBelow(random, 4);
            if (one != other) {
                process.swap(one, other);
            }
            process.catalogue.updateMenu(one, numberBelow(random, 2) == 0);
            ASSERT_TRUE(process.save(file).conflicts.empty());
        }
        first.save(file);
        second.save(file);
        const ActionProcess next(shipped, file);
        for (int id = 1; id <= 8; ++id) {
            const ActionProcess& owner = id <= 4 ? first : second;
            ASSERT_EQ(next.shortcut(id), owner.shortcut(id)) << id << file;
            ASSERT_EQ(next.inMenu(id), owner.inMenu(id)) << id << file;
        }
    }
}

std::set<int> namedIn(const ActionsPlan& plan) {
    std::set<int> named;
    for (const host::NotRestored& missing : plan.notRestored) {
        named.insert(missing.action);
    }
    return named;
}

/// A start finds entries in vain only for actions that the save has named.
void expectNoOtherWarnings(const std::string& shipped, const ActionsPlan& plan) {
    const std::set<int> named = namedIn(plan);
    for (const host::StartWarning& warning : host::actionWarnings(shipped, plan.text)) {
        const bool isVain = warning.kind == host::StartWarning::Kind::EntryWithoutEffect;
        ASSERT_TRUE(!isVain || named.count(warning.action) != 0) << warning.text << shipped << plan.text;
    }
}

/// Two processes edit the same actions at random and save in turn, and each saves twice.
void expectTheSameASecondTime(unsigned seed, const Kind& kind) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    ActionRandom random(seed);
    const std::vector<Shipped> shipped = randomShipped(random, kind);
    const std::string text = shippedText(shipped);
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue first(nobody);
    actions::ActionCatalogue second(nobody);
    actions::ActionCatalogue* const catalogues[] = {&first, &second};
    host::ActionsBase bases[2];
    for (actions::ActionCatalogue* const catalogue : catalogues) {
        catalogue->load(text, "");
    }
    std::string file;
    bool isWhole = true;
    for (int turn = 0; turn < 6; ++turn) {
        const int who = numberBelow(random, 2);
        editAtRandom(random, *catalogues[who], shipped, kind, numberBelow(random, 4));
        const ActionsPlan plan = host::planActions(*catalogues[who], bases[who], file, {}, 200);
        const ActionsPlan again = host::planActions(*catalogues[who], plan.base, plan.text, {}, 200);
        ASSERT_EQ(again.text, plan.text) << text;
        ASSERT_EQ(namedIn(again), namedIn(plan)) << text << plan.text;
        ASSERT_EQ(again.ofOthers, plan.ofOthers) << text << plan.text;
        ASSERT_TRUE(again.conflicts.empty()) << text << plan.text;
        ASSERT_NO_FATAL_FAILURE(expectNoOtherWarnings(text, plan));
        ASSERT_FALSE(isWhole && plan.losesEntries) << text << file << plan.text;
        isWhole = plan.notRestored.empty();
        file = plan.text;
        bases[who] = plan.base;
    }
}

TEST(ActionMerge, SavesTheSameASecondTime) {
    Kind families;
    families.contexts = 3;
    families.withParent = 50;
    families.editChildren = true;
    Kind twice;
    twice.shippedTwice = true;
    twice.withSharedCommand = 20;
    for (unsigned seed = 1; seed <= ZELUTIL_MERGE_CASES / 3 && !testing::Test::HasFatalFailure(); ++seed) {
        expectTheSameASecondTime(seed, families);
        expectTheSameASecondTime(seed, twice);
    }
}

// --- Entries that the load of a file refuses
// --------------------------------------------------------------------------

TEST(ActionUngranted, AnEntryThatWasRefusedStays) {
    const std::string refused = R"({"id":1,"shortcut":"F3"})";
    ActionProcess here(kFour, userText(refused));
    EXPECT_EQ(here.shortcut(1), "F1");
    std::string file = userText(refused);
    here.catalogue.updateShortcut(2, "F9");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":2,"shortcut":"F9"},{"id":1,"shortcut":"F3"})"));
    EXPECT_FALSE(plan.losesEntries);
    EXPECT_EQ(plan.savedActions, (std::vector<int>{1, 2}));
    // The next process reads what was in force and keeps the entry as well.
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F1");
    EXPECT_EQ(here.shortcut(2), "F9");
    here.catalogue.updateMenu(4, true);
    EXPECT_FALSE(here.save(file).losesEntries);
    EXPECT_EQ(file, userText(R"({"id":2,"shortcut":"F9"},{"id":4,"rmb":true},{"id":1,"shortcut":"F3"})"));
}

TEST(ActionUngranted, AnEntryThatWouldGetItsShortcutNowIsToldAsLost) {
    const std::string refused = R"({"id":1,"shortcut":"F3"})";
    ActionProcess here(kFour, userText(refused));
    std::string file = userText(refused);
    here.catalogue.updateShortcut(3, "F9");
    const ActionsPlan plan = here.save(file);
    EXPECT_EQ(file, userText(R"({"id":3,"shortcut":"F9"})"));
    EXPECT_TRUE(plan.losesEntries);
    here.restart(file);
    EXPECT_EQ(here.shortcut(1), "F1");
}

TEST(ActionUngranted, OfSeveralTheOthersStay) {
    const std::string refused = R"({"id":1,"shortcut":"F3"},{"id":2,"shortcut":"F4"})";
    ActionProcess here(kFour, userText(refused));
    std::string file = userText(refused);
    here.catalogue.updateShortcut(3, "F9");
    EXPECT_TRUE(here.save(file).losesEntries);
    EXPECT_EQ(file, userText(R"({"id":3,"shortcut":"F9"},{"id":2,"shortcut":"F4"})"));
}

TEST(ActionUngranted, AnActionThatWasChangedHereHasWhatItGotHere) {
    const std::string refused = R"({"id":1,"shortcut":"F3"})";
    ActionProcess here(kFour, userText(refused));
    std::string file = userText(refused);
    here.catalogue.updateShortcut(1, "F9");
    EXPECT_FALSE(here.save(file).losesEntries);
    EXPECT_EQ(file, userText(R"({"id":1,"shortcut":"F9"})"));
    // So does one that was reset.
    ActionProcess other(kFour, userText(refused));
    file = userText(refused);
    EXPECT_FALSE(other.save(file, {1}).losesEntries);
    EXPECT_EQ(file, userText(""));
}

TEST(ActionUngranted, AnActionWhoseMenuFlagIsChangedKeepsItToo) {
    const std::string refused = R"({"id":1,"shortcut":"F3"})";
    ActionProcess here(kFour, userText(refused));
    std::string file = userText(refused);
    here.catalogue.updateMenu(1, true);
    EXPECT_FALSE(here.save(file).losesEntries);
    EXPECT_EQ(file, userText(R"({"id":1,"rmb":true},{"id":1,"shortcut":"F3"})"));
}

TEST(ActionUngranted, AnEntryForAChildThatFollowsItsParentIsNone) {
    const std::vector<std::string> family = {shippedAction(1, "board", "F1"), shippedAction(2, "panel", "F1", 1)};
    const std::string inVain = R"({"id":2,"shortcut":"F7"})";
    ActionProcess here(family, userText(inVain));
    EXPECT_EQ(here.shortcut(2), "F1");
    std::string file = userText(inVain);
    here.catalogue.updateMenu(1, true);
    EXPECT_FALSE(here.save(file).losesEntries);
    EXPECT_EQ(file, userText(R"({"id":1,"rmb":true})"));
}

}  // namespace
}  // namespace zelutil::test
