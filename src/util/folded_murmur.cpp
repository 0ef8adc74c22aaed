#include "util/folded_murmur.h"

#include <cstddef>
#include <cstring>

namespace zelutil::hash {
namespace {

constexpr std::uint32_t kSeed = 12;
constexpr std::uint32_t kMultiplier = 0x5BD1E995;
// Kept deliberately: this folds more than letters ("[" and "{" hash alike). The hash has only to be equal where keys
// are, and one operation folds four bytes.
constexpr unsigned kFoldByte = 0x20;
constexpr std::uint32_t kFoldGroup = 0x20202020;

std::uint32_t byteAt(const char* text) { return static_cast<unsigned char>(*text); }

/// Four bytes, the first the lowest. Compilers make one load of it where the system's own order is this one.
std::uint32_t groupAt(const char* text) {
    return byteAt(text) | byteAt(text + 1) << 8 | byteAt(text + 2) << 16 | byteAt(text + 3) << 24;
}

std::uint32_t mixedGroup(std::uint32_t group) {
    group *= kMultiplier;
    group ^= group >> 24;
    return group * kMultiplier;
}

/// Mixes in the 0 to 3 bytes behind the last whole group.
std::uint32_t withRest(std::uint32_t hash, const char* rest, std::size_t length) {
    switch (length) {
        case 3:
            hash ^= (byteAt(rest + 2) | kFoldByte) << 16;
            [[fallthrough]];
        case 2:
            hash ^= (byteAt(rest + 1) | kFoldByte) << 8;
            [[fallthrough]];
        case 1:
            hash ^= byteAt(rest) | kFoldByte;
            return hash * kMultiplier;
        default:
            return hash;
    }
}

std::uint32_t finished(std::uint32_t hash) {
    hash ^= hash >> 13;
    hash *= kMultiplier;
    return hash ^ hash >> 15;
}

}  // namespace

std::uint32_t foldedMurmur(const char* text) {
    const std::size_t length = std::strlen(text);
    const char* const rest = text + length / 4 * 4;
    std::uint32_t hash = kSeed ^ static_cast<std::uint32_t>(length);
    for (; text != rest; text += 4) {
        hash = hash * kMultiplier ^ mixedGroup(groupAt(text) | kFoldGroup);
    }
    return finished(withRest(hash, rest, length % 4));
}

}  // namespace zelutil::hash
