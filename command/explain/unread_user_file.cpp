#include "command/explain/unread_user_file.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <zelutil/host/start.h>

#include "command/doctor/candidate_text.h"
#include "command/doctor/file_state.h"
#include "command/text.h"
#include "platform/native_paths.h"
#include "platform/world.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

/// Whether the path has a blank and so comes in quotes, by which nothing is opened, and a file is there all the same.
bool isThereInQuotes(const std::string& path) {
    if (path.empty() || path.front() != '"') {
        return false;
    }
    std::string plain = path;
    plain.erase(std::remove(plain.begin(), plain.end(), '"'), plain.end());
    std::error_code ignored;
    return std::filesystem::exists(platform::placeInWorld(platform::nativePathOf(plain.c_str())), ignored);
}

void tellUnread(const std::string& path, Output& output) {
    const FileState state = stateOfFile(path, FileUse::Users);
    if (state.kind == FileState::Kind::NoPath || state.kind == FileState::Kind::Missing) {
        return;
    }
    Finding finding;
    finding.text =
        "Nothing of the user's file is in force. " + (state.malformed ? state.malformed->text : lineOf(state));
    finding.advice = "\"zelutil doctor\" says more of it.";
    finding.place = Place{nativeOrAsItStands(path), std::nullopt, std::nullopt};
    if (state.malformed) {
        finding.place->line = state.malformed->line;
        finding.place->column = state.malformed->column;
    }
    output.add(std::move(finding));
}

}  // namespace

void tellUnreadUserFile(const SettingAccounts& accounts, Output& output) {
    if (!accounts.userFile().isRead) {
        tellUnread(accounts.userFile().path, output);
    }
}

bool isUserFileUnread() {
    const std::vector<host::StartWarning> warnings = host::startWarnings();
    return std::any_of(warnings.begin(), warnings.end(),
                       [](const host::StartWarning& warning) {
                           return warning.kind == host::StartWarning::Kind::FileNotRead;
                       }) ||
           isThereInQuotes(prefs::userFilePath());
}

void tellUnreadUserFile(Output& output) {
    if (isUserFileUnread()) {
        tellUnread(prefs::userFilePath(), output);
    }
}

}  // namespace zelutil::command
