// Replacing and keeping files on POSIX systems; the contracts are in replace_file.h.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <memory>

#include "platform/posix/file.h"
#include "platform/replace_file.h"
#include "platform/replacement_name.h"

namespace zelutil::platform {

using namespace posix;

namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNamesTried = 100;
constexpr std::size_t kCopyBufferSize = 65'536;
constexpr mode_t kPrivateFileMode = 0600;
constexpr mode_t kModeBits = 07777;

/// How an attempt to write beside the target ended.
enum class Beside { Done, Failed, Impossible };

std::string directoryOf(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

/// The file behind any symbolic links, also where the last of them points to nothing yet.
std::string withoutLinks(std::string path) {
    for (int links = 0; links < kMostLinks; ++links) {
        std::string target(PATH_MAX, '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) {
            return path;
        }
        target.resize(static_cast<std::size_t>(length));
        path = target.front() == '/' ? target : directoryOf(path) + target;
    }
    return path;
}

bool isShortOfSpace(int error) { return error == ENOSPC || error == EDQUOT; }

/// Writing into the file itself is tried only where nothing can be put in its place, not where writing fails.
Beside afterError(int error) {
    const bool notAllowed = error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
    return notAllowed ? Beside::Impossible : Beside::Failed;
}

bool isLeftover(const std::string& path) {
    const Descriptor file(openRetrying(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    // Its maker holds a lock for as long as it lives.
    return file.isOpen() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
}

void removeLeftovers(const std::string& target) {
    const std::string directory = directoryOf(target);
    const std::string name = target.substr(directory.size());
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(directory.empty() ? "." : directory.c_str()),
                                                      ::closedir);
    if (entries == nullptr) {
        return;
    }
    while (const dirent* const entry = ::readdir(entries.get())) {
        const std::string path = directory + entry->d_name;
        if (isReplacementName(entry->d_name, name) && isLeftover(path)) {
            ::unlink(path.c_str());
        }
    }
}

/// False, with errno set, also when `to` is there: EEXIST.
bool renameToFreeName(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    // Some file systems do not know the flag. A second link is refused too when the name is taken.
    const bool flagUnknown = errno == EINVAL || errno == ENOSYS;
    if (!flagUnknown || ::link(from.c_str(), to.c_str()) != 0) {
        return false;
    }
    ::unlink(from.c_str());
    return true;
}

/// Copies from where `source` stands to its end. False when any step fails.
bool copyAll(int source, int target) {
    std::string buffer(kCopyBufferSize, '\0');
    for (;;) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0;
        }
        if (!writeAll(target, std::string_view(buffer).substr(0, static_cast<std::size_t>(count)))) {
            return false;
        }
    }
}

/// A new file beside the target, removed again unless it was put in its place.
class Replacement {
public:
    explicit Replacement(const std::string& target) {
        const std::string directory = directoryOf(target);
        const std::string name = target.substr(directory.size());
        for (int i = 0; i < kMostNamesTried && !file_.isOpen(); ++i) {
            path_ = directory + replacementName(name, static_cast<std::uint32_t>(::getpid()), nextReplacementCall());
            create();
            if (!file_.isOpen() && error_ != EEXIST) {
                return;
            }
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (file_.isOpen()) {
            ::unlink(path_.c_str());
        }
    }

    bool isOpen() const { return file_.isOpen(); }
    int error() const { return error_; }

    /// False when the new file cannot be given the owner of the old one.
    bool takeOver(const struct stat& old) {
        struct stat own {};
        if (::fstat(file_.number(), &own) != 0) {
            return false;
        }
        const bool sameOwner = own.st_uid == old.st_uid && own.st_gid == old.st_gid;
        return (sameOwner || ::fchown(file_.number(), old.st_uid, old.st_gid) == 0) &&
               ::fchmod(file_.number(), old.st_mode & kModeBits) == 0;
    }

    /// Shuts everybody else out.
    bool makePrivate() { return ::fchmod(file_.number(), kPrivateFileMode) == 0; }

    bool fill(std::string_view bytes) {
        const bool filled = writeAll(file_.number(), bytes) && ::fsync(file_.number()) == 0;
        error_ = errno;
        return filled;
    }

    bool copyFrom(int source) { return copyAll(source, file_.number()) && ::fsync(file_.number()) == 0; }

    bool putInPlaceOf(const std::string& target) {
        if (std::rename(path_.c_str(), target.c_str()) != 0) {
            error_ = errno;
            return false;
        }
        file_.close();
        return true;
    }

    bool keepAs(const std::string& path) {
        for (std::uint32_t number = 1; number <= kMaximumKeptNames; ++number) {
            if (renameToFreeName(path_, path + keptSuffix(number))) {
                file_.close();
                return true;
            }
            if (errno != EEXIST) {
                return false;
            }
        }
        return false;
    }

private:
    void create() {
        file_.reset(openRetrying(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, kNewFileMode));
        error_ = errno;
        if (!file_.isOpen()) {
            return;
        }
        // Without a lock another process takes the file for a leftover. One may have done so before this moment.
        struct stat status {};
        ::flock(file_.number(), LOCK_EX | LOCK_NB);
        if (::fstat(file_.number(), &status) == 0 && status.st_nlink == 0) {
            file_.close();
            error_ = EEXIST;
        }
    }

    std::string path_;
    Descriptor file_{-1};
    int error_ = 0;
};

/// `old` is null where there is no file yet.
Beside writeBeside(const std::string& target, std::string_view bytes, const struct stat* old) {
    Replacement replacement(target);
    if (!replacement.isOpen()) {
        return afterError(replacement.error());
    }
    if (old != nullptr && !replacement.takeOver(*old)) {
        return Beside::Impossible;
    }
    if (!replacement.fill(bytes)) {
        return Beside::Failed;
    }
    return replacement.putInPlaceOf(target) ? Beside::Done : afterError(replacement.error());
}

/// Makes sure that the file can grow to `size` before any of its bytes is touched.
bool reserve(int file, off_t oldSize, off_t size) {
    if (size <= oldSize) {
        return true;
    }
    const int error = ::posix_fallocate(file, oldSize, size - oldSize);
    if (error == 0 || !(isShortOfSpace(error) || error == EFBIG)) {
        return true;
    }
    const bool restored = ::ftruncate(file, oldSize) == 0;
    static_cast<void>(restored);
    return false;
}

Replaced writeInto(Descriptor& file, const struct stat& old, std::string_view bytes) {
    const auto size = static_cast<off_t>(bytes.size());
    if (!reserve(file.number(), old.st_size, size)) {
        return Replaced::No;
    }
    const bool written = writeAll(file.number(), bytes) && ::ftruncate(file.number(), size) == 0;
    const bool flushed = written && ::fsync(file.number()) == 0;
    return file.close() && flushed ? Replaced::Yes : Replaced::Torn;
}

Replaced replaceExisting(const std::string& target, Descriptor& file, std::string_view bytes) {
    struct stat old {};
    if (::fstat(file.number(), &old) != 0 || !S_ISREG(old.st_mode)) {
        return Replaced::No;
    }
    const Beside beside = old.st_nlink > 1 ? Beside::Impossible : writeBeside(target, bytes, &old);
    if (beside == Beside::Impossible) {
        return writeInto(file, old, bytes);
    }
    return beside == Beside::Done ? Replaced::Yes : Replaced::No;
}

}  // namespace

Replaced replaceFile(const char* path, std::string_view bytes) {
    const auto named = systemPath(path);
    if (!named) {
        return Replaced::No;
    }
    const std::string target = withoutLinks(*named);
    Descriptor file(openRetrying(target.c_str(), O_WRONLY | O_NONBLOCK));
    if (!file.isOpen() && errno != ENOENT) {
        return Replaced::No;
    }
    removeLeftovers(target);
    if (file.isOpen()) {
        return replaceExisting(target, file, bytes);
    }
    return writeBeside(target, bytes, nullptr) == Beside::Done ? Replaced::Yes : Replaced::No;
}

bool keepCopy(const char* path) {
    const auto file = systemPath(path);
    if (!file) {
        return false;
    }
    const Descriptor source(openRetrying(file->c_str(), O_RDONLY | O_NONBLOCK));
    struct stat status {};
    if (!source.isOpen() || ::fstat(source.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    Replacement copy(*file);
    // A copy of another user's file cannot be given to that user. It is worth more than none.
    return copy.isOpen() && (copy.takeOver(status) || copy.makePrivate()) && copy.copyFrom(source.number()) &&
           copy.keepAs(*file);
}

}  // namespace zelutil::platform
