#ifndef ZELUTIL_COMMAND_INPUT_FILE_H
#define ZELUTIL_COMMAND_INPUT_FILE_H

#include <filesystem>
#include <optional>
#include <string>

#include "command/output.h"

namespace zelutil::command {

/// Tells `output` why the file at a place of this machine cannot be read, by the name that people gave it, and returns
/// true; false where it can be opened.
bool tellUnreadable(const std::filesystem::path& place, const std::string& name, Output& output);

/// Returns the bytes of the file that an argument names. Where it cannot be read or is larger than the library's reader
/// takes, `output` is told a failure.
std::optional<std::string> readInput(const std::string& argument, Output& output);

}  // namespace zelutil::command

#endif
