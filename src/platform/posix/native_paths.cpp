// Paths of the standard library on POSIX systems. Order and contracts: native_paths.h.
#include "platform/native_paths.h"

#include <system_error>
#include <utility>

#include "platform/posix/drive_text.h"
#include "platform/posix/file.h"
#include "platform/world.h"

namespace zelutil::platform {

std::filesystem::path nativePathOf(const char* text) { return posix::spelledPath(text).value_or(""); }

std::optional<std::string> textOfNativePath(const std::filesystem::path& path) {
    // If that fails the path is empty, which no text names.
    std::error_code ignored;
    const std::filesystem::path absolute = worldInForce == nullptr
                                               ? std::filesystem::absolute(path, ignored)
                                               : std::filesystem::path(worldInForce->directory({})) / path;
    std::string file = absolute.lexically_normal().native();
    if (file.size() > 1 && file.back() == '/') {
        file.pop_back();
    }
    std::string text = textFromSystemPath(file);
    return systemPathFromText(text) == file ? std::make_optional(std::move(text)) : std::nullopt;
}

}  // namespace zelutil::platform
