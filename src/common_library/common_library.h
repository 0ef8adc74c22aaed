#ifndef ZELUTIL_COMMON_LIBRARY_COMMON_LIBRARY_H
#define ZELUTIL_COMMON_LIBRARY_COMMON_LIBRARY_H

#include <optional>
#include <string>
#include <vector>

#include "text/search_trace.h"

/// The suite's closed common library, qtxCommon. It is looked for once, at the first call of any function here, and is
/// optional: where the module or a function is missing, each function answers what it documents for that.
///
/// Several threads may call at once. Nothing here may be called from a static initialiser or while this library is
/// being loaded or unloaded: looking for a module there waits for the loader, which waits for us.
namespace zelutil::common_library {

/// The installation's tools directory as a Windows text, which the common library may leave empty. Nothing when it does
/// not know or is missing.
std::optional<std::string> toolsPath();

/// Whether the common library has finished its own initialisation. One that is missing has.
bool initDone();

/// Returns the names of those of its functions that are missing; nothing when the common library itself is.
std::optional<std::vector<std::string>> missingFunctions();

/// Binds the common library, where that is still to be done, and tells the trace where its module was looked for.
void locate(text::SearchTrace& trace);

/// A prepared search over the setup-path list.
class SetupPathSearch {
public:
    /// Nothing when the common library cannot search or is missing.
    static std::optional<SetupPathSearch> prepare();

    /// Full path, as a Windows text, of the first file with this relative name in the list; nothing when there is none.
    std::optional<std::string> find(const char* relativeName) const;

private:
    explicit SetupPathSearch(void* handle) : handle_(handle) {}

    void* handle_;
};

}  // namespace zelutil::common_library

#endif
