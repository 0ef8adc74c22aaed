#ifndef ZELUTIL_COMMAND_UPGRADE_REPORT_H
#define ZELUTIL_COMMAND_UPGRADE_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "command/output.h"
#include "command/upgrade/upgrade.h"

namespace zelutil::command::upgrade {

/// Counts users, not entries.
struct Summary {
    std::size_t users = 0;
    std::size_t losing = 0;
    std::size_t unread = 0;
    std::size_t dropped = 0;
    std::size_t meaningless = 0;
    std::size_t refused = 0;
    std::size_t shortcuts = 0;
    std::size_t masked = 0;
    std::size_t keys = 0;
};

Summary summaryOf(const std::vector<UserResult>& results);

/// Tells the results for people and in the JSON form.
void tell(const std::vector<UserResult>& results, Output& output);

/// Returns one JSON text a line: one for each user, and one with the summary at the end. Nothing where one is too
/// large.
std::optional<std::string> jsonLines(const std::vector<UserResult>& results);

}  // namespace zelutil::command::upgrade

#endif
