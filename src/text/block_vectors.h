#ifndef ZELUTIL_TEXT_BLOCK_VECTORS_H
#define ZELUTIL_TEXT_BLOCK_VECTORS_H

#include <cstdint>
#include <cstring>

/// Blocks as the vectors of gcc and clang, which have the operators of their characters.
namespace zelutil::text::vectors {

using Block = unsigned char __attribute__((vector_size(16)));

/// Returns 0xFF for each character that is `c` and 0 for the others.
inline Block equal(Block block, char c) { return reinterpret_cast<Block>(block == static_cast<unsigned char>(c)); }

/// Returns whether any character is marked.
inline bool any(Block marks) {
    std::uint64_t halves[2];
    static_assert(sizeof halves == sizeof marks);
    std::memcpy(halves, &marks, sizeof marks);
    return (halves[0] | halves[1]) != 0;
}

}  // namespace zelutil::text::vectors

#endif
