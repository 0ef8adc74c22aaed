#ifndef ZELUTIL_COMMAND_UPGRADE_USER_FILES_H
#define ZELUTIL_COMMAND_UPGRADE_USER_FILES_H

#include <filesystem>
#include <set>
#include <vector>

namespace zelutil::command::upgrade {

/// A place at which users' files may be that this process cannot see.
struct NotSeen {
    enum class Why {
        Shut,          ///< The system lets this process not look there.
        LeadsNowhere,  ///< It is a link to something that is not there.
    };

    std::filesystem::path path;
    Why why = Why::Shut;
};

/// Returns "shut" or "leads-nowhere".
const char* nameOf(NotSeen::Why why);

/// Gathers the users' files that arguments mean, each file once, whatever ways lead to it.
class UserFiles {
public:
    /// Adds the files that an argument means, in the order of their names, and returns whether anything was found:
    ///
    ///     a file                            itself, whatever its name is
    ///     a directory                       every tessel_settings.cfg in it and in its directories
    ///     a pattern with * and ? in names   what it matches, in any case; `**` stands for any directories. A directory
    ///                                       that it matches counts as above.
    ///
    /// In a directory and below `**` links to directories are not followed. They are noted, and so is whatever cannot
    /// be seen. A directory in the place of a user's file counts as that file, which nobody can read.
    bool add(const std::filesystem::path& argument);

    const std::vector<std::filesystem::path>& files() const { return files_; }
    const std::vector<NotSeen>& notSeen() const { return notSeen_; }
    /// Returns the links to directories that were not followed, and those to nothing deep in a directory.
    const std::vector<std::filesystem::path>& linksPassedOver() const { return linksPassedOver_; }

private:
    std::vector<std::filesystem::path> files_;
    std::vector<NotSeen> notSeen_;
    std::vector<std::filesystem::path> linksPassedOver_;
    /// The paths of the files without links, and of all that is noted.
    std::set<std::filesystem::path> knownFiles_;
    std::set<std::filesystem::path> noted_;
};

}  // namespace zelutil::command::upgrade

#endif
