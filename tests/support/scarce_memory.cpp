#include "support/scarce_memory.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace {

constexpr int kPlenty = std::numeric_limits<int>::max();

int left = kPlenty;
bool refused = false;
std::size_t cleared = 0;

bool granted() {
    if (left == kPlenty) {
        return true;
    }
    if (left == 0) {
        refused = true;
        return false;
    }
    --left;
    return true;
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = granted() ? std::malloc(size != 0 ? size : 1) : nullptr;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

/// The standard library's memory resources use it. The address of the whole block stands in front of the aligned one:
/// not every system has a malloc that aligns.
void* operator new(std::size_t size, std::align_val_t alignment) {
    const auto bytes = static_cast<std::size_t>(alignment);
    std::size_t space = size + bytes;
    void* const block = operator new(space + sizeof(void*));
    void* aligned = static_cast<char*>(block) + sizeof(void*);
    aligned = std::align(bytes, size, aligned, space);
    std::memcpy(static_cast<char*>(aligned) - sizeof block, &block, sizeof block);
    return aligned;
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::align_val_t) noexcept {
    void* block = nullptr;
    std::memcpy(&block, static_cast<char*>(memory) - sizeof block, sizeof block);
    std::free(block);
}
void operator delete(void* memory, std::size_t, std::align_val_t alignment) noexcept {
    operator delete(memory, alignment);
}
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

// The linker's --wrap gives these names their meaning.
extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" void* __wrap_calloc(std::size_t count, std::size_t size);

extern "C" void* __wrap_calloc(std::size_t count, std::size_t size) {
    cleared = count * size;
    return granted() ? __real_calloc(count, size) : nullptr;
}

namespace zelutil::test {

ScarceMemory::ScarceMemory(int allowed) {
    left = allowed;
    refused = false;
}

ScarceMemory::~ScarceMemory() { left = kPlenty; }

bool ScarceMemory::ranOut() const { return refused; }

std::size_t ScarceMemory::lastCleared() { return cleared; }

}  // namespace zelutil::test
