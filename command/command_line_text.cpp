#include "command/command_line_text.h"

#include <filesystem>
#include <string_view>

#include "command/text.h"
#include "command/world/bundled_world.h"
#include "platform/world.h"

namespace zelutil::command {
namespace {

constexpr bool kHasWindowsShell = std::filesystem::path::preferred_separator != '/';
constexpr std::string_view kPlainCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/:._-+,@";

bool isPlain(char c) { return kPlainCharacters.find(c) != std::string_view::npos || (kHasWindowsShell && c == '\\'); }

std::string optionOfWorld() {
    return platform::worldInForce == nullptr
               ? ""
               : "--world " + quotedForShell(textOf(world::directoryOfBundleInForce())) + ' ';
}

}  // namespace

// A name of Windows has no double quote in it. In single quotes everything but a single quote stands for itself.
std::string quotedForShell(const std::string& argument) {
    std::string quoted;
    bool needsQuotes = argument.empty();
    for (const char c : argument) {
        needsQuotes = needsQuotes || !isPlain(c);
        quoted += c == '\'' && !kHasWindowsShell ? "'\\''" : std::string(1, c);
    }
    const char quote = kHasWindowsShell ? '"' : '\'';
    return needsQuotes ? quote + quoted + quote : quoted;
}

std::string commandLineFor(const std::string& file, const std::string& defaults) {
    return "zelutil lint " + optionOfWorld() +
           (defaults.empty() ? "" : "--defaults " + quotedForShell(defaults) + ' ') + quotedForShell(file);
}

}  // namespace zelutil::command
