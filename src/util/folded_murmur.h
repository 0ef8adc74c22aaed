#ifndef ZELUTIL_UTIL_FOLDED_MURMUR_H
#define ZELUTIL_UTIL_FOLDED_MURMUR_H

#include <cstdint>

namespace zelutil::hash {

/// MurmurHash2 (32 bits, seed 12, little-endian on every system), as published by Austin Appleby, over the text's bytes
/// with bit 0x20 set in each: texts that differ only in the case of ASCII letters have one hash. So do some others,
/// "A@" and "a`" for one, which do not compare equal.
std::uint32_t foldedMurmur(const char* text);

}  // namespace zelutil::hash

#endif
