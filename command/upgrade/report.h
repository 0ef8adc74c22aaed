#ifndef ZELUTIL_COMMAND_UPGRADE_REPORT_H
#define ZELUTIL_COMMAND_UPGRADE_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "command/output.h"
#include "command/upgrade/upgrade.h"
#include "command/upgrade/user_files.h"

namespace zelutil::command::upgrade {

/// Holds what came of all users, as far as they were seen.
struct Outcome {
    Results results;
    std::vector<NotSeen> notSeen;
};

/// Counts users, not entries, besides files that are no user's and places that are not seen.
struct Summary {
    std::size_t users = 0;
    std::size_t notUsers = 0;
    std::size_t notSeen = 0;
    std::size_t losing = 0;
    std::size_t unread = 0;
    std::size_t dropped = 0;
    std::size_t meaningless = 0;
    std::size_t refused = 0;
    std::size_t shortcuts = 0;
    std::size_t masked = 0;
    std::size_t keys = 0;
};

Summary summaryOf(const Outcome& outcome);

/// Tells the outcome for people and in the JSON form.
void tell(const Outcome& outcome, Output& output);

/// Returns one JSON text a line: one for each user, one for each place that is not seen, and one with the summary and
/// the keys that change for everybody at the end. Nothing where one is too large.
std::optional<std::string> jsonLines(const Outcome& outcome);

}  // namespace zelutil::command::upgrade

#endif
