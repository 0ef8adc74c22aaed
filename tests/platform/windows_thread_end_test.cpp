// Threads that the system ends where they are.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <chrono>

#include "platform/thread_lock.h"
#include "platform/threads.h"
#include "support/wait_until.h"

namespace {

/// Whether `TerminateThread` only promises the end, and after how long it comes; a negative time is never.
std::atomic<bool> endsLater{false};
std::atomic<int> millisecondsUntilEnd{0};

DWORD WINAPI endLater(LPVOID thread);

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the linker gives these names.
using TerminateThreadFunction = decltype(&TerminateThread);

extern "C" {
extern TerminateThreadFunction __real___imp_TerminateThread;
extern TerminateThreadFunction __wrap___imp_TerminateThread;
}

static BOOL WINAPI terminateThread(HANDLE thread, DWORD code) {
    if (!endsLater) {
        return __real___imp_TerminateThread(thread, code);
    }
    HANDLE own = nullptr;
    DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &own, 0, FALSE, DUPLICATE_SAME_ACCESS);
    CloseHandle(CreateThread(nullptr, 0, endLater, own, 0, nullptr));
    return TRUE;
}

TerminateThreadFunction __wrap___imp_TerminateThread = terminateThread;
// NOLINTEND(bugprone-reserved-identifier)

namespace {

DWORD WINAPI endLater(LPVOID thread) {
    if (millisecondsUntilEnd >= 0) {
        Sleep(static_cast<DWORD>(millisecondsUntilEnd.load()));
        __real___imp_TerminateThread(thread, 1);
    }
    CloseHandle(thread);
    return 0;
}

namespace platform = zelutil::platform;

/// Runs until it is killed.
class Endless final : public platform::ThreadBody {
public:
    void run() override {
        entered = true;
        for (;;) {
            Sleep(10);
        }
    }
    void finish(platform::ThreadId) override {}

    std::atomic<bool> entered{false};
};

class WindowsKill : public ::testing::Test {
protected:
    WindowsKill() {
        EXPECT_TRUE(platform::startThread(body, id));
        handle = OpenThread(SYNCHRONIZE | THREAD_TERMINATE, FALSE, id);
        EXPECT_TRUE(zelutil::test::waitUntil([this] { return body.entered.load(); }));
        Sleep(50);
    }
    ~WindowsKill() override { CloseHandle(handle); }

    bool hasEnded() const { return WaitForSingleObject(handle, 0) == WAIT_OBJECT_0; }

    Endless body;
    std::atomic<platform::ThreadId> id{0};
    HANDLE handle = nullptr;
};

TEST_F(WindowsKill, ReturnsWhenTheThreadHasEnded) {
    millisecondsUntilEnd = 300;
    endsLater = true;
    EXPECT_FALSE(hasEnded());
    platform::killThread(id);
    EXPECT_TRUE(hasEnded());
}

TEST_F(WindowsKill, DoesNotWaitForEverForAThreadThatDoesNotEnd) {
    millisecondsUntilEnd = -1;
    endsLater = true;
    const auto start = std::chrono::steady_clock::now();
    platform::killThread(id);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_FALSE(hasEnded());
    endsLater = false;
    platform::killThread(id);
    EXPECT_TRUE(hasEnded());
}

DWORD WINAPI holdForEver(LPVOID held) {
    const platform::ThreadLock lock;
    *static_cast<std::atomic<bool>*>(held) = true;
    for (;;) {
        Sleep(10);
    }
}

TEST(WindowsThreadLock, IsFreeAgainWhenTheSystemHasEndedItsHolder) {
    for (const bool stillOpen : {true, false}) {
        std::atomic<bool> held{false};
        const HANDLE holder = CreateThread(nullptr, 0, holdForEver, &held, 0, nullptr);
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return held.load(); }));
        TerminateThread(holder, 1);
        WaitForSingleObject(holder, INFINITE);
        // As long as a handle is open the system knows the thread, as one that has ended.
        if (!stillOpen) {
            CloseHandle(holder);
        }
        { const platform::ThreadLock lock; }
        { const platform::ThreadLock again; }
        if (stillOpen) {
            CloseHandle(holder);
        }
    }
}

}  // namespace
