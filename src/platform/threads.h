#ifndef ZELUTIL_PLATFORM_THREADS_H
#define ZELUTIL_PLATFORM_THREADS_H

#include <atomic>
#include <cstdint>

/// The system's threads and critical sections, the second part of the porting guide that platform.h begins.
///
/// No function prints. None throws but for lack of memory.
namespace zelutil::platform {

// --- Threads --------------------------------------------------------------------------------------------------------

/// Names a thread that runs, in this process. Never 0 and never `currentThreadHandle()`. The system may give the number
/// to another thread once the first has ended.
using ThreadId = unsigned;

/// What the system has a thread call "the current thread": the same number on every thread, and the name of none.
ThreadId currentThreadHandle();

/// Whether `id` names the calling thread.
bool isCurrentThread(ThreadId id);

/// What a started thread does: two steps, one after the other on the new thread. Neither may throw.
class ThreadBody {
public:
    /// A thread can be killed only while it is inside `sleepKillable` or `callKillable`. Where the system ends it by
    /// unwinding its stack, the objects in `run` are destroyed as by an exception that cannot be caught, and `finish`
    /// is not called.
    virtual void run() = 0;

    /// `self` names the thread. The object may be gone when this returns. From before this call until the thread has
    /// left the library's code the library stays in the process, whoever unloads it.
    virtual void finish(ThreadId self) = 0;

protected:
    ThreadBody() = default;
    ThreadBody(const ThreadBody&) = default;
    ThreadBody& operator=(const ThreadBody&) = default;
    ~ThreadBody() = default;
};

/// Runs `body` on a new thread, with the system's usual stack; nobody need wait for its end. `id` receives the thread's
/// name before the thread begins. False, with `id` 0 and `body` never called, when the system gives no thread.
bool startThread(ThreadBody& body, std::atomic<ThreadId>& id);

/// Waits until the thread has ended. Does nothing when there is none of that name (any more). A thread that waits for
/// itself waits for ever.
void joinThread(ThreadId id);

/// Ends a thread that `startThread` started, as soon as it can be killed, without waiting for that. Does nothing when
/// there is none of that name (any more). A thread may end itself, and then does not return.
///
/// What the thread has locked stays locked where the system does not unwind its stack.
void killThread(ThreadId id);

/// For `ThreadBody::run`: lets at least so many milliseconds pass. 0 returns at once.
void sleepKillable(std::uint32_t milliseconds);

/// For `ThreadBody::run`: calls the function and discards its result, and what it throws.
void callKillable(void* (*function)(void*), void* argument);

/// While one of these lives, the calling thread is not killed by unwinding its stack: what it locks it unlocks.
/// (Killing that does not unwind is not held off; who kills must hold the same lock.)
class KillShield {
public:
    KillShield();
    KillShield(const KillShield&) = delete;
    KillShield& operator=(const KillShield&) = delete;
    /// A thread that was to be killed meanwhile ends later: where it waits or asks the system for something.
    ~KillShield();

    /// Ends the protection now. A thread that was to be killed meanwhile does not return from this.
    void lift();

private:
    int state_ = 0;
    int type_ = 0;
    bool lifted_ = false;
};

// --- Critical sections ----------------------------------------------------------------------------------------------

/// A lock that its holder may take again; it is free when it has been left as often as it was entered.
struct CriticalSection;

/// Throws `std::bad_alloc`.
CriticalSection* createCriticalSection();

/// Destroys it, entered or not. No thread may be waiting to enter.
void destroyCriticalSection(CriticalSection* section) noexcept;

/// Waits until the section is free or the calling thread's own.
void enterCriticalSection(CriticalSection* section) noexcept;

/// Leaves it once. Does nothing when the calling thread is not inside.
void leaveCriticalSection(CriticalSection* section) noexcept;

}  // namespace zelutil::platform

#endif
