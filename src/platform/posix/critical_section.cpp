// Critical sections on POSIX systems. Order and contracts: critical_section.h.
#include "platform/critical_section.h"

#include <pthread.h>

#include <atomic>
#include <memory>

namespace zelutil::platform {

struct CriticalSection {
    pthread_mutex_t mutex;
    /// The thread inside, or nothing; only that thread finds itself here.
    std::atomic<pthread_t> holder;
    /// Counts how often the holder has entered; only the holder uses it.
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
