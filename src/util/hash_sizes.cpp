#include "util/hash_sizes.h"

#include <algorithm>
#include <iterator>

namespace zelutil::hash {
namespace {

// Kept deliberately: the sizes grow by a quarter or a half, but for three jumps (61603 to 367453, 2744457 to 13055587,
// 49803361 to 237481091). They decide when a host sees the table rehash.
constexpr std::uint64_t kSizes[] = {
    211,      431,      863,      1609,     3221,     4799,     6577,     8231,      10289,
    12889,    16127,    20161,    25219,    31531,    39419,    49277,    61603,     367453,
    459317,   574157,   717697,   897133,   1121423,  1401791,  1752239,  2190299,   2744457,
    13055587, 16319519, 20399411, 25499291, 31874149, 39842687, 49803361, 237481091, 296851369,
};
constexpr std::uint64_t kLargest = kSizes[std::size(kSizes) - 1];

}  // namespace

std::uint64_t grownBucketCount(std::uint64_t count) {
    if (count >= kLargest) {
        return kLargest;  // before the addition, which the greatest count would carry past zero
    }
    // Kept deliberately: asking for exactly a size, or for one less, gives the size after it.
    const std::uint64_t* const size = std::upper_bound(std::begin(kSizes), std::end(kSizes), count + 1);
    return size == std::end(kSizes) ? kLargest : *size;
}

}  // namespace zelutil::hash
