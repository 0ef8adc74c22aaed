#ifndef ZELUTIL_TEXT_BLOCKS_H
#define ZELUTIL_TEXT_BLOCKS_H

#include <cstddef>
#include <cstring>

// A test defines ZELUTIL_BLOCKS_OF_WORDS, so that what other compilers take is tried with these, too.
#if defined(__GNUC__) && !defined(ZELUTIL_BLOCKS_OF_WORDS)
#include "text/block_vectors.h"
#else
#include "text/block_words.h"
#endif

/// Sixteen characters at a time, for "normalise plain paths" of bench/path_bench.cpp and "file not found over eight
/// candidates" of bench/find_bench.cpp: each path is looked through for the few characters that matter before it is
/// used. One by one its characters take three times as long.
namespace zelutil::text {

/// Characters that are compared and exchanged together; a comparison yields 0xFF for true.
#if defined(__GNUC__) && !defined(ZELUTIL_BLOCKS_OF_WORDS)
using vectors::any;
using vectors::Block;
using vectors::equal;
#else
using words::any;
using words::Block;
using words::equal;
#endif

inline constexpr std::size_t kBlock = 16;
static_assert(sizeof(Block) == kBlock);

template <typename AnyBlock = Block>
AnyBlock blockAt(const char* text) {
    AnyBlock block;
    std::memcpy(&block, text, kBlock);
    return block;
}

/// Returns the block with `to` in place of each `from`.
template <typename AnyBlock>
AnyBlock replaced(AnyBlock block, char from, char to) {
    return block ^ (equal(block, from) & static_cast<unsigned char>(from ^ to));
}

template <typename AnyBlock>
void putBlock(char* text, AnyBlock block) {
    std::memcpy(text, &block, kBlock);
}

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
