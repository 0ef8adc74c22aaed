#ifndef ZELUTIL_COMMAND_UPGRADE_UPGRADE_H
#define ZELUTIL_COMMAND_UPGRADE_UPGRADE_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "command/upgrade/comparison.h"

namespace zelutil::command::upgrade {

/// A user's file and what an upgrade does to it.
struct UserResult {
    enum class Status {
        Compared,
        Missing,   ///< No such file is there.
        Unread,    ///< It cannot be read, or is no JSON, so that neither version takes anything from it.
        Defaults,  ///< It holds shipped defaults, and is no user's.
    };

    std::filesystem::path file;
    Status status = Status::Missing;
    Effect effect;
};

/// Returns "compared", "missing", "unread" or "defaults".
const char* nameOf(UserResult::Status status);

/// Is called now and then, on the calling thread, with the number of files that are done.
using TellDone = std::function<void(std::size_t done)>;

/// Compares all files with that many threads, at least one, and returns the results in the order of the files.
std::vector<UserResult> compareAll(const std::string& oldDefaults, const std::string& newDefaults,
                                   const std::vector<std::filesystem::path>& files, std::size_t threads,
                                   const TellDone& tellDone);

}  // namespace zelutil::command::upgrade

#endif
