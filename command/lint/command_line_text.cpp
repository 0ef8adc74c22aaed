#include "command/lint/command_line_text.h"

#include <filesystem>
#include <string_view>

namespace zelutil::lint {
namespace {

constexpr bool kHasWindowsShell = std::filesystem::path::preferred_separator != '/';
constexpr std::string_view kPlainCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/:._-+,@";

bool isPlain(char c) { return kPlainCharacters.find(c) != std::string_view::npos || (kHasWindowsShell && c == '\\'); }

/// A name of Windows has no double quote in it. In single quotes everything but a single quote stands for itself.
std::string quotedForShell(const std::string& path) {
    std::string quoted;
    bool needsQuotes = path.empty();
    for (const char c : path) {
        needsQuotes = needsQuotes || !isPlain(c);
        quoted += c == '\'' && !kHasWindowsShell ? "'\\''" : std::string(1, c);
    }
    const char quote = kHasWindowsShell ? '"' : '\'';
    return needsQuotes ? quote + quoted + quote : quoted;
}

}  // namespace

std::string commandLineFor(const std::string& file, const std::string& defaults) {
    return "zelutil lint " + (defaults.empty() ? "" : "--defaults " + quotedForShell(defaults) + ' ') +
           quotedForShell(file);
}

}  // namespace zelutil::lint
