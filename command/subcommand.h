#ifndef ZELUTIL_COMMAND_SUBCOMMAND_H
#define ZELUTIL_COMMAND_SUBCOMMAND_H

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "command/output.h"

namespace CLI {
class App;
}

namespace zelutil::command {

/// Thrown by a subcommand's work for arguments that the parser takes and that make no sense together. Nothing has been
/// done then, and the exit code is `ExitCode::Usage`.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Does a subcommand's work. An exception of another type than `UsageError` counts as `Output::fail`.
using Work = std::function<void(Output&)>;

/// Says what completion offers for a subcommand's arguments that are no options.
enum class Completes {
    Files,
    Settings,    ///< NAME
    Assignments  ///< NAME=
};

/// One subcommand: its file defines one of these, and subcommands/table.cpp lists it.
struct Subcommand {
    const char* name;
    /// One line for the list of subcommands.
    const char* description;
    /// The last lines of its help: a call and what it prints, without blanks before them.
    const char* example;
    FindingsAre findingsAre;
    /// Adds the subcommand's arguments to its parser, and returns the work, which begins once they are filled in.
    Work (*declare)(CLI::App& arguments);
    Completes completes = Completes::Files;
    /// Whether the help leaves it out, because programs call it and not people.
    bool hidden = false;
    /// Returns the values that an option of the subcommand ("--format") may have, and for the empty text those that its
    /// arguments may have; nothing where these are not known. Null for a subcommand without such options.
    std::vector<std::string> (*valuesOf)(std::string_view option) = nullptr;
};

}  // namespace zelutil::command

#endif
