#ifndef ZELUTIL_UTIL_HASH_SIZES_H
#define ZELUTIL_UTIL_HASH_SIZES_H

#include <cstdint>

namespace zelutil::hash {

/// The number of buckets a hash table takes when it has, or was asked for, `count`: the first of the fixed sizes that
/// is greater than `count` + 1, or the largest where none is.
///
///     0 => 211    209 => 211    210 => 431    211 => 431    296851369 => 296851369    2^64 - 1 => 296851369
std::uint64_t grownBucketCount(std::uint64_t count);

}  // namespace zelutil::hash

#endif
