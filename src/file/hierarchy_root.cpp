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

using Source = text::Candidate::Source;
using Verdict = text::Candidate::Verdict;

constexpr char kTraceVariable[] = "QTX_ZELUTIL_DEBUG";
constexpr char kProgramsOfTree[] = "tools/bin";

/// Prints the steps, each when it has been taken, where that is asked for.
class PrintedTrace {
public:
    static constexpr bool goesOn() { return false; }

    void tell(Source source, Verdict verdict, const char* seen = "", const char* found = "", const char* = "") const {
        if (!trace_) {
            return;
        }
        const bool taken = verdict == Verdict::Taken;
        if (source == Source::CommonLibrary && taken) {
            print("Populated installation root using qtxGetToolsPathInBuf()", found);
        } else if (source == Source::OwnFile && taken) {
            print("Populated installation root using GetModuleFileName()", found);
        } else if (source == Source::Variable && verdict == Verdict::Noted) {
            print("Added QTX ROOT/INSTDIR ENV variable to beginning of search PATH", seen);
        } else if (source == Source::SearchList) {
            std::puts("Searching PATH for installation root...");
        } else if (source == Source::ListEntry) {
            print("Checking path entry", seen);
            if (taken) {
                print("Populated installation root by searching PATH", found);
            }
        }
    }

private:
    static void print(const char* event, const char* path) { std::printf("%s: \"%s\"\n", event, path); }

    DbgChk trace_{kTraceVariable};
};

bool nameBeginsWith(const Path& path, std::string_view prefix) {
    const std::string name = path.Name();
    return std::string_view(name).substr(0, prefix.size()) == prefix;
}

/// The search as it goes. A trace may have it go on after the root is found, which stays.
template <typename Trace>
class RootSearch {
public:
    RootSearch(Path& root, Trace& trace) : root_(root), trace_(trace) {}

    bool run() {
        askCommonLibrary();
        if (!isOver()) {
            askOwnModule();
        }
        if (!isOver()) {
            searchDirectories();
        }
        return found_;
    }

private:
    bool isOver() const { return found_ && !trace_.goesOn(); }

    void take(Source source, const Path& seen, const Path& root, const char* variable = "") {
        trace_.tell(source, Verdict::Taken, seen, root, variable);
        if (!found_) {
            root_ = root;
            found_ = true;
        }
    }

    void askCommonLibrary() {
        const auto tools = common_library::toolsPath();
        const Path directory(tools.value_or(""));
        if (tools) {
            take(Source::CommonLibrary, directory, directory.Parent());
        } else {
            trace_.tell(Source::CommonLibrary, Verdict::Unknown);
        }
    }

    void askOwnModule() {
        const Path file(platform::modulePath());
        if (const auto root = rootOfLibraryFile(file)) {
            take(Source::OwnFile, file, *root);
        } else {
            trace_.tell(Source::OwnFile, Verdict::NoPrograms, file);
        }
    }

    /// Every directory goes through the root, so that the last one tried stays there.
    ///
    /// Kept deliberately: an empty entry stands for the current directory in the look at the files, but not in the
    /// root, which becomes empty when they are there. An empty entry counts as an entry wherever a list is read.
    void searchDirectories() {
        std::string list = programsOfVariable();
        const std::size_t endOfVariable = list.size();
        list += platform::environmentPathList("PATH").value_or("");
        trace_.tell(Source::SearchList, Verdict::Noted);
        for (const std::string_view entry : entriesOf(list)) {
            const auto begin = static_cast<std::size_t>(entry.data() - list.data());
            lookInto(Path(std::string(entry)), begin < endOfVariable ? variable_ : "PATH");
            if (isOver()) {
                return;
            }
        }
    }

    void lookInto(const Path& directory, const char* variable) {
        if (!found_) {
            root_ = directory;
        }
        const Path tree = toolsDirectoryOf(directory).Parent();
        if (!(directory + platform::libraryFileName()).Exists()) {
            trace_.tell(Source::ListEntry, Verdict::NoLibrary, directory, "", variable);
        } else if (!isInstallation(tree)) {
            trace_.tell(Source::ListEntry, Verdict::NoMarker, directory, tree, variable);
        } else {
            take(Source::ListEntry, directory, tree, variable);
        }
    }

    /// Returns the directory of programs below the first variable that is defined, for a search list.
    std::string programsOfVariable() {
        std::string list;
        for (const char* const name : kRootVariables) {
            const auto value = platform::environmentPath(name);
            if (!value) {
                trace_.tell(Source::Variable, Verdict::NotDefined, "", "", name);
                continue;
            }
            // Kept deliberately: a text that is no path is the empty path, and what is joined to it lies in the current
            // directory, which is then looked at before all entries.
            const Path programs = Path(*value) + kProgramsOfTree;
            trace_.tell(Source::Variable, list.empty() ? Verdict::Noted : Verdict::Hidden, programs, "", name);
            if (list.empty()) {
                list = std::string(programs) + ";";
                variable_ = name;
            }
            if (!trace_.goesOn()) {
                break;
            }
        }
        return list;
    }

    Path& root_;
    Trace& trace_;
    bool found_ = false;
    /// The variable that counts.
    const char* variable_ = "";
};

}  // namespace

bool locateRoot(Path& root) {
    PrintedTrace trace;
    return RootSearch<PrintedTrace>(root, trace).run();
}

bool locateRoot(Path& root, text::SearchTrace& trace) { return RootSearch<text::SearchTrace>(root, trace).run(); }

bool isInstallation(const Path& tree) { return (tree + kMarkerOfTree).Exists(); }

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
