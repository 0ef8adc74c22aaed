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

/// Takes entries out of the user's file while no save of another process can come between the reading and the writing.
class EntryReset {
public:
    /// Waits for its turn and reads both preference files.
    EntryReset();

    const SettingAccounts& accounts() const { return accounts_; }

    /// Cuts every entry that sets one of these settings out of the file, and leaves every other byte alone. The result
    /// has a status, a path and the copy that was kept, and a text where the file stays for a reason of its own. Called
    /// once.
    host::SaveResult cut(const std::vector<std::uint32_t>& settings);

private:
    SettingAccounts readInTurn();
    void write(const std::string& text, host::SaveResult& result) const;

    std::string writtenPath_;
    std::optional<platform::FileTurn> turn_;
    SettingAccounts accounts_;
};

}  // namespace zelutil::command

#endif
