#include "platform/windows/file.h"

#include <algorithm>
#include <utility>

#include "platform/world.h"

namespace zelutil::platform::windows {

std::wstring widen(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string narrow(std::wstring_view wide) {
    if (wide.empty()) {
        return {};
    }
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
    return text;
}

std::wstring spelledPath(const char* text) {
    std::wstring path = widen(text == nullptr ? std::string_view() : std::string_view(text));
    if (path.size() == 2 && path[1] == L':') {
        path += L'\\';
    }
    return path;
}

std::wstring systemPath(const char* text) {
    std::wstring path = spelledPath(text);
    return worldInForce == nullptr || path.empty() ? path : worldInForce->file(std::move(path));
}

File::~File() {
    if (isOpen()) {
        CloseHandle(handle_);
    }
}

bool File::close() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return CloseHandle(handle) != 0;
}

bool writeAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
        DWORD count = 0;
        if (WriteFile(file, bytes.data(), wanted, &count, nullptr) == 0 || count == 0) {
            return false;
        }
        bytes.remove_prefix(count);
    }
    return true;
}

}  // namespace zelutil::platform::windows
