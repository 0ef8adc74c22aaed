#include "command/explain/unread_user_file.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <zelutil/host/start.h>

#include "command/command_line_text.h"
#include "command/doctor/candidate_text.h"
#include "command/doctor/file_state.h"
#include "command/text.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/world.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

constexpr char kAdviceOnBlank[] =
    "Its path has a blank: name the option --paths-with-blanks, too, where the applications read such files.";

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

std::string conditionOf(const FileState& state) {
    return state.malformed        ? state.malformed->text
           : state.holdsNoSection ? "It is JSON that holds no section."
                                  : lineOf(state);
}

Finding findingOf(const std::string& condition, const std::string& path) {
    if (isNoPath(path)) {
        return {Severity::Warning,
                std::string("The user's file could not be looked for: ") +
                    (path.empty() ? "the home directory's path is none." : "no file has this path."),
                adviceOnUserPath(path), std::nullopt};
    }
    return {Severity::Warning, "Nothing of the user's file is in force. " + condition,
            isThereInQuotes(path) ? kAdviceOnBlank : "\"zelutil doctor\" says more of it.", std::nullopt};
}

std::optional<UnreadUserFile> unreadAt(const std::string& path) {
    const FileState state = stateOfFile(path, FileUse::Users);
    if (state.kind == FileState::Kind::Missing) {
        return std::nullopt;
    }
    const std::string condition = conditionOf(state);
    Finding finding = findingOf(condition, path);
    if (!path.empty()) {
        finding.place = Place{nativeOrAsItStands(path), std::nullopt, std::nullopt};
    }
    if (state.malformed) {
        finding.place->line = state.malformed->line;
        finding.place->column = state.malformed->column;
    }
    return UnreadUserFile{std::move(finding), condition};
}

void tell(std::optional<UnreadUserFile> unread, Output& output) {
    if (unread) {
        output.add(std::move(unread->finding));
    }
}

}  // namespace

bool isOutOfReach(const std::string& path) { return isNoPath(path) || isThereInQuotes(path); }

bool isHidden(const std::string& path) {
    std::error_code ignored;
    if (isNoPath(path) ||
        std::filesystem::exists(platform::placeInWorld(platform::nativePathOf(path.c_str())), ignored)) {
        return false;
    }
    const FileState state = stateOfFile(path, FileUse::Users);
    return (state.kind == FileState::Kind::DeadLink && !state.writeable) || state.kind == FileState::Kind::NameTooLong;
}

std::string adviceOnUserPath(const std::string& path) {
    if (path.find(' ') != std::string::npos) {
        return kAdviceOnBlank;
    }
    return hasUnknownDrive(path) ? kOnlyDrive
                                 : "Name the home directory by the variables HOMEDRIVE and HOMEPATH, and try again.";
}

void tellUnreadUserFile(const SettingAccounts& accounts, Output& output) {
    if (accounts.userFile().isUnread) {
        tell(unreadAt(accounts.userFile().path), output);
    }
}

bool isUserFileUnread() {
    const std::vector<host::StartWarning> warnings = host::startWarnings();
    const auto isOfFile = [](const host::StartWarning& warning) {
        return warning.kind == host::StartWarning::Kind::FileNotRead;
    };
    const std::string path = prefs::userFilePath();
    // A start has warned of a file in which nothing counts, so that others need no second look.
    return std::any_of(warnings.begin(), warnings.end(), isOfFile) || isOutOfReach(path) || isHidden(path) ||
           (!warnings.empty() && stateOfFile(path, FileUse::Users).holdsNoSection);
}

std::optional<UnreadUserFile> unreadUserFile() {
    return isUserFileUnread() ? unreadAt(prefs::userFilePath()) : std::nullopt;
}

Finding findingAfterSave(const UnreadUserFile& unread, const std::string& keptCopy) {
    constexpr char kBefore[] = "Nothing of the user's file was in force before this save";
    if (keptCopy.empty()) {
        return {Severity::Warning, std::string(kBefore) + ": it held nothing.", "",
                Place{unread.finding.place.value_or(Place()).file, std::nullopt, std::nullopt}};
    }
    Finding finding{Severity::Warning, kBefore + (", which keeps it as this copy. " + unread.condition),
                    "This checks the copy: " + commandLineFor(keptCopy), unread.finding.place};
    finding.place->file = keptCopy;
    return finding;
}

void tellUnreadUserFile(Output& output) { tell(unreadUserFile(), output); }

}  // namespace zelutil::command
