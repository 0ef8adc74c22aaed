// Paths of the standard library on POSIX systems. Order and contracts: native_paths.h.
#include "platform/native_paths.h"

#include <system_error>
#include <utility>

#include "platform/posix/drive_text.h"
#include "platform/posix/file.h"

namespace zelutil::platform {

std::filesystem::path nativePathOf(const char* text) { return posix::systemPath(text).value_or(""); }

std::optional<std::string> textOfNativePath(const std::filesystem::path& path) {
    // Where that fails the path is empty, which no text names.
    std::error_code ignored;
    std::string file = std::filesystem::absolute(path, ignored).lexically_normal().native();
    if (file.size() > 1 && file.back() == '/') {
        file.pop_back();
    }
    std::string text = textFromSystemPath(file);
    return systemPathFromText(text) == file ? std::make_optional(std::move(text)) : std::nullopt;
}

}  // namespace zelutil::platform
