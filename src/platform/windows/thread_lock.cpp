// At the end of a process Windows ends all threads but one, wherever they are, and only then calls the destructors of
// static objects. So the lock says which thread holds it, and a holder that is gone is found out.
#include "platform/thread_lock.h"

#include <atomic>

#include "platform/windows/windows_h.h"

namespace zelutil::platform {
namespace {

constexpr DWORD kNobody = 0;

std::atomic<DWORD> holder{kNobody};

/// Asks the system whether the thread runs. A thread whose number has been given to another reads as running.
bool runs(DWORD thread) {
    const HANDLE handle = OpenThread(SYNCHRONIZE, FALSE, thread);
    if (handle == nullptr) {
        return GetLastError() != ERROR_INVALID_PARAMETER;
    }
    const bool ended = WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
    CloseHandle(handle);
    return !ended;
}

/// Gives up the rest of the time slice, and after some tries more than that.
void pause(int tries) {
    constexpr int kShortPauses = 100;
    if (tries < kShortPauses) {
        SwitchToThread();
    } else {
        Sleep(1);
    }
}

}  // namespace

ThreadLock::ThreadLock() noexcept {
    constexpr int kTriesBeforeAQuestion = 110;
    const DWORD self = GetCurrentThreadId();
    for (int tries = 1;; ++tries) {
        DWORD other = kNobody;
        if (holder.compare_exchange_strong(other, self)) {
            return;
        }
        if (tries % kTriesBeforeAQuestion == 0 && !runs(other) && holder.compare_exchange_strong(other, self)) {
            return;
        }
        pause(tries);
    }
}

ThreadLock::~ThreadLock() { holder = kNobody; }

}  // namespace zelutil::platform
