// zelutil doctor: where everything was looked for, and what is wrong there.
#include "command/arguments.h"
#include "command/doctor/report.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

void examine(Output& output) { tell(diagnose(), output); }

Work declareDoctor(CLI::App& /*arguments*/) { return examine; }

}  // namespace

const Subcommand kDoctor{"doctor", "Say where files are looked for, what is found, and what is wrong with it",
                         "$ zelutil doctor\n"
                         "Installation: \"/opt/product\"\n"
                         "  - the tools directory of the common library: knows none\n"
                         "  + this library's own file \"/opt/product/tools/bin/zelutil\": taken, leads to "
                         "\"/opt/product\"",
                         FindingsAre::TheResult, declareDoctor};

}  // namespace zelutil::command
