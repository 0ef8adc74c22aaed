#include <zelutil/file/path.h>

#include <limits>
#include <new>
#include <stdexcept>

#include "file/path_text.h"
#include "platform/files.h"

namespace ZelU {
namespace File {

namespace platform = zelutil::platform;

namespace {

using WriteFile = bool (*)(const char* path, std::string_view bytes);

bool copyFile(const Path& from, const Path& to, WriteFile write) {
    if (!from.Exists()) {
        return false;
    }
    // Read whole before the target is opened: a copy onto itself finds its bytes.
    try {
        const auto bytes = platform::readFile(from, std::numeric_limits<std::uint64_t>::max());
        return bytes && write(to, *bytes);
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

}  // namespace

// NOLINTNEXTLINE(readability-make-member-function-const): hosts know it as it is.
bool Path::CopyTheFile(const Path& dest) { return copyFile(*this, dest, platform::writeFile); }

bool Path::MoveTheFile(const Path& dest) {
    if (!Exists() || dest.Exists()) {
        return false;
    }
    if (platform::renameFile(text_.c_str(), dest.text_.c_str())) {
        return true;
    }
    // A target that somebody has made meanwhile is not overwritten.
    if (!copyFile(*this, dest, platform::writeNewFile)) {
        return false;
    }
    // Kept deliberately: the file is at its new place, and a host that was told so must not move it again, though the
    // old one may still be there too.
    DeleteTheFile();
    return true;
}

bool Path::DeleteTheFile() { return Exists() && platform::removeFile(text_.c_str()); }

bool Path::Chdir(const Path& p) {
    const Path directory = p.IsDirectory() ? p : p.Parent();
    return platform::changeDirectory(directory.text_.c_str());
}

std::string Path::GetCWD() { return platform::currentDirectory(); }

}  // namespace File
}  // namespace ZelU
