#ifndef ZELUTIL_TEXT_BLOCKS_H
#define ZELUTIL_TEXT_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Sixteen characters at a time, for "normalise plain paths" of bench/path_bench.cpp and "file not found over eight
/// candidates" of bench/find_bench.cpp: each path is looked through for the few characters that matter before it is
/// used. One by one its characters take three times as long.
namespace zelutil::text {

/// Characters that are compared and exchanged together; a comparison yields 0xFF for true.
using Block = unsigned char __attribute__((vector_size(16)));

inline constexpr std::size_t kBlock = sizeof(Block);

inline Block blockAt(const char* text) {
    Block block;
    std::memcpy(&block, text, kBlock);
    return block;
}

inline Block equal(Block block, char c) { return reinterpret_cast<Block>(block == static_cast<unsigned char>(c)); }

/// Returns whether any character is marked.
inline bool any(Block marks) {
    std::uint64_t halves[2];
    static_assert(sizeof halves == kBlock);
    std::memcpy(halves, &marks, kBlock);
    return (halves[0] | halves[1]) != 0;
}

/// Returns the block with `to` in place of each `from`.
inline Block replaced(Block block, char from, char to) {
    return block ^ (equal(block, from) & static_cast<unsigned char>(from ^ to));
}

inline void putBlock(char* text, Block block) { std::memcpy(text, &block, kBlock); }

/// Calls `call` with the first character of blocks that cover the text, which has at least one; the last may lie over
/// the one before.
template <typename Char, typename Call>
void forEachBlock(Char* text, std::size_t size, Call call) {
    for (std::size_t at = 0; at + kBlock < size; at += kBlock) {
        call(text + at);
    }
    call(text + size - kBlock);
}

}  // namespace zelutil::text

#endif
