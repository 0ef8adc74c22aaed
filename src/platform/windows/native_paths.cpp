// Paths of the standard library on Windows. Order and contracts: native_paths.h.
#include "platform/native_paths.h"

#include <utility>

#include "platform/files.h"
#include "platform/windows/file.h"
#include "platform/windows/system_text.h"
#include "platform/world.h"

namespace zelutil::platform {

using namespace windows;

namespace {

/// By the system itself: the standard library of some compilers takes the server of a network path for a directory.
std::optional<std::wstring> absolute(const std::wstring& path) {
    auto file = windows::textOf(
        [&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(path.c_str(), size, buffer, nullptr); });
    const bool isRoot = file && file->size() == 3 && (*file)[1] == L':';
    if (file && !isRoot && file->back() == L'\\') {
        file->pop_back();
    }
    return file;
}

}  // namespace

std::filesystem::path nativePathOf(const char* text) { return namesFile(text) ? spelledPath(text) : std::wstring(); }

std::optional<std::string> textOfNativePath(const std::filesystem::path& path) {
    const auto file = absolute(
        worldInForce == nullptr ? path.native() : (std::filesystem::path(worldInForce->directory({})) / path).native());
    std::string text = narrow(file.value_or(L""));
    return file && widen(text) == *file && namesFile(text.c_str()) ? std::make_optional(std::move(text)) : std::nullopt;
}

}  // namespace zelutil::platform
