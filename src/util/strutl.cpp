#include <zelutil/util/strutl.h>

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "util/ascii_class.h"

namespace zelutil {
namespace {

/// How many characters of the number stay. Most numbers end in another digit than zero and are answered at once.
std::size_t lengthWithoutTrailingZeros(std::string_view number) {
    std::size_t length = number.size();
    while (length > 0 && number[length - 1] == '0') {
        --length;
    }
    const bool endsInPoint = length > 0 && number[length - 1] == '.';
    if (length == number.size() && !endsInPoint) {
        return number.size();
    }
    bool hasPoint = false;
    for (const char c : number.substr(0, length)) {
        // Kept deliberately: only a lower-case "e" marks an exponent, so "1.0E10" loses its last zero.
        if (c == 'e') {
            return number.size();
        }
        hasPoint = hasPoint || c == '.';
    }
    if (!hasPoint) {
        return number.size();
    }
    return endsInPoint ? length - 1 : length;
}

std::string_view withoutLeadingSpace(std::string_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), ascii::isSpace);
    return text.substr(static_cast<std::size_t>(first - text.begin()));
}

constexpr std::size_t kBlock = sizeof(std::uint64_t);

std::uint64_t block(const char* text) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, kBlock);
    return bytes;
}

/// `ascii::lowerCase` of eight characters at once: for each byte its high bit tells whether it is an upper-case letter,
/// and that bit, shifted, is the difference to the lower-case one.
constexpr std::uint64_t lowerCaseBlock(std::uint64_t bytes) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::uint64_t low = bytes & (0x7F * kEach);
    const std::uint64_t fromA = low + (0x80 - 'A') * kEach;
    const std::uint64_t beyondZ = low + (0x7F - 'Z') * kEach;
    const std::uint64_t isUpper = ~bytes & (fromA ^ beyondZ) & (0x80 * kEach);
    return bytes | (isUpper >> 2);
}

/// Length, in whole blocks, of a beginning that is certainly the same in `a` and `b`.
std::size_t sameBlocks(std::string_view a, const char* b) {
    // On texts of fewer than two blocks the search for the end of `b` would cost more than it saves.
    if (a.size() < 2 * kBlock) {
        return 0;
    }
    const void* const end = std::memchr(b, '\0', a.size());
    const std::size_t common = end == nullptr ? a.size() : static_cast<std::size_t>(static_cast<const char*>(end) - b);
    std::size_t same = 0;
    while (same + kBlock <= common) {
        const std::uint64_t left = block(a.data() + same);
        const std::uint64_t right = block(b + same);
        if (left != right && lowerCaseBlock(left) != lowerCaseBlock(right)) {
            break;
        }
        same += kBlock;
    }
    return same;
}

int lowerCaseCode(char c) { return static_cast<unsigned char>(ascii::lowerCase(c)); }

std::size_t clamped(int value) { return value < 0 ? 0 : static_cast<std::size_t>(value); }

/// The standard library's own message differs between implementations.
std::string substring(const std::string& s, std::size_t start, std::size_t count) {
    if (start > s.size()) {
        throw std::out_of_range("invalid string position");
    }
    return s.substr(start, count);
}

}  // namespace
}  // namespace zelutil

namespace ZelU::STRUTL {

std::string RemoveTrailingZeros(const std::string& s) {
    const std::string_view number = zelutil::withoutLeadingSpace(s);
    return std::string(number.substr(0, zelutil::lengthWithoutTrailingZeros(number)));
}

void removeTrailingZeros(char* str) {
    if (str == nullptr) {
        return;
    }
    const std::string_view number(str);
    const std::size_t length = zelutil::lengthWithoutTrailingZeros(number);
    std::fill(str + length, str + number.size(), '\0');
}

int StrNoCaseCompare(const std::string& a, const std::string& b) { return StrNoCaseCompare(a, b.c_str()); }

int StrNoCaseCompare(const std::string& a, const char* b) {
    const char* right = b == nullptr ? "" : b;
    const std::size_t same = zelutil::sameBlocks(a, right);
    right += same;
    for (const char left : std::string_view(a).substr(same)) {
        if (*right == '\0') {
            return 1;
        }
        const int difference = zelutil::lowerCaseCode(left) - zelutil::lowerCaseCode(*right);
        if (difference != 0) {
            return difference;
        }
        ++right;
    }
    return *right == '\0' ? 0 : -1;
}

std::string SubstrFromLeft(const std::string& s, int n) { return s.substr(0, zelutil::clamped(n)); }

std::string SubstrFromRight(const std::string& s, int n) {
    return s.substr(s.size() - std::min(s.size(), zelutil::clamped(n)));
}

std::string SubstrFromMid(const std::string& s, int start) {
    return zelutil::substring(s, zelutil::clamped(start), std::string::npos);
}

std::string SubstrFromMid(const std::string& s, int start, int count) {
    return zelutil::substring(s, zelutil::clamped(start), zelutil::clamped(count));
}

}  // namespace ZelU::STRUTL
