#ifndef ZELUTIL_TESTS_SUPPORT_MURMUR_TWIN_H
#define ZELUTIL_TESTS_SUPPORT_MURMUR_TWIN_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::test {

/// MurmurHash2 (32 bits, little-endian) as published, slowly.
std::uint32_t murmurHash2(const std::vector<unsigned char>& bytes, std::uint32_t seed);

/// The hash of a key in a hash table: seed 12, bit 0x20 set in every byte.
std::uint32_t keyHash(std::string_view key);

/// Different keys that fall into the bucket of a table with so many buckets. No two differ only in case.
std::vector<std::string> keysOfBucket(std::uint32_t bucket, std::uint32_t buckets, std::size_t count);

/// Different keys that share one hash, and so a bucket whatever the number of buckets. No two differ only in case.
std::vector<std::string> keysOfOneHash(std::size_t count);

}  // namespace zelutil::test

#endif
