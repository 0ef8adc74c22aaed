#ifndef ZELUTIL_COMMAND_HTML_RESULT_FILE_H
#define ZELUTIL_COMMAND_HTML_RESULT_FILE_H

#include <string>

#include "command/output.h"

namespace zelutil::command {

/// Writes a subcommand's result into the file that an argument names, in one step, as a save writes the user's: whoever
/// looks finds the old file whole or the new one. Tells `output` where it is, for people and as the member "file", or
/// that it could not be written and why. Returns whether it was.
bool writeResult(const std::string& file, const std::string& text, Output& output);

/// Does the same with a text for people, but not over a file that holds JSON: the preferences, a profile and the parts
/// of a bundle are such, and no text for people is.
bool writePage(const std::string& file, const std::string& text, Output& output);

}  // namespace zelutil::command

#endif
