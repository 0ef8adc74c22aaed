#ifndef ZELUTIL_TEXT_TEXT_HASH_H
#define ZELUTIL_TEXT_TEXT_HASH_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zelutil::text {

/// Reads four or eight bytes in the system's order.
template <typename Word>
std::uint64_t wordAt(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// Returns a hash of a text for tables in memory: it takes eight bytes with a multiplication, and most shortcuts with
/// two. It differs between systems.
inline std::uint32_t hashOf(std::string_view text) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
    constexpr std::uint64_t kOther = 0xC2B2AE3D27D4EB4F;
    const char* const begin = text.data();
    const std::size_t size = text.size();
    std::uint64_t hash = size * kOther;
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            hash = (hash ^ wordAt<std::uint64_t>(begin + at)) * kMultiplier;
            hash ^= hash >> 32;
        }
        hash ^= wordAt<std::uint64_t>(begin + size - 8);
    } else if (size >= 4) {
        hash ^= wordAt<std::uint32_t>(begin) | wordAt<std::uint32_t>(begin + size - 4) << 32;
    } else {
        for (const char c : text) {
            hash = hash << 8 ^ static_cast<unsigned char>(c);
        }
    }
    // A multiplication carries nothing down, and names often differ in their last characters alone, which stand
    // highest.
    hash *= kMultiplier;
    hash ^= hash >> 32;
    return static_cast<std::uint32_t>(hash * kMultiplier >> 32);
}

}  // namespace zelutil::text

#endif
