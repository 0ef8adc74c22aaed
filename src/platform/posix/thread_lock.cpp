// POSIX systems end no thread that holds this: who is killed has a shield, and the end of a process leaves threads
// running.
#include "platform/thread_lock.h"

#include <sched.h>

#include <atomic>

namespace zelutil::platform {
namespace {

std::atomic_flag isHeld = ATOMIC_FLAG_INIT;

}  // namespace

ThreadLock::ThreadLock() noexcept {
    while (isHeld.test_and_set(std::memory_order_acquire)) {
        sched_yield();
    }
}

ThreadLock::~ThreadLock() { isHeld.clear(std::memory_order_release); }

}  // namespace zelutil::platform
