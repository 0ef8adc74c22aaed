#ifndef ZELUTIL_UTIL_THREAD_H
#define ZELUTIL_UTIL_THREAD_H

#include <zelutil/export.h>

#include <atomic>

namespace Smart::AssociationExceptions {

/// Every exception of this namespace derives from this.
class ZELUTIL_API Base {
public:
    Base() = default;
    Base(const Base&) = default;
    Base& operator=(const Base&) = default;
    virtual ~Base();
};

/// The record that associates an object with what it started could not be made.
class ZELUTIL_API InitializationFailure : public Base {
public:
    InitializationFailure() = default;
    InitializationFailure(const InitializationFailure&) = default;
    InitializationFailure& operator=(const InitializationFailure&) = default;
    ~InitializationFailure() override;
};

}  // namespace Smart::AssociationExceptions

namespace ZelU::Thrd {

/// A thread runs such a function. The result is ignored; an exception that leaves the function is discarded.
using ThreadFunction = void* (*)(void* argument);

/// Runs one function on a thread of its own.
///
/// The object and its thread may end in any order: destroying the object neither ends the thread nor waits for it. The
/// argument belongs to the host and must live as long as the function uses it.
///
/// The library may be unloaded once no function runs any more: after `Join`, or when `IsRunning` says false. A thread
/// on its last steps delays that for a moment: on Windows the library itself may be gone only a little after the
/// unloading has returned, elsewhere the unloading waits (up to two seconds, also for a thread that was killed).
///
/// One object must not be started, joined or killed by two threads at once. `IsRunning` may be asked on any thread, and
/// a function may use the object that runs it.
class ZELUTIL_API Thread {
public:
    /// Nothing runs.
    Thread() = default;

    /// Starts `function` at once, as `Start` does.
    Thread(ThreadFunction function, void* argument);

    /// Refers to the thread that `other` runs, which stays `other`'s: this object can ask, join and kill, but is not
    /// told when the function ends. `IsRunning` says true until `Join` or `Kill`. `other` stays as it is, also when
    /// moved.
    Thread(const Thread& other);
    /// The same: a thread is not moved.
    Thread(Thread&& other) noexcept;

    /// There is none, since it is not defined what it would do to the thread of the assigned object.
    Thread& operator=(const Thread&) = delete;

    /// The thread, if one runs, goes on by itself.
    ~Thread();

    /// Starts a thread that lets `delay` milliseconds pass (a negative delay is none) and then calls `function` with
    /// `argument`. Does nothing when `function` is null or while a thread runs.
    ///
    /// When the system gives no thread, nothing runs afterwards and nothing is reported. Throws `std::bad_alloc`, and
    /// `Smart::AssociationExceptions::InitializationFailure` when the record that object and thread share is missing
    /// all the same; nothing runs then either.
    void Start(ThreadFunction function, void* argument, int delay = 0);

    /// Whether a thread was started and, as far as this object was told, is not over yet.
    bool IsRunning() const;

    /// Waits until the thread has ended; afterwards nothing runs. Returns at once when nothing runs.
    ///
    /// A function that joins the thread it runs on waits for ever.
    void Join();

    /// Ends the thread wherever it is; afterwards nothing runs. Does nothing when nothing runs.
    ///
    /// A last resort: what the thread holds (locks, memory, half-made changes) is not given back. On Windows that can
    /// be a lock of the system itself where the thread is killed while it begins or ends. There the call returns when
    /// the thread has ended (or after two seconds), so that the code it ran may be unloaded.
    ///
    /// Elsewhere the call does not wait. The thread is cancelled, asynchronously unless the function asks for less
    /// (pthread_setcanceltype), which destroys the objects of the functions it is in. It ends the whole process when it
    /// strikes
    /// - code that computes while it has objects to destroy, that of this library and of the C++ library included: a
    ///   function that has such objects, or calls either library, asks for deferred cancellation first,
    /// - a destructor or another function that is noexcept, or one that catches every exception and does not throw
    ///   `abi::__forced_unwind` on. The functions of this library let a deferred cancellation pass, those with C
    ///   linkage and the callers of observers among them.
    ///
    /// A thread that is destroying a `Thread` at this very moment ends a little later: where it waits, asks the system
    /// for something or starts, joins or kills a thread.
    ///
    /// A function that kills the thread it runs on does not return from here, however it may be cancelled, and the
    /// object still reads as running.
    void Kill();

    /// An object shares this with each thread that it started and that has not ended; it is opaque to hosts.
    struct LinkBlock;

private:
    static unsigned currentThreadID();
    void onDone();

    /// Null while no thread needs one.
    std::atomic<LinkBlock*> link_{nullptr};
    /// Names the running thread; 0 when nothing runs.
    std::atomic<unsigned> id_{0};
};

}  // namespace ZelU::Thrd

#endif
