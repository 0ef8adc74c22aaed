#ifndef ZELUTIL_COMMAND_INPUT_FILE_H
#define ZELUTIL_COMMAND_INPUT_FILE_H

#include <filesystem>
#include <optional>
#include <string>

#include "command/output.h"

namespace zelutil::command {

/// Returns where this machine has the file that an argument names. Where a bundle is in force and lacks it, `output` is
/// told that this machine's was `used`, such as "read". Where it cannot be opened, `output` is told why, and nothing is
/// returned.
std::optional<std::filesystem::path> placeOfInput(const std::string& argument, const char* used, Output& output);

/// Returns the bytes of the file that an argument names. Where it cannot be read or is larger than the library's reader
/// takes, `output` is told a failure.
std::optional<std::string> readInput(const std::string& argument, Output& output);

}  // namespace zelutil::command

#endif
