#ifndef ZELUTIL_PLATFORM_POSIX_THREAD_LIST_H
#define ZELUTIL_PLATFORM_POSIX_THREAD_LIST_H

#include <pthread.h>

#include "platform/threads.h"

/// The threads of this process that `startThread` started, for the sources of the POSIX seam only.
///
/// POSIX names threads by a pthread_t, which says nothing once its thread has ended. So each started thread has a
/// record in a list, found by a number of our own, and whoever finds the record may still use its pthread_t.
namespace zelutil::platform::posix {

struct ThreadRecord {
    ThreadBody* body;
    ThreadId id;
    pthread_t thread;
    /// Threads that wait for this one's end. The last of them reclaims it; without any, `reclaimEndedThreads` does.
    unsigned waiters;
    /// Is being killed.
    bool killed;
    /// The thread's own: it may be killed at any instruction, but was in a `KillShield` when that was done.
    bool heldBack;
    /// The host's function is over, or is to be: the unloading of the library waits for this thread.
    bool ending;
    /// Has nothing left to do but to end; it can no longer be killed.
    bool finished;
    /// One of the waiters is joining it.
    bool claimed;
    bool joined;
    ThreadRecord* next;
};

/// Guards the list and the flags in it. Whoever locks it has a `KillShield` around that.
extern pthread_mutex_t threadListMutex;

/// Tells those that wait with `threadListMutex` of every change of a flag.
extern pthread_cond_t threadListChanged;

class MutexLock {
public:
    explicit MutexLock(pthread_mutex_t& mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() { pthread_mutex_unlock(&mutex_); }

private:
    pthread_mutex_t& mutex_;
};

// --- Called with the list locked ------------------------------------------------------------------------------------

/// Empties the list in a process that was forked: it has the list, but not the threads.
void forgetThreadsOfOtherProcess();

/// Returns whether a thread but the calling one has still to end though its host's function is over.
bool isAnotherThreadEnding();

/// A number that no listed thread has.
ThreadId unusedThreadId();

/// The record of that number, or null.
ThreadRecord* findThread(ThreadId id);

/// Adds a record, which the list owns from here on.
void listThread(ThreadRecord* record);

/// Takes the record, which the caller owns from here on, out of the list.
void unlistThread(const ThreadRecord* record);

// --- Called without ------------------------------------------------------------------------------------------------

/// The record of the calling thread; null when `startThread` did not start it.
ThreadRecord* currentThreadRecord() noexcept;

/// Tells the calling thread its record.
void setCurrentThreadRecord(ThreadRecord* record);

/// Returns whether this is the process whose threads are listed.
bool isListOfThisProcess();

/// Reclaims the threads that are gone, except those that somebody waits for. Nothing here waits for a thread.
void reclaimEndedThreads();

}  // namespace zelutil::platform::posix

#endif
