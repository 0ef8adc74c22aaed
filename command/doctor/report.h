#ifndef ZELUTIL_COMMAND_DOCTOR_REPORT_H
#define ZELUTIL_COMMAND_DOCTOR_REPORT_H

#include "command/doctor/diagnosis.h"
#include "command/output.h"

namespace zelutil::command {

/// Tells a diagnosis as the subcommand "doctor" does.
void tell(const Diagnosis& diagnosis, Output& output);

}  // namespace zelutil::command

#endif
