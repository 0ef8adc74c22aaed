#ifndef ZELUTIL_PREFS_SETTING_NAME_H
#define ZELUTIL_PREFS_SETTING_NAME_H

#include <zelutil/util/ascii.h>

#include <cstdint>
#include <string_view>

/// Tells how settings are named and makes keys of names.
namespace zelutil::prefs {

/// Separates the names in a heading path, an attribute path and a setting's full name.
inline constexpr std::string_view kNameSeparator = "::";

/// 64-bit FNV-1a (http://www.isthe.com/chongo/tech/comp/fnv/): start, and step from byte to byte. A hash can be
/// continued, so what many names begin with is hashed once.
inline constexpr std::uint64_t kEmptyNameHash = 0xcbf29ce484222325;

constexpr std::uint64_t hashStep(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
}

/// Returns the hash of the bytes as they stand, following what `start` is the hash of.
constexpr std::uint64_t hashOf(std::string_view name, std::uint64_t start = kEmptyNameHash) {
    for (const char c : name) {
        start = hashStep(start, c);
    }
    return start;
}

/// Returns the key of a setting: the hash of its name in lower case.
constexpr std::uint64_t keyOf(std::string_view name, std::uint64_t start = kEmptyNameHash) {
    for (const char c : name) {
        start = hashStep(start, ascii::lowerCase(c));
    }
    return start;
}

/// Returns the key of a name that ends with a NUL, without a pass to find the end first.
constexpr std::uint64_t keyOf(const char* name) {
    std::uint64_t hash = kEmptyNameHash;
    for (; *name != '\0'; ++name) {
        hash = hashStep(hash, ascii::lowerCase(*name));
    }
    return hash;
}

}  // namespace zelutil::prefs

#endif
