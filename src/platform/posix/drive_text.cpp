#include "platform/posix/drive_text.h"

#include <algorithm>

namespace zelutil::platform {
namespace {

constexpr char kDriveOfTheRoot[] = "Z:";
constexpr std::string_view kCharactersOfNoName = "\"*?<>|";

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool hasDrive(std::string_view text) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return text.size() >= 2 && isLetter(text[0]) && text[1] == ':';
}

bool isNetworkText(std::string_view text) { return text.size() >= 2 && isSeparator(text[0]) && isSeparator(text[1]); }

std::string withSlashes(std::string_view text) {
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
    if (text.empty() || isNetworkText(text) || text.find_first_of(kCharactersOfNoName) != std::string_view::npos) {
        return std::nullopt;
    }
    if (!hasDrive(text)) {
        return withSlashes(text);
    }
    if (text[0] != 'Z' && text[0] != 'z') {
        return std::nullopt;
    }
    text.remove_prefix(2);
    return text.empty() ? "/" : withSlashes(text);
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
    for (;;) {
        const std::size_t end = std::min(list.find(':'), list.size());
        texts += textFromSystemPath(list.substr(0, end));
        if (end == list.size()) {
            return texts;
        }
        texts += ';';
        list.remove_prefix(end + 1);
    }
}

}  // namespace zelutil::platform
