#include "command/explain/unread_user_file.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <zelutil/host/start.h>

#include "command/doctor/candidate_text.h"
#include "command/doctor/file_state.h"
#include "command/text.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/world.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

/// Returns the path without the quotes that a blank puts it into, by which nothing is opened.
std::string withoutQuotes(std::string path) {
    path.erase(std::remove(path.begin(), path.end(), '"'), path.end());
    return path;
}

/// Returns whether a file is there and is not opened for the quotes around its path.
bool isThereInQuotes(const std::string& path) {
    std::error_code ignored;
    return !path.empty() && path.front() == '"' &&
           std::filesystem::exists(platform::placeInWorld(platform::nativePathOf(withoutQuotes(path).c_str())),
                                   ignored);
}

/// Returns whether nothing can have that path here.
bool isNoPath(const std::string& path) { return !platform::namesFile(withoutQuotes(path).c_str()); }

Finding findingOf(const FileState& state, const std::string& path) {
    if (isNoPath(path)) {
        return {Severity::Warning,
                std::string("The user's file could not be looked for: ") +
                    (path.empty() ? "the home directory's path is none." : "no file has this path."),
                adviceOnUserPath(path), std::nullopt};
    }
    return {Severity::Warning,
            "Nothing of the user's file is in force. " + (state.malformed        ? state.malformed->text
                                                          : state.holdsNoSection ? "It is JSON that holds no section."
                                                                                 : lineOf(state)),
            "\"zelutil doctor\" says more of it.", std::nullopt};
}

void tellUnread(const std::string& path, Output& output) {
    const FileState state = stateOfFile(path, FileUse::Users);
    if (state.kind == FileState::Kind::Missing) {
        return;
    }
    Finding finding = findingOf(state, path);
    if (!path.empty()) {
        finding.place = Place{nativeOrAsItStands(path), std::nullopt, std::nullopt};
    }
    if (state.malformed) {
        finding.place->line = state.malformed->line;
        finding.place->column = state.malformed->column;
    }
    output.add(std::move(finding));
}

}  // namespace

bool isOutOfReach(const std::string& path) { return isNoPath(path) || isThereInQuotes(path); }

std::string adviceOnUserPath(const std::string& path) {
    if (path.find(' ') != std::string::npos) {
        return "Its path has a blank: --paths-with-blanks has it written, for applications that read it.";
    }
    return hasUnknownDrive(path) ? kOnlyDrive
                                 : "Name the home directory by the variables HOMEDRIVE and HOMEPATH, and try again.";
}

void tellUnreadUserFile(const SettingAccounts& accounts, Output& output) {
    if (accounts.userFile().isUnread) {
        tellUnread(accounts.userFile().path, output);
    }
}

bool isUserFileUnread() {
    const std::vector<host::StartWarning> warnings = host::startWarnings();
    const auto isOfFile = [](const host::StartWarning& warning) {
        return warning.kind == host::StartWarning::Kind::FileNotRead;
    };
    const std::string path = prefs::userFilePath();
    // A start has warned of a file in which nothing counts, so that others need no second look.
    return std::any_of(warnings.begin(), warnings.end(), isOfFile) || isOutOfReach(path) ||
           (!warnings.empty() && stateOfFile(path, FileUse::Users).holdsNoSection);
}

void tellUnreadUserFile(Output& output) {
    if (isUserFileUnread()) {
        tellUnread(prefs::userFilePath(), output);
    }
}

}  // namespace zelutil::command
