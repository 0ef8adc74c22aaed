#ifndef ZELUTIL_FILE_HIERARCHY_ROOT_H
#define ZELUTIL_FILE_HIERARCHY_ROOT_H

#include <zelutil/file/path.h>

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "text/search_trace.h"

/// The search for the installation root.
namespace zelutil::file {

/// Looks for the root and leaves it in `root`. False when there is none; `root` then holds the last directory tried.
/// The steps are printed where "QTX_ZELUTIL_DEBUG" is defined.
bool locateRoot(ZelU::File::Path& root);

/// Does the same and tells the trace the candidates. Nothing is printed.
bool locateRoot(ZelU::File::Path& root, text::SearchTrace& trace);

/// The variables that may name an installation; the first one that is defined counts.
inline constexpr std::array<const char*, 3> kRootVariables = {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"};

/// The file by which the tree of an installation is known.
inline constexpr char kMarkerOfTree[] = "share/pcb/zelmgr/zeldict.l";

/// Returns whether that file is below a directory.
bool isInstallation(const ZelU::File::Path& tree);

/// Returns the root that `Hierarchy::GetRoot` returned last, without a search and so without its exception; null where
/// it returned none yet.
const ZelU::File::Path* rootInForce();

// The search decides on these, without a look at the system.

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
