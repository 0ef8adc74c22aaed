#include <zelutil/host/native_path.h>

#include <filesystem>

#include "platform/native_paths.h"

namespace zelutil::host {

using ZelU::File::Path;

NativePath::NativePath(const char* text) : text_(std::filesystem::path(text).native()) {}

NativePath nativePath(const Path& path) { return platform::nativePathOf(path); }

NativePath nativePath(const std::string& text) { return platform::nativePathOf(text.c_str()); }

Path fromNative(const NativePath& path) {
    if (path.native().find(NativePath::value_type{}) != NativePath::string_type::npos) {
        return Path();
    }
    const std::string text = platform::textOfNativePath(path).value_or("");
    Path made(text);
    // The rules for paths change some texts so that they name another file.
    return nativePath(made) == nativePath(text) ? made : Path();
}

}  // namespace zelutil::host
