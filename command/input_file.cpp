#include "command/input_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "command/text.h"
#include "json/document.h"

namespace zelutil::command {

namespace fs = std::filesystem;

bool tellUnreadable(const fs::path& place, const std::string& name, Output& output) {
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    if (error == std::errc::too_many_symbolic_link_levels) {
        output.fail('"' + name + "\" is a link that leads round in a circle.",
                    "Have the link lead to the file, or name the file itself.");
        return true;
    }
    // To open a pipe would wait for whoever writes into it.
    if (fs::is_other(status)) {
        output.fail('"' + name + "\" is no regular file.",
                    "Write what is to be read into a file first, and name that.");
        return true;
    }
    if (fs::is_directory(status) || !std::ifstream(place, std::ios::binary).is_open()) {
        output.fail("The file \"" + name + "\" could not be read.",
                    "See whether it is there, is a file and may be read.");
        return true;
    }
    return false;
}

std::optional<std::string> readInput(const std::string& argument, Output& output) {
    const fs::path path = pathOf(argument);
    if (tellUnreadable(path, textOf(path), output)) {
        return std::nullopt;
    }
    std::error_code ignored;
    if (fs::file_size(path, ignored) > json::kMaximumTextSize) {
        output.fail("The file \"" + textOf(path) + "\" is too large.", "At most 64 MiB are read.");
        return std::nullopt;
    }
    std::ifstream stream(path, std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace zelutil::command
