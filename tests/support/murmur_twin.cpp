#include "support/murmur_twin.h"

namespace zelutil::test {
namespace {

constexpr std::uint32_t kM = 0x5BD1E995;

std::uint32_t mixed(std::uint32_t k) {
    k *= kM;
    k ^= k >> 24;
    k *= kM;
    return k;
}

/// The number that kM takes to 1: each round doubles the number of right bits, of which an odd number itself has 3.
std::uint32_t inverseOfM() {
    std::uint32_t inverse = kM;
    for (int round = 0; round < 4; ++round) {
        inverse *= 2 - kM * inverse;
    }
    return inverse;
}

/// Returns what `mixed` takes to `k`. A shift by more than half the width undoes itself.
std::uint32_t unmixed(std::uint32_t k) {
    k *= inverseOfM();
    k ^= k >> 24;
    k *= inverseOfM();
    return k;
}

std::uint32_t groupOf(const std::string& fourCharacters) {
    std::uint32_t group = 0;
    for (std::size_t i = 4; i > 0; --i) {
        group = group * 256 + static_cast<unsigned char>(fourCharacters[i - 1]);
    }
    return group;
}

std::string textOf(std::uint32_t group) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
        text += static_cast<char>(group & 0xFF);
        group >>= 8;
    }
    return text;
}

/// Different ones for the first 456,976 numbers.
std::string fourLetters(unsigned number) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
        text += static_cast<char>('a' + number % 26);
        number /= 26;
    }
    return text;
}

/// Every byte prints, and has bit 0x20 set: there is no capital.
bool printsWithoutCapitals(const std::string& text) {
    for (const char c : text) {
        if (c < 0x20 || c > 0x7E || (c & 0x20) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::uint32_t murmurHash2(const std::vector<unsigned char>& bytes, std::uint32_t seed) {
    const std::size_t length = bytes.size();
    std::uint32_t h = seed ^ static_cast<std::uint32_t>(length);
    std::size_t at = 0;
    while (length - at >= 4) {
        std::uint32_t k = bytes[at];
        k += std::uint32_t{bytes[at + 1]} * 0x100;
        k += std::uint32_t{bytes[at + 2]} * 0x10000;
        k += std::uint32_t{bytes[at + 3]} * 0x1000000;
        h *= kM;
        h ^= mixed(k);
        at += 4;
    }
    const std::size_t left = length - at;
    if (left == 3) {
        h ^= std::uint32_t{bytes[at + 2]} << 16;
    }
    if (left >= 2) {
        h ^= std::uint32_t{bytes[at + 1]} << 8;
    }
    if (left >= 1) {
        h ^= bytes[at];
        h *= kM;
    }
    h ^= h >> 13;
    h *= kM;
    h ^= h >> 15;
    return h;
}

std::uint32_t keyHash(std::string_view key) {
    std::vector<unsigned char> bytes;
    for (const char c : key) {
        bytes.push_back(static_cast<unsigned char>(static_cast<unsigned char>(c) | 0x20U));
    }
    return murmurHash2(bytes, 12);
}

std::vector<std::string> keysOfBucket(std::uint32_t bucket, std::uint32_t buckets, std::size_t count) {
    std::vector<std::string> keys;
    for (int number = 0; keys.size() < count; ++number) {
        std::string key = "net" + std::to_string(number);
        if (keyHash(key) % buckets == bucket) {
            keys.push_back(std::move(key));
        }
    }
    return keys;
}

std::vector<std::string> keysOfOneHash(std::size_t count) {
    // Two groups of four bytes: for every first group there is one second group that leads to the wanted state, and
    // with it to the same hash.
    constexpr std::uint32_t kState = 0x600DCAFE;
    std::vector<std::string> keys;
    for (unsigned number = 0; keys.size() < count; ++number) {
        const std::string first = fourLetters(number);
        const std::uint32_t state = ((12U ^ 8U) * kM ^ mixed(groupOf(first))) * kM;
        const std::string second = textOf(unmixed(kState ^ state));
        if (printsWithoutCapitals(second)) {
            keys.push_back(first + second);
        }
    }
    return keys;
}

}  // namespace zelutil::test
