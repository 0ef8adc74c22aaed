#include "platform/replacement_name.h"

#include <atomic>

namespace zelutil::platform {
namespace {

constexpr std::string_view kMarker = ".zelutil-";
constexpr std::string_view kEnding = ".tmp";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kNumberLength = 8;

std::string hexadecimal(std::uint32_t number) {
    std::string text(kNumberLength, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        *digit = kDigits[number % 16];
        number /= 16;
    }
    return text;
}

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

bool takeNumber(std::string_view& text) {
    const std::string_view number = text.substr(0, kNumberLength);
    if (number.size() != kNumberLength || number.find_first_not_of(kDigits) != std::string_view::npos) {
        return false;
    }
    text.remove_prefix(kNumberLength);
    return true;
}

}  // namespace

std::string replacementName(std::string_view targetName, std::uint32_t process, std::uint32_t call) {
    std::string name(targetName);
    name += kMarker;
    name += hexadecimal(process);
    name += '-';
    name += hexadecimal(call);
    name += kEnding;
    return name;
}

bool isReplacementName(std::string_view name, std::string_view targetName) {
    return takePrefix(name, targetName) && takePrefix(name, kMarker) && takeNumber(name) && takePrefix(name, "-") &&
           takeNumber(name) && name == kEnding;
}

std::string keptSuffix(std::uint32_t number) {
    std::string suffix = ".bad";
    if (number > 1) {
        suffix += '.' + std::to_string(number);
    }
    return suffix;
}

std::uint32_t nextReplacementCall() {
    static std::atomic<std::uint32_t> calls{0};
    return calls.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace zelutil::platform
