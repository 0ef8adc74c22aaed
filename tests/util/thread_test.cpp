#include <zelutil/c_api.h>
#include <zelutil/server/server.h>
#include <zelutil/util/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <climits>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include "support/killable.h"
#include "support/process_memory.h"
#include "support/silence.h"
#include "support/wait_until.h"
#include "util/killable_objects.h"

namespace ZelU::Thrd {
namespace {

using zelutil::test::callsOfAbandoned;
using zelutil::test::computeForEver;
using zelutil::test::Progress;
using zelutil::test::sleepForEver;
using zelutil::test::standsStill;
using zelutil::test::waitUntil;
using Clock = std::chrono::steady_clock;

/// A function that stays in the middle until the test lets it go on.
class Gate {
public:
    static void* pass(void* gate) {
        static_cast<Gate*>(gate)->entered_ = true;
        waitUntil([=] { return static_cast<Gate*>(gate)->open_.load(); });
        ++static_cast<Gate*>(gate)->passed_;
        return nullptr;
    }

    bool waitUntilEntered() const {
        return waitUntil([this] { return entered_.load(); });
    }
    void open() { open_ = true; }
    int passed() const { return passed_; }

private:
    std::atomic<bool> entered_{false};
    std::atomic<bool> open_{false};
    std::atomic<int> passed_{0};
};

void* count(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return counter;
}

/// Whether the thread that counts `progress` up is inside its function. On Windows a thread that is killed while it is
/// being started may take a lock of the loader with it.
bool isUnderWay(const Progress& progress) {
    const unsigned long before = progress;
    return waitUntil([&] { return progress > before + 1; });
}

bool waitUntilIdle(const Thread& thread) {
    return waitUntil([&] { return !thread.IsRunning(); });
}

// --- Starting -------------------------------------------------------------------------------------------------------

TEST(Thread, NothingRunsInADefaultOne) {
    Thread thread;
    EXPECT_FALSE(thread.IsRunning());
    thread.Join();
    thread.Kill();
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, ConstructorStartsTheFunctionAtOnce) {
    std::atomic<int> calls{0};
    Thread thread(count, &calls);
    thread.Join();
    EXPECT_EQ(calls, 1);
}

TEST(Thread, NullFunctionRunsNothing) {
    int argument = 0;
    Thread thread(nullptr, &argument);
    EXPECT_FALSE(thread.IsRunning());
    thread.Start(nullptr, &argument);
    EXPECT_FALSE(thread.IsRunning());
    thread.Start(nullptr, &argument, 5);
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, FunctionRunsOnAThreadOfItsOwn) {
    std::thread::id id;
    const auto noteId = [](void* argument) -> void* {
        *static_cast<std::thread::id*>(argument) = std::this_thread::get_id();
        return nullptr;
    };
    Thread thread;
    thread.Start(noteId, &id);
    thread.Join();
    EXPECT_NE(id, std::thread::id());
    EXPECT_NE(id, std::this_thread::get_id());
}

TEST(Thread, NullArgumentIsPassedOn) {
    static std::atomic<bool> gotNull{false};
    Thread thread(
        [](void* argument) -> void* {
            gotNull = argument == nullptr;
            return nullptr;
        },
        nullptr);
    thread.Join();
    EXPECT_TRUE(gotNull);
}

TEST(Thread, ReadsAsRunningUntilTheFunctionEnds) {
    Gate gate;
    Thread thread(Gate::pass, &gate);
    EXPECT_TRUE(thread.IsRunning());
    ASSERT_TRUE(gate.waitUntilEntered());
    EXPECT_TRUE(thread.IsRunning());
    gate.open();
    EXPECT_TRUE(waitUntilIdle(thread));
    EXPECT_EQ(gate.passed(), 1);
}

TEST(Thread, FunctionSeesItsOwnerRunning) {
    struct Seen {
        Thread thread;
        std::atomic<bool> running{false};
    };
    for (int i = 0; i < 200; ++i) {
        Seen seen;
        seen.thread.Start(
            [](void* argument) -> void* {
                auto* const own = static_cast<Seen*>(argument);
                own->running = own->thread.IsRunning();
                return nullptr;
            },
            &seen);
        seen.thread.Join();
        ASSERT_TRUE(seen.running);
    }
}

TEST(Thread, StartWhileAThreadRunsIsIgnored) {
    Gate gate;
    std::atomic<int> calls{0};
    Thread thread(Gate::pass, &gate);
    thread.Start(count, &calls);
    gate.open();
    thread.Join();
    EXPECT_EQ(gate.passed(), 1);
    EXPECT_EQ(calls, 0);
}

TEST(Thread, CanBeStartedAgainAfterItsEnd) {
    std::atomic<int> calls{0};
    Thread thread;
    for (int i = 0; i < 100; ++i) {
        thread.Start(count, &calls);
        if (i % 2 == 0) {
            thread.Join();
        } else {
            ASSERT_TRUE(waitUntilIdle(thread));
        }
        ASSERT_FALSE(thread.IsRunning());
    }
    EXPECT_EQ(calls, 100);
}

TEST(Thread, NothingIsPrinted) {
    zelutil::test::expectSilence([] {
        std::atomic<int> calls{0};
        Thread thread(count, &calls);
        thread.Join();
        thread.Start([](void*) -> void* { throw std::runtime_error("unseen"); }, nullptr);
        thread.Join();
        Progress progress{0};
        thread.Start(sleepForEver, &progress);
        EXPECT_TRUE(isUnderWay(progress));
        thread.Kill();
        EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
    });
}

// --- Delay ----------------------------------------------------------------------------------------------------------

void* noteTime(void* time) {
    *static_cast<Clock::time_point*>(time) = Clock::now();
    return nullptr;
}

TEST(Thread, DelayedFunctionBeginsNoSooner) {
    for (const int delay : {1, 20, 500}) {
        Clock::time_point begin;
        Thread thread;
        const auto start = Clock::now();
        thread.Start(noteTime, &begin, delay);
        EXPECT_TRUE(thread.IsRunning());
        thread.Join();
        EXPECT_GE(begin - start, std::chrono::milliseconds(delay)) << delay;
        EXPECT_LT(begin - start, std::chrono::milliseconds(delay) + std::chrono::seconds(30)) << delay;
    }
}

TEST(Thread, NegativeDelayIsNone) {
    for (const int delay : {0, -1, -500, INT_MIN}) {
        std::atomic<int> calls{0};
        Thread thread;
        thread.Start(count, &calls, delay);
        EXPECT_TRUE(waitUntil([&] { return calls == 1; })) << delay;
        thread.Join();
    }
}

TEST(Thread, KilledInItsDelayItNeverCallsTheFunction) {
    std::atomic<int> calls{0};
    Thread thread;
    thread.Start(count, &calls, 1000);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    thread.Kill();
    EXPECT_FALSE(thread.IsRunning());
    std::this_thread::sleep_for(std::chrono::milliseconds(1000));
    EXPECT_EQ(calls, 0);
}

TEST(Thread, LongestDelayIsNoShortOne) {
    std::atomic<int> calls{0};
    Thread thread;
    thread.Start(count, &calls, INT_MAX);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(thread.IsRunning());
    thread.Kill();
    EXPECT_EQ(calls, 0);
}

// --- The end of the function ----------------------------------------------------------------------------------------

TEST(Thread, EscapingExceptionIsDiscarded) {
    const ThreadFunction throwing[] = {
        [](void*) -> void* { throw std::runtime_error("escapes"); },
        [](void*) -> void* { throw 5; },
        [](void*) -> void* { throw Smart::AssociationExceptions::InitializationFailure(); },
    };
    Thread thread;
    for (const ThreadFunction function : throwing) {
        thread.Start(function, nullptr);
        EXPECT_TRUE(waitUntilIdle(thread));
        thread.Start(function, nullptr);
        thread.Join();
        EXPECT_FALSE(thread.IsRunning());
    }
    std::atomic<int> calls{0};
    thread.Start(count, &calls);
    thread.Join();
    EXPECT_EQ(calls, 1);
}

TEST(Thread, JoinWaitsForTheEnd) {
    std::atomic<int> calls{0};
    Thread thread;
    thread.Start(count, &calls, 50);
    thread.Join();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(thread.IsRunning());
    thread.Join();
}

TEST(Thread, WhatTheFunctionWroteIsSeenAfterItsEnd) {
    int written = 0;
    const auto write = [](void* argument) -> void* {
        ++*static_cast<int*>(argument);
        return nullptr;
    };
    Thread thread(write, &written);
    thread.Join();
    EXPECT_EQ(written, 1);
    thread.Start(write, &written);
    ASSERT_TRUE(waitUntilIdle(thread));
    EXPECT_EQ(written, 2);
}

// --- Object and thread end in any order -----------------------------------------------------------------------------

TEST(Thread, ThreadOutlivesItsObject) {
    Gate gate;
    auto thread = std::make_unique<Thread>(Gate::pass, &gate);
    ASSERT_TRUE(gate.waitUntilEntered());
    thread.reset();
    gate.open();
    EXPECT_TRUE(waitUntil([&] { return gate.passed() == 1; }));
}

TEST(Thread, ObjectMayGoWhileItsThreadIsDelayed) {
    std::atomic<int> calls{0};
    {
        Thread thread;
        thread.Start(count, &calls, 50);
    }
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
}

TEST(Thread, FunctionMayDestroyTheObjectThatRunsIt) {
    struct Own {
        std::unique_ptr<Thread> thread = std::make_unique<Thread>();
        std::atomic<bool> destroyed{false};
    };
    Own own;
    Thread* const thread = own.thread.get();
    thread->Start(
        [](void* argument) -> void* {
            static_cast<Own*>(argument)->thread.reset();
            static_cast<Own*>(argument)->destroyed = true;
            return nullptr;
        },
        &own, 20);
    EXPECT_TRUE(waitUntil([&] { return own.destroyed.load(); }));
}

TEST(Thread, EndedThreadsLeaveNothingOfTheSystemBehind) {
    constexpr int kEach = 150;
    const auto startMany = [] {
        std::atomic<int> calls{0};
        Progress progress{0};
        for (int i = 0; i < kEach; ++i) {
            Thread joined(count, &calls);
            joined.Join();
            Thread awaited(count, &calls);
            waitUntilIdle(awaited);
            Thread killed(sleepForEver, &progress);
            Thread copy(killed);
            ASSERT_TRUE(isUnderWay(progress));
            killed.Kill();
            copy.Join();
        }
    };
    startMany();
    const std::int64_t before = zelutil::test::systemObjects();
    startMany();
    EXPECT_GT(before, 0);
    EXPECT_LT(zelutil::test::systemObjects(), before + kEach / 2);
}

// --- Killing --------------------------------------------------------------------------------------------------------

TEST(Thread, KilledThreadDoesNothingMore) {
    for (const ThreadFunction function : {&sleepForEver, &computeForEver}) {
        Progress progress{0};
        Thread thread(function, &progress);
        ASSERT_TRUE(isUnderWay(progress));
        thread.Kill();
        EXPECT_FALSE(thread.IsRunning());
        EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
    }
}

TEST(Thread, OtherThreadsOutliveAKill) {
    Gate gate;
    Thread other(Gate::pass, &gate);
    ASSERT_TRUE(gate.waitUntilEntered());
    Progress progress{0};
    Thread thread(sleepForEver, &progress);
    ASSERT_TRUE(isUnderWay(progress));
    thread.Kill();
    EXPECT_TRUE(other.IsRunning());
    gate.open();
    other.Join();
    EXPECT_EQ(gate.passed(), 1);
}

TEST(Thread, CanBeStartedAgainAfterAKill) {
    Thread thread;
    for (int i = 0; i < 20; ++i) {
        Progress progress{0};
        thread.Start(sleepForEver, &progress);
        ASSERT_TRUE(isUnderWay(progress));
        thread.Kill();
        // The killed thread does not speak for the new one.
        Gate gate;
        thread.Start(Gate::pass, &gate);
        ASSERT_TRUE(gate.waitUntilEntered());
        EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
        ASSERT_TRUE(thread.IsRunning());
        gate.open();
        thread.Join();
        ASSERT_EQ(gate.passed(), 1);
    }
}

TEST(Thread, KillAfterTheEndDoesNothing) {
    std::atomic<int> calls{0};
    Thread thread(count, &calls);
    Thread copy(thread);
    thread.Join();
    thread.Kill();
    copy.Kill();
    EXPECT_FALSE(copy.IsRunning());
    EXPECT_EQ(calls, 1);
}

TEST(Thread, ObjectMayGoRightAfterItsKill) {
    Progress progress{0};
    {
        Thread thread(sleepForEver, &progress);
        ASSERT_TRUE(isUnderWay(progress));
        thread.Kill();
    }
    EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
}

TEST(Thread, OneThatHasDestroyedThreadObjectsCanBeKilled) {
    callsOfAbandoned = 0;
    for (const ThreadFunction function :
         {&zelutil::test::destroyIdleObjects, &zelutil::test::destroyObjectOfEndedThread,
          &zelutil::test::destroyObjectOfRunningThread}) {
        Progress progress{0};
        Thread thread(function, &progress);
        ASSERT_TRUE(isUnderWay(progress));
        thread.Kill();
        EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
    }
    EXPECT_TRUE(waitUntil([] { return callsOfAbandoned == 1; })) << "the helper is not the one that was killed";
}

class EndlessObserver : public Marl::IServerObserver {
public:
    void activeAppChanged(int, bool) override {
        if (++calls == 1) {
            sleepForEver(&progress);
        }
    }

    Progress progress{0};
    std::atomic<int> calls{0};
};

TEST(Thread, KilledInAnObserverOfACFunctionItEndsAlone) {
    static EndlessObserver observer;
    Marl::Server::getInstance().attach(&observer);
    Thread thread(
        [](void*) -> void* {
            SetActiveAppId(5, 0);
            return nullptr;
        },
        nullptr);
    ASSERT_TRUE(isUnderWay(observer.progress));
    Thread copy(thread);
    thread.Kill();
    EXPECT_TRUE(waitUntil([&] { return standsStill(observer.progress); }));
    // The server is not locked, so the next call waits for the end of the killed one.
    copy.Join();
    EXPECT_EQ(SetActiveAppId(6, 0), 5);
    EXPECT_EQ(observer.calls, 2);
}

// --- Copies ---------------------------------------------------------------------------------------------------------

TEST(Thread, CopyOfAnIdleOneIsIdle) {
    Thread thread;
    Thread copy(thread);
    Thread moved(std::move(thread));
    EXPECT_FALSE(copy.IsRunning());
    EXPECT_FALSE(moved.IsRunning());
    std::atomic<int> calls{0};
    copy.Start(count, &calls);
    copy.Join();
    EXPECT_EQ(calls, 1);
}

TEST(Thread, CopyCanWaitForTheThread) {
    Gate gate;
    auto thread = std::make_unique<Thread>(Gate::pass, &gate);
    Thread copy(*thread);
    Thread moved(std::move(*thread));
    EXPECT_TRUE(copy.IsRunning());
    EXPECT_TRUE(moved.IsRunning());
    EXPECT_TRUE(thread->IsRunning());
    thread.reset();
    gate.open();
    copy.Join();
    EXPECT_EQ(gate.passed(), 1);
    EXPECT_FALSE(copy.IsRunning());
    EXPECT_TRUE(moved.IsRunning());
    moved.Join();
    EXPECT_FALSE(moved.IsRunning());
}

TEST(Thread, ACopyIsNotToldOfTheEndOddity) {
    std::atomic<int> calls{0};
    Thread thread;
    thread.Start(count, &calls, 50);
    Thread copy(thread);
    ASSERT_TRUE(waitUntilIdle(thread));
    EXPECT_TRUE(copy.IsRunning());
    copy.Start(count, &calls);
    copy.Join();
    EXPECT_FALSE(copy.IsRunning());
    EXPECT_EQ(calls, 1);
}

TEST(Thread, TheObjectIsNotToldOfACopysKillOddity) {
    Progress progress{0};
    Thread thread(sleepForEver, &progress);
    Thread copy(thread);
    ASSERT_TRUE(isUnderWay(progress));
    copy.Kill();
    EXPECT_FALSE(copy.IsRunning());
    EXPECT_TRUE(waitUntil([&] { return standsStill(progress); }));
    EXPECT_TRUE(thread.IsRunning());
    thread.Join();
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, SeveralCopiesMayWaitAtOnce) {
    Gate gate;
    Thread thread(Gate::pass, &gate);
    std::atomic<int> joined{0};
    std::vector<std::thread> waiting;
    for (int i = 0; i < 4; ++i) {
        waiting.emplace_back([&] {
            Thread copy(thread);
            copy.Join();
            joined += gate.passed();
        });
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(joined, 0);
    gate.open();
    for (std::thread& one : waiting) {
        one.join();
    }
    EXPECT_EQ(joined, 4);
}

TEST(Thread, ThreadThatWaitsForAnotherCanBeKilled) {
    struct Awaited {
        Gate gate;
        Thread thread{Gate::pass, &gate};
        std::atomic<bool> entered{false};
        std::atomic<bool> returned{false};
    };
    Awaited awaited;
    Thread waiting(
        [](void* argument) -> void* {
            auto* const other = static_cast<Awaited*>(argument);
            Thread copy(other->thread);
            other->entered = true;
            copy.Join();
            other->returned = true;
            return nullptr;
        },
        &awaited);
    ASSERT_TRUE(waitUntil([&] { return awaited.entered.load(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(waiting.IsRunning());
    waiting.Kill();
    EXPECT_TRUE(awaited.thread.IsRunning());
    awaited.gate.open();
    awaited.thread.Join();
    EXPECT_EQ(awaited.gate.passed(), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(awaited.returned);
}

// --- A thread and itself --------------------------------------------------------------------------------------------

struct Self {
    Thread thread;
    std::atomic<bool> entered{false};
    std::atomic<bool> returned{false};
};

TEST(Thread, AFunctionThatJoinsItsOwnThreadWaitsForEverOddity) {
    Self self;
    self.thread.Start(
        [](void* argument) -> void* {
            auto* const own = static_cast<Self*>(argument);
            own->entered = true;
            own->thread.Join();
            own->returned = true;
            return nullptr;
        },
        &self);
    ASSERT_TRUE(waitUntil([&] { return self.entered.load(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(self.returned);
    EXPECT_TRUE(self.thread.IsRunning());
    self.thread.Kill();
    EXPECT_FALSE(self.thread.IsRunning());
}

TEST(Thread, AFunctionThatKillsItsOwnThreadStillReadsAsRunningOddity) {
    Self self;
    self.thread.Start(
        [](void* argument) -> void* {
            auto* const own = static_cast<Self*>(argument);
            own->entered = true;
            own->thread.Kill();
            own->returned = true;
            return nullptr;
        },
        &self);
    Thread copy(self.thread);
    copy.Join();
    EXPECT_TRUE(self.entered);
    EXPECT_FALSE(self.returned);
    EXPECT_TRUE(self.thread.IsRunning());
    self.thread.Join();
    EXPECT_FALSE(self.thread.IsRunning());
}

// --- Types ----------------------------------------------------------------------------------------------------------

TEST(Thread, IsCopiedAndMovedButNotAssigned) {
    EXPECT_TRUE(std::is_copy_constructible_v<Thread>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Thread>);
    EXPECT_FALSE(std::is_copy_assignable_v<Thread>);
    EXPECT_FALSE(std::is_move_assignable_v<Thread>);
}

TEST(AssociationExceptions, FailureIsCaughtAsBase) {
    try {
        throw Smart::AssociationExceptions::InitializationFailure();
    } catch (const Smart::AssociationExceptions::Base& base) {
        EXPECT_NE(dynamic_cast<const Smart::AssociationExceptions::InitializationFailure*>(&base), nullptr);
    }
}

}  // namespace
}  // namespace ZelU::Thrd
