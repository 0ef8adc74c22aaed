#ifndef ZELUTIL_COMMAND_SYSTEM_RIGHTS_H
#define ZELUTIL_COMMAND_SYSTEM_RIGHTS_H

#include <cstddef>
#include <filesystem>
#include <system_error>

/// The rights of this process, which modes of files tell in part only, and other limits of the system. One source per
/// system defines these functions.
namespace zelutil::command {

/// Returns whether the system lets this process write into the file, or make files in the directory, of this path. It
/// is there, and nothing is written for the question.
bool mayWrite(const std::filesystem::path& path);

/// Returns why the system does not say whether something is there; `std::errc()` where it does.
std::errc whyHidden(const std::filesystem::path& path);

/// The characters of `std::filesystem::path` that a name has at most.
inline constexpr std::size_t kMostInName = 255;

}  // namespace zelutil::command

#endif
