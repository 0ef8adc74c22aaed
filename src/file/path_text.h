#ifndef ZELUTIL_FILE_PATH_TEXT_H
#define ZELUTIL_FILE_PATH_TEXT_H

#include <cstddef>
#include <functional>
#include <string>

/// The grammar of paths, as pure text: nothing here asks the system.
namespace zelutil::file {

constexpr char kSeparator = '\\';

/// Holds what is known of a path's text beside the text.
struct PathFlags {
    /// The text has a blank.
    bool hasSpace = false;
    /// The current directory was put in front of a relative text.
    bool absolute = false;
};

/// Tells the current directory; empty when no text names it. Asked only when a text is relative, because asking costs
/// more than all the rest.
using CurrentDirectory = std::function<std::string()>;

/// Brings `text` into canonical form: a whole new text when `start` is 0, else one whose characters from `start` on
/// have just been appended. An invalid text becomes empty, and so does a relative one where the current directory is
/// empty or invalid.
///
/// With the current directory C:\work:
///
///     c:/a//b/  => c:\a\b        a   => C:\work\a        c:/..   => ""
///     c:/a/../b => c:\b          /a  => C:\work\\a       c:/a|b  => ""
///     c:/a///b  => c:\a\/b       /.  => C:\work\         c:/""a  => c:\"a
void normalise(std::string& text, PathFlags& flags, std::size_t start, const CurrentDirectory& currentDirectory);

}  // namespace zelutil::file

#endif
