#ifndef ZELUTIL_FILE_HIERARCHY_ROOT_H
#define ZELUTIL_FILE_HIERARCHY_ROOT_H

#include <zelutil/file/path.h>

#include <optional>
#include <string_view>
#include <vector>

/// The search for the installation root.
namespace zelutil::file {

/// Looks for the root and leaves it in `root`. False when there is none; `root` then holds the last directory tried.
bool locateRoot(ZelU::File::Path& root);

// What the search decides on, without a look at the system.

/// The root of the tree that holds the library's own file; nothing when the file lies elsewhere.
///
///     C:\p\tools\bin\zelutil.dll       => C:\p
///     C:\p\tools.new\bin64\zelutil.dll => C:\p
///     C:\p\bin\zelutil.dll             => nothing
std::optional<ZelU::File::Path> rootOfLibraryFile(const ZelU::File::Path& file);

/// The tools directory that a directory of libraries belongs to.
///
///     C:\p\tools\bin => C:\p\tools    C:\p\tools\lib\64bit => C:\p\tools
ZelU::File::Path toolsDirectoryOf(const ZelU::File::Path& directory);

/// The entries of a ";" list. An end that follows the last separator is no entry.
///
///     "a;;b" => "a", "", "b"    "a;" => "a"    ";" => ""    "" => none
std::vector<std::string_view> entriesOf(std::string_view list);

}  // namespace zelutil::file

#endif
