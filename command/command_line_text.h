#ifndef ZELUTIL_COMMAND_COMMAND_LINE_TEXT_H
#define ZELUTIL_COMMAND_COMMAND_LINE_TEXT_H

#include <string>

namespace zelutil::command {

/// Returns an argument of a command line as a shell takes it, in quotes where it needs them: single ones, on Windows
/// double ones.
///
///     a.cfg => a.cfg    my file => 'my file'    it's => 'it'\''s'
std::string quotedForShell(const std::string& argument);

/// Returns the command line that checks a file, to be pasted: the paths are the system's own. `defaults` is empty for
/// none. Where the machine of a bundle is in force, the command line names that too.
///
///     ("/home/ann/a.cfg", "")             => zelutil lint /home/ann/a.cfg
///     ("/home/ann/a.cfg", "/opt/d.cfg")   => zelutil lint --defaults /opt/d.cfg /home/ann/a.cfg
///     ("/my home/a.cfg", "")              => zelutil lint '/my home/a.cfg'
std::string commandLineFor(const std::string& file, const std::string& defaults = {});

}  // namespace zelutil::command

#endif
