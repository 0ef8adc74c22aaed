#include "command/subcommands/table.h"

namespace zelutil::command {

const std::vector<const Subcommand*>& subcommands() {
    static const std::vector<const Subcommand*> all{
        // Settings.
        &kDoctor,
        &kExplain,
        &kGet,
        &kLint,
        &kList,
        &kDiff,
        &kSet,
        &kReset,
        &kSchema,
        &kReport,
        // Shortcuts.
        &kShortcuts,
        &kSheet,
        &kWho,
        &kConflicts,
        &kFree,
        &kPlan,
        &kExport,
        &kImport,
        &kRoundTrip,
        // Other machines and versions.
        &kUpgrade,
        &kBundle,
        // For programs.
        &kComplete,
        &kManual,
    };
    return all;
}

}  // namespace zelutil::command
