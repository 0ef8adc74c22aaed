#include "server/recording_observer.h"
#include "support/virtual_function.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstddef>
#include <functional>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using ZelU::Marl::IServerObserver;
using ZelU::Marl::Server;
using zelutil::test::Notifications;
using zelutil::test::RecordingObserver;
using zelutil::test::ThrowingObserver;

Server& server() { return Server::getInstance(); }

// Addresses to serve as editors.
std::array<char, 4> editors;
void* const kEditorA = &editors[0];
void* const kEditorB = &editors[1];
void* const kEditorC = &editors[2];

// --- A fresh server -------------------------------------------------------------------------------------------------

TEST(Server, IsOneAndTheSame) {
    EXPECT_EQ(&Server::getInstance(), &Server::getInstance());
    static_assert(!std::is_default_constructible_v<Server>);
}

TEST(Server, FirstUsesMayRace) {
    std::array<Server*, 8> seen{};
    std::atomic<std::size_t> waiting{seen.size()};
    std::vector<std::thread> threads;
    for (Server*& one : seen) {
        threads.emplace_back([&waiting, &one] {
            --waiting;
            while (waiting > 0) {
            }
            one = &Server::getInstance();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const Server* const one : seen) {
        EXPECT_EQ(one, &server());
    }
}

TEST(Server, StartsWithTheDefaultIdAsActiveAndPrevious) {
    EXPECT_EQ(Server::defaultAppId(), 0);
    EXPECT_EQ(server().getActiveAppId(), 0);
    EXPECT_EQ(server().getPreviousAppId(), 0);
}

TEST(Server, StartsWithTheDefaultIdSetBeforeItsFirstUse) {
    Server::setDefaultAppId(7);
    EXPECT_EQ(server().getActiveAppId(), 7);
    EXPECT_EQ(server().getPreviousAppId(), 7);
}

TEST(Server, KeepsItsActiveIdWhenTheDefaultIdChanges) {
    server();
    Server::setDefaultAppId(7);
    EXPECT_EQ(Server::defaultAppId(), 7);
    EXPECT_EQ(server().getActiveAppId(), 0);
    EXPECT_EQ(server().getPreviousAppId(), 0);
}

// --- Registration ---------------------------------------------------------------------------------------------------

TEST(ServerRegistration, NumbersEditorsInTheOrderOfRegistration) {
    server().registerApp(kEditorB);
    server().registerApp(kEditorC);
    server().registerApp(kEditorA);
    EXPECT_EQ(server().getApplicationId(kEditorB), 0);
    EXPECT_EQ(server().getApplicationId(kEditorC), 1);
    EXPECT_EQ(server().getApplicationId(kEditorA), 2);
}

TEST(ServerRegistration, TheFirstEditorSharesItsIdWithUnknownOnesOddity) {
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    EXPECT_EQ(server().getApplicationId(kEditorA), 0);
    EXPECT_EQ(server().getApplicationId(kEditorB), 1);
    EXPECT_EQ(server().getApplicationId(kEditorC), 0);
}

TEST(ServerRegistration, ASecondRegistrationChangesNothingAndTakesNoId) {
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    server().registerApp(kEditorA);
    server().registerApp(kEditorC);
    EXPECT_EQ(server().getApplicationId(kEditorA), 0);
    EXPECT_EQ(server().getApplicationId(kEditorB), 1);
    EXPECT_EQ(server().getApplicationId(kEditorC), 2);
}

TEST(ServerRegistration, AskingForAnUnknownEditorDoesNotRegisterIt) {
    EXPECT_EQ(server().getApplicationId(kEditorC), 0);
    Server::setDefaultAppId(5);
    EXPECT_EQ(server().getApplicationId(kEditorC), 5);
    server().registerApp(kEditorA);
    EXPECT_EQ(server().getApplicationId(kEditorA), 5);
}

TEST(ServerRegistration, BeginsAtTheDefaultIdOfTheFirstRegistration) {
    server();
    Server::setDefaultAppId(10);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    EXPECT_EQ(server().getApplicationId(kEditorA), 10);
    EXPECT_EQ(server().getApplicationId(kEditorB), 11);
    EXPECT_EQ(server().getApplicationId(kEditorC), 10);
}

TEST(ServerRegistration, ALaterDefaultIdMovesOnlyTheAnswerForUnknownEditors) {
    Server::setDefaultAppId(10);
    server().registerApp(kEditorA);
    Server::setDefaultAppId(50);
    server().registerApp(kEditorB);
    EXPECT_EQ(server().getApplicationId(kEditorA), 10);
    EXPECT_EQ(server().getApplicationId(kEditorB), 11);
    EXPECT_EQ(server().getApplicationId(kEditorC), 50);
}

TEST(ServerRegistration, NullIsAnEditorLikeAnyOther) {
    server().registerApp(kEditorA);
    server().registerApp(nullptr);
    EXPECT_EQ(server().getApplicationId(nullptr), 1);
}

TEST(ServerRegistration, TheSmallestIdFollowsTheLargest) {
    Server::setDefaultAppId(INT_MAX);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    EXPECT_EQ(server().getApplicationId(kEditorA), INT_MAX);
    EXPECT_EQ(server().getApplicationId(kEditorB), INT_MIN);
}

TEST(ServerRegistration, NotifiesNobody) {
    RecordingObserver observer;
    server().attach(&observer);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    EXPECT_EQ(observer.told, Notifications());
    EXPECT_EQ(server().getActiveAppId(), 0);
}

// --- Making an id active --------------------------------------------------------------------------------------------

TEST(ServerSetActiveAppId, ChangesTheIdsAnswersTheOldOneAndNotifies) {
    RecordingObserver observer;
    server().attach(&observer);
    EXPECT_EQ(server().setActiveAppId(1, false), 0);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(observer.told, (Notifications{{1, false}}));
}

TEST(ServerSetActiveAppId, TheActiveIdAgainChangesNothingAndCallsNobody) {
    RecordingObserver observer;
    server().attach(&observer);
    server().setActiveAppId(1, false);
    observer.told.clear();

    EXPECT_EQ(server().setActiveAppId(1, false), 1);
    EXPECT_EQ(server().setActiveAppId(1, true), 1);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(observer.told, Notifications());
}

TEST(ServerSetActiveAppId, HandsTheEditorSwitchThrough) {
    RecordingObserver observer;
    server().attach(&observer);
    EXPECT_EQ(server().setActiveAppId(4, true), 0);
    EXPECT_EQ(server().setActiveAppId(-3, false), 4);
    EXPECT_EQ(server().getPreviousAppId(), 4);
    EXPECT_EQ(observer.told, (Notifications{{4, true}, {-3, false}}));
}

TEST(ServerSetActiveAppId, OfAnEditorMakesTheEditorsIdActive) {
    RecordingObserver observer;
    server().attach(&observer);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    EXPECT_EQ(server().setActiveAppId(kEditorB, true), 0);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(server().setActiveAppId(kEditorB, true), 1);
    EXPECT_EQ(observer.told, (Notifications{{1, true}}));
}

TEST(ServerSetActiveAppId, OfAnUnknownEditorMakesTheDefaultIdActive) {
    RecordingObserver observer;
    server().attach(&observer);
    Server::setDefaultAppId(9);
    EXPECT_EQ(server().setActiveAppId(kEditorC, false), 0);
    EXPECT_EQ(server().getActiveAppId(), 9);
    EXPECT_EQ(observer.told, (Notifications{{9, false}}));
}

// --- Editor switches ------------------------------------------------------------------------------------------------

TEST(ServerNotifyEditorSwitch, MakesTheEditorsIdActiveAndNotifies) {
    RecordingObserver observer;
    server().attach(&observer);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    server().notifyEditorSwitch(kEditorB);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    EXPECT_EQ(observer.told, (Notifications{{1, true}}));
}

TEST(ServerNotifyEditorSwitch, NotifiesAlsoWhenTheIdIsActiveAlreadyOddity) {
    RecordingObserver first;
    RecordingObserver second;
    server().attach(&first);
    server().attach(&second);
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    server().setActiveAppId(kEditorB, false);
    first.told.clear();
    second.told.clear();

    server().notifyEditorSwitch(kEditorB);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    EXPECT_EQ(first.told, (Notifications{{1, true}}));
    EXPECT_EQ(second.told, (Notifications{{1, true}}));
}

TEST(ServerNotifyEditorSwitch, OfAnUnknownEditorAnnouncesTheDefaultId) {
    RecordingObserver observer;
    server().attach(&observer);
    server().setActiveAppId(3, false);
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(server().getActiveAppId(), 0);
    EXPECT_EQ(server().getPreviousAppId(), 3);
    EXPECT_EQ(observer.told, (Notifications{{3, false}, {0, true}}));
}

// --- The editor finder ----------------------------------------------------------------------------------------------

TEST(ServerFinder, SuppliesTheActiveIdUntilItIsRemoved) {
    server().setActiveAppId(1, false);
    server().setActiveEditorFinder([] { return 42; });
    EXPECT_EQ(server().getActiveAppId(), 42);
    server().setActiveEditorFinder(nullptr);
    EXPECT_EQ(server().getActiveAppId(), 1);
}

TEST(ServerFinder, LeavesTheIdsOfTheServerAlone) {
    RecordingObserver observer;
    server().attach(&observer);
    server().setActiveEditorFinder([] { return 42; });
    EXPECT_EQ(server().setActiveAppId(1, false), 0);
    EXPECT_EQ(server().setActiveAppId(42, false), 1);
    EXPECT_EQ(server().getPreviousAppId(), 1);
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(server().getPreviousAppId(), 42);
    EXPECT_EQ(observer.told, (Notifications{{1, false}, {42, false}, {0, true}}));
    server().setActiveEditorFinder(nullptr);
    EXPECT_EQ(server().getActiveAppId(), 0);
}

// --- Observers ------------------------------------------------------------------------------------------------------

TEST(ServerObservers, AnObserverAttachedTwiceIsCalledOnce) {
    RecordingObserver observer;
    server().attach(&observer);
    server().attach(&observer);
    server().setActiveAppId(1, false);
    EXPECT_EQ(observer.told, (Notifications{{1, false}}));
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(observer.told, (Notifications{{1, false}, {0, true}}));
}

TEST(ServerObservers, AttachingNotifiesNobody) {
    RecordingObserver observer;
    server().attach(&observer);
    EXPECT_EQ(observer.told, Notifications());
}

TEST(ServerObservers, ANullObserverIsIgnored) {
    RecordingObserver observer;
    server().attach(nullptr);
    server().attach(&observer);
    EXPECT_EQ(server().setActiveAppId(1, false), 0);
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(observer.told, (Notifications{{1, false}, {0, true}}));
}

/// Enters itself into a list of its own kind.
class CallOrderObserver : public IServerObserver {
public:
    void activeAppChanged(int, bool) override { order->push_back(this); }

    std::vector<const CallOrderObserver*>* order = nullptr;
};

TEST(ServerObservers, AreCalledInAscendingOrderOfTheirAddresses) {
    std::array<CallOrderObserver, 5> observers;
    std::vector<const CallOrderObserver*> order;
    for (const std::size_t index : {3U, 0U, 4U, 2U, 1U}) {
        observers[index].order = &order;
        server().attach(&observers[index]);
    }
    const std::vector<const CallOrderObserver*> ascending = {&observers[0], &observers[1], &observers[2], &observers[3],
                                                             &observers[4]};
    server().setActiveAppId(1, false);
    EXPECT_EQ(order, ascending);
    order.clear();
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(order, ascending);
}

/// Does what the test says when it is told of something.
class ActingObserver : public IServerObserver {
public:
    void activeAppChanged(int appId, bool editorSwitch) override { act(appId, editorSwitch); }

    std::function<void(int, bool)> act;
};

TEST(ServerObservers, SeeTheIdsChangedAlready) {
    ActingObserver observer;
    int active = -1;
    int previous = -1;
    observer.act = [&](int, bool) {
        active = server().getActiveAppId();
        previous = server().getPreviousAppId();
    };
    server().attach(&observer);
    server().setActiveAppId(1, false);
    EXPECT_EQ(active, 1);
    EXPECT_EQ(previous, 0);
    server().notifyEditorSwitch(kEditorC);
    EXPECT_EQ(active, 0);
    EXPECT_EQ(previous, 1);
}

TEST(ServerObservers, MayAttachOthersAndSwitchAgainWhileNotified) {
    ActingObserver observer;
    RecordingObserver late;
    observer.act = [&](int appId, bool) {
        if (appId == 1) {
            server().attach(&late);
            server().setActiveAppId(2, true);
        }
    };
    server().attach(&observer);
    EXPECT_EQ(server().setActiveAppId(1, false), 0);
    EXPECT_EQ(server().getActiveAppId(), 2);
    EXPECT_EQ(server().getPreviousAppId(), 1);
    ASSERT_FALSE(late.told.empty());
    EXPECT_EQ(late.told.front(), (zelutil::test::Notification{2, true}));
}

TEST(ServerObservers, AnExceptionPassesOutAfterTheIdsAreChangedAndTheRestIsNotCalled) {
    struct {
        RecordingObserver before;
        ThrowingObserver throwing;
        RecordingObserver after;
    } observers;
    server().attach(&observers.after);
    server().attach(&observers.throwing);
    server().attach(&observers.before);

    EXPECT_THROW(server().setActiveAppId(1, false), ThrowingObserver::Thrown);
    EXPECT_EQ(server().getActiveAppId(), 1);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    EXPECT_THROW(server().notifyEditorSwitch(kEditorC), ThrowingObserver::Thrown);
    EXPECT_EQ(server().getActiveAppId(), 0);
    EXPECT_EQ(server().getPreviousAppId(), 1);

    EXPECT_EQ(observers.before.told, (Notifications{{1, false}, {0, true}}));
    EXPECT_EQ(observers.throwing.told, (Notifications{{1, false}, {0, true}}));
    EXPECT_EQ(observers.after.told, Notifications());
}

TEST(ServerObservers, TheOnlyVirtualFunctionHasTheFirstPosition) {
    RecordingObserver observer;
    zelutil::test::virtualFunction<void (*)(void*, int, bool)>(&observer, 0)(&observer, 8, true);
    EXPECT_EQ(observer.told, (Notifications{{8, true}}));
    static_assert(!std::has_virtual_destructor_v<IServerObserver>);
}

// --- Copies ---------------------------------------------------------------------------------------------------------

/// Gives the server a value of its own in each field: editors A and B, the ids 6 and 5, an observer, a finder.
void fill(RecordingObserver& observer) {
    server().registerApp(kEditorA);
    server().registerApp(kEditorB);
    server().setActiveAppId(5, false);
    server().setActiveAppId(6, false);
    server().attach(&observer);
    server().setActiveEditorFinder([] { return 42; });
}

/// Expects what `fill` gave.
void expectFilled(Server& filled, RecordingObserver& observer) {
    EXPECT_EQ(filled.getApplicationId(kEditorB), 1);
    EXPECT_EQ(filled.getPreviousAppId(), 5);
    EXPECT_EQ(filled.getActiveAppId(), 42);
    filled.setActiveEditorFinder(nullptr);
    EXPECT_EQ(filled.getActiveAppId(), 6);
    observer.told.clear();
    filled.setActiveAppId(7, true);
    EXPECT_EQ(observer.told, (Notifications{{7, true}}));
}

TEST(ServerCopies, ACopyHasEveryField) {
    RecordingObserver observer;
    fill(observer);
    Server copy(server());
    expectFilled(copy, observer);
    expectFilled(server(), observer);
}

TEST(ServerCopies, AnAssignedServerHasEveryFieldAndNoneOfItsOwn) {
    RecordingObserver own;
    Server copy(server());
    copy.attach(&own);

    RecordingObserver observer;
    fill(observer);
    copy = server();
    expectFilled(copy, observer);
    EXPECT_EQ(own.told, Notifications());
}

TEST(ServerCopies, AServerThatAnotherIsMadeFromByMoveStaysAsItIs) {
    RecordingObserver observer;
    fill(observer);
    Server moved(std::move(server()));
    expectFilled(server(), observer);
    expectFilled(moved, observer);
}

TEST(ServerCopies, AServerThatIsAssignedByMoveStaysAsItIs) {
    RecordingObserver observer;
    Server assigned(server());
    fill(observer);
    assigned = std::move(server());
    expectFilled(server(), observer);
    expectFilled(assigned, observer);
}

TEST(ServerCopies, ACopyLivesItsOwnLife) {
    RecordingObserver observer;
    Server copy(server());
    copy.attach(&observer);
    copy.setActiveAppId(3, false);
    copy.setActiveEditorFinder([] { return 42; });
    observer.told.clear();

    server().setActiveAppId(9, false);
    EXPECT_EQ(observer.told, Notifications());
    EXPECT_EQ(server().getActiveAppId(), 9);
    EXPECT_EQ(server().getPreviousAppId(), 0);
    copy.setActiveEditorFinder(nullptr);
    EXPECT_EQ(copy.getActiveAppId(), 3);
}

TEST(ServerCopies, ShareOneNumbering) {
    Server copy(server());
    server().registerApp(kEditorA);
    copy.registerApp(kEditorB);
    server().registerApp(kEditorC);
    EXPECT_EQ(server().getApplicationId(kEditorA), 0);
    EXPECT_EQ(copy.getApplicationId(kEditorB), 1);
    EXPECT_EQ(server().getApplicationId(kEditorC), 2);
    EXPECT_EQ(server().getApplicationId(kEditorB), 0);
}

}  // namespace
