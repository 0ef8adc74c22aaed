#include "platform/posix/thread_list.h"

#include <unistd.h>

#include <atomic>
#include <memory>

namespace zelutil::platform::posix {

// Without constructor and destructor, because threads may outlive static objects.
pthread_mutex_t threadListMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t threadListChanged = PTHREAD_COND_INITIALIZER;

namespace {

ThreadRecord* allRecords = nullptr;
ThreadId lastThreadId = 0;
std::atomic<pid_t> listedProcess{0};
thread_local ThreadRecord* ownRecord = nullptr;

void deleteAll(ThreadRecord* first) {
    while (first != nullptr) {
        const std::unique_ptr<ThreadRecord> own(first);
        first = first->next;
    }
}

}  // namespace

void forgetThreadsOfOtherProcess() {
    if (listedProcess.exchange(getpid()) != getpid()) {
        allRecords = nullptr;
    }
}

bool isAnotherThreadEnding() {
    const ThreadRecord* record = allRecords;
    while (record != nullptr && (!record->ending || pthread_equal(record->thread, pthread_self()) != 0)) {
        record = record->next;
    }
    return record != nullptr;
}

ThreadId unusedThreadId() {
    do {
        ++lastThreadId;
    } while (lastThreadId == 0 || lastThreadId == currentThreadHandle() || findThread(lastThreadId) != nullptr);
    return lastThreadId;
}

ThreadRecord* findThread(ThreadId id) {
    ThreadRecord* record = allRecords;
    while (record != nullptr && record->id != id) {
        record = record->next;
    }
    return record;
}

void listThread(ThreadRecord* record) {
    record->next = allRecords;
    allRecords = record;
}

void unlistThread(const ThreadRecord* record) {
    ThreadRecord** link = &allRecords;
    while (*link != record) {
        link = &(*link)->next;
    }
    *link = record->next;
}

ThreadRecord* currentThreadRecord() noexcept { return ownRecord; }

void setCurrentThreadRecord(ThreadRecord* record) { ownRecord = record; }

bool isListOfThisProcess() { return listedProcess == getpid(); }

void reclaimEndedThreads() {
    ThreadRecord* gone = nullptr;
    {
        const MutexLock lock(threadListMutex);
        ThreadRecord* next = nullptr;
        for (ThreadRecord* record = allRecords; record != nullptr; record = next) {
            next = record->next;
            if (record->finished && record->waiters == 0 && pthread_tryjoin_np(record->thread, nullptr) == 0) {
                unlistThread(record);
                record->next = gone;
                gone = record;
            }
        }
    }
    // Not under the lock: a thread that was killed while it asked for memory may wait here for ever.
    deleteAll(gone);
}

}  // namespace zelutil::platform::posix
