#ifndef ZELUTIL_COMMAND_EXPLAIN_ENTRY_RESET_H
#define ZELUTIL_COMMAND_EXPLAIN_ENTRY_RESET_H

#include <zelutil/host/result.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command/explain/setting_account.h"
#include "platform/file_turn.h"

namespace zelutil::command {

/// Takes entries out of the user's file. From the reading to the writing it has the turn that saves take, so that none
/// of another process comes between. Where that is not to be had it goes on without, and a file that was changed since
/// it was read stays.
class EntryReset {
public:
    /// Waits for its turn and reads both preference files.
    EntryReset();

    const SettingAccounts& accounts() const { return accounts_; }

    /// Returns whether other processes are kept from saving.
    bool hasTurn() const { return turn_ && turn_->isTaken(); }

    /// Cuts every entry that sets one of these settings out of the file, and leaves every other byte alone. The result
    /// has a status, a path and the copy that was kept, and a text where the file stays for a reason of its own.
    host::SaveResult cut(const std::vector<std::uint32_t>& settings);

    /// Puts this text in the place of the one that was read, or where there is none, leaves the file as it is. The
    /// result is like that of `cut`. Either of the two is called, and once.
    host::SaveResult put(const std::optional<std::string>& text);

private:
    SettingAccounts readInTurn();
    void write(const std::string& text, host::SaveResult& result) const;

    std::string writtenPath_;
    std::optional<platform::FileTurn> turn_;
    SettingAccounts accounts_;
};

}  // namespace zelutil::command

#endif
