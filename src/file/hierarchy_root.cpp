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

using Source = RootSearchStep::Source;

constexpr char kTraceVariable[] = "QTX_ZELUTIL_DEBUG";
constexpr char kProgramsOfTree[] = "tools/bin";

void print(const char* event, const Path& path) { std::printf("%s: \"%s\"\n", event, static_cast<const char*>(path)); }

void printStep(const RootSearchStep& step) {
    switch (step.source) {
        case Source::CommonLibrary:
            if (step.root != nullptr) {
                print("Populated installation root using qtxGetToolsPathInBuf()", *step.root);
            }
            break;
        case Source::OwnFile:
            if (step.root != nullptr) {
                print("Populated installation root using GetModuleFileName()", *step.root);
            }
            break;
        case Source::Variable:
            print("Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH", step.seen);
            break;
        case Source::SearchPath:
            std::puts("Searching PATH for installation root...");
            break;
        case Source::Directory:
            print("Checking path entry", step.seen);
            if (step.root != nullptr) {
                print("Populated installation root by searching PATH", *step.root);
            }
            break;
    }
}

bool nameBeginsWith(const Path& path, std::string_view prefix) {
    const std::string name = path.Name();
    return std::string_view(name).substr(0, prefix.size()) == prefix;
}

bool askCommonLibrary(Path& root, const RootSearchListener& listener) {
    const auto tools = common_library::toolsPath();
    const Path directory(tools.value_or(""));
    if (!tools) {
        listener({Source::CommonLibrary, directory});
        return false;
    }
    root = directory.Parent();
    listener({Source::CommonLibrary, directory, &root});
    return true;
}

bool askOwnModule(Path& root, const RootSearchListener& listener) {
    const Path file(platform::modulePath());
    const auto found = rootOfLibraryFile(file);
    if (!found) {
        listener({Source::OwnFile, file});
        return false;
    }
    root = *found;
    listener({Source::OwnFile, file, &root});
    return true;
}

/// Returns the directory of programs below the first variable that is defined, for a search list.
std::string programsOfVariable(const RootSearchListener& listener) {
    for (const char* const name : kRootVariables) {
        if (const auto value = platform::environmentPath(name)) {
            // Kept deliberately: a text that is no path is the empty path, and what is joined to it lies in the current
            // directory, which is then looked at before all entries.
            const Path programs = Path(*value) + kProgramsOfTree;
            listener({Source::Variable, programs, nullptr, name});
            return std::string(programs) + ";";
        }
    }
    return {};
}

/// Every directory goes through `root`, so that the last one tried stays there.
///
/// Kept deliberately: an empty entry stands for the current directory in the look at the files, but not in the root,
/// which becomes empty when they are there. An empty entry counts as an entry wherever a list is read.
bool searchDirectories(Path& root, const RootSearchListener& listener) {
    const std::string list = programsOfVariable(listener) + platform::environmentPathList("PATH").value_or("");
    listener({Source::SearchPath, Path()});
    for (const std::string_view entry : entriesOf(list)) {
        root = Path(std::string(entry));
        const Path tree = toolsDirectoryOf(root).Parent();
        const bool hasLibrary = (root + platform::libraryFileName()).Exists();
        const bool isProgramsOfTree = hasLibrary && (tree + kMarkerOfTree).Exists();
        listener({Source::Directory, root, isProgramsOfTree ? &tree : nullptr, "", hasLibrary});
        if (isProgramsOfTree) {
            root = tree;
            return true;
        }
    }
    return false;
}

}  // namespace

bool locateRoot(Path& root) {
    const DbgChk trace(kTraceVariable);
    return locateRoot(root, [&trace](const RootSearchStep& step) {
        if (trace) {
            printStep(step);
        }
    });
}

bool locateRoot(Path& root, const RootSearchListener& listener) {
    return askCommonLibrary(root, listener) || askOwnModule(root, listener) || searchDirectories(root, listener);
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
