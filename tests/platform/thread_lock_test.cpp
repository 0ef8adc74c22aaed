#include "platform/thread_lock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace zelutil::platform {
namespace {

TEST(ThreadLock, CountsOfManyThreadsAreNotLost) {
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&count] {
            for (int j = 0; j < 20'000; ++j) {
                const ThreadLock lock;
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(count, 80'000);
}

TEST(ThreadLock, IsNotTakenFromAHolderThatRuns) {
    std::atomic<bool> held{false};
    std::atomic<bool> released{false};
    std::thread holder([&] {
        const ThreadLock lock;
        held = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1000));
        released = true;
    });
    while (!held) {
        std::this_thread::yield();
    }
    {
        const ThreadLock lock;
        EXPECT_TRUE(released);
    }
    holder.join();
}

}  // namespace
}  // namespace zelutil::platform
