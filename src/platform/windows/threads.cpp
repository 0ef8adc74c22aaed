// Threads on Windows. Order and contracts: threads.h.
#include "platform/threads.h"

#include <chrono>

#include "platform/discard_exceptions.h"
#include "platform/windows/windows_h.h"

namespace zelutil::platform {
namespace {

constexpr DWORD kExitCodeOfKilled = 1;
constexpr DWORD kMaxWaitForEnd = 2000;

DWORD WINAPI runThread(LPVOID opaque) {
    auto* const body = static_cast<ThreadBody*>(opaque);
    body->run();
    // Held only from here on: a thread that is killed in its function would never give it back.
    HMODULE library = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCSTR>(&runThread), &library);
    body->finish(GetCurrentThreadId());
    FreeLibraryAndExitThread(library, 0);
}

/// The thread with the right `access`; null when there is none. Between a thread's end and this call the system may
/// have given its number to another thread, which is then the one that is opened.
HANDLE openThread(DWORD access, ThreadId id) { return id == 0 ? nullptr : OpenThread(access, FALSE, id); }

}  // namespace

ThreadId currentThreadHandle() { return static_cast<ThreadId>(reinterpret_cast<ULONG_PTR>(GetCurrentThread())); }

bool isCurrentThread(ThreadId id) { return id == GetCurrentThreadId(); }

bool startThread(ThreadBody& body, std::atomic<ThreadId>& id) {
    DWORD name = 0;
    const HANDLE thread = CreateThread(nullptr, 0, runThread, &body, CREATE_SUSPENDED, &name);
    if (thread == nullptr) {
        return false;
    }
    id = name;
    const bool runs = ResumeThread(thread) != static_cast<DWORD>(-1);
    if (!runs) {
        id = 0;
        TerminateThread(thread, kExitCodeOfKilled);
    }
    CloseHandle(thread);
    return runs;
}

void joinThread(ThreadId id) {
    if (const HANDLE thread = openThread(SYNCHRONIZE, id)) {
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    }
}

void killThread(ThreadId id) {
    if (const HANDLE thread = openThread(THREAD_TERMINATE | SYNCHRONIZE, id)) {
        // The call only asks for the end. A thread that the system cannot end at once waits for a driver.
        if (TerminateThread(thread, kExitCodeOfKilled) != 0) {
            WaitForSingleObject(thread, kMaxWaitForEnd);
        }
        CloseHandle(thread);
    }
}

void sleepKillable(std::uint32_t milliseconds) {
    // Sleep may return up to one tick of the system's clock too early.
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (auto now = Clock::now(); now < end; now = Clock::now()) {
        const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(end - now);
        Sleep(static_cast<DWORD>(rest.count()) + 1);
    }
}

void callKillable(void* (*function)(void*), void* argument) {
    discardExceptions([=] { function(argument); });
}

}  // namespace zelutil::platform
