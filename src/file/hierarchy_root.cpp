#include "file/hierarchy_root.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/util/dbg_chk.h>

#include <cstdio>
#include <string>

#include "common_library/common_library.h"
#include "platform/environment.h"
#include "platform/modules.h"
#include "text/list.h"

namespace zelutil::file {

using ZelU::DbgChk;
using ZelU::File::Path;

namespace {

constexpr char kTraceVariable[] = "QTX_ZELUTIL_DEBUG";
constexpr char kProgramsOfTree[] = "tools/bin";
constexpr char kMarkerOfTree[] = "share/pcb/zelmgr/zeldict.l";

void print(const DbgChk& trace, const char* event, const Path& path) {
    if (trace) {
        std::printf("%s: \"%s\"\n", event, static_cast<const char*>(path));
    }
}

bool nameBeginsWith(const Path& path, std::string_view prefix) {
    const std::string name = path.Name();
    return std::string_view(name).substr(0, prefix.size()) == prefix;
}

bool askCommonLibrary(Path& root, const DbgChk& trace) {
    const auto tools = common_library::toolsPath();
    if (!tools) {
        return false;
    }
    root = Path(*tools).Parent();
    print(trace, "Populated installation root using qtxGetToolsPathInBuf()", root);
    return true;
}

bool askOwnModule(Path& root, const DbgChk& trace) {
    const auto found = rootOfLibraryFile(Path(platform::modulePath()));
    if (!found) {
        return false;
    }
    root = *found;
    print(trace, "Populated installation root using GetModuleFileName()", root);
    return true;
}

std::optional<std::string> rootVariable() {
    for (const char* const name : {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"}) {
        if (auto value = platform::environmentPath(name)) {
            return value;
        }
    }
    return std::nullopt;
}

std::string searchList(const DbgChk& trace) {
    std::string list;
    if (const auto value = rootVariable()) {
        // Kept deliberately: a text that is no path is the empty path, and what is joined to it lies in the current
        // directory, which is then looked at before all entries.
        const Path programs = Path(*value) + kProgramsOfTree;
        print(trace, "Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH", programs);
        list = std::string(programs) + ";";
    }
    return list + platform::environmentPathList("PATH").value_or("");
}

/// Every directory goes through `root`, so that the last one tried stays there.
///
/// Kept deliberately: an empty entry stands for the current directory in the look at the files, but not in the root,
/// which becomes empty when they are there. An empty entry counts as an entry wherever a list is read.
bool searchDirectories(Path& root, const DbgChk& trace) {
    const std::string list = searchList(trace);
    if (trace) {
        std::puts("Searching PATH for installation root...");
    }
    for (const std::string_view entry : entriesOf(list)) {
        root = Path(std::string(entry));
        const Path tree = toolsDirectoryOf(root).Parent();
        print(trace, "Checking path entry", root);
        if ((root + platform::libraryFileName()).Exists() && (tree + kMarkerOfTree).Exists()) {
            root = tree;
            print(trace, "Populated installation root by searching PATH", root);
            return true;
        }
    }
    return false;
}

}  // namespace

bool locateRoot(Path& root) {
    const DbgChk trace(kTraceVariable);
    return askCommonLibrary(root, trace) || askOwnModule(root, trace) || searchDirectories(root, trace);
}

std::optional<Path> rootOfLibraryFile(const Path& file) {
    const Path programs = file.Parent();
    const Path tools = programs.Parent();
    // Kept deliberately: the names need only begin so. Part of the published behaviour; hosts may depend on it.
    if (!nameBeginsWith(programs, "bin") || !nameBeginsWith(tools, "tools")) {
        return std::nullopt;
    }
    return tools.Parent();
}

Path toolsDirectoryOf(const Path& directory) {
    const Path parent = directory.Parent();
    return directory.Name() == "64bit" ? parent.Parent() : parent;
}

std::vector<std::string_view> entriesOf(std::string_view list) {
    std::vector<std::string_view> entries = text::split(list, ";");
    if (entries.back().empty()) {
        entries.pop_back();
    }
    return entries;
}

}  // namespace zelutil::file
