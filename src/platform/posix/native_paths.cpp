// Paths of the standard library on POSIX systems. Order and contracts: native_paths.h.
#include "platform/native_paths.h"

#include <system_error>
#include <utility>

#include "platform/posix/drive_text.h"
#include "platform/posix/file.h"

namespace zelutil::platform {

std::filesystem::path nativePathOf(const char* text) { return posix::systemPath(text).value_or(""); }

std::optional<std::string> textOfNativePath(const std::filesystem::path& path) {
    std::error_code error;
    std::string file = std::filesystem::absolute(path, error).lexically_normal().native();
    if (error) {
        return std::nullopt;
    }
    if (file.size() > 1 && file.back() == '/') {
        file.pop_back();
    }
    std::string text = textFromSystemPath(file);
    return systemPathFromText(text) == file ? std::make_optional(std::move(text)) : std::nullopt;
}

}  // namespace zelutil::platform
