#ifndef ZELUTIL_HOST_NATIVE_PATH_H
#define ZELUTIL_HOST_NATIVE_PATH_H

#include <zelutil/export.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <string>

/// Paths of this library and paths of the system, so that a host needs no case for either system.
namespace zelutil::host {

/// Returns the path as the system names it: on Windows as it stands, elsewhere `Z:\home\ann` as /home/ann. It is the
/// file that this library opens for that path. Empty for the empty path and for one that names no file there.
ZELUTIL_API std::filesystem::path nativePath(const ZelU::File::Path& path);

/// The same for a text such as `SaveResult::path`, which is taken as it stands.
ZELUTIL_API std::filesystem::path nativePath(const std::string& text);

/// Returns the library's path of a file, made absolute, without "." and ".." components, which go with the component
/// before them, and without a separator at the end. Empty where no path names that very file: for a character that the
/// narrow encoding or the rules of `ZelU::File::Path` lack.
ZELUTIL_API ZelU::File::Path fromNative(const std::filesystem::path& path);

}  // namespace zelutil::host

#endif
