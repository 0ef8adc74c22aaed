#ifndef ZELUTIL_COMMAND_DOCTOR_LEFT_OUT_H
#define ZELUTIL_COMMAND_DOCTOR_LEFT_OUT_H

#include <string>
#include <vector>

#include "command/doctor/file_state.h"

namespace zelutil::command {

/// Returns what the user's file holds and a save that changes nothing would leave out, as the library plans that save
/// with these defaults: 'what stands under "meta" (5)', 'the number 1e-400'. Empty where the defaults have no section,
/// with which nothing is saved.
std::vector<std::string> leftOutBySave(const ReadFile& defaults, const ReadFile& user);

}  // namespace zelutil::command

#endif
