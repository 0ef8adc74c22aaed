#ifndef ZELUTIL_PLATFORM_THREADS_H
#define ZELUTIL_PLATFORM_THREADS_H

#include <atomic>
#include <cstdint>

/// The system's threads. No function prints. None throws but for lack of memory.
namespace zelutil::platform {

/// Names a thread that runs, in this process. Never 0 and never `currentThreadHandle()`. The system may give the number
/// to another thread once the first has ended.
using ThreadId = unsigned;

/// The pseudo-handle by which the system has a thread call itself: equal on all threads, and never a `ThreadId`.
ThreadId currentThreadHandle();

/// Whether `id` names the calling thread.
bool isCurrentThread(ThreadId id);

/// Does what a started thread has to do: two steps, one after the other on the new thread. Neither may throw.
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

/// Ends a thread that `startThread` started. Does nothing when there is none of that name (any more). A thread may end
/// itself, and then does not return.
///
/// Where the system does not unwind the thread's stack, this returns when the thread has ended (waiting two seconds at
/// most), and what the thread has locked stays locked. Elsewhere the thread ends as soon as it can be killed, and
/// nobody waits for that.
void killThread(ThreadId id);

/// For `ThreadBody::run`: lets at least so many milliseconds pass. 0 returns at once.
void sleepKillable(std::uint32_t milliseconds);

/// For `ThreadBody::run`: calls the function and discards its result, and what it throws.
void callKillable(void* (*function)(void*), void* argument);

}  // namespace zelutil::platform

#endif
