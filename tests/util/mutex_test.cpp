#include <zelutil/util/mutex.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <new>
#include <thread>
#include <type_traits>
#include <vector>

#include "support/silence.h"
#include "support/wait_until.h"

namespace ZelU::Thrd {
namespace {

using zelutil::test::waitUntil;

/// A `Lock` that does not end, so that its mutex can be destroyed first.
class EndlessLock {
public:
    explicit EndlessLock(Mutex& mutex) { new (memory_) Lock(mutex); }

private:
    alignas(Lock) unsigned char memory_[sizeof(Lock)];
};

/// Another thread that takes the lock as soon as it can, and releases it at once.
class Contender {
public:
    explicit Contender(Mutex& mutex)
        : thread_([this, &mutex] {
              begun_ = true;
              const Lock lock(mutex);
              taken_ = true;
          }) {}
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;
    ~Contender() { thread_.join(); }

    bool mustWait() const {
        waitUntil([this] { return begun_.load(); });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return !taken_;
    }
    bool gotIt() const {
        return waitUntil([this] { return taken_.load(); });
    }

private:
    std::atomic<bool> begun_{false};
    std::atomic<bool> taken_{false};
    std::thread thread_;
};

bool isFree(Mutex& mutex) { return Contender(mutex).gotIt(); }

TEST(Mutex, NewOneIsFree) {
    Mutex mutex;
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_TRUE(isFree(mutex));
    EXPECT_FALSE(mutex.IsLocked());
}

TEST(Mutex, IsLockedWhileALockLives) {
    Mutex mutex;
    for (int i = 0; i < 3; ++i) {
        {
            const Lock lock(mutex);
            EXPECT_TRUE(mutex.IsLocked());
        }
        EXPECT_FALSE(mutex.IsLocked());
    }
}

TEST(Mutex, LockKeepsOtherThreadsOut) {
    Mutex mutex;
    auto lock = std::make_unique<Lock>(mutex);
    const Contender contender(mutex);
    EXPECT_TRUE(contender.mustWait());
    lock.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, CountsOfManyThreadsAreNotLost) {
    Mutex mutex;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < 5000; ++j) {
                const Lock lock(mutex);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(count, 20000);
    EXPECT_FALSE(mutex.IsLocked());
}

TEST(Mutex, HolderMayTakeItAgain) {
    Mutex mutex;
    auto first = std::make_unique<Lock>(mutex);
    auto second = std::make_unique<Lock>(mutex);
    const Contender contender(mutex);
    second.reset();
    EXPECT_TRUE(contender.mustWait());
    first.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, ReadsAsFreeAfterTheFirstOfTwoReleasesOddity) {
    Mutex mutex;
    const Lock first(mutex);
    {
        const Lock second(mutex);
        EXPECT_TRUE(mutex.IsLocked());
    }
    EXPECT_FALSE(mutex.IsLocked());
}

TEST(Mutex, ReadsAsLockedWhileAThreadWaitsOddity) {
    Mutex mutex;
    Mutex sameLock;
    sameLock = mutex;
    auto lock = std::make_unique<Lock>(mutex);
    EXPECT_FALSE(sameLock.IsLocked());
    const Contender contender(sameLock);
    EXPECT_TRUE(contender.mustWait());
    EXPECT_TRUE(sameLock.IsLocked());
    lock.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, DestroyingAHeldOneReleasesIt) {
    auto mutex = std::make_unique<Mutex>();
    Mutex sameLock;
    sameLock = *mutex;
    const EndlessLock lock(*mutex);
    const Contender contender(sameLock);
    EXPECT_TRUE(contender.mustWait());
    mutex.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, DestroyingAHeldOneReleasesItOnce) {
    auto mutex = std::make_unique<Mutex>();
    auto heldCopy = std::make_unique<Mutex>();
    Mutex sameLock;
    sameLock = *mutex;
    const EndlessLock first(*mutex);
    const EndlessLock second(*mutex);
    *heldCopy = *mutex;
    EXPECT_TRUE(heldCopy->IsLocked());
    const Contender contender(sameLock);
    mutex.reset();
    EXPECT_TRUE(contender.mustWait());
    heldCopy.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, HeldOneWithNoOtherNameIsDestroyed) {
    zelutil::test::expectSilence([] {
        auto once = std::make_unique<Mutex>();
        const EndlessLock lock(*once);
        once.reset();
        auto twice = std::make_unique<Mutex>();
        const EndlessLock first(*twice);
        const EndlessLock second(*twice);
        twice.reset();
    });
}

TEST(Mutex, DestroyingAFreeOneWithACopiedFlagReleasesNothing) {
    Mutex sameLock;
    auto copy = std::make_unique<Mutex>();
    {
        const Lock lock(sameLock);
        *copy = sameLock;
    }
    EXPECT_TRUE(copy->IsLocked());
    copy.reset();
    // The lock still counts right.
    auto lock = std::make_unique<Lock>(sameLock);
    const Contender contender(sameLock);
    EXPECT_TRUE(contender.mustWait());
    lock.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, OnlyItsHolderReleasesItByDestroying) {
    Mutex sameLock;
    auto first = std::make_unique<Mutex>();
    auto second = std::make_unique<Mutex>();
    *first = sameLock;
    std::atomic<bool> held{false};
    std::atomic<bool> go{false};
    std::thread holder([&] {
        const EndlessLock lock(*first);
        *second = *first;
        held = true;
        waitUntil([&] { return go.load(); });
        second.reset();
    });
    ASSERT_TRUE(waitUntil([&] { return held.load(); }));
    {
        const Contender contender(sameLock);
        first.reset();
        EXPECT_TRUE(contender.mustWait());
        go = true;
        EXPECT_TRUE(contender.gotIt());
    }
    holder.join();
}

TEST(Mutex, AssignedOnesShareTheLockOddity) {
    Mutex mutex;
    Mutex sameLock;
    sameLock = mutex;
    auto lock = std::make_unique<Lock>(mutex);
    const Contender contender(sameLock);
    EXPECT_TRUE(contender.mustWait());
    lock.reset();
    EXPECT_TRUE(contender.gotIt());
}

TEST(Mutex, AssignmentCopiesTheFlagOddity) {
    Mutex held;
    const Lock lock(held);
    Mutex copy;
    copy = held;
    EXPECT_TRUE(copy.IsLocked());
    const Mutex free;
    copy = free;
    EXPECT_FALSE(copy.IsLocked());
    EXPECT_TRUE(held.IsLocked());
}

TEST(Mutex, SharedLockGoesWithItsLastName) {
    for (const bool firstGoesFirst : {true, false}) {
        auto first = std::make_unique<Mutex>();
        auto second = std::make_unique<Mutex>();
        *second = *first;
        (firstGoesFirst ? first : second).reset();
        Mutex& left = firstGoesFirst ? *second : *first;
        EXPECT_FALSE(left.IsLocked());
        EXPECT_TRUE(isFree(left));
        const Lock lock(left);
        EXPECT_TRUE(left.IsLocked());
    }
}

TEST(Mutex, AssigningToAHeldOneReleasesWhatItHad) {
    Mutex mutex;
    Mutex sameLock;
    sameLock = mutex;
    const EndlessLock lock(mutex);
    const Contender contender(sameLock);
    EXPECT_TRUE(contender.mustWait());
    const Mutex another;
    mutex = another;
    EXPECT_TRUE(contender.gotIt());
    EXPECT_FALSE(mutex.IsLocked());
}

TEST(Mutex, AssigningToItselfChangesNothing) {
    Mutex mutex;
    Mutex& same = mutex;
    {
        const Lock lock(mutex);
        mutex = same;
        EXPECT_TRUE(mutex.IsLocked());
    }
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_TRUE(isFree(mutex));
}

TEST(Mutex, AssignmentUnderALockIsSurvivedByTheLock) {
    Mutex mutex;
    const Mutex another;
    {
        const Lock lock(mutex);
        mutex = another;
    }
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_TRUE(isFree(mutex));
}

TEST(Mutex, IsAssignedButNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Mutex>);
    EXPECT_FALSE(std::is_move_constructible_v<Mutex>);
    EXPECT_TRUE(std::is_copy_assignable_v<Mutex>);
    EXPECT_FALSE(std::is_copy_constructible_v<Lock>);
    EXPECT_FALSE(std::is_copy_assignable_v<Lock>);
    EXPECT_FALSE((std::is_convertible_v<Mutex&, Lock>));
}

}  // namespace
}  // namespace ZelU::Thrd
