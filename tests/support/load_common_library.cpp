#include "support/common_library_stand_in.h"
#include "support/shared_module.h"

namespace zelutil::test {

std::filesystem::path commonLibraryDirectory(const std::string& kind) {
    return std::filesystem::path(ZELUTIL_STAND_IN_DIRECTORY) / kind;
}

CommonLibraryState& loadCommonLibrary(const std::string& kind) {
    void* const module = loadModule(commonLibraryDirectory(kind) / moduleFileName("qtxCommon"));
    return *static_cast<CommonLibraryState*>(functionOf<void* (*)()>(module, "commonLibraryState")());
}

}  // namespace zelutil::test
