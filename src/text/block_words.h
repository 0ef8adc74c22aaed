#ifndef ZELUTIL_TEXT_BLOCK_WORDS_H
#define ZELUTIL_TEXT_BLOCK_WORDS_H

#include <cstdint>

/// Blocks as two integers, for compilers without vectors. They have those operators of vectors that are used.
namespace zelutil::text::words {

struct Block {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
};

/// Returns a word of eight times this character.
constexpr std::uint64_t eightTimes(unsigned char c) { return c * std::uint64_t{0x0101010101010101}; }

constexpr Block operator|(Block a, Block b) { return {a.low | b.low, a.high | b.high}; }
constexpr Block operator&(Block a, Block b) { return {a.low & b.low, a.high & b.high}; }
constexpr Block operator^(Block a, Block b) { return {a.low ^ b.low, a.high ^ b.high}; }
constexpr Block operator|(Block block, unsigned char c) { return block | Block{eightTimes(c), eightTimes(c)}; }
constexpr Block operator&(Block block, unsigned char c) { return block & Block{eightTimes(c), eightTimes(c)}; }
constexpr Block& operator|=(Block& a, Block b) { return a = a | b; }

/// Returns 0xFF for each byte of the word that is zero and 0 for the others.
constexpr std::uint64_t zerosIn(std::uint64_t word) {
    constexpr std::uint64_t kAllButTop = eightTimes(0x7F);
    // The top bit of a byte becomes set by its other bits, and no sum reaches into the next byte.
    const std::uint64_t tops = ~(((word & kAllButTop) + kAllButTop) | word | kAllButTop);
    return (tops >> 7U) * 0xFF;
}

/// Returns 0xFF for each character that is `c` and 0 for the others.
constexpr Block equal(Block block, char c) {
    const std::uint64_t word = eightTimes(static_cast<unsigned char>(c));
    return {zerosIn(block.low ^ word), zerosIn(block.high ^ word)};
}

/// Returns whether any character is marked.
constexpr bool any(Block marks) { return (marks.low | marks.high) != 0; }

}  // namespace zelutil::text::words

#endif
