// The work that loads and edits of large families take is counted, since a time says nothing on a busy machine.
#include "actions/action_catalogue.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "support/small_stack.h"

namespace zelutil::test {
namespace {

using actions::ActionCatalogue;
using actions::ObserverRegistry;

std::string view(int number) { return "view" + std::to_string(number); }
std::string key(int number) { return "Key" + std::to_string(number); }

/// A shipped text, element by element.
class Shipped {
public:
    void add(int id, int parent, const std::string& context, const std::string& shortcut,
             const std::string& command = "turn") {
        list_ += std::string(list_.empty() ? "" : ",") + R"({"id":)" + std::to_string(id) + R"(,"parent_id":)" +
                 std::to_string(parent) + R"(,"context":")" + context + R"(","command":")" + command +
                 R"(","shortcut":")" + shortcut + R"("})";
    }

    std::string text() const { return "{\"actions\":[" + list_ + "]}"; }

private:
    std::string list_;
};

class ActionGrowth : public testing::Test {
protected:
    /// The work that `job` takes, on a stack of 1 MiB.
    ActionCatalogue::Work workOf(const std::function<void()>& job) {
        const ActionCatalogue::Work before = catalogue.work();
        runOnSmallStack(job);
        return {catalogue.work().looks - before.looks, catalogue.work().changes - before.changes};
    }

    ActionCatalogue::Work load(const Shipped& shipped) {
        const std::string text = shipped.text();
        return workOf([&] { catalogue.load(text, ""); });
    }

    ActionCatalogue::Work update(int id, const std::string& shortcut) {
        return workOf([&] { EXPECT_TRUE(catalogue.updateShortcut(id, shortcut)); });
    }

    ObserverRegistry observers;
    ActionCatalogue catalogue{observers};
};

TEST_F(ActionGrowth, ChainOfDescendingIdsLooksTwicePerChange) {
    constexpr int kCount = 150;
    Shipped shipped;
    for (int id = 1; id <= kCount; ++id) {
        shipped.add(id, id == kCount ? 0 : id + 1, view(id), key(id));
    }
    const ActionCatalogue::Work work = load(shipped);
    // Action 1 takes over what 2 has, then 2 what 3 has and 1 with it, and so on.
    EXPECT_EQ(work.changes, 1U * kCount * (kCount - 1) / 2);
    EXPECT_LE(work.looks, 2 * work.changes);
    for (int id = 1; id <= kCount; ++id) {
        ASSERT_EQ(catalogue.idByShortcut(view(id), key(kCount)), id);
    }
}

TEST_F(ActionGrowth, EditOfTheTopOfALongChainIsOneWalk) {
    constexpr unsigned kCount = 3000;
    Shipped shipped;
    for (int id = 1; id <= static_cast<int>(kCount); ++id) {
        shipped.add(id, id - 1, view(id), "");
    }
    load(shipped);
    const ActionCatalogue::Work work = update(1, "F1");
    EXPECT_EQ(work.changes, kCount);
    EXPECT_LE(work.looks, 2 * kCount);
    EXPECT_EQ(catalogue.idByShortcut(view(kCount), "F1"), static_cast<int>(kCount));
}

TEST_F(ActionGrowth, RefusalAtTheEndOfAChainIsFoundOnce) {
    constexpr unsigned kCount = 1000;
    Shipped shipped;
    for (int id = 1; id <= static_cast<int>(kCount); ++id) {
        shipped.add(id, id - 1, view(id), id == 1 ? "F1" : "");
    }
    shipped.add(kCount + 1, 0, view(kCount), "F1", "stand");
    const ActionCatalogue::Work work = load(shipped);
    EXPECT_EQ(work.changes, 0U);
    EXPECT_LE(work.looks, 2 * kCount);
    EXPECT_EQ(catalogue.idByShortcut(view(2), "F1"), 0);
    EXPECT_EQ(catalogue.shortcutTakenBy(2, "F1"), static_cast<int>(kCount) + 1);
}

TEST_F(ActionGrowth, RefusalThatAppearsOnTheWayDownIsFoundOnce) {
    constexpr unsigned kCount = 1500;
    Shipped shipped;
    for (int id = 1; id <= static_cast<int>(kCount); ++id) {
        // The last action shares the context of its grandparent.
        shipped.add(id, id - 1, view(id == kCount ? kCount - 2 : id), "", id == kCount ? "last" : "turn");
    }
    load(shipped);
    const ActionCatalogue::Work work = update(1, "F1");
    // The grandparent becomes the holder; so the action between the two is refused.
    EXPECT_EQ(work.changes, kCount - 2);
    EXPECT_LE(work.looks, 3 * kCount);
    EXPECT_EQ(catalogue.idByShortcut(view(kCount - 2), "F1"), static_cast<int>(kCount) - 2);
    EXPECT_EQ(catalogue.idByShortcut(view(kCount - 1), "F1"), 0);
}

TEST_F(ActionGrowth, ChainInOneContextStopsAtOnce) {
    constexpr unsigned kCount = 1500;
    Shipped shipped;
    for (int id = 1; id <= static_cast<int>(kCount); ++id) {
        shipped.add(id, id - 1, "board", "", "turn" + std::to_string(id));
    }
    load(shipped);
    const ActionCatalogue::Work work = update(1, "F1");
    EXPECT_EQ(work.changes, 1U);
    EXPECT_LE(work.looks, 3 * kCount);
}

TEST_F(ActionGrowth, ManyChildrenInOneContextAreLookedAtFewTimes) {
    constexpr unsigned kCount = 1500;
    Shipped shipped;
    shipped.add(1, 0, "board", "");
    for (int id = 2; id <= static_cast<int>(kCount); ++id) {
        shipped.add(id, 1, "panel", "", "turn" + std::to_string(id));
    }
    load(shipped);
    const ActionCatalogue::Work work = update(1, "F1");
    // The first child is in the way of all the others.
    EXPECT_EQ(work.changes, 2U);
    EXPECT_LE(work.looks, 3 * kCount);
    EXPECT_EQ(catalogue.idByShortcut("panel", "F1"), 2);
}

/// Edits an action of its own at every notification of another.
class Reactor final : public IUCPActionObserver {
public:
    explicit Reactor(ActionCatalogue& catalogue, int id) : catalogue_(catalogue), id_(id) {}

    void onShortcutChanged(int actionId, const std::string& /*oldShortcut*/,
                           const std::string& /*newShortcut*/) override {
        if (actionId != id_) {
            EXPECT_TRUE(catalogue_.updateShortcut(id_, key(actionId)));
        }
    }
    void onRMBMenuChanged(int /*actionId*/, bool /*inMenu*/) override {}

private:
    ActionCatalogue& catalogue_;
    int id_;
};

TEST_F(ActionGrowth, ObserverThatEditsAtEachOfManyChildrenCostsLittle) {
    constexpr unsigned kCount = 1000;
    Shipped shipped;
    shipped.add(1, 0, view(1), "");
    for (int id = 2; id <= static_cast<int>(kCount); ++id) {
        shipped.add(id, 1, view(id), "");
    }
    shipped.add(kCount + 1, 0, "board", "");
    load(shipped);
    Reactor reactor(catalogue, kCount + 1);
    observers.attach(ObserverRegistry::kAllActions, &reactor);
    const ActionCatalogue::Work work = update(1, "F1");
    EXPECT_EQ(work.changes, 2 * kCount);
    EXPECT_LE(work.looks, 5 * kCount);
}

TEST_F(ActionGrowth, ManyMissingParentsAreAllStoodInFor) {
    constexpr int kCount = 20'000;
    for (const bool ascending : {true, false}) {
        Shipped shipped;
        for (int i = 1; i <= kCount; ++i) {
            shipped.add(kCount + i, ascending ? i : kCount + 1 - i, "board", "", "turn" + std::to_string(i));
        }
        load(shipped);
        const std::vector<UCPActionItem> items = catalogue.items();
        ASSERT_EQ(items.size(), 2U * kCount);
        EXPECT_EQ(items[kCount - 1].id, 0);
        EXPECT_EQ(items[kCount].id, kCount + 1);
        EXPECT_EQ(items.back().id, 2 * kCount);
        EXPECT_NE(catalogue.find(kCount), nullptr);
        EXPECT_EQ(catalogue.find(2 * kCount + 1), nullptr);
    }
}

}  // namespace
}  // namespace zelutil::test
