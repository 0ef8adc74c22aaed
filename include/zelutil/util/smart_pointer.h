#ifndef ZELUTIL_UTIL_SMART_POINTER_H
#define ZELUTIL_UTIL_SMART_POINTER_H

#include <zelutil/export.h>

#include <atomic>
#include <memory>
#include <utility>

namespace Smart {

namespace Exceptions {

/// Every exception of this namespace derives from this.
class ZELUTIL_API Base {
public:
    Base() = default;
    Base(const Base&) = default;
    Base& operator=(const Base&) = default;
    virtual ~Base();
};

/// Something was used against its rules.
class ZELUTIL_API Misuse : public Base {
public:
    Misuse() = default;
    Misuse(const Misuse&) = default;
    Misuse& operator=(const Misuse&) = default;
    ~Misuse() override;
};

}  // namespace Exceptions

namespace PointerExceptions {

/// Every exception of this namespace derives from this.
class ZELUTIL_API Base {
public:
    Base() = default;
    Base(const Base&) = default;
    Base& operator=(const Base&) = default;
    virtual ~Base();
};

/// A pointer without an object was dereferenced.
class ZELUTIL_API UninitializedAccess : public Base {
public:
    UninitializedAccess() = default;
    UninitializedAccess(const UninitializedAccess&) = default;
    UninitializedAccess& operator=(const UninitializedAccess&) = default;
    ~UninitializedAccess() override;
};

}  // namespace PointerExceptions

/// Shares an object among its holders: the last of them deletes it. `T` may be an abstract class, provided that its
/// destructor is virtual.
///
/// Holders of one object may be copied and dropped on several threads; one holder, and the object, are used by one
/// thread at a time.
template <class T>
class Pointer {
public:
    /// Holds nothing, and allocates nothing.
    Pointer() noexcept = default;

    /// Becomes the first holder of an object made by `new`; null is allowed and held as nothing. Where memory is
    /// lacking the object is deleted and std::bad_alloc thrown.
    explicit Pointer(T* object) : object_(object), holders_(object != nullptr ? firstHolder(object) : nullptr) {}

    /// One holder more.
    Pointer(const Pointer& other) noexcept : object_(other.object_), holders_(other.holders_) {
        if (holders_ != nullptr) {
            holders_->fetch_add(1, std::memory_order_relaxed);
        }
    }

    /// Takes the place of `other`, which then holds nothing.
    Pointer(Pointer&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)), holders_(std::exchange(other.holders_, nullptr)) {}

    /// Lets go of what it holds and holds what `other` held. Assigning a pointer to itself changes nothing.
    Pointer& operator=(Pointer other) noexcept {
        std::swap(object_, other.object_);
        std::swap(holders_, other.holders_);
        return *this;
    }

    ~Pointer() {
        if (holders_ != nullptr && holders_->fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete holders_;
            delete object_;
        }
    }

    /// The object, or null.
    T* get() const noexcept { return object_; }

    /// False for one that holds nothing.
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// The object. Throws `PointerExceptions::UninitializedAccess` when there is none.
    T& operator*() const {
        if (object_ == nullptr) {
            throw PointerExceptions::UninitializedAccess();
        }
        return *object_;
    }

    /// As `operator*`.
    T* operator->() const { return &**this; }

private:
    using Count = std::atomic<long>;

    static Count* firstHolder(T* object) {
        std::unique_ptr<T> owner(object);
        Count* const count = new Count(1);
        static_cast<void>(owner.release());
        return count;
    }

    T* object_ = nullptr;
    Count* holders_ = nullptr;
};

}  // namespace Smart

#endif
