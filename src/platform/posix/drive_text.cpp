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

/// Returns whether the text needs nothing but other separators. It is false for short texts too.
bool isPlain(std::string_view text) {
    if (text.size() <= text::kBlock || kCharactersOfNoName.find(text[0]) != std::string_view::npos) {
        return false;
    }
    text::Block marks{};
    text::forEachBlock(text.data() + 1, text.size() - 1, [&marks](const char* place) {
        const text::Block block = text::blockAt(place);
        marks |= namelessOf(block) | (separatorsOf(block) & separatorsOf(text::blockAt(place - 1)));
    });
    return !text::any(marks);
}

/// Returns the text with one slash for each run of separators; nothing where a character is of no name.
std::optional<std::string> withSlashes(std::string_view text) {
    if (isPlain(text)) {
        std::string path(text);
        text::forEachBlock(path.data(), path.size(), [](char* block) { text::replaceInBlock(block, '\\', '/'); });
        return path;
    }
    if (text.find_first_of(kCharactersOfNoName) != std::string_view::npos) {
        return std::nullopt;
    }
    std::string path;
    path.reserve(text.size());
    for (const char c : text) {
        if (!isSeparator(c)) {
            path += c;
        } else if (path.empty() || path.back() != '/') {
            path += '/';
        }
    }
    return path;
}

}  // namespace

std::optional<std::string> systemPathFromText(std::string_view text) {
    if (text.empty() || isNetworkText(text)) {
        return std::nullopt;
    }
    if (!hasDrive(text)) {
        return withSlashes(text);
    }
    if (text[0] != 'Z' && text[0] != 'z') {
        return std::nullopt;
    }
    text.remove_prefix(2);
    return text.empty() ? std::optional<std::string>("/") : withSlashes(text);
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
