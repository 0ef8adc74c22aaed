// A kill at any moment of a thread's life. On Windows, a thread that is killed while the system starts or ends it may
// take a lock of the loader with it, and the next thread waits for ever.
#include <zelutil/util/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "support/killable.h"
#include "support/random_text.h"
#include "support/wait_until.h"

namespace ZelU::Thrd {
namespace {

void* count(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return nullptr;
}

TEST(ThreadKill, MeetsTheThreadAnywhere) {
    zelutil::test::RandomText random(5);
    std::atomic<int> calls{0};
    Thread thread;
    for (int i = 0; i < 500; ++i) {
        auto sleep = static_cast<unsigned>(random.below(300));
        thread.Start(zelutil::test::sleepMicroseconds, &sleep);
        Thread copy(thread);
        for (std::size_t yields = random.below(60); yields > 0; --yields) {
            std::this_thread::yield();
        }
        thread.Kill();
        ASSERT_FALSE(thread.IsRunning());
        // However the thread ended, it has let go of the object, which can be started again and is told of the end.
        thread.Start(count, &calls);
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return !thread.IsRunning(); }));
        copy.Join();
    }
    EXPECT_EQ(calls, 500);
}

}  // namespace
}  // namespace ZelU::Thrd
