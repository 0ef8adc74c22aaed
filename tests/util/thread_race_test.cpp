// Objects and their threads end in every order. What is tested is mostly that the sanitizers keep quiet.
#include <zelutil/util/thread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "support/random_text.h"
#include "support/wait_until.h"

namespace ZelU::Thrd {
namespace {

constexpr int kMostAtOnce = 32;

/// Counts the functions that have been called, and holds the drivers back where too many have not.
struct Calls {
    std::atomic<int> started{0};
    std::atomic<int> finished{0};

    static void* one(void* calls) {
        ++static_cast<Calls*>(calls)->finished;
        return nullptr;
    }

    void begin() {
        waitUntilRoom();
        ++started;
    }
    bool allFinished() const { return finished == started; }

private:
    void waitUntilRoom() const {
        while (started - finished >= kMostAtOnce) {
            std::this_thread::yield();
        }
    }
};

void pause(std::size_t yields) {
    for (; yields > 0; --yields) {
        std::this_thread::yield();
    }
}

/// Starts one thread and lets its object end in one of the ways there are.
void race(Calls& calls, zelutil::test::RandomText& random) {
    calls.begin();
    const int delay = random.below(8) == 0 ? 1 : 0;
    auto thread = std::make_unique<Thread>();
    thread->Start(Calls::one, &calls, delay);
    switch (random.below(5)) {
        case 0:
            break;
        case 1:
            pause(random.below(40));
            break;
        case 2:
            thread->Join();
            break;
        case 3: {
            Thread copy(*thread);
            pause(random.below(10));
            thread.reset();
            copy.Join();
            break;
        }
        default:
            while (thread->IsRunning()) {
                std::this_thread::yield();
            }
            calls.begin();
            thread->Start(Calls::one, &calls);
            break;
    }
}

TEST(ThreadRace, TenThousandObjectsAndThreadsEndInAnyOrder) {
    constexpr unsigned kDrivers = 4;
    constexpr int kRacesEach = 2500;
    Calls calls;
    std::vector<std::thread> drivers;
    for (unsigned driver = 0; driver < kDrivers; ++driver) {
        drivers.emplace_back([&calls, driver] {
            zelutil::test::RandomText random(driver);
            for (int i = 0; i < kRacesEach; ++i) {
                race(calls, random);
            }
        });
    }
    for (std::thread& driver : drivers) {
        driver.join();
    }
    EXPECT_TRUE(zelutil::test::waitUntil([&] { return calls.allFinished(); }));
    EXPECT_GE(calls.finished, 10000);
}

}  // namespace
}  // namespace ZelU::Thrd
