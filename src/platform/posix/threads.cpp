// Threads and critical sections on POSIX systems. Order and contracts: threads.h.
//
// POSIX names threads by a pthread_t, which says nothing once its thread has ended. So each started thread has a record
// in a list, found by a number of our own, and whoever finds the record may still use its pthread_t.
#include <cxxabi.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <memory>

#include "platform/threads.h"

// There only where the program is built with the address sanitizer.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" [[gnu::weak]] void __asan_unpoison_memory_region(const volatile void* begin, std::size_t size);

namespace zelutil::platform {
namespace {

struct ThreadRecord {
    ThreadBody* body;
    ThreadId id;
    pthread_t thread;
    /// Threads that wait for this one's end. The last of them reclaims it; without any, `reclaimEnded` does.
    unsigned waiters;
    /// The host's function is over, or is to be: the unloading of the library waits for this thread.
    bool ending;
    /// Has nothing left to do but to end; it can no longer be killed.
    bool finished;
    /// One of the waiters is joining it.
    bool claimed;
    bool joined;
    ThreadRecord* next;
};

constexpr ThreadId kCurrentThreadHandle = 0xFFFFFFFE;

// Guards the list and the flags in it. Without constructor and destructor, because threads may outlive static objects.
pthread_mutex_t recordsMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t recordsChanged = PTHREAD_COND_INITIALIZER;
ThreadRecord* allRecords = nullptr;
ThreadId lastThreadId = 0;
/// The process whose threads are in the list: a forked one has the list, but not the threads.
std::atomic<pid_t> listedProcess{0};

// For the waits that nothing is to end.
pthread_mutex_t sleepMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t neverHappens = PTHREAD_COND_INITIALIZER;

/// Whoever may be killed has a `KillShield` around it.
class MutexLock {
public:
    explicit MutexLock(pthread_mutex_t& mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() { pthread_mutex_unlock(&mutex_); }

private:
    pthread_mutex_t& mutex_;
};

ThreadRecord* find(ThreadId id) {
    ThreadRecord* record = allRecords;
    while (record != nullptr && record->id != id) {
        record = record->next;
    }
    return record;
}

ThreadId unusedId() {
    do {
        ++lastThreadId;
    } while (lastThreadId == 0 || lastThreadId == kCurrentThreadHandle || find(lastThreadId) != nullptr);
    return lastThreadId;
}

void unlist(const ThreadRecord* record) {
    ThreadRecord** link = &allRecords;
    while (*link != record) {
        link = &(*link)->next;
    }
    *link = record->next;
}

void deleteAll(ThreadRecord* first) {
    while (first != nullptr) {
        const std::unique_ptr<ThreadRecord> own(first);
        first = first->next;
    }
}

/// Reclaims the threads that are gone, except those that somebody waits for. Nothing here waits for a thread.
void reclaimEnded() {
    ThreadRecord* gone = nullptr;
    {
        const MutexLock lock(recordsMutex);
        ThreadRecord* next = nullptr;
        for (ThreadRecord* record = allRecords; record != nullptr; record = next) {
            next = record->next;
            if (record->finished && record->waiters == 0 && pthread_tryjoin_np(record->thread, nullptr) == 0) {
                unlist(record);
                record->next = gone;
                gone = record;
            }
        }
    }
    // Not under the lock: a thread that was killed while it asked for memory may wait here for ever.
    deleteAll(gone);
}

/// The last thing a started thread does, whether its body returned or is being unwound. It stays in the list until
/// another reclaims it, because it is still in the library's code when this is done.
class Ending {
public:
    explicit Ending(ThreadRecord* record) : record_(record) {}
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;
    ~Ending() {
        tellWaiters();
        // Those that ended before this one: a host that starts no more threads is left with few.
        reclaimEnded();
    }

private:
    void tellWaiters() {
        const MutexLock lock(recordsMutex);
        record_->ending = true;
        record_->finished = true;
        pthread_cond_broadcast(&recordsChanged);
    }

    ThreadRecord* record_;
};

void* runThread(void* opaque) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    auto* const record = static_cast<ThreadRecord*>(opaque);
    const Ending ending(record);
    record->body->run();
    {
        const MutexLock lock(recordsMutex);
        record->ending = true;
    }
    record->body->finish(record->id);
    return nullptr;
}

bool anotherIsEnding() {
    const MutexLock lock(recordsMutex);
    const ThreadRecord* record = allRecords;
    while (record != nullptr && (!record->ending || pthread_equal(record->thread, pthread_self()) != 0)) {
        record = record->next;
    }
    return record != nullptr;
}

/// Runs while the library is being unloaded: a thread must not be in the library's code when that goes.
///
/// Not for ever: what the host has destroyed at the end of a thread may wait for the loader, which waits for this.
[[gnu::destructor]] void waitForEndingThreads() {
    constexpr int kMostWaits = 2000;
    constexpr timespec kOneMillisecond = {0, 1000000};
    if (listedProcess != getpid()) {
        return;
    }
    const KillShield shield;
    for (int i = 0; i < kMostWaits; ++i) {
        reclaimEnded();
        if (!anotherIsEnding()) {
            return;
        }
        nanosleep(&kOneMillisecond, nullptr);
    }
}

int cancelState() {
    int state = 0;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    pthread_setcancelstate(state, nullptr);
    return state;
}

// A kill unwinds the stack with an exception of its own kind, `abi::__forced_unwind`. It must be thrown on, and there
// is no object behind a reference to it, which the undefined-behaviour sanitizer would report. The address sanitizer
// does not see it and would take what is left of the unwound frames for errors: a function that can be unwound without
// cleaning up itself leaves nothing where it is compiled without that sanitizer.

/// Tells the address sanitizer that nothing lives just below `frame`, whatever was unwound there.
void forgetFramesBelow(const void* frame) {
    constexpr std::size_t kEnoughForCleaningUp = std::size_t{64} << 10;
    if (__asan_unpoison_memory_region != nullptr) {
        __asan_unpoison_memory_region(static_cast<const char*>(frame) - kEnoughForCleaningUp, kEnoughForCleaningUp);
    }
}

/// Calls a function that waits, inside a `KillShield`, and lets the calling thread be killed in it all the same if
/// `callersState` allows that.
template <typename Wait>
__attribute__((no_sanitize("address", "undefined"))) void waitKillable(int callersState, Wait wait) {
    try {
        pthread_setcancelstate(callersState, nullptr);
        wait();
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    } catch (const abi::__forced_unwind&) {
        forgetFramesBelow(__builtin_frame_address(0));
        throw;
    }
}

/// One that waits for a thread's end, with the list locked at both ends of its life.
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
        unlist(record_);
        delete record_;
    }

    void wait(int callersState) {
        while (!record_->finished || (record_->claimed && !record_->joined)) {
            waitKillable(callersState, [] { pthread_cond_wait(&recordsChanged, &recordsMutex); });
        }
        if (!record_->joined) {
            join();
        }
    }

private:
    /// The end is near, but the host's thread-local objects are still to be destroyed, which may need the list.
    void join() {
        record_->claimed = true;
        pthread_mutex_unlock(&recordsMutex);
        pthread_join(record_->thread, nullptr);
        pthread_mutex_lock(&recordsMutex);
        record_->joined = true;
        pthread_cond_broadcast(&recordsChanged);
    }

    ThreadRecord* record_;
};

timespec monotonicTimeAfter(std::uint32_t milliseconds) {
    constexpr long kNanosecondsPerSecond = 1000000000;
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    time.tv_sec += static_cast<time_t>(milliseconds / 1000);
    time.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
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
    KillShield shield;
    bool same = false;
    {
        const MutexLock lock(recordsMutex);
        const ThreadRecord* const record = find(id);
        same = record != nullptr && pthread_equal(record->thread, pthread_self()) != 0;
    }
    shield.lift();
    return same;
}

bool startThread(ThreadBody& body, std::atomic<ThreadId>& id) {
    auto record = std::make_unique<ThreadRecord>();
    record->body = &body;
    KillShield shield;
    bool started = false;
    {
        // The list stays locked until the record tells the thread: the thread itself may ask for it.
        const MutexLock lock(recordsMutex);
        if (listedProcess.exchange(getpid()) != getpid()) {
            allRecords = nullptr;
        }
        record->id = unusedId();
        id = record->id;
        started = pthread_create(&record->thread, nullptr, runThread, record.get()) == 0;
        if (started) {
            record->next = allRecords;
            allRecords = record.release();
        } else {
            id = 0;
        }
    }
    reclaimEnded();
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
        const MutexLock lock(recordsMutex);
        if (ThreadRecord* const record = find(id)) {
            Waiter(record).wait(callersState);
        }
    }
    shield.lift();
}

void killThread(ThreadId id) {
    KillShield shield;
    {
        const MutexLock lock(recordsMutex);
        ThreadRecord* const record = find(id);
        if (record != nullptr && !record->finished) {
            record->ending = true;
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

__attribute__((no_sanitize("address", "undefined"))) void callKillable(void* (*function)(void*), void* argument) {
    try {
        callWhileKillable(function, argument);
    } catch (const abi::__forced_unwind&) {
        // The thread is being killed; an unwinding that does not go on would end the process.
        forgetFramesBelow(__builtin_frame_address(0));
        throw;
    } catch (...) {
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
        pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
    }
}

KillShield::KillShield() {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state_);
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &type_);
}

KillShield::~KillShield() {
    // The type stays deferred: with the other one the thread could be unwound from here, and no destructor may be.
    if (!lifted_) {
        pthread_setcancelstate(state_, nullptr);
    }
}

void KillShield::lift() {
    lifted_ = true;
    pthread_setcanceltype(type_, nullptr);
    pthread_setcancelstate(state_, nullptr);
}

struct CriticalSection {
    pthread_mutex_t mutex;
    /// The thread inside, or nothing; only that thread finds itself here.
    std::atomic<pthread_t> holder;
    /// How often it has entered; the holder's alone.
    unsigned depth;
};

CriticalSection* createCriticalSection() {
    auto section = std::make_unique<CriticalSection>();
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&section->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    return section.release();
}

void destroyCriticalSection(CriticalSection* section) noexcept {
    while (section->holder.load() == pthread_self()) {
        leaveCriticalSection(section);
    }
    // One that another thread holds may not be destroyed as such; all it owns is its memory.
    if (section->holder.load() == pthread_t{}) {
        pthread_mutex_destroy(&section->mutex);
    }
    delete section;
}

void enterCriticalSection(CriticalSection* section) noexcept {
    pthread_mutex_lock(&section->mutex);
    section->holder.store(pthread_self());
    ++section->depth;
}

void leaveCriticalSection(CriticalSection* section) noexcept {
    if (section->holder.load() != pthread_self()) {
        return;
    }
    --section->depth;
    if (section->depth == 0) {
        section->holder.store(pthread_t{});
    }
    pthread_mutex_unlock(&section->mutex);
}

}  // namespace zelutil::platform
