#ifndef ZELUTIL_COMMAND_SUBCOMMANDS_TABLE_H
#define ZELUTIL_COMMAND_SUBCOMMANDS_TABLE_H

#include <vector>

#include "command/subcommand.h"

namespace zelutil::command {

extern const Subcommand kBundle;
extern const Subcommand kConflicts;
extern const Subcommand kDiff;
extern const Subcommand kDoctor;
extern const Subcommand kExplain;
extern const Subcommand kExport;
extern const Subcommand kFree;
extern const Subcommand kGet;
extern const Subcommand kImport;
extern const Subcommand kLint;
extern const Subcommand kList;
extern const Subcommand kPlan;
extern const Subcommand kReport;
extern const Subcommand kReset;
extern const Subcommand kRoundTrip;
extern const Subcommand kSchema;
extern const Subcommand kSet;
extern const Subcommand kSheet;
extern const Subcommand kShortcuts;
extern const Subcommand kUpgrade;
extern const Subcommand kWho;

// These are for programs, and the help leaves them out.
extern const Subcommand kComplete;
extern const Subcommand kManual;

/// Returns all subcommands in the order in which the help lists them.
const std::vector<const Subcommand*>& subcommands();

}  // namespace zelutil::command

#endif
