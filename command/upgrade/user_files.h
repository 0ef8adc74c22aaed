#ifndef ZELUTIL_COMMAND_UPGRADE_USER_FILES_H
#define ZELUTIL_COMMAND_UPGRADE_USER_FILES_H

#include <filesystem>
#include <string>
#include <vector>

namespace zelutil::command::upgrade {

/// Returns the files that an argument means, in the order of their names:
///
///     a file                            itself, whatever its name is
///     a directory                       every tessel_settings.cfg in it and in its directories
///     a pattern with * and ? in names   what it matches, in any case; `**` stands for any directories. A directory
///                                       that it matches counts as above.
///
/// Directories that cannot be read are passed over, and links to directories are not followed. The result is empty
/// where nothing is there.
std::vector<std::filesystem::path> usersFiles(const std::filesystem::path& argument);

}  // namespace zelutil::command::upgrade

#endif
