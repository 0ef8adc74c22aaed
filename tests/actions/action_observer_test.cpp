#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "actions/action_fixture.h"

namespace zelutil::test {
namespace {

void loadFamily() { load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), action(3, "board", "z", "F3")}); }

TEST(ActionObserver, AttachingNeedsAnObserverAndAnActionThatIsThere) {
    manager().load("", "");
    Recorder recorder;
    EXPECT_FALSE(manager().attachObserver(1, &recorder));
    loadFamily();
    EXPECT_TRUE(manager().attachObserver(1, &recorder));
    for (const int id : {0, -1, 9}) {
        EXPECT_FALSE(manager().attachObserver(id, &recorder)) << id;
    }
    EXPECT_FALSE(manager().attachObserver(1, nullptr));
    EXPECT_FALSE(manager().attachObserver(nullptr));
    EXPECT_TRUE(manager().attachObserver(&recorder));
}

TEST(ActionObserver, HearsOfItsActionOnly) {
    loadFamily();
    Recorder ofThree;
    ASSERT_TRUE(manager().attachObserver(3, &ofThree));
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    manager().updateRMBMenu(1, true);
    EXPECT_EQ(Events{}, ofThree.take());
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    manager().updateRMBMenu(3, true);
    EXPECT_EQ((Events{"3: 'F3' -> 'F4'", "3: in menu"}), ofThree.take());
}

TEST(ActionObserver, GlobalOneHearsOfEveryActionChildrenFirst) {
    loadFamily();
    Recorder all;
    ASSERT_TRUE(manager().attachObserver(&all));
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_TRUE(manager().updateShortcut(3, ""));
    EXPECT_EQ((Events{"2: 'F1' -> 'F2'", "1: 'F1' -> 'F2'", "3: 'F3' -> ''"}), all.take());
}

TEST(ActionObserver, ObserversOfChildrenAreToldBeforeThoseOfTheParent) {
    loadFamily();
    // One log for both: the parent's is attached first and is told last.
    struct Shared final : IUCPActionObserver {
        void onShortcutChanged(int, const std::string&, const std::string&) override { log->push_back(name); }
        void onRMBMenuChanged(int, bool) override {}
        std::string name;
        std::vector<std::string>* log = nullptr;
    };
    std::vector<std::string> log;
    Shared ofParent;
    ofParent.name = "parent's";
    ofParent.log = &log;
    Shared ofChild;
    ofChild.name = "child's";
    ofChild.log = &log;
    ASSERT_TRUE(manager().attachObserver(1, &ofParent));
    ASSERT_TRUE(manager().attachObserver(2, &ofChild));
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ((std::vector<std::string>{"child's", "parent's"}), log);
    manager().detachObserver(&ofParent);
    manager().detachObserver(&ofChild);
}

TEST(ActionObserver, AttachedTwiceToOneActionIsToldOnce) {
    loadFamily();
    Recorder recorder;
    EXPECT_TRUE(manager().attachObserver(3, &recorder));
    EXPECT_TRUE(manager().attachObserver(3, &recorder));
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ(1U, recorder.take().size());
    manager().detachObserver(&recorder);
    EXPECT_TRUE(manager().updateShortcut(3, "F5"));
    EXPECT_EQ(Events{}, recorder.take());
}

TEST(ActionObserver, AttachedToTheActionAndGloballyIsToldTwice) {
    loadFamily();
    Recorder recorder;
    ASSERT_TRUE(manager().attachObserver(3, &recorder));
    ASSERT_TRUE(manager().attachObserver(&recorder));
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ((Events{"3: 'F3' -> 'F4'", "3: 'F3' -> 'F4'"}), recorder.take());
    EXPECT_TRUE(manager().updateShortcut(1, ""));
    EXPECT_EQ(2U, recorder.take().size());
}

TEST(ActionObserver, ThoseOfTheActionAreToldBeforeGlobalOnesEachInTheOrderOfAddresses) {
    loadFamily();
    struct Numbered final : IUCPActionObserver {
        void onShortcutChanged(int, const std::string&, const std::string&) override { log->push_back(this); }
        void onRMBMenuChanged(int, bool) override { log->push_back(this); }
        std::vector<const Numbered*>* log = nullptr;
    };
    std::vector<const Numbered*> log;
    std::array<Numbered, 4> observers;
    for (Numbered& observer : observers) {
        observer.log = &log;
    }
    manager().attachObserver(&observers[1]);
    manager().attachObserver(&observers[0]);
    manager().attachObserver(3, &observers[3]);
    manager().attachObserver(3, &observers[2]);
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    manager().updateRMBMenu(3, true);
    const std::vector<const Numbered*> once = {&observers[2], &observers[3], &observers[0], &observers[1]};
    ASSERT_EQ(8U, log.size());
    EXPECT_EQ(once, std::vector<const Numbered*>(log.begin(), log.begin() + 4));
    EXPECT_EQ(once, std::vector<const Numbered*>(log.begin() + 4, log.end()));
    for (Numbered& observer : observers) {
        manager().detachObserver(&observer);
    }
}

TEST(ActionObserver, DetachingEndsAllItsAttachmentsAndNoOthers) {
    loadFamily();
    Recorder leaving;
    Recorder staying;
    for (Recorder* const recorder : {&leaving, &staying}) {
        manager().attachObserver(1, recorder);
        manager().attachObserver(3, recorder);
        manager().attachObserver(recorder);
    }
    manager().detachObserver(&leaving);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ(Events{}, leaving.take());
    // Twice for each of the two actions, once for the child of the first.
    EXPECT_EQ(5U, staying.take().size());
}

TEST(ActionObserver, DetachingNullOrAStrangerDoesNothing) {
    loadFamily();
    Recorder attached;
    Recorder stranger;
    manager().attachObserver(3, &attached);
    manager().detachObserver(nullptr);
    manager().detachObserver(&stranger);
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ(1U, attached.take().size());
}

TEST(ActionObserver, DetachedOneCanBeAttachedAgain) {
    loadFamily();
    Recorder recorder;
    manager().attachObserver(3, &recorder);
    manager().detachObserver(&recorder);
    EXPECT_TRUE(manager().attachObserver(3, &recorder));
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ(1U, recorder.take().size());
}

TEST(ActionObserver, StaysAttachedToAnIdThatALoadTakesAwayAndAnotherBringsBack) {
    loadFamily();
    Recorder ofThree;
    manager().attachObserver(3, &ofThree);
    load({action(1, "board", "p", "F1")});
    EXPECT_FALSE(manager().updateShortcut(3, "F4"));
    loadFamily();
    ofThree.take();
    EXPECT_TRUE(manager().updateShortcut(3, "F4"));
    EXPECT_EQ((Events{"3: 'F3' -> 'F4'"}), ofThree.take());
}

TEST(ActionObserver, SeesTheNewStateWhenItAsksBack) {
    loadFamily();
    struct Asking final : IUCPActionObserver {
        void onShortcutChanged(int id, const std::string&, const std::string& now) override {
            EXPECT_EQ(now, manager().getShortcut(id));
            EXPECT_EQ(now, manager().getShortcut(2));
            EXPECT_EQ(1, manager().getActionIdByShortcut("board", now));
            EXPECT_EQ(2, manager().getActionIdByShortcut("panel", now));
            EXPECT_EQ("", manager().getCommand("board", "F1", true));
            EXPECT_TRUE(manager().isModified());
            EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":"F2"}]})", manager().getAllUserSettings());
            ++calls;
        }
        void onRMBMenuChanged(int, bool inMenu) override {
            EXPECT_EQ(inMenu ? 2U : 0U, manager().getRMBMenuItems().size());
            ++calls;
        }
        int calls = 0;
    };
    Asking asking;
    manager().attachObserver(1, &asking);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    manager().updateRMBMenu(1, true);
    EXPECT_EQ(2, asking.calls);
    manager().detachObserver(&asking);
}

/// Does something at its first notification only.
struct Acting final : IUCPActionObserver {
    explicit Acting(std::function<void()> act) : act_(std::move(act)) {}
    void onShortcutChanged(int, const std::string&, const std::string&) override { once(); }
    void onRMBMenuChanged(int, bool) override { once(); }
    void once() {
        if (const std::function<void()> act = std::exchange(act_, nullptr)) {
            act();
        }
    }
    std::function<void()> act_;
};

TEST(ActionObserver, EditFromInsideANotificationIsCarriedOut) {
    loadFamily();
    Acting acting([] { EXPECT_TRUE(manager().updateShortcut(3, "F9")); });
    Recorder all;
    manager().attachObserver(2, &acting);
    manager().attachObserver(&all);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ((Events{"3: 'F3' -> 'F9'", "2: 'F1' -> 'F2'", "1: 'F1' -> 'F2'"}), all.take());
    EXPECT_EQ("F9", manager().getShortcut(3));
    manager().detachObserver(&acting);
}

TEST(ActionObserver, LoadFromInsideANotificationLeavesTheManagerWhole) {
    for (const bool ofMenu : {false, true}) {
        loadFamily();
        Acting acting([] { manager().load("", ""); });
        manager().attachObserver(2, &acting);
        if (ofMenu) {
            manager().updateRMBMenu(1, true);
        } else {
            manager().updateShortcut(1, "F2");
        }
        EXPECT_TRUE(manager().getAllActions().empty());
        EXPECT_EQ(0, manager().getActionIdByShortcut("board", "F2"));
        manager().detachObserver(&acting);
    }
}

TEST(ActionObserver, LoadFromInsideALoadLeavesTheManagerWhole) {
    loadFamily();
    // 4 is a child in the outer text and a top-level action in the inner one, 5 is not in it.
    Acting acting([] { load({action(4, "board", "z", "F4")}); });
    manager().attachObserver(2, &acting);
    load({action(1, "board", "p", "F1"), child(2, 1, "panel", "c"), child(4, 1, "sheet", "c"), child(5, 9, "x", "c")});
    ASSERT_EQ(1U, manager().getAllActions().size());
    EXPECT_EQ("F4", manager().getShortcut(4));
    EXPECT_EQ(4, manager().getActionIdByShortcut("board", "F4"));
    manager().detachObserver(&acting);
}

/// Loads a text once, as soon as an action is told of.
class Reloader final : public IUCPActionObserver {
public:
    Reloader(int when, std::string text) : when_(when), text_(std::move(text)) { manager().attachObserver(this); }
    Reloader(const Reloader&) = delete;
    Reloader& operator=(const Reloader&) = delete;
    ~Reloader() { manager().detachObserver(this); }

    void onShortcutChanged(int actionId, const std::string& /*oldShortcut*/,
                           const std::string& /*newShortcut*/) override {
        if (actionId == when_) {
            when_ = 0;
            manager().load(text_, "");
            modifiedAfterLoad = manager().isModified();
        }
    }
    void onRMBMenuChanged(int /*actionId*/, bool /*inMenu*/) override {}

    bool modifiedAfterLoad = true;

private:
    int when_;
    std::string text_;
};

TEST(ActionObserver, EditThatALoadOvertookStillEndsAsAModification) {
    const std::string shipped = object(list({action(1, "board", "p", "F1"), action(2, "panel", "c", "F1", 1)}));
    manager().load(shipped, "");
    const Reloader reloader(2, shipped);
    Recorder all;
    manager().attachObserver(&all);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ((Events{"2: 'F1' -> 'F2'", "1: 'F1' -> 'F2'"}), all.take());
    EXPECT_FALSE(reloader.modifiedAfterLoad);
    EXPECT_TRUE(manager().isModified());
    EXPECT_EQ("F1", manager().getShortcut(1));
    EXPECT_EQ(2, manager().getActionIdByShortcut("panel", "F1"));
}

}  // namespace
}  // namespace zelutil::test
