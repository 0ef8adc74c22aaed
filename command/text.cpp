#include "command/text.h"

#include <zelutil/host/native_path.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/files.h"

namespace zelutil::command {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool isBetween(char c, unsigned lowest, unsigned highest) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= lowest && byte <= highest;
}

bool isContinuation(char c) { return isBetween(c, 0x80, 0xBF); }

/// Returns how many bytes the character that begins with this one has; 0 for a byte that begins none.
std::size_t lengthBy(char first) {
    if (isBetween(first, 0x00, 0x7F)) {
        return 1;
    }
    if (isBetween(first, 0xC2, 0xDF)) {
        return 2;
    }
    if (isBetween(first, 0xE0, 0xEF)) {
        return 3;
    }
    return isBetween(first, 0xF0, 0xF4) ? 4 : 0;
}

/// Returns whether the second byte makes the character one that has a shorter form, is half of a surrogate pair or lies
/// beyond the last one.
bool isExcluded(char first, char second) {
    return (first == '\xE0' && isBetween(second, 0x80, 0x9F)) || (first == '\xED' && isBetween(second, 0xA0, 0xBF)) ||
           (first == '\xF0' && isBetween(second, 0x80, 0x8F)) || (first == '\xF4' && isBetween(second, 0x90, 0xBF));
}

/// Returns the length of the character at the beginning of the text; 0 where there is none.
std::size_t lengthOfFirst(std::string_view text) {
    const std::size_t length = lengthBy(text.front());
    if (length == 0 || length > text.size()) {
        return 0;
    }
    const auto rest = text.substr(1, length - 1);
    const bool whole = std::all_of(rest.begin(), rest.end(), isContinuation);
    return whole && (length == 1 || !isExcluded(text[0], text[1])) ? length : 0;
}

/// Returns how many characters of ASCII the text begins with, in eights: mostly a text has no others, and eight at once
/// take a fraction of the time.
std::size_t asciiInEights(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t length = 0;
    for (std::uint64_t eight = 0; text.size() - length >= sizeof eight; length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & kHighBits) != 0) {
            break;
        }
    }
    return length;
}

/// Calls `take` with every character, and with the replacement for every byte that belongs to none.
template <typename Take>
void forEachCharacter(std::string_view text, Take take) {
    while (!text.empty()) {
        const std::size_t length = lengthOfFirst(text);
        take(length == 0 ? kReplacement : text.substr(0, length));
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::string hexadecimal(unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    return std::string("\\x") + kDigits[byte / 16] + kDigits[byte % 16];
}

std::string spelledOut(std::string_view character) {
    switch (character.front()) {
        case '\t':
            return "\\t";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        default:
            return hexadecimal(static_cast<unsigned char>(character.back()));
    }
}

/// The second range is that of U+0080 to U+009F, which some terminals obey too.
bool isControl(std::string_view character) {
    return isBetween(character.front(), 0x00, 0x1F) || character.front() == '\x7F' ||
           (character.front() == '\xC2' && isBetween(character.back(), 0x80, 0x9F));
}

}  // namespace

std::string validUtf8(std::string_view text) {
    std::string valid;
    forEachCharacter(text, [&](std::string_view character) { valid += character; });
    return valid;
}

std::optional<BadBytes> badBytesOf(std::string_view text) {
    BadBytes bad;
    for (std::size_t place = asciiInEights(text); place < text.size(); place += asciiInEights(text.substr(place))) {
        const std::size_t length = lengthOfFirst(text.substr(place));
        if (length == 0 && bad.count++ == 0) {
            bad.first = place;
        }
        place += std::max<std::size_t>(length, 1);
    }
    return bad.count == 0 ? std::nullopt : std::optional<BadBytes>(bad);
}

std::string nameOfByte(char byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return std::string("0x") + kDigits[value / 16] + kDigits[value % 16];
}

std::string printable(std::string_view text) {
    std::string shown;
    forEachCharacter(text, [&](std::string_view character) {
        shown += isControl(character) ? spelledOut(character) : std::string(character);
    });
    return shown;
}

std::string beginningOf(std::string_view text, std::size_t most) {
    const auto continuesCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    std::size_t end = std::min(text.size(), most);
    while (end > 0 && end < text.size() && continuesCharacter(text[end])) {
        --end;
    }
    return std::string(text.substr(0, end));
}

std::string textOf(const std::filesystem::path& path) { return path.u8string(); }

std::string libraryText(const ZelU::File::Path& path) { return static_cast<const char*>(path); }

std::string nativeText(const std::string& libraryPath) {
    std::filesystem::path file = host::nativePath(libraryPath);
    return textOf(file.make_preferred());
}

std::string nativeOrAsItStands(std::string libraryPath) {
    libraryPath.erase(std::remove(libraryPath.begin(), libraryPath.end(), '"'), libraryPath.end());
    const std::string native = nativeText(libraryPath);
    return native.empty() ? libraryPath : native;
}

bool hasUnknownDrive(const std::string& libraryPath) {
    const bool hasDrive = libraryPath.size() > 2 && libraryPath[1] == ':';
    return hasDrive && !platform::namesFile(libraryPath.c_str()) &&
           platform::namesFile(("Z" + libraryPath.substr(1)).c_str());
}

std::filesystem::path pathOf(const std::string& argument) { return std::filesystem::u8path(argument); }

}  // namespace zelutil::command
