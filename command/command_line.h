#ifndef ZELUTIL_COMMAND_COMMAND_LINE_H
#define ZELUTIL_COMMAND_COMMAND_LINE_H

#include <string>
#include <vector>

#include "command/exit_code.h"

namespace zelutil::command {

/// Does what the arguments, without the program's name, ask for, and prints its outcome. May be called once in a
/// process, because the options of the library can be set once.
ExitCode run(const std::vector<std::string>& arguments);

}  // namespace zelutil::command

#endif
