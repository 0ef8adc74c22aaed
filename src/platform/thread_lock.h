#ifndef ZELUTIL_PLATFORM_THREAD_LOCK_H
#define ZELUTIL_PLATFORM_THREAD_LOCK_H

namespace zelutil::platform {

/// Holds, for its scope, the one lock of the process that guards what threads and their objects share. It is held for a
/// few instructions at a time and is not the system's: a thread that is killed while it waits for it leaves nothing
/// behind, and one that was ended by the system while it held it (as Windows ends all threads but one at the end of a
/// process) holds it no longer.
///
/// A caller that may be killed by unwinding has a `KillShield` around it.
class ThreadLock {
public:
    ThreadLock() noexcept;
    ThreadLock(const ThreadLock&) = delete;
    ThreadLock& operator=(const ThreadLock&) = delete;
    ~ThreadLock();
};

}  // namespace zelutil::platform

#endif
