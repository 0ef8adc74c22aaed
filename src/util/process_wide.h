#ifndef ZELUTIL_UTIL_PROCESS_WIDE_H
#define ZELUTIL_UTIL_PROCESS_WIDE_H

#include <atomic>
#include <memory>

/// The lifetime of the objects of which a process has one.
///
/// A function-local static object is destroyed among the static objects of the program, before those that were made
/// earlier: a host's static object whose destructor still asks the library would meet a dead one. A `ProcessWide`
/// object lives until the library goes. What destroys it was there before the first static object of a program that is
/// linked with the library, and so comes after the last of them, on every system.
namespace zelutil {

/// The part that is the same for all types.
class ProcessWideBase {
public:
    ProcessWideBase(const ProcessWideBase&) = delete;
    ProcessWideBase& operator=(const ProcessWideBase&) = delete;

protected:
    ProcessWideBase() = default;
    // Nothing is to happen to a static object of this class when its turn comes among the others.
    ~ProcessWideBase() = default;

    /// Has the object destroyed before all that were entered earlier.
    void enter() noexcept;

private:
    friend class ProcessWideObjects;

    virtual void destroy() noexcept = 0;

    ProcessWideBase* enteredBefore_ = nullptr;
};

/// An object that is made at its first use, once, whatever number of threads come at once. To be a static object of the
/// one function that uses it:
///
///     static ProcessWide<Cache> cache([] { return new Cache; });
///     return cache.get();
template <typename T>
class ProcessWide final : ProcessWideBase {
public:
    using Make = T* (*)();

    explicit ProcessWide(Make make) : make_(make), object_(make()) { enter(); }

    /// The object. A host that loads the library itself may have static objects that go after the library's; where one
    /// of those asks, there is a new object, which stays for the rest of the process.
    T& get() {
        T* const object = object_.load(std::memory_order_acquire);
        return object != nullptr ? *object : makeAgain();
    }

private:
    void destroy() noexcept override { delete object_.exchange(nullptr); }

    T& makeAgain() {
        std::unique_ptr<T> made(make_());
        T* object = nullptr;
        // Another thread may have been faster.
        if (object_.compare_exchange_strong(object, made.get())) {
            object = made.release();
        }
        return *object;
    }

    Make make_;
    std::atomic<T*> object_;
};

}  // namespace zelutil

#endif
