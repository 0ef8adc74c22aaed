#include <zelutil/host/native_path.h>

#include "platform/native_paths.h"

namespace zelutil::host {

using ZelU::File::Path;

std::filesystem::path nativePath(const Path& path) { return platform::nativePathOf(path); }

std::filesystem::path nativePath(const std::string& text) { return platform::nativePathOf(text.c_str()); }

Path fromNative(const std::filesystem::path& path) {
    constexpr std::filesystem::path::value_type kEndOfText{};
    if (path.native().find(kEndOfText) != std::filesystem::path::string_type::npos) {
        return Path();
    }
    const std::string text = platform::textOfNativePath(path).value_or("");
    Path made(text);
    // The rules for paths change some texts so that they name another file.
    return nativePath(made) == nativePath(text) ? made : Path();
}

}  // namespace zelutil::host
