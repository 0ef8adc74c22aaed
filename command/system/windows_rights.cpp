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

}  // namespace zelutil::command
