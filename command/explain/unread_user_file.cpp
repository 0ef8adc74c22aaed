#include "command/explain/unread_user_file.h"

#include <utility>

#include "command/doctor/candidate_text.h"
#include "command/doctor/file_state.h"
#include "command/text.h"

namespace zelutil::command {

void tellUnreadUserFile(const SettingAccounts& accounts, Output& output) {
    const std::string& path = accounts.userFile().path;
    const FileState state = accounts.userFile().isRead ? FileState() : stateOfFile(path, FileUse::Users);
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

}  // namespace zelutil::command
