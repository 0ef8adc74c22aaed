#ifndef ZELUTIL_COMMAND_SYSTEM_RIGHTS_H
#define ZELUTIL_COMMAND_SYSTEM_RIGHTS_H

#include <filesystem>

/// The rights of this process, which modes of files tell in part only. One source per system defines these functions.
namespace zelutil::command {

/// Returns whether the system lets this process write into the file, or make files in the directory, of this path. It
/// is there, and nothing is written for the question.
bool mayWrite(const std::filesystem::path& path);

}  // namespace zelutil::command

#endif
