#include "support/symbolic_link.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace zelutil::test {

#ifdef _WIN32
bool makeFileLink(const std::filesystem::path& target, const std::filesystem::path& link) {
    constexpr DWORD kAlsoForOrdinaryUsers = 2;
    // Wine says that it made one, and makes none.
    return CreateSymbolicLinkW(link.c_str(), target.c_str(), kAlsoForOrdinaryUsers) != 0 &&
           GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES;
}
#else
bool makeFileLink(const std::filesystem::path& target, const std::filesystem::path& link) {
    std::error_code error;
    std::filesystem::create_symlink(target, link, error);
    return !error;
}
#endif

}  // namespace zelutil::test
