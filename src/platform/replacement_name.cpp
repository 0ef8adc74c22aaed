#include "platform/replacement_name.h"

#include <atomic>
#include <string>
#include <type_traits>

namespace zelutil::platform {
namespace {

constexpr std::string_view kMarker = ".zelutil-";
constexpr std::string_view kEnding = ".tmp";
constexpr std::string_view kKept = ".bad";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kNumberLength = 8;
constexpr std::size_t kSuffixLength = kMarker.size() + kNumberLength + 1 + kNumberLength + kEnding.size();

using Character = NativeText::value_type;

std::string hexadecimal(std::uint32_t number) {
    std::string text(kNumberLength, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        *digit = kDigits[number % 16];
        number /= 16;
    }
    return text;
}

NativeText native(std::string_view ascii) { return NativeText(ascii.begin(), ascii.end()); }

/// FNV-1a over the characters.
std::uint32_t hashOf(NativeTextView text) {
    std::uint32_t hash = 2'166'136'261U;
    for (const Character c : text) {
        hash = (hash ^ static_cast<std::make_unsigned_t<Character>>(c)) * 16'777'619U;
    }
    return hash;
}

/// Returns whether a text must not be cut before `c`: in UTF-8 or UTF-16 it continues a character.
bool continuesCharacter(Character c) {
    const std::uint32_t unit = static_cast<std::make_unsigned_t<Character>>(c);
    return sizeof(Character) == 1 ? (unit & 0xC0U) == 0x80U : (unit & 0xFC00U) == 0xDC00U;
}

/// The name, or the beginning of a long one with a hash, such that `room` more characters make a legal name.
NativeText stemOf(NativeTextView name, std::size_t room) {
    if (name.size() + room <= kMaximumNameLength) {
        return NativeText(name);
    }
    std::size_t length = kMaximumNameLength - room - kNumberLength - 1;
    while (length > 0 && continuesCharacter(name[length])) {
        --length;
    }
    return NativeText(name.substr(0, length)) + native('~' + hexadecimal(hashOf(name)));
}

bool takePrefix(NativeTextView& text, NativeTextView prefix) {
    if (text.substr(0, prefix.size()) != prefix) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

bool takeNumber(NativeTextView& text) {
    const NativeTextView number = text.substr(0, kNumberLength);
    if (number.size() != kNumberLength || number.find_first_not_of(native(kDigits)) != NativeTextView::npos) {
        return false;
    }
    text.remove_prefix(kNumberLength);
    return true;
}

}  // namespace

NativeText replacementName(NativeTextView targetName, std::uint32_t process, std::uint32_t call) {
    std::string suffix(kMarker);
    suffix += hexadecimal(process);
    suffix += '-';
    suffix += hexadecimal(call);
    suffix += kEnding;
    return stemOf(targetName, kSuffixLength) + native(suffix);
}

bool isReplacementName(NativeTextView name, NativeTextView targetName) {
    return takePrefix(name, stemOf(targetName, kSuffixLength)) && takePrefix(name, native(kMarker)) &&
           takeNumber(name) && takePrefix(name, native("-")) && takeNumber(name) && name == native(kEnding);
}

NativeText keptName(NativeTextView targetName, std::uint32_t number) {
    std::string suffix(kKept);
    if (number > 1) {
        suffix += '.' + std::to_string(number);
    }
    return stemOf(targetName, suffix.size()) + native(suffix);
}

bool isKeptName(NativeTextView name, NativeTextView targetName) {
    // If the target's name is cut, how much of it is left depends on the number's length, up to this one.
    const std::size_t dot = name.rfind(Character('.'));
    const NativeTextView digits = dot == NativeTextView::npos ? NativeTextView() : name.substr(dot + 1);
    const bool isNumber = !digits.empty() && digits.size() <= std::to_string(kMaximumKeptNames).size() &&
                          digits.find_first_not_of(native("0123456789")) == NativeTextView::npos;
    const auto number = isNumber ? std::stoul(std::string(digits.begin(), digits.end())) : 1;
    return name == keptName(targetName, static_cast<std::uint32_t>(number));
}

std::uint32_t nextReplacementCall() {
    static std::atomic<std::uint32_t> calls{0};
    return calls.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace zelutil::platform
