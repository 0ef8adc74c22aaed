#ifndef ZELUTIL_PREFS_SETTING_H
#define ZELUTIL_PREFS_SETTING_H

#include <cstdint>
#include <string>
#include <utility>

namespace zelutil::prefs {

/// The record of one setting. There are thousands, so it holds what look-ups and saves need and no more: its names
/// stand in the text of the defaults, and whoever asks by name asks by the name's hash.
struct Setting {
    std::string defaultValue;
    std::string userValue;
    std::uint64_t key = 0;      ///< Hash of the full name in lower case.
    std::uint32_t number = 0;   ///< Its place in the order of the definitions, from 0 on.
    bool hasUserValue = false;  ///< Whether `userValue` is in force, empty or not.

    const std::string& valueInForce() const { return hasUserValue ? userValue : defaultValue; }

    void setUserValue(std::string value) {
        userValue = std::move(value);
        hasUserValue = true;
    }

    void clearUserValue() noexcept {
        userValue.clear();
        hasUserValue = false;
    }
};

/// Returns a value as the C functions return it: null for an empty one.
inline const char* charactersOrNull(const std::string& value) { return value.empty() ? nullptr : value.c_str(); }

}  // namespace zelutil::prefs

#endif
