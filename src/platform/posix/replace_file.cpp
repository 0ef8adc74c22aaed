// The steps of replacing and keeping files on POSIX systems. Order and contracts: replacement_primitives.h.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <memory>

#include "platform/posix/file.h"
#include "platform/replacement_primitives.h"

namespace zelutil::platform::replacement {

using namespace posix;

namespace {

constexpr int kMaximumLinks = 40;
constexpr mode_t kPrivateFileMode = 0600;
constexpr mode_t kModeBits = 07777;
constexpr char kAccessList[] = "system.posix_acl_access";

int descriptorOf(const OpenFile& file) { return static_cast<int>(file.native()); }

bool isShortOfSpace(int error) { return error == ENOSPC || error == EDQUOT; }

StepResult resultOf(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EROFS:
        case EBUSY:
            return StepResult::Refused;
        case EEXIST:
            return StepResult::Taken;
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
            return StepResult::Gone;
        default:
            return StepResult::Failed;
    }
}

StepResult open(const NativeText& path, int flags, OpenFile& file, mode_t mode = 0) {
    file.reset(openRetrying(path.c_str(), flags, mode));
    return file.isOpen() ? StepResult::Done : resultOf(errno);
}

std::optional<struct stat> statusOf(const OpenFile& file) {
    struct stat status {};
    return ::fstat(descriptorOf(file), &status) == 0 ? std::optional<struct stat>(status) : std::nullopt;
}

enum class LockResult {
    Had,
    /// Another open file has it.
    Taken,
    /// This file system has none, for nobody.
    Unknown,
    Failed,
};

/// Over NFS an exclusive lock needs a file that is open for writing, and a shared one a file open for reading.
LockResult lock(const OpenFile& file, int kind) {
    int result = 0;
    do {
        result = ::flock(descriptorOf(file), kind | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        return LockResult::Had;
    }
    if (errno == EWOULDBLOCK) {
        return LockResult::Taken;
    }
    return errno == ENOLCK || errno == ENOSYS || errno == EOPNOTSUPP ? LockResult::Unknown : LockResult::Failed;
}

/// A lock that nobody can have stands in nobody's way.
StepResult lockWherePossible(const OpenFile& file, int kind) {
    switch (lock(file, kind)) {
        case LockResult::Had:
        case LockResult::Unknown:
            return StepResult::Done;
        case LockResult::Taken:
            return StepResult::Busy;
        case LockResult::Failed:
            break;
    }
    return StepResult::Refused;
}

/// Nothing when the system does not tell.
std::optional<bool> isNamedBy(const OpenFile& file, const NativeText& path) {
    const auto own = statusOf(file);
    struct stat named {};
    if (!own) {
        return std::nullopt;
    }
    if (::stat(path.c_str(), &named) != 0) {
        return errno == ENOENT ? std::optional<bool>(false) : std::nullopt;
    }
    return own->st_dev == named.st_dev && own->st_ino == named.st_ino;
}

enum class AccessList { None, Present, Unknown };

AccessList accessListOf(const NativeText& path, std::string& list) {
    const ssize_t size = ::getxattr(path.c_str(), kAccessList, nullptr, 0);
    if (size < 0) {
        return errno == ENODATA || errno == EOPNOTSUPP ? AccessList::None : AccessList::Unknown;
    }
    list.resize(static_cast<std::size_t>(size));
    const bool isWhole = ::getxattr(path.c_str(), kAccessList, list.data(), list.size()) == size;
    return isWhole ? AccessList::Present : AccessList::Unknown;
}

/// Also takes away the list that the new file may have from its directory.
bool takeOverAccessList(int file, const NativeText& from) {
    std::string list;
    switch (accessListOf(from, list)) {
        case AccessList::Present:
            return ::fsetxattr(file, kAccessList, list.data(), list.size(), 0) == 0;
        case AccessList::None:
            return ::fremovexattr(file, kAccessList) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
        case AccessList::Unknown:
            break;
    }
    return false;
}

/// Makes an empty file first, which nobody else can do under a name that is taken, and renames over it. In between,
/// others see the empty file.
StepResult renameOverClaim(const NativeText& from, const NativeText& to) {
    OpenFile claim;
    const StepResult claimed = open(to, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, claim, kNewFileMode);
    if (claimed != StepResult::Done) {
        return claimed;
    }
    if (std::rename(from.c_str(), to.c_str()) == 0) {
        return StepResult::Done;
    }
    const StepResult result = resultOf(errno);
    // Meanwhile another process may have put its file there.
    if (isNamedBy(claim, to) == true) {
        ::unlink(to.c_str());
    }
    return result;
}

StepResult renameToFreeName(const NativeText& from, const NativeText& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return StepResult::Done;
    }
    // Some file systems do not know the flag. A second link is refused too when the name is taken.
    const bool isFlagUnknown = errno == EINVAL || errno == ENOSYS;
    if (!isFlagUnknown) {
        return resultOf(errno);
    }
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return StepResult::Done;
    }
    const bool hasNoLinks = errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS;
    return hasNoLinks ? renameOverClaim(from, to) : resultOf(errno);
}

}  // namespace

OpenFile::~OpenFile() { close(); }

void OpenFile::reset(std::intptr_t native) {
    close();
    native_ = native;
}

bool OpenFile::close() {
    const auto descriptor = static_cast<int>(native_);
    const bool wasOpen = isOpen();
    native_ = kNone;
    return !wasOpen || ::close(descriptor) == 0;
}

Turn::Turn() = default;

Turn::~Turn() = default;

std::optional<NativeText> nativePath(const char* text) { return systemPath(text); }

std::optional<NativeText> resolveLinks(NativeText path) {
    for (int links = 0; links <= kMaximumLinks; ++links) {
        NativeText target(PATH_MAX, '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            const bool isNoLink = errno == EINVAL || errno == ENOENT;
            return isNoLink ? std::optional<NativeText>(path) : std::nullopt;
        }
        if (length == 0 || static_cast<std::size_t>(length) == target.size()) {
            return std::nullopt;
        }
        target.resize(static_cast<std::size_t>(length));
        path = target.front() == '/' ? target : path.substr(0, nameStart(path)) + target;
    }
    return std::nullopt;
}

std::size_t nameStart(const NativeText& path) { return path.rfind('/') + 1; }

std::string textOfName(const NativeText& name) { return name; }

std::uint32_t processNumber() { return static_cast<std::uint32_t>(::getpid()); }

StepResult probeTarget(const NativeText& path, Target& target) {
    OpenFile file;
    const StepResult opened = openForWriting(path, file);
    if (opened != StepResult::Done) {
        return opened;
    }
    const auto status = statusOf(file);
    if (!status || !S_ISREG(status->st_mode)) {
        return StepResult::Refused;
    }
    target.hasOtherLinks = status->st_nlink > 1;
    return StepResult::Done;
}

StepResult createBeside(const NativeText& path, bool replaces, OpenFile& file) {
    const mode_t mode = replaces ? kPrivateFileMode : kNewFileMode;
    const StepResult created = open(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, file, mode);
    if (created != StepResult::Done) {
        return created;
    }
    // Until it is locked, another process may take the file for a leftover.
    const StepResult locked = lockWherePossible(file, LOCK_EX);
    const auto isThere = isNamedBy(file, path);
    if (locked == StepResult::Done && isThere == true) {
        return StepResult::Done;
    }
    if (locked != StepResult::Busy && isThere != false) {
        discard(file, path);
    }
    file.close();
    return StepResult::Taken;
}

bool takeOver(const OpenFile& file, const NativeText&, const NativeText& from) {
    const int descriptor = descriptorOf(file);
    const auto own = statusOf(file);
    struct stat old {};
    if (!own || ::stat(from.c_str(), &old) != 0) {
        return false;
    }
    const bool hasOwner = own->st_uid == old.st_uid && own->st_gid == old.st_gid;
    return (hasOwner || ::fchown(descriptor, old.st_uid, old.st_gid) == 0) && takeOverAccessList(descriptor, from) &&
           ::fchmod(descriptor, old.st_mode & kModeBits) == 0;
}

bool makePrivate(const OpenFile& file, const NativeText&) {
    ::fremovexattr(descriptorOf(file), kAccessList);
    return ::fchmod(descriptorOf(file), kPrivateFileMode) == 0;
}

bool writeBytes(const OpenFile& file, std::string_view bytes) { return writeAll(descriptorOf(file), bytes); }

bool flushToDisk(const OpenFile& file) { return ::fsync(descriptorOf(file)) == 0; }

StepResult putInPlace(OpenFile& file, const NativeText& path, const NativeText& target, bool replaces) {
    if (!replaces) {
        // A target that came to be meanwhile has an owner and rights of its own.
        const StepResult put = putUnderFreeName(file, path, target);
        return put == StepResult::Taken ? StepResult::Gone : put;
    }
    if (std::rename(path.c_str(), target.c_str()) != 0) {
        return resultOf(errno);
    }
    file.close();
    return StepResult::Done;
}

/// A rename loses nothing that a system like this has, so there is no second way.
StepResult exchange(OpenFile&, const NativeText&, const NativeText&, bool) { return StepResult::Refused; }

StepResult putUnderFreeName(OpenFile& file, const NativeText& path, const NativeText& name) {
    const StepResult renamed = renameToFreeName(path, name);
    if (renamed == StepResult::Done) {
        file.close();
    }
    return renamed;
}

void discard(OpenFile& file, const NativeText& path) {
    ::unlink(path.c_str());
    file.close();
}

StepResult openForWriting(const NativeText& path, OpenFile& file) {
    return open(path, O_WRONLY | O_NONBLOCK | O_NOFOLLOW, file);
}

StepResult lockForWriting(const OpenFile& file) { return lockWherePossible(file, LOCK_EX); }

bool isStillThere(const OpenFile& file, const NativeText& path) { return isNamedBy(file, path) == true; }

std::optional<std::uint64_t> sizeOf(const OpenFile& file) {
    const auto status = statusOf(file);
    return status ? std::optional<std::uint64_t>(status->st_size) : std::nullopt;
}

bool reserve(const OpenFile& file, std::uint64_t oldSize, std::uint64_t size) {
    if (size <= oldSize) {
        return true;
    }
    const auto end = static_cast<off_t>(oldSize);
    const int error = ::posix_fallocate(descriptorOf(file), end, static_cast<off_t>(size) - end);
    if (error == 0 || !(isShortOfSpace(error) || error == EFBIG)) {
        return true;
    }
    truncate(file, oldSize);
    return false;
}

bool truncate(const OpenFile& file, std::uint64_t size) {
    return ::ftruncate(descriptorOf(file), static_cast<off_t>(size)) == 0;
}

StepResult openForReading(const NativeText& path, OpenFile& file) {
    // Opening a pipe without a writer would wait for ever.
    const StepResult opened = open(path, O_RDONLY | O_NONBLOCK, file);
    if (opened != StepResult::Done) {
        return opened;
    }
    const auto status = statusOf(file);
    return status && S_ISREG(status->st_mode) ? StepResult::Done : StepResult::Refused;
}

StepResult lockForReading(const OpenFile& file) { return lockWherePossible(file, LOCK_SH); }

std::optional<std::size_t> readBytes(const OpenFile& file, std::string& buffer) {
    ssize_t count = 0;
    do {
        count = ::read(descriptorOf(file), buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    return count < 0 ? std::nullopt : std::optional<std::size_t>(static_cast<std::size_t>(count));
}

std::vector<NativeText> namesBeside(const NativeText& path) {
    const NativeText directory = path.substr(0, nameStart(path));
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(directory.empty() ? "." : directory.c_str()),
                                                      ::closedir);
    std::vector<NativeText> names;
    while (const dirent* const entry = entries == nullptr ? nullptr : ::readdir(entries.get())) {
        names.emplace_back(entry->d_name);
    }
    return names;
}

StepResult openLeftover(const NativeText& path, OpenFile& file) {
    const StepResult opened = open(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK, file);
    if (opened != StepResult::Done) {
        return opened;
    }
    const auto status = statusOf(file);
    if (!status || !S_ISREG(status->st_mode)) {
        return StepResult::Refused;
    }
    // Its maker holds the lock for as long as it lives. After that, another process may have cleared up first.
    const bool isLocked = lock(file, LOCK_EX) == LockResult::Had;
    return isLocked && isStillThere(file, path) ? StepResult::Done : StepResult::Refused;
}

}  // namespace zelutil::platform::replacement
