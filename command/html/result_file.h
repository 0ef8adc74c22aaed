#ifndef ZELUTIL_COMMAND_HTML_RESULT_FILE_H
#define ZELUTIL_COMMAND_HTML_RESULT_FILE_H

#include <string>

#include "command/output.h"

namespace zelutil::command {

/// Writes a subcommand's result into the file that an argument names, in one step, as a save writes the user's: whoever
/// looks finds the old file whole or the new one. Tells `output` where it is, for people and as the member "file", or
/// that it could not be written and why. Returns whether it was.
bool writeResult(const std::string& file, const std::string& text, Output& output);

/// Returns whether a result may be written there: not in the place of preferences, whatever they hold, and whether or
/// not they are there. Tells `output` where not.
bool mayTakePlace(const std::string& file, Output& output);

/// Writes a page or a sheet as `writeResult` does, where `mayTakePlace` lets it, but not over a file that holds
/// anything else than a page or a sheet which the command has made.
bool writePage(const std::string& file, const std::string& text, Output& output);

}  // namespace zelutil::command

#endif
