#ifndef ZELUTIL_PLATFORM_WINDOWS_SYSTEM_TEXT_H
#define ZELUTIL_PLATFORM_WINDOWS_SYSTEM_TEXT_H

#include <algorithm>
#include <optional>
#include <string>

#include "platform/windows/file.h"

/// Texts of unknown length that the system fills in, for the sources of the Windows seam only.
namespace zelutil::platform::windows {

/// Calls `fill(buffer, size)` with a growing buffer. `fill` returns, as these system calls do, 0 on failure, the length
/// when it fitted, and otherwise the size it needs or `size` itself.
template <typename Fill>
std::optional<std::wstring> textOf(Fill fill) {
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) {
            return std::nullopt;
        }
        if (length < buffer.size()) {
            buffer.resize(length);
            return buffer;
        }
        buffer.resize(std::max<std::size_t>(length, buffer.size() * 2));
    }
}

}  // namespace zelutil::platform::windows

#endif
