#ifndef ZELUTIL_COMMAND_LINT_COMMAND_LINE_TEXT_H
#define ZELUTIL_COMMAND_LINT_COMMAND_LINE_TEXT_H

#include <string>

namespace zelutil::lint {

/// Returns the command line that checks a file, to be pasted: the paths are the system's own, in quotes where a shell
/// needs them. `defaults` is empty for none.
///
///     ("/home/ann/a.cfg", "")             => zelutil lint /home/ann/a.cfg
///     ("/home/ann/a.cfg", "/opt/d.cfg")   => zelutil lint --defaults /opt/d.cfg /home/ann/a.cfg
///     ("/my home/a.cfg", "")              => zelutil lint '/my home/a.cfg', on Windows in double quotes
std::string commandLineFor(const std::string& file, const std::string& defaults = {});

}  // namespace zelutil::lint

#endif
