#include "command/explain/entry_reset.h"

#include "command/explain/entry_cut.h"
#include "host/save_status.h"
#include "prefs/preference_files.h"
#include "prefs/user_settings_file.h"

namespace zelutil::command {

EntryReset::EntryReset() : writtenPath_(prefs::writtenUserFilePath()), accounts_(readInTurn()) {}

SettingAccounts EntryReset::readInTurn() {
    // Without a directory there is nobody to wait for.
    if (prefs::UserSettingsFile::hasDirectoryOf(writtenPath_)) {
        turn_.emplace(writtenPath_.c_str());
    }
    return SettingAccounts();
}

host::SaveResult EntryReset::cut(const std::vector<std::uint32_t>& settings) {
    const std::vector<json::View> values = accounts_.entriesThatSet(settings);
    return put(values.empty() ? std::nullopt : std::optional(withoutEntries(accounts_.userDocument(), values)));
}

host::SaveResult EntryReset::put(const std::optional<std::string>& text) {
    host::SaveResult result;
    result.path = accounts_.userFile().path;
    if (accounts_.userFile().isUnread) {
        result.status = host::SaveResult::Status::NotWritten;
        result.text = "Nothing can be taken out of the user's file, because it is not read.";
    } else if (!text) {
        result.status = host::SaveResult::Status::Unchanged;
    } else if (writtenPath_ != result.path) {
        result.status = host::SaveResult::Status::NotWritten;
        result.text =
            "The values are in a file that stays, because the variable regression_testing sends saves elsewhere.";
    } else {
        write(*text, result);
    }
    return result;
}

/// Replaces the file as a save does. It may have been changed since it was read, by a program that waits for no turn or
/// where this one has none.
void EntryReset::write(const std::string& text, host::SaveResult& result) const {
    prefs::UserSettingsFile file;
    bool isAsRead = false;
    file.read(result.path, [&](std::string_view bytes) { return isAsRead = bytes == accounts_.userDocument().text(); });
    if (!isAsRead) {
        result.status = host::SaveResult::Status::NotWritten;
        result.text = "The file stays, because another program is changing it.";
        return;
    }
    auto written = file.write(result.path, std::string(text));
    result.keptCopy = std::move(written.keptCopy);
    result.status = host::statusOf(written.written);
}

}  // namespace zelutil::command
