// Threads on POSIX systems. Order and contracts: threads.h.
#include "platform/threads.h"

#include <pthread.h>

#include <cerrno>
#include <ctime>
#include <memory>

#include "platform/kill_shield.h"
#include "platform/posix/forced_unwind.h"
#include "platform/posix/sanitizer.h"
#include "platform/posix/thread_list.h"
#include "platform/posix/unload_guard.h"

namespace zelutil::platform {

using namespace posix;

namespace {

constexpr ThreadId kCurrentThreadHandle = 0xFFFFFFFE;

// For the waits that nothing is to end.
pthread_mutex_t sleepMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t neverHappens = PTHREAD_COND_INITIALIZER;

void* runThread(void* opaque) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    ThreadRecord& record = *static_cast<ThreadRecord*>(opaque);
    setCurrentThreadRecord(&record);
    const LastSteps lastSteps(record);
    record.body->run();
    {
        const MutexLock lock(threadListMutex);
        announceEnd(record);
    }
    record.body->finish(record.id);
    return nullptr;
}

int cancelState() {
    int state = 0;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    pthread_setcancelstate(state, nullptr);
    return state;
}

// A kill unwinds the stack with an exception of its own kind, `ForcedUnwind`. It must be thrown on, and there
// is no object behind a reference to it, which the undefined-behaviour sanitizer would report. The address sanitizer
// does not see it and would take what is left of the unwound frames for errors: a function that can be unwound without
// cleaning up itself leaves nothing where it is compiled without that sanitizer.

/// Calls a function that waits, inside a `KillShield`, and lets the calling thread be killed in it all the same if
/// `callersState` allows that.
template <typename Wait>
__attribute__((no_sanitize("address", "undefined"))) void waitKillable(int callersState, Wait wait) {
    try {
        pthread_setcancelstate(callersState, nullptr);
        wait();
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    } catch (const ForcedUnwind&) {
        forgetFramesBelow(__builtin_frame_address(0));
        throw;
    }
}

/// Waits for a thread's end. The list must be locked when one is made and when it is destroyed.
class Waiter {
public:
    explicit Waiter(ThreadRecord* record) : record_(record) { ++record_->waiters; }
    Waiter(const Waiter&) = delete;
    Waiter& operator=(const Waiter&) = delete;
    ~Waiter() {
        --record_->waiters;
        if (record_->waiters > 0 || !record_->joined) {
            return;
        }
        unlistThread(record_);
        delete record_;
    }

    void wait(int callersState) {
        while (!record_->finished || (record_->claimed && !record_->joined)) {
            waitKillable(callersState, [] { pthread_cond_wait(&threadListChanged, &threadListMutex); });
        }
        if (!record_->joined) {
            join();
        }
    }

private:
    /// Not under the lock: the host's thread-local objects are still to be destroyed, and may need the list.
    void join() {
        record_->claimed = true;
        pthread_mutex_unlock(&threadListMutex);
        pthread_join(record_->thread, nullptr);
        pthread_mutex_lock(&threadListMutex);
        record_->joined = true;
        pthread_cond_broadcast(&threadListChanged);
    }

    ThreadRecord* record_;
};

timespec monotonicTimeAfter(std::uint32_t delayInMilliseconds) {
    constexpr long kNanosecondsPerSecond = 1000000000;
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    time.tv_sec += static_cast<time_t>(delayInMilliseconds / 1000);
    time.tv_nsec += static_cast<long>(delayInMilliseconds % 1000) * 1000000;
    if (time.tv_nsec >= kNanosecondsPerSecond) {
        time.tv_nsec -= kNanosecondsPerSecond;
        ++time.tv_sec;
    }
    return time;
}

/// Kept apart from its caller: an unwinding can begin at any instruction of this function, which is possible only where
/// there is nothing to destroy and nothing to catch.
__attribute__((noinline, no_sanitize("thread"))) void callWhileKillable(void* (*function)(void*), void* argument) {
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
    function(argument);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
}

}  // namespace

ThreadId currentThreadHandle() { return kCurrentThreadHandle; }

bool isCurrentThread(ThreadId id) {
    const ThreadRecord* const self = currentThreadRecord();
    return self != nullptr && self->id == id;
}

bool startThread(ThreadBody& body, std::atomic<ThreadId>& id) {
    auto record = std::make_unique<ThreadRecord>();
    record->body = &body;
    KillShield shield;
    bool started = false;
    {
        // The list stays locked until the record tells the thread: the thread itself may ask for it.
        const MutexLock lock(threadListMutex);
        forgetThreadsOfOtherProcess();
        record->id = unusedThreadId();
        id = record->id;
        started = pthread_create(&record->thread, nullptr, runThread, record.get()) == 0;
        if (started) {
            listThread(record.release());
        } else {
            id = 0;
        }
    }
    reclaimEndedThreads();
    shield.lift();
    return started;
}

void joinThread(ThreadId id) {
    const int callersState = cancelState();
    KillShield shield;
    if (isCurrentThread(id)) {
        const MutexLock lock(sleepMutex);
        for (;;) {
            waitKillable(callersState, [] { pthread_cond_wait(&neverHappens, &sleepMutex); });
        }
    }
    {
        const MutexLock lock(threadListMutex);
        if (ThreadRecord* const record = findThread(id)) {
            Waiter(record).wait(callersState);
        }
    }
    shield.lift();
}

void killThread(ThreadId id) {
    if (isCurrentThread(id)) {
        // Not a cancellation, which would wait for its time where the thread may not be cancelled at once.
        pthread_exit(PTHREAD_CANCELED);
    }
    KillShield shield;
    {
        const MutexLock lock(threadListMutex);
        ThreadRecord* const record = findThread(id);
        if (record != nullptr && !record->finished) {
            announceEnd(*record);
            record->killed = true;
            pthread_cancel(record->thread);
        }
    }
    shield.lift();
}

void sleepKillable(std::uint32_t milliseconds) {
    if (milliseconds == 0) {
        return;
    }
    const timespec end = monotonicTimeAfter(milliseconds);
    const MutexLock lock(sleepMutex);
    // Not one of the sleeping calls: a thread killed in those would confuse the thread sanitizer.
    int result = 0;
    while (result != ETIMEDOUT) {
        waitKillable(PTHREAD_CANCEL_ENABLE,
                     [&] { result = pthread_cond_clockwait(&neverHappens, &sleepMutex, CLOCK_MONOTONIC, &end); });
    }
}

// As `discardExceptions`, but with no frame of its own below the catching one, in which the address sanitizer would
// find leavings.
__attribute__((no_sanitize("address", "undefined"))) void callKillable(void* (*function)(void*), void* argument) {
    try {
        callWhileKillable(function, argument);
    } catch (const ForcedUnwind&) {
        // The thread is being killed; an unwinding that does not go on would end the process.
        forgetFramesBelow(__builtin_frame_address(0));
        throw;
    } catch (...) {
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
        pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
    }
}

}  // namespace zelutil::platform
