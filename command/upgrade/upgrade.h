#ifndef ZELUTIL_COMMAND_UPGRADE_UPGRADE_H
#define ZELUTIL_COMMAND_UPGRADE_UPGRADE_H

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "command/lint/file_kind.h"
#include "command/upgrade/comparison.h"

namespace zelutil::command::upgrade {

/// A user's file and what an upgrade does to it.
struct UserResult {
    enum class Status {
        Compared,
        Missing,   ///< No such file is there.
        NoPath,    ///< The library has no spelling for its path, so that no start could read it.
        Unread,    ///< It cannot be read, or is no JSON, so that neither version takes anything from it.
        Defaults,  ///< It holds shipped defaults, and is no user's.
        Foreign,   ///< It is JSON and holds something else, as a profile of shortcuts does.
    };

    std::filesystem::path file;
    Status status = Status::Missing;
    /// Says for a file that is no user's which kind it is.
    lint::FileKind kind = lint::FileKind::User;
    Effect effect;
};

/// Returns "compared", "missing", "not-spellable", "unread", "defaults" or "not-a-users-file".
const char* nameOf(UserResult::Status status);

struct Results {
    /// In the order of the files.
    std::vector<UserResult> users;
    /// The keys that change for users who have set none.
    std::vector<ChangedKey> shippedKeys;
};

/// Compares all files with that many threads, at least one, and counts those that are done up.
Results compareAll(const std::string& oldDefaults, const std::string& newDefaults,
                   const std::vector<std::filesystem::path>& files, std::size_t threads,
                   std::atomic<std::size_t>& done);

}  // namespace zelutil::command::upgrade

#endif
