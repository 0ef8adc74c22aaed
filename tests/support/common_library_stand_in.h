#ifndef ZELUTIL_TESTS_SUPPORT_COMMON_LIBRARY_STAND_IN_H
#define ZELUTIL_TESTS_SUPPORT_COMMON_LIBRARY_STAND_IN_H

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

/// A stand-in for the suite's closed common library: real shared modules, named as the real one, that answer what a
/// test tells them to. A program started by a test has its stand-in told by these variables, read when it is loaded:
///
///     QTXCOMMON_STAND_IN_TOOLS      what qtxGetToolsPathInBuf writes; undefined: it fails
///     QTXCOMMON_STAND_IN_INIT_DONE  "0": not yet
///     QTXCOMMON_STAND_IN_FOUND      what wemSearch finds; undefined: nothing
namespace zelutil::test {

/// Holds the results that the stand-in gives, and what it was asked.
struct CommonLibraryState {
    /// Is written by qtxGetToolsPathInBuf, which fails where there is none.
    std::optional<std::string> toolsPath;
    /// Called inside qtxGetToolsPathInBuf, before it answers.
    std::function<void()> duringToolsPath;
    int toolsPathCalls = 0;
    int toolsPathBufferSize = 0;
    int toolsPathReserved = -1;

    bool initDone = true;
    int initDoneCalls = 0;

    /// Whether wemInitialize succeeds.
    bool canSearch = true;
    int initializeCalls = 0;

    /// Is found by wemSearch, which finds nothing where there is none.
    std::optional<std::string> foundPath;
    /// Called inside wemSearch, before it answers.
    std::function<void()> duringSearch;
    int searchCalls = 0;
    std::string searchedName;
    int searchBufferSize = 0;
    /// Whether wemSearch got the handle that wemInitialize had filled.
    bool searchGotItsHandle = false;
};

/// Directory with the stand-in of one kind: "complete", "without_tools_path", "without_init_done",
/// "without_initialize", "without_search", "without_functions".
std::filesystem::path commonLibraryDirectory(const std::string& kind = "complete");

/// Loads the stand-in of that kind, so that the library finds it in the process, and gives access to it. To be called
/// before the library's first need of it.
CommonLibraryState& loadCommonLibrary(const std::string& kind = "complete");

}  // namespace zelutil::test

#endif
