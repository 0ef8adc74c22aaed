#include "command/input_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "command/text.h"
#include "json/document.h"

namespace zelutil::command {

std::optional<std::string> readInput(const std::string& argument, Output& output) {
    const std::filesystem::path path = pathOf(argument);
    std::error_code error;
    const std::uintmax_t size =
        std::filesystem::is_directory(path, error) ? 0 : std::filesystem::file_size(path, error);
    std::ifstream stream(path, std::ios::binary);
    if (error || !stream.is_open() || std::filesystem::is_directory(path, error)) {
        output.fail("The file \"" + textOf(path) + "\" could not be read.",
                    "See whether it is there, is a file and may be read.");
        return std::nullopt;
    }
    if (size > json::kMaximumTextSize) {
        output.fail("The file \"" + textOf(path) + "\" is too large.", "At most 64 MiB are read.");
        return std::nullopt;
    }
    return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace zelutil::command
