#include "platform/posix/drive_text.h"

#include "text/ascii.h"
#include "text/blocks.h"
#include "text/list.h"

namespace zelutil::platform {
namespace {

constexpr char kDriveOfTheRoot[] = "Z:";
constexpr std::string_view kCharactersOfNoName = "\"*?<>|";

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool hasDrive(std::string_view text) { return text.size() >= 2 && ascii::isLetter(text[0]) && text[1] == ':'; }

bool isNetworkText(std::string_view text) { return text.size() >= 2 && isSeparator(text[0]) && isSeparator(text[1]); }

text::Block separatorsOf(text::Block block) { return text::equal(block, '/') | text::equal(block, '\\'); }

/// Marks the characters of no name.
text::Block namelessOf(text::Block block) {
    text::Block marks{};
    for (const char c : kCharactersOfNoName) {
        marks |= text::equal(block, c);
    }
    return marks;
}

/// Copies a text with slashes for its separators. Returns whether that is all that it needs; it is false for short
/// texts too.
bool copyWithSlashes(std::string_view text, char* path) {
    if (text.size() <= text::kBlock || kCharactersOfNoName.find(text[0]) != std::string_view::npos) {
        return false;
    }
    text::Block marks{};
    text::forEachBlock(text.data() + 1, text.size() - 1, [&](const char* place) {
        const text::Block block = text::blockAt(place);
        marks |= namelessOf(block) | (separatorsOf(block) & separatorsOf(text::blockAt(place - 1)));
        text::putBlock(path + (place - text.data()), text::replaced(block, '\\', '/'));
    });
    path[0] = isSeparator(text[0]) ? '/' : text[0];
    return !text::any(marks);
}

/// Returns the text with one slash for each run of separators; nothing where a character is of no name.
std::optional<std::string> withSlashes(std::string_view text) {
    std::string path(text.size(), '\0');
    if (copyWithSlashes(text, path.data())) {
        return path;
    }
    if (text.find_first_of(kCharactersOfNoName) != std::string_view::npos) {
        return std::nullopt;
    }
    path.clear();
    for (const char c : text) {
        if (!isSeparator(c)) {
            path += c;
        } else if (path.empty() || path.back() != '/') {
            path += '/';
        }
    }
    return path;
}

/// Returns what stands behind the drive of the root; nothing where the text names no file here.
std::optional<std::string_view> behindDrive(std::string_view text) {
    if (text.empty() || isNetworkText(text)) {
        return std::nullopt;
    }
    if (!hasDrive(text)) {
        return text;
    }
    return text[0] == 'Z' || text[0] == 'z' ? std::make_optional(text.substr(2)) : std::nullopt;
}

}  // namespace

std::optional<std::string> systemPathFromText(std::string_view text) {
    const auto path = behindDrive(text);
    if (!path) {
        return std::nullopt;
    }
    return path->empty() ? std::optional<std::string>("/") : withSlashes(*path);
}

bool copySystemPath(std::string_view text, char* buffer, std::size_t size) {
    const auto path = behindDrive(text);
    if (!path || path->size() >= size || !copyWithSlashes(*path, buffer)) {
        return false;
    }
    buffer[path->size()] = '\0';
    return true;
}

std::string textFromSystemPath(std::string_view path) {
    std::string text(path);
    if (!path.empty() && path.front() == '/') {
        text.insert(0, kDriveOfTheRoot);
    }
    return text;
}

std::string textListFromSystemList(std::string_view list) {
    std::string texts;
    for (const std::string_view directory : text::split(list, ":")) {
        texts += textFromSystemPath(directory);
        texts += ';';
    }
    texts.pop_back();
    return texts;
}

}  // namespace zelutil::platform
