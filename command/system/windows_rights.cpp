// Rights on Windows. Order and contracts: rights.h.
#include "command/system/rights.h"

#include "platform/windows/windows_h.h"

namespace zelutil::command {

// One right means both.
static_assert(FILE_WRITE_DATA == FILE_ADD_FILE);

bool mayWrite(const std::filesystem::path& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_WRITE_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        return true;
    }
    // Somebody else may hold it for a moment.
    return GetLastError() == ERROR_SHARING_VIOLATION;
}

/// The system takes a name that is too long for one of a file that is not there.
std::errc whyHidden(const std::filesystem::path& path) {
    for (const std::filesystem::path& name : path.relative_path()) {
        if (name.native().size() > kMostInName) {
            return std::errc::filename_too_long;
        }
    }
    std::error_code error;
    const bool isTold = std::filesystem::status(path, error).type() != std::filesystem::file_type::none;
    return isTold ? std::errc() : static_cast<std::errc>(error.default_error_condition().value());
}

}  // namespace zelutil::command
