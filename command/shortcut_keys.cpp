#include "command/shortcut_keys.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <cstddef>

#include "command/nearest_names.h"

namespace zelutil::command {
namespace {

struct KeyName {
    std::string_view name;  ///< In lower case.
    std::string_view key;
};

constexpr KeyName kModifiers[] = {{"ctrl", "ctrl"},   {"control", "ctrl"}, {"shift", "shift"}, {"alt", "alt"},
                                  {"altgr", "altgr"}, {"meta", "meta"},    {"super", "meta"},  {"win", "meta"},
                                  {"cmd", "meta"},    {"option", "alt"}};

constexpr KeyName kKeys[] = {{"esc", "escape"},    {"return", "enter"},   {"del", "delete"},     {"ins", "insert"},
                             {"pgup", "pageup"},   {"prior", "pageup"},   {"pgdn", "pagedown"},  {"pgdown", "pagedown"},
                             {"next", "pagedown"}, {"bksp", "backspace"}, {"back", "backspace"}, {"spacebar", "space"}};

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return ascii::lowerCase(c); });
    return lower;
}

/// Returns the text without blanks at its ends.
std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// Returns the key of that name in lower case; the empty text where none has it.
template <std::size_t kCount>
std::string_view keyAmong(const KeyName (&names)[kCount], std::string_view lower) {
    for (const auto& [name, key] : names) {
        if (name == lower) {
            return key;
        }
    }
    return {};
}

}  // namespace

std::vector<std::string_view> tokensOf(std::string_view shortcut) {
    std::vector<std::string_view> tokens;
    std::size_t plus = shortcut.find('+');
    while (plus != std::string_view::npos && plus + 1 < shortcut.size()) {
        tokens.push_back(trimmed(shortcut.substr(0, plus)));
        shortcut.remove_prefix(plus + 1);
        plus = shortcut.find('+', 1);
    }
    tokens.push_back(trimmed(shortcut));
    return tokens;
}

std::string_view modifierNamed(std::string_view token) { return keyAmong(kModifiers, lowerCase(token)); }

std::string modifierMeant(std::string_view token) {
    if (const std::string_view known = modifierNamed(token); !known.empty()) {
        return std::string(known);
    }
    const std::string lower = lowerCase(token);
    std::string meant = lower;
    for (const auto& [name, key] : kModifiers) {
        if (name.size() > 2 && editDistance(name, lower) == 1) {
            meant = key;
        }
    }
    return meant;
}

std::string keyNamed(std::string_view token) {
    std::string lower = lowerCase(token);
    const std::string_view key = keyAmong(kKeys, lower);
    return key.empty() ? lower : std::string(key);
}

}  // namespace zelutil::command
