#ifndef ZELUTIL_PLATFORM_WINDOWS_FILE_H
#define ZELUTIL_PLATFORM_WINDOWS_FILE_H

#include <string>
#include <string_view>

#include "platform/windows/windows_h.h"

/// Handles and texts, for the sources of the Windows seam only.
namespace zelutil::platform::windows {

/// Some calls take at most 32 bits of length at once.
inline constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

/// Whoever has or opens the file meanwhile is not disturbed.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring widen(std::string_view text);
std::string narrow(std::wstring_view wide);

/// The path for a system call. A drive alone would be the current directory of that drive. Null is the empty text.
std::wstring spelledPath(const char* text);

/// The same, where the machine has the file while a `World` is in force.
std::wstring systemPath(const char* text);

/// An open file handle, closed at the end of its scope.
class File {
public:
    explicit File(HANDLE handle) : handle_(handle) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File();

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE handle() const { return handle_; }

    /// Takes another handle; the one it had must be closed.
    void reset(HANDLE handle) { handle_ = handle; }

    /// Closes now and tells whether the system kept what was written.
    bool close();

private:
    HANDLE handle_;
};

/// False, with the system's error code set, when not every byte could be written.
bool writeAll(HANDLE file, std::string_view bytes);

}  // namespace zelutil::platform::windows

#endif
