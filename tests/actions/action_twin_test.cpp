#include <zelutil/actions/action_manager.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "actions/steal_shortcut.h"
#include "support/action_twin.h"
#include "support/action_world.h"
#include "support/sanitized.h"

namespace zelutil::test {
namespace {

constexpr int kObservers = 4;
constexpr int kEditsPerWorld = 12;

UCPActionManager& manager() { return UCPActionManager::instance(); }

/// Writes down what it is told and what the manager answers at that moment.
class Recorder final : public IUCPActionObserver {
public:
    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        ActionEvent event = stateNow(actionId);
        event.isShortcut = true;
        event.oldShortcut = oldShortcut;
        event.newShortcut = newShortcut;
        writeDown(event);
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        ActionEvent event = stateNow(actionId);
        event.inMenu = inMenu;
        writeDown(event);
    }

    int number = 0;
    const ActionStock* stock = nullptr;
    std::vector<ActionEvent>* log = nullptr;
    ActionTwin::Reaction reaction;

private:
    void writeDown(const ActionEvent& event) const {
        log->push_back(event);
        reaction(event);
    }

    ActionEvent stateNow(int actionId) const {
        ActionEvent event;
        event.observer = number;
        event.id = actionId;
        event.modifiedNow = manager().isModified();
        event.shortcutNow = manager().getShortcut(actionId);
        for (const int child : manager().getChildActionIds(actionId)) {
            event.childShortcutsNow.push_back(manager().getShortcut(child));
        }
        for (const std::string& context : stock->contexts) {
            for (const std::string& shortcut : stock->shortcuts) {
                event.holdersNow.push_back(manager().getActionIdByShortcut(context, shortcut));
            }
        }
        return event;
    }
};

template <typename T>
bool same(const OverwritableValue<T>& real, const TwinProperty<T>& twin) {
    return real.defaultValue == twin.defaultValue && real.userValue == twin.userValue &&
           real.resetValue == twin.resetValue && real.overwritten == twin.overwritten;
}

bool same(const UCPActionItem& real, const TwinItem& twin) {
    return real.id == twin.id && real.parent_id == twin.parentId && real.name == twin.name && real.icon == twin.icon &&
           real.context == twin.context && real.command == twin.command && same(real.shortcut, twin.shortcut) &&
           same(real.rmb, twin.rmb);
}

/// The manager and its twin, given the same loads, edits and observers.
class Pair {
public:
    using MakeWorld = ActionWorld (*)(Random&);

    Pair(unsigned seed, const ActionStock& stock, MakeWorld makeWorld)
        : random_(seed), stock_(stock), makeWorld_(makeWorld) {
        for (int i = 0; i < kObservers; ++i) {
            Recorder& recorder = recorders_[static_cast<std::size_t>(i)];
            recorder.number = i;
            recorder.stock = &stock_;
            recorder.log = &log_;
            recorder.reaction = [this](const ActionEvent& event) { react(manager(), managerDepth_, event); };
        }
    }
    ~Pair() {
        for (Recorder& recorder : recorders_) {
            manager().detachObserver(&recorder);
        }
    }
    Pair(const Pair&) = delete;
    Pair& operator=(const Pair&) = delete;

    void load() {
        const ActionWorld world = makeWorld_(random_);
        history_ = "load " + world.defaultsText + "\nuser " + world.userText;
        manager().load(world.defaultsText, world.userText);
        twin_.load(world.definitions, world.entries);
    }

    void edit() {
        switch (below(random_, 12)) {
            case 0:
            case 1:
            case 2:
                return editMenu();
            case 3:
            case 4:
                return steal();
            case 5:
                return updateByCommand();
            case 6:
                return changeObservers();
            default:
                return update();
        }
    }

    /// Every answer of the two, and all they told their observers.
    void compare() {
        compareItems();
        compareIndexes();
        compareConflicts();
        EXPECT_EQ(twin_.modified(), manager().isModified());
        EXPECT_EQ(twin_.userText(), manager().getAllUserSettings());
        EXPECT_TRUE(twin_.takeEvents() == log_);
        log_.clear();
    }

    const std::string& history() const { return history_; }

private:
    /// The first observer edits from inside its notifications, and from inside those of these edits.
    template <typename Target>
    void react(Target& target, int& depth, const ActionEvent& event) const {
        constexpr int kDeepest = 2;
        if (event.observer != 0 || depth == kDeepest) {
            return;
        }
        ++depth;
        const int other = 1 + (event.id + depth) % stock_.ids.back();
        if (event.isShortcut) {
            const auto choice = event.oldShortcut.size() + static_cast<std::size_t>(event.id + depth);
            target.updateShortcut(other, stock_.shortcuts[choice % stock_.shortcuts.size()]);
        } else {
            target.updateRMBMenu(other, !event.inMenu);
        }
        --depth;
    }

    void update() {
        const int id = oneOf(random_, stock_.ids);
        const std::string& shortcut = oneOf(random_, stock_.shortcuts);
        history_ += "\nupdate " + std::to_string(id) + " '" + shortcut + "'";
        EXPECT_EQ(twin_.updateShortcut(id, shortcut), manager().updateShortcut(id, shortcut));
    }

    void updateByCommand() {
        const std::string& context = oneOf(random_, stock_.contexts);
        const std::string& command = oneOf(random_, stock_.commands);
        const std::string& shortcut = oneOf(random_, stock_.shortcuts);
        history_ += "\nupdate " + context + " " + command + " '" + shortcut + "'";
        EXPECT_EQ(twin_.updateShortcut(context, command, shortcut),
                  manager().updateShortcut(context, command, shortcut));
    }

    void steal() {
        const int id = oneOf(random_, stock_.ids);
        const std::string& shortcut = oneOf(random_, stock_.shortcuts);
        history_ += "\nsteal " + std::to_string(id) + " '" + shortcut + "'";
        EXPECT_EQ(twin_.stealShortcut(id, shortcut), UCPActionManagerTestPeer::steal(id, shortcut));
    }

    void editMenu() {
        const int id = oneOf(random_, stock_.ids);
        const bool inMenu = below(random_, 2) == 0;
        history_ += "\nmenu " + std::to_string(id) + (inMenu ? " in" : " out");
        twin_.updateRMBMenu(id, inMenu);
        manager().updateRMBMenu(id, inMenu);
    }

    void changeObservers() {
        const int number = below(random_, kObservers);
        Recorder* const recorder = &recorders_[static_cast<std::size_t>(number)];
        const int id = oneOf(random_, stock_.ids);
        switch (below(random_, 6)) {
            case 0:
                history_ += "\ndetach " + std::to_string(number);
                twin_.detach(number);
                return manager().detachObserver(recorder);
            case 1:
                history_ += "\nattach " + std::to_string(number);
                EXPECT_EQ(twin_.attachToAll(number), manager().attachObserver(recorder));
                return;
            default:
                history_ += "\nattach " + std::to_string(number) + " to " + std::to_string(id);
                EXPECT_EQ(twin_.attach(id, number), manager().attachObserver(id, recorder));
        }
    }

    void compareItems() const {
        const std::vector<UCPActionItem> all = manager().getAllActions();
        std::vector<UCPActionItem> menu = manager().getRMBMenuItems();
        ASSERT_EQ(twin_.items().size(), all.size());
        std::size_t i = 0;
        std::size_t inMenu = 0;
        for (const auto& [id, item] : twin_.items()) {
            EXPECT_TRUE(same(all[i++], item)) << "item " << id;
            if (item.rmb.effective()) {
                ASSERT_LT(inMenu, menu.size());
                EXPECT_TRUE(same(menu[inMenu++], item)) << "menu item " << id;
            }
        }
        EXPECT_EQ(inMenu, menu.size());
        for (const int id : stock_.ids) {
            const auto [found, item] = manager().getAction(id);
            const auto expected = twin_.items().find(id);
            EXPECT_EQ(expected != twin_.items().end(), found);
            EXPECT_TRUE(same(item, found ? expected->second : TwinItem())) << "action " << id;
            EXPECT_EQ(twin_.shortcut(id), manager().getShortcut(id));
            EXPECT_EQ(twin_.childIds(id), manager().getChildActionIds(id));
        }
    }

    void compareIndexes() const {
        for (const std::string& context : stock_.contexts) {
            for (const std::string& command : stock_.commands) {
                EXPECT_EQ(twin_.idByCommand(context, command), manager().getActionIdByCommand(context, command));
            }
            for (const std::string& shortcut : stock_.shortcuts) {
                EXPECT_EQ(twin_.idByShortcut(context, shortcut), manager().getActionIdByShortcut(context, shortcut));
                for (const bool fallback : {false, true}) {
                    EXPECT_EQ(twin_.command(context, shortcut, fallback),
                              manager().getCommand(context, shortcut, fallback));
                }
            }
        }
    }

    void compareConflicts() const {
        for (const int id : stock_.ids) {
            for (const std::string& shortcut : stock_.shortcuts) {
                EXPECT_EQ(twin_.isShortcutTaken(id, shortcut), manager().isShortcutTaken(id, shortcut))
                    << id << " '" << shortcut << "'";
            }
        }
    }

    Random random_;
    const ActionStock& stock_;
    const MakeWorld makeWorld_;
    ActionTwin twin_{{stock_.contexts, stock_.shortcuts},
                     [this](const ActionEvent& event) { react(twin_, twinDepth_, event); }};
    int managerDepth_ = 0;
    int twinDepth_ = 0;
    std::array<Recorder, kObservers> recorders_;
    std::vector<ActionEvent> log_;
    std::string history_;
};

/// Until something differs.
void compareWorlds(Pair& pair, int worlds) {
    for (int world = 0; world < worlds && !testing::Test::HasFailure(); ++world) {
        pair.load();
        pair.compare();
        for (int i = 0; i < kEditsPerWorld && !testing::Test::HasFailure(); ++i) {
            pair.edit();
            pair.compare();
        }
    }
    EXPECT_FALSE(testing::Test::HasFailure()) << pair.history();
}

class ActionTwinTest : public testing::TestWithParam<unsigned> {};

/// 4 x 2,000 loads and 24,000 edits; a quarter of them under sanitizers.
TEST_P(ActionTwinTest, ManagerAnswersAndTellsWhatTheTwinDoes) {
    Pair pair(GetParam(), smallStock(), randomActionWorld);
    compareWorlds(pair, casesInTime(2000, 500));
}

/// 4 x 80 loads and 960 edits.
TEST_P(ActionTwinTest, FamiliesOfAnyShapeAnswerAndTellWhatTheTwinsDo) {
    Pair pair(GetParam(), familyStock(), randomActionFamilies);
    compareWorlds(pair, 80);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ActionTwinTest, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace zelutil::test
