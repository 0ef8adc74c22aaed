#include "command/upgrade/user_files.h"

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "command/pattern.h"
#include "prefs/preference_files.h"

namespace zelutil::command::upgrade {
namespace {

namespace fs = std::filesystem;

bool isPattern(const fs::path& name) { return name.u8string().find_first_of("*?") != std::string::npos; }

fs::file_type typeOf(const fs::path& path) {
    std::error_code ignored;
    return fs::status(path, ignored).type();
}

fs::file_type typeOfItself(const fs::path& path) {
    std::error_code ignored;
    return fs::symlink_status(path, ignored).type();
}

/// Returns whether the system says that nothing is there. A link that leads round in a circle leads nowhere.
bool isNothing(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::not_found || error == std::errc::too_many_symbolic_link_levels;
}

/// Returns the link on the way to a path that leads nowhere; nothing for none.
std::optional<fs::path> deadLinkOn(fs::path path) {
    for (; path.has_relative_path() && isNothing(path); path = path.parent_path()) {
        if (typeOfItself(path) == fs::file_type::symlink) {
            return path;
        }
    }
    return std::nullopt;
}

/// Finds what one argument means.
class Matching {
public:
    void run(const fs::path& pattern) {
        match({}, {pattern.begin(), pattern.end()}, 0);
        // Two ways may lead to one file.
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
    }

    std::vector<fs::path> found;
    std::vector<NotSeen> notSeen;
    std::vector<fs::path> linksPassedOver;

private:
    /// Each place is looked at once: several `**` give many ways to it. `isTop` is false for what a `**` has led to.
    void match(const fs::path& directory, const std::vector<fs::path>& names, std::size_t at, bool isTop = true) {
        if (!matched_.emplace(directory, at).second) {
            return;
        }
        if (at == names.size()) {
            take(directory);
        } else if (names[at] == "**") {
            match(directory, names, at + 1);
            matchBelow(directory, names, at, isTop);
        } else if (!isPattern(names[at])) {
            match(directory / names[at], names, at + 1);
        } else {
            const std::string pattern = names[at].u8string();
            for (const fs::path& entry : entriesOf(directory)) {
                if (matches(pattern, entry.filename().u8string())) {
                    match(entry, names, at + 1);
                }
            }
        }
    }

    /// Has `**`, which is the name at that place, stand for the directories in one. The name behind it may be that of a
    /// link, which is followed then.
    void matchBelow(const fs::path& directory, const std::vector<fs::path>& names, std::size_t at, bool isTop) {
        const std::string next = at + 1 < names.size() ? names[at + 1].u8string() : std::string();
        for (const fs::path& entry : entriesOf(directory)) {
            const fs::file_type type = typeOfItself(entry);
            if (type == fs::file_type::directory) {
                match(entry, names, at, false);
            } else if (type == fs::file_type::symlink &&
                       (next.empty() || !matches(next, entry.filename().u8string()))) {
                passOver(entry, isTop);
            }
        }
    }

    std::vector<fs::path> entriesOf(const fs::path& directory) {
        std::vector<fs::path> entries;
        std::error_code error;
        fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            entries.push_back(directory / entry->path().filename());
        }
        if (error && error != std::errc::not_a_directory) {
            noteNotSeen(directory);
        }
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    /// Notes why nothing was seen at a path, unless nothing is there.
    void noteNotSeen(const fs::path& path) {
        if (const auto link = deadLinkOn(path)) {
            notSeen.push_back({*link, NotSeen::Why::LeadsNowhere});
        } else if (!isNothing(path)) {
            notSeen.push_back({path, NotSeen::Why::Shut});
        }
    }

    void take(const fs::path& path) {
        switch (typeOf(path)) {
            case fs::file_type::directory:
                if (path.filename() == prefs::kSettingsFileName) {
                    found.push_back(path);
                } else {
                    search(path, true);
                }
                break;
            case fs::file_type::not_found:
            case fs::file_type::none:
                noteNotSeen(path);
                break;
            default:
                found.push_back(path);
        }
    }

    void search(const fs::path& directory, bool isTop) {
        if (!searched_.insert(directory).second) {
            return;
        }
        for (const fs::path& entry : entriesOf(directory)) {
            const fs::file_type type = typeOfItself(entry);
            if (type == fs::file_type::none) {
                // The directory tells names and lets nobody in.
                notSeen.push_back({directory, NotSeen::Why::Shut});
                return;
            }
            if (entry.filename() == prefs::kSettingsFileName) {
                takeUsersFile(entry);
            } else if (type == fs::file_type::directory) {
                search(entry, false);
            } else if (type == fs::file_type::symlink) {
                passOver(entry, isTop);
            }
        }
    }

    /// A user's file may be a link to something that is not there.
    void takeUsersFile(const fs::path& file) {
        if (isNothing(file)) {
            noteNotSeen(file);
        } else {
            found.push_back(file);
        }
    }

    /// At the top of a directory a link is as likely a user's as a directory is. Deeper, programs keep links to nothing
    /// in the place of locks.
    void passOver(const fs::path& link, bool isTop) {
        if (isTop && isNothing(link)) {
            notSeen.push_back({link, NotSeen::Why::LeadsNowhere});
        } else if (isNothing(link) || typeOf(link) == fs::file_type::directory) {
            linksPassedOver.push_back(link);
        }
    }

    std::set<std::pair<fs::path, std::size_t>> matched_;
    std::set<fs::path> searched_;
};

/// Returns one path for all ways to a file.
fs::path identityOf(const fs::path& file) {
    std::error_code error;
    fs::path same = fs::weakly_canonical(file, error);
    return error ? file : same;
}

}  // namespace

const char* nameOf(NotSeen::Why why) { return why == NotSeen::Why::Shut ? "shut" : "leads-nowhere"; }

bool UserFiles::add(const fs::path& argument) {
    Matching matching;
    matching.run(argument);
    for (const fs::path& file : matching.found) {
        if (knownFiles_.insert(identityOf(file)).second) {
            files_.push_back(file);
        }
    }
    for (const NotSeen& one : matching.notSeen) {
        if (noted_.insert(one.path).second) {
            notSeen_.push_back(one);
        }
    }
    for (const fs::path& link : matching.linksPassedOver) {
        if (noted_.insert(link).second) {
            linksPassedOver_.push_back(link);
        }
    }
    return !matching.found.empty() || !matching.notSeen.empty();
}

}  // namespace zelutil::command::upgrade
