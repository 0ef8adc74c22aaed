#include "command/subcommands/table.h"

namespace zelutil::command {

const std::vector<const Subcommand*>& subcommands() {
    static const std::vector<const Subcommand*> all{
        &kDoctor, &kGet, &kLint, &kList, &kDiff, &kSet, &kReset, &kShortcuts, &kSheet, &kComplete, &kManual,
    };
    return all;
}

}  // namespace zelutil::command
