#ifndef ZELUTIL_PLATFORM_POSIX_SANITIZER_H
#define ZELUTIL_PLATFORM_POSIX_SANITIZER_H

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define ZELUTIL_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZELUTIL_ADDRESS_SANITIZER
#endif
#endif

#ifdef ZELUTIL_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace zelutil::platform::posix {

/// Tells the address sanitizer, where the library is built with it, that nothing lives just below `frame`, whatever was
/// unwound there.
inline void forgetFramesBelow([[maybe_unused]] const void* frame) {
#ifdef ZELUTIL_ADDRESS_SANITIZER
    constexpr std::size_t kEnoughForCleaningUp = std::size_t{64} << 10;
    __asan_unpoison_memory_region(static_cast<const char*>(frame) - kEnoughForCleaningUp, kEnoughForCleaningUp);
#endif
}

}  // namespace zelutil::platform::posix

#endif
