#ifndef ZELUTIL_PLATFORM_REPLACE_FILE_H
#define ZELUTIL_PLATFORM_REPLACE_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Files that hold a user's values: new contents in one step, and copies that are kept. Paths are those of platform.h.
namespace zelutil::platform {

/// The result of `replaceFile`.
enum class Replaced {
    /// The file holds the new bytes.
    Yes,
    /// The file is as before, or still missing.
    No,
    /// It failed in the middle, where the system has no single step for it, and could not be undone: the file holds a
    /// part of the new bytes, or is gone and the new bytes lie beside it, where the next replacement keeps them.
    Torn,
};

/// Gives a file new contents in one step: whoever looks, and whenever this process or the system stops, finds the old
/// file whole or the new one. Symbolic links are followed; a link that leads nowhere makes the file it names, and one
/// whose target cannot be told is left alone. Owner, attributes and access rights stay.
///
/// The bytes are written beside the file, flushed to disk and put in its place. Where that cannot be done (nothing may
/// be made in the directory, the file has a second hard link, another owner or rights that cannot be copied, somebody
/// holds it open) they are written into the file itself, under a lock that other calls respect, but never when space is
/// short. Where that fails in the middle, the old bytes are put back. Where the lock is not to be had for two seconds,
/// where the file cannot be opened for writing or is no regular file, it stays as it is.
///
/// Calls of several processes for one file do not disturb each other. What a killed process left beside the file is
/// removed; where the file itself is missing, it is kept as `keepCopy` would keep it.
Replaced replaceFile(const char* path, std::string_view bytes);

/// Keeps a copy of the file beside it, with its owner and access rights, under the first of these names that is free:
/// `path` and ".bad", `path` and ".bad.2", `path` and ".bad.3" and so on. A file that has such a name already is never
/// touched, whichever process makes it and when. Where the owner or the rights cannot be given, the copy is this
/// user's, and others have no rights to it but those that a directory of Windows hands down.
///
/// A hash of the name replaces its end where it is too long for such an ending.
///
/// Returns the path of the copy, which is then there, whole and on disk; nothing when it cannot be made, and then
/// nothing is left of it.
std::optional<std::string> keepCopy(const char* path);

/// The result of `readWhole`.
struct WholeFile {
    /// Nothing when it cannot be opened or read, is no regular file or has more than `maximumSize` bytes; it is then
    /// not read at all.
    std::optional<std::string> bytes;
    /// False only where the system says that there is no such file, or the path can name none. A file that nothing can
    /// be told of may be there.
    bool mayBeThere;
};

/// Reads the file while nobody writes into it: waits until a `replaceFile` that has to write into the file itself is
/// through, and a tenth of a second for a program that shuts others out. Where the lock of writers is not to be had for
/// two seconds, the file is read as it is.
WholeFile readWhole(const char* path, std::uint64_t maximumSize);

}  // namespace zelutil::platform

#endif
