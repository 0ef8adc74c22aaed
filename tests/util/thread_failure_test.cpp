// These tests show what `Thread` does when the system has no thread and no memory to give.
#include <zelutil/util/mutex.h>
#include <zelutil/util/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <new>

#include "support/scarce_memory.h"
#include "support/silence.h"
#include "support/thread_exhaustion.h"

namespace ZelU::Thrd {
namespace {

using zelutil::test::ScarceMemory;

void* count(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return nullptr;
}

void expectUsable(Thread& thread) {
    std::atomic<int> calls{0};
    thread.Start(count, &calls);
    thread.Join();
    EXPECT_EQ(calls, 1);
}

TEST(ThreadFailure, WithoutAThreadFromTheSystemNothingRunsAndNothingIsReported) {
    std::atomic<int> calls{0};
    Thread thread;
    zelutil::test::expectSilence([&] {
        const zelutil::test::ThreadExhaustion exhaustion;
        thread.Start(count, &calls);
        EXPECT_FALSE(thread.IsRunning());
        thread.Start(count, &calls, 5);
        EXPECT_FALSE(thread.IsRunning());
        Thread constructed(count, &calls);
        EXPECT_FALSE(constructed.IsRunning());
        EXPECT_EQ(exhaustion.refused(), 3);
        thread.Join();
        thread.Kill();
    });
    EXPECT_EQ(calls, 0);
    expectUsable(thread);
}

TEST(ThreadFailure, WithoutMemoryNothingRunsAndTheFailureIsThrown) {
    for (int allowed = 0;; ++allowed) {
        std::atomic<int> calls{0};
        Thread thread;
        bool ranOut = false;
        {
            const ScarceMemory scarce(allowed);
            try {
                thread.Start(count, &calls);
            } catch (const std::bad_alloc&) {
                ranOut = true;
            }
            EXPECT_EQ(ranOut, scarce.ranOut());
        }
        EXPECT_EQ(thread.IsRunning() || calls == 1, !ranOut);
        if (!ranOut) {
            thread.Join();
            EXPECT_EQ(calls, 1);
            break;
        }
        expectUsable(thread);
        EXPECT_EQ(calls, 0);
    }
}

TEST(ThreadFailure, StartingConstructorThrowsWithoutMemory) {
    std::atomic<int> calls{0};
    const ScarceMemory scarce(0);
    EXPECT_THROW(Thread(count, &calls), std::bad_alloc);
    EXPECT_EQ(calls, 0);
}

TEST(MutexFailure, ConstructorThrowsWithoutMemory) {
    int failures = 0;
    for (int allowed = 0;; ++allowed) {
        const ScarceMemory scarce(allowed);
        try {
            const Mutex mutex;
            EXPECT_FALSE(scarce.ranOut());
            break;
        } catch (const std::bad_alloc&) {
            ++failures;
        }
    }
    EXPECT_GE(failures, 1);
}

}  // namespace
}  // namespace ZelU::Thrd
