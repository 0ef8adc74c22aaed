// The functions of the common library's stand-in; ZELUTIL_STAND_IN_HAS_... tells which of them a kind has.
#include "support/common_library_stand_in.h"

#include <cstdio>
#include <cstdlib>

#include "support/module_export.h"

namespace {

using zelutil::test::CommonLibraryState;

std::optional<std::string> variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

CommonLibraryState stateFromEnvironment() {
    CommonLibraryState state;
    state.toolsPath = variable("QTXCOMMON_STAND_IN_TOOLS");
    state.initDone = variable("QTXCOMMON_STAND_IN_INIT_DONE") != "0";
    state.foundPath = variable("QTXCOMMON_STAND_IN_FOUND");
    return state;
}

CommonLibraryState state = stateFromEnvironment();

[[maybe_unused]] bool write(const std::optional<std::string>& text, char* buffer, int size) {
    return text && std::snprintf(buffer, static_cast<std::size_t>(size), "%s", text->c_str()) >= 0;
}

}  // namespace

ZELUTIL_TEST_EXPORT void* commonLibraryState() { return &state; }

#ifdef ZELUTIL_STAND_IN_HAS_TOOLS_PATH
ZELUTIL_TEST_EXPORT int qtxGetToolsPathInBuf(char* buffer, int size, int reserved) {
    ++state.toolsPathCalls;
    state.toolsPathBufferSize = size;
    state.toolsPathReserved = reserved;
    if (state.duringToolsPath) {
        state.duringToolsPath();
    }
    return write(state.toolsPath, buffer, size) ? 1 : 0;
}
#endif

#ifdef ZELUTIL_STAND_IN_HAS_INIT_DONE
ZELUTIL_TEST_EXPORT int qtxInitDone() {
    ++state.initDoneCalls;
    return state.initDone ? 1 : 0;
}
#endif

#ifdef ZELUTIL_STAND_IN_HAS_INITIALIZE
ZELUTIL_TEST_EXPORT int wemInitialize(void** handle, ...) {
    ++state.initializeCalls;
    *handle = &state;
    return state.canSearch ? 0 : 1;
}
#endif

#ifdef ZELUTIL_STAND_IN_HAS_SEARCH
ZELUTIL_TEST_EXPORT int wemSearch(void* handle, const char* relativeName, char* buffer, int bufferSize) {
    ++state.searchCalls;
    state.searchedName = relativeName;
    state.searchBufferSize = bufferSize;
    state.searchGotItsHandle = handle == &state;
    if (state.duringSearch) {
        state.duringSearch();
    }
    return write(state.foundPath, buffer, bufferSize) ? 0 : 1;
}
#endif
