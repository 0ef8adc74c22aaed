#include <zelutil/util/mutex.h>

#include <memory>

#include "platform/critical_section.h"

namespace ZelU::Thrd {

namespace platform = zelutil::platform;

/// The lock itself, and how many objects name it.
struct Mutex::Section {
    platform::CriticalSection* critical;
    std::atomic<unsigned> names;

    /// One name fewer, which reads as locked or not.
    void giveUp(bool locked) noexcept {
        if (locked) {
            platform::leaveCriticalSection(critical);
        }
        if (--names == 0) {
            platform::destroyCriticalSection(critical);
            delete this;
        }
    }
};

Mutex::Mutex() : section_(nullptr) {
    auto section = std::make_unique<Section>();
    section->critical = platform::createCriticalSection();
    section->names = 1;
    section_ = section.release();
}

// Kept deliberately: an assigned object has no lock of its own but shares the other's, flag and all. Part of the
// published behaviour; hosts may depend on it.
Mutex& Mutex::operator=(const Mutex& other) {
    if (section_ != other.section_) {
        ++other.section_->names;
        section_->giveUp(locked_);
        section_ = other.section_;
    }
    locked_ = other.locked_.load();
    return *this;
}

Mutex::~Mutex() { section_->giveUp(locked_); }

bool Mutex::IsLocked() const { return locked_; }

// Kept deliberately: the flag is set before the wait and cleared after the release, so it may be true for a lock that
// another object's holder has, and is false after the first of several releases.
void Mutex::lock() {
    locked_ = true;
    platform::enterCriticalSection(section_->critical);
}

void Mutex::unlock() noexcept {
    platform::leaveCriticalSection(section_->critical);
    locked_ = false;
}

Lock::Lock(Mutex& mutex) : mutex_(mutex) { mutex_.lock(); }

Lock::~Lock() { mutex_.unlock(); }

}  // namespace ZelU::Thrd
