#ifndef ZELUTIL_TESTS_SUPPORT_SCARCE_MEMORY_H
#define ZELUTIL_TESTS_SUPPORT_SCARCE_MEMORY_H

#include <cstddef>
#include <new>

namespace zelutil::test {

/// While one lives, this program's allocations fail after the first `allowed`: by operator new, and by calloc where the
/// library calls it. For a test of internals, whose target compiles scarce_memory.cpp and is linked with --wrap=calloc.
class ScarceMemory {
public:
    explicit ScarceMemory(int allowed);
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;
    ~ScarceMemory();

    /// True when something has been refused.
    bool ranOut() const;

    /// Bytes of the last request by calloc, granted or not.
    static std::size_t lastCleared();
};

/// Runs the work with so little memory that it fails. False when there was enough.
template <typename Work>
bool failsWith(int allowed, Work work) {
    const ScarceMemory scarce(allowed);
    try {
        work();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return scarce.ranOut();
}

}  // namespace zelutil::test

#endif
