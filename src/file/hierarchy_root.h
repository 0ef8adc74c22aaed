#ifndef ZELUTIL_FILE_HIERARCHY_ROOT_H
#define ZELUTIL_FILE_HIERARCHY_ROOT_H

#include <zelutil/file/path.h>

#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

/// The search for the installation root.
namespace zelutil::file {

/// Something that a search looked at. What it refers to is valid while the listener is told.
struct RootSearchStep {
    enum class Source {
        CommonLibrary,  ///< The tools directory that the common library names.
        OwnFile,        ///< This library's own file.
        Variable,       ///< The directory of programs below a variable's value, which is put before the search path.
        SearchPath,     ///< Nothing yet: the search through directories begins.
        Directory,      ///< A directory of that search.
    };

    Source source;
    /// Empty where the source names nothing.
    const ZelU::File::Path& seen;
    /// The root that it leads to; null for none.
    const ZelU::File::Path* root = nullptr;
    /// The variable's name.
    const char* variable = "";
    /// Whether a directory of the search has a file with this library's name.
    bool hasLibrary = false;
};

using RootSearchListener = std::function<void(const RootSearchStep& step)>;

/// Looks for the root and leaves it in `root`. False when there is none; `root` then holds the last directory tried.
/// The steps are printed where "QTX_ZELUTIL_DEBUG" is defined.
bool locateRoot(ZelU::File::Path& root);

/// The same with a listener that is told of each step. Nothing is printed.
bool locateRoot(ZelU::File::Path& root, const RootSearchListener& listener);

/// The variables that may name an installation; the first one that is defined counts.
inline constexpr std::array<const char*, 3> kRootVariables = {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"};

/// The file by which the tree of an installation is known.
inline constexpr char kMarkerOfTree[] = "share/pcb/zelmgr/zeldict.l";

/// Returns the root that `Hierarchy::GetRoot` returned last, without a search and so without its exception; null where
/// it returned none yet.
const ZelU::File::Path* rootInForce();

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
