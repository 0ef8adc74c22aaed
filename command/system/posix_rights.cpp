// Rights on POSIX. Order and contracts: rights.h.
#include "command/system/rights.h"

#include <fcntl.h>
#include <unistd.h>

namespace zelutil::command {

bool mayWrite(const std::filesystem::path& path) {
    std::error_code ignored;
    // To make a file in a directory is to enter it, too.
    const int rights = std::filesystem::is_directory(path, ignored) ? W_OK | X_OK : W_OK;
    return faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

std::errc whyHidden(const std::filesystem::path& path) {
    std::error_code error;
    const bool isTold = std::filesystem::status(path, error).type() != std::filesystem::file_type::none;
    return isTold ? std::errc() : static_cast<std::errc>(error.value());
}

}  // namespace zelutil::command
