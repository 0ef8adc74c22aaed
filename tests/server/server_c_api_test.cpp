#include <zelutil/c_api.h>

#include "server/recording_observer.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using ZelU::Marl::Server;
using zelutil::test::Notifications;
using zelutil::test::RecordingObserver;
using zelutil::test::ThrowingObserver;

TEST(ServerCFunctions, AFreshProcessHasIdZero) {
    EXPECT_EQ(MarlDefaultAppId(), 0);
    EXPECT_EQ(MarlActiveAppId(), 0);
}

TEST(ServerCFunctions, TheDefaultIdIsTheServers) {
    Server::setDefaultAppId(-4);
    EXPECT_EQ(MarlDefaultAppId(), -4);
    EXPECT_EQ(MarlActiveAppId(), -4);
}

TEST(ServerCFunctions, SettingTheActiveIdAnswersTheOldOneAndNotifies) {
    RecordingObserver observer;
    Server::getInstance().attach(&observer);
    EXPECT_EQ(SetActiveAppId(1, 0), 0);
    EXPECT_EQ(MarlActiveAppId(), 1);
    EXPECT_EQ(Server::getInstance().getPreviousAppId(), 0);
    EXPECT_EQ(SetActiveAppId(1, 0), 1);
    EXPECT_EQ(observer.told, (Notifications{{1, false}}));
}

TEST(ServerCFunctions, AnyEditorSwitchButZeroIsTrue) {
    RecordingObserver observer;
    Server::getInstance().attach(&observer);
    SetActiveAppId(1, 1);
    SetActiveAppId(2, -1);
    SetActiveAppId(3, 256);
    SetActiveAppId(4, 0);
    EXPECT_EQ(observer.told, (Notifications{{1, true}, {2, true}, {3, true}, {4, false}}));
}

TEST(ServerCFunctions, TheFindersAnswerComesFirst) {
    Server::getInstance().setActiveEditorFinder([] { return 42; });
    EXPECT_EQ(SetActiveAppId(1, 0), 0);
    EXPECT_EQ(MarlActiveAppId(), 42);
    EXPECT_EQ(SetActiveAppId(2, 0), 1);
    EXPECT_EQ(MarlActiveAppId(), 42);
}

TEST(ServerCFunctions, AnObserversExceptionStaysInsideAndTheIdsAreChanged) {
    struct {
        ThrowingObserver throwing;
        RecordingObserver after;
    } observers;
    Server::getInstance().attach(&observers.throwing);
    Server::getInstance().attach(&observers.after);
    EXPECT_EQ(SetActiveAppId(1, 0), 0);
    EXPECT_EQ(MarlActiveAppId(), 1);
    EXPECT_EQ(SetActiveAppId(2, 1), 1);
    EXPECT_EQ(MarlActiveAppId(), 2);
    EXPECT_EQ(Server::getInstance().getPreviousAppId(), 1);
    EXPECT_EQ(observers.throwing.told, (Notifications{{1, false}, {2, true}}));
    EXPECT_EQ(observers.after.told, Notifications());
}

/// Switches on to application 2 and throws.
class SwitchingThrower : public ThrowingObserver {
public:
    void activeAppChanged(int appId, bool editorSwitch) override {
        if (appId != 2) {
            SetActiveAppId(2, 0);
        }
        ThrowingObserver::activeAppChanged(appId, editorSwitch);
    }
};

TEST(ServerCFunctions, TheOldIdIsAnsweredAlsoWhenAnObserverSwitchesOnAndThrows) {
    SwitchingThrower observer;
    Server::getInstance().setActiveAppId(7, false);
    Server::getInstance().attach(&observer);
    EXPECT_EQ(SetActiveAppId(1, 0), 7);
    EXPECT_EQ(MarlActiveAppId(), 2);
}

TEST(ServerCFunctions, AFindersExceptionStaysInsideAndTheIdSetLastIsTheAnswer) {
    Server::getInstance().setActiveAppId(3, false);
    Server::getInstance().setActiveEditorFinder([]() -> int { throw std::runtime_error("no editor"); });
    EXPECT_EQ(MarlActiveAppId(), 3);
    EXPECT_THROW(Server::getInstance().getActiveAppId(), std::runtime_error);
}

}  // namespace
