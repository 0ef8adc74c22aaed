#include "command/before_save.h"

#include <filesystem>

#include "command/doctor/file_state.h"
#include "command/text.h"
#include "prefs/preference_files.h"

namespace zelutil::command {

BeforeSave lookBeforeSave() { return {unreadUserFile(), topmostMissingDirectory(prefs::writtenUserFilePath())}; }

std::string madeDirectory(const BeforeSave& before) {
    std::error_code ignored;
    const bool isThere =
        !before.missingDirectory.empty() && std::filesystem::exists(pathOf(before.missingDirectory), ignored);
    return isThere ? before.missingDirectory : std::string();
}

void putRight(const BeforeSave& before, const host::SaveResult& result, Output& output) {
    if (before.unread && result.status == host::SaveResult::Status::Saved && !prefs::isWrittenUserFileRedirected()) {
        output.replace(before.unread->finding, findingAfterSave(*before.unread, nativeOrAsItStands(result.keptCopy)));
    }
}

}  // namespace zelutil::command
