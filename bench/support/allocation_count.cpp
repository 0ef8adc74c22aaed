#include "support/allocation_count.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t allocations = 0;

void* allocate(std::size_t size) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

void* allocate(std::size_t size, std::align_val_t alignment) noexcept {
    ++allocations;
    const std::size_t unit = static_cast<std::size_t>(alignment);
    return std::aligned_alloc(unit, (size / unit + 1) * unit);
}

void* orThrow(void* memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

}  // namespace

namespace zelutil::bench {

std::uint64_t allocationCount() { return allocations; }

}  // namespace zelutil::bench

// The array forms and the forms of `delete` with a size call these by default.

void* operator new(std::size_t size) { return orThrow(allocate(size)); }

void* operator new(std::size_t size, std::align_val_t alignment) { return orThrow(allocate(size, alignment)); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocate(size, alignment);
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
