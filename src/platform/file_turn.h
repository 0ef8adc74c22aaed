#ifndef ZELUTIL_PLATFORM_FILE_TURN_H
#define ZELUTIL_PLATFORM_FILE_TURN_H

#include "platform/replacement_primitives.h"

namespace zelutil::platform {

/// The right to read a file, make up one's mind and write it, which one process at a time has. It is had for all files
/// of a directory at once and leaves nothing behind there; the system takes it from a process that dies. Reading and
/// replacing the file do not ask for it, and may be done by who has it.
///
/// One thread must not ask for it again while it has it.
class FileTurn {
public:
    /// Waits for it, some seconds at most. The path is one of platform.h, symbolic links are followed.
    explicit FileTurn(const char* path);
    FileTurn(const FileTurn&) = delete;
    FileTurn& operator=(const FileTurn&) = delete;
    ~FileTurn();

    /// False where the wait was in vain, where the directory is not there or cannot be read, and where the system or
    /// the file system has no such thing.
    bool isTaken() const { return isTaken_; }

private:
    replacement::OpenFile native_;
    bool isTaken_ = false;
};

}  // namespace zelutil::platform

#endif
