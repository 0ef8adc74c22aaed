#ifndef ZELUTIL_UTIL_MUTEX_H
#define ZELUTIL_UTIL_MUTEX_H

#include <zelutil/export.h>

#include <atomic>

namespace ZelU::Thrd {

/// A lock that its holder may take again. It is taken by making a `Lock`.
///
/// Using one `Mutex` for locking is safe on any number of threads; assigning and destroying it is not.
class ZELUTIL_API Mutex {
public:
    /// Free. Throws `std::bad_alloc`.
    Mutex();

    Mutex(const Mutex&) = delete;

    /// Makes this object another name of `other`'s lock: whoever holds one holds both. What `other` says of being
    /// locked is copied once, and told by each object for itself from then on. The lock is gone with the last object
    /// that names it. The lock this object had before is given up as by its destructor.
    Mutex& operator=(const Mutex& other);

    /// When this object reads as locked and the calling thread holds the lock, releases it once. No thread may be
    /// waiting for the lock, and no `Lock` may outlive the object.
    ~Mutex();

    /// Whether the lock was taken through this object. Advice only: it reads true already while a thread waits for the
    /// lock, and false once any `Lock` on it has ended, though its holder may hold another.
    bool IsLocked() const;

private:
    friend class Lock;
    struct Section;

    void lock();
    void unlock() noexcept;

    Section* section_;
    std::atomic<bool> locked_{false};
};

/// Holds a `Mutex` for its scope: waits for it, and releases it at the end. The mutex must outlive it.
///
///     {
///         const ZelU::Thrd::Lock lock(mutex);
///         ...
///     }
class ZELUTIL_API Lock {
public:
    /// Waits for the mutex and holds it.
    explicit Lock(Mutex& mutex);
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    /// Releases the mutex.
    ~Lock();

private:
    Mutex& mutex_;
};

}  // namespace ZelU::Thrd

#endif
