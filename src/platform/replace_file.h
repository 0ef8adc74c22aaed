#ifndef ZELUTIL_PLATFORM_REPLACE_FILE_H
#define ZELUTIL_PLATFORM_REPLACE_FILE_H

#include <string_view>

/// Files that hold a user's values: new contents in one step, and copies that are kept. Paths are those of platform.h.
namespace zelutil::platform {

/// The result of `replaceFile`.
enum class Replaced {
    /// The file holds the new bytes.
    Yes,
    /// The file is as before, or still missing.
    No,
    /// The new bytes were being written into the file itself, there being no other way, and that failed in the middle.
    Torn,
};

/// Gives a file new contents in one step: whoever looks, and whenever this process or the system stops, finds the old
/// file whole or the new one. Symbolic links are followed; mode, owner, attributes and access rights stay.
///
/// The bytes are written beside the file, flushed to disk and put in its place. Where that cannot be done (nothing may
/// be made in the directory, the file has a second hard link or another owner, somebody holds it open) they are written
/// into the file itself, but never when space is short. A file that cannot be opened for writing stays as it is, and
/// what is no regular file too. What a killed process left beside the file earlier is removed.
Replaced replaceFile(const char* path, std::string_view bytes);

/// Keeps a copy of the file beside it, with its owner and access rights, under the first of these names that is free:
/// `path` and ".bad", `path` and ".bad.2", `path` and ".bad.3" and so on. A file that has such a name already is never
/// touched, whichever process makes it and when. Where the owner or the rights cannot be given, the copy is this user's
/// alone.
///
/// Returns whether the copy is there, whole and on disk; where it cannot be made, nothing of it is left.
bool keepCopy(const char* path);

}  // namespace zelutil::platform

#endif
