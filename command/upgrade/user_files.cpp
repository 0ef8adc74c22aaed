#include "command/upgrade/user_files.h"

#include <algorithm>
#include <system_error>

#include "command/pattern.h"
#include "prefs/preference_files.h"

namespace zelutil::command::upgrade {
namespace {

namespace fs = std::filesystem;

bool isPattern(const fs::path& name) { return name.u8string().find_first_of("*?") != std::string::npos; }

std::vector<fs::path> entriesOf(const fs::path& directory) {
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error), end;
         entry != end && !error; entry.increment(error)) {
        entries.push_back(directory / entry->path().filename());
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

bool isDirectory(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

bool isDirectoryItself(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(fs::symlink_status(path, ignored));
}

class Matching {
public:
    std::vector<fs::path> run(const fs::path& pattern) {
        const std::vector<fs::path> names(pattern.begin(), pattern.end());
        match({}, names, 0);
        // Two ways may lead to one file.
        std::sort(found_.begin(), found_.end());
        found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
        return std::move(found_);
    }

private:
    void match(const fs::path& directory, const std::vector<fs::path>& names, std::size_t at) {
        if (at == names.size()) {
            take(directory);
        } else if (names[at] == "**") {
            match(directory, names, at + 1);
            matchBelow(directory, names, at);
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

    void matchBelow(const fs::path& directory, const std::vector<fs::path>& names, std::size_t at) {
        for (const fs::path& entry : entriesOf(directory)) {
            if (isDirectoryItself(entry)) {
                match(entry, names, at);
            }
        }
    }

    void take(const fs::path& path) {
        std::error_code ignored;
        if (isDirectory(path)) {
            search(path);
        } else if (fs::exists(path, ignored)) {
            found_.push_back(path);
        }
    }

    void search(const fs::path& directory) {
        for (const fs::path& entry : entriesOf(directory)) {
            if (isDirectoryItself(entry)) {
                search(entry);
            } else if (entry.filename() == prefs::kSettingsFileName) {
                found_.push_back(entry);
            }
        }
    }

    std::vector<fs::path> found_;
};

}  // namespace

std::vector<fs::path> usersFiles(const fs::path& argument) { return Matching().run(argument); }

}  // namespace zelutil::command::upgrade
