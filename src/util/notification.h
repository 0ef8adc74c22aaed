#ifndef ZELUTIL_UTIL_NOTIFICATION_H
#define ZELUTIL_UTIL_NOTIFICATION_H

#include <atomic>
#include <cstdint>

namespace zelutil {

/// One telling of the observers of a `Server`, for its own lifetime. They are numbered, from 1 on: an observer that is
/// attached while others are told is to know the tellings that began without it.
template <typename Server>
class Notification {
public:
    Notification() noexcept : outer_(current_) { current_ = ++begun_; }
    Notification(const Notification&) = delete;
    Notification& operator=(const Notification&) = delete;
    ~Notification() { current_ = outer_; }

    /// Returns the number of the one that began last.
    static std::uint64_t lastBegun() noexcept { return begun_; }

    /// Returns the number of the innermost one in progress.
    static std::uint64_t current() noexcept { return current_; }

private:
    // Servers that different threads have for themselves have these in common.
    inline static std::atomic<std::uint64_t> begun_{0};
    inline static std::atomic<std::uint64_t> current_{0};

    std::uint64_t outer_;
};

}  // namespace zelutil

#endif
