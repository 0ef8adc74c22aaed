#ifndef ZELUTIL_COMMAND_EXIT_CODE_H
#define ZELUTIL_COMMAND_EXIT_CODE_H

namespace zelutil::command {

/// The exit codes of all subcommands.
enum class ExitCode {
    Fine = 0,    ///< Done, and nothing found that somebody should look at.
    Found = 1,   ///< Done, and at least one warning or error is among the findings.
    Usage = 2,   ///< Called wrongly; nothing was done.
    Failed = 3,  ///< It could not be done.
};

}  // namespace zelutil::command

#endif
