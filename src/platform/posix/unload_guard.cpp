#include "platform/posix/unload_guard.h"

#include <ctime>

#include "platform/kill_shield.h"

namespace zelutil::platform::posix {
namespace {

bool isAnyEnding() {
    const MutexLock lock(threadListMutex);
    return isAnotherThreadEnding();
}

/// Runs while the library is being unloaded. It does not wait for ever: an object that the host has destroyed at the
/// end of a thread may wait for the loader, which waits for this.
[[gnu::destructor]] void waitForEndingThreads() {
    constexpr int kMaxWaits = 2000;
    constexpr timespec kOneMillisecond = {0, 1000000};
    if (!isListOfThisProcess()) {
        return;
    }
    const KillShield shield;
    for (int i = 0; i < kMaxWaits; ++i) {
        reclaimEndedThreads();
        if (!isAnyEnding()) {
            return;
        }
        nanosleep(&kOneMillisecond, nullptr);
    }
}

}  // namespace

void announceEnd(ThreadRecord& record) { record.ending = true; }

LastSteps::~LastSteps() {
    {
        const MutexLock lock(threadListMutex);
        announceEnd(record_);
        record_.finished = true;
        pthread_cond_broadcast(&threadListChanged);
    }
    // Those that ended before this one: a host that starts no more threads is left with few.
    reclaimEndedThreads();
}

}  // namespace zelutil::platform::posix
