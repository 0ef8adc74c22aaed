#ifndef ZELUTIL_COMMAND_INPUT_FILE_H
#define ZELUTIL_COMMAND_INPUT_FILE_H

#include <optional>
#include <string>

#include "command/output.h"

namespace zelutil::command {

/// Returns the bytes of the file that an argument names. Where it cannot be read or is larger than the library's reader
/// takes, `output` is told a failure.
std::optional<std::string> readInput(const std::string& argument, Output& output);

}  // namespace zelutil::command

#endif
