// Directories and files on POSIX systems. Order and contracts: files.h.
#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>

#include "platform/posix/drive_text.h"
#include "platform/posix/file.h"
#include "platform/replacement_primitives.h"
#include "platform/world.h"

namespace zelutil::platform {

using namespace posix;

namespace {

constexpr mode_t kNewDirectoryMode = 0777;

bool isDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Longer paths are translated in memory of their own.
constexpr std::size_t kUsualPathSize = 512;

bool readStatus(const char* path, struct stat& status) {
    char buffer[kUsualPathSize];
    if (path != nullptr && worldInForce == nullptr && copySystemPath(path, buffer, sizeof buffer)) {
        return ::stat(buffer, &status) == 0;
    }
    const auto file = systemPath(path);
    return file && ::stat(file->c_str(), &status) == 0;
}

std::string ownWorkingDirectory() {
    std::string path(PATH_MAX, '\0');
    if (::getcwd(path.data(), path.size()) == nullptr) {
        return {};
    }
    path.resize(path.find('\0'));
    return path;
}

/// The system's path of the current directory; empty when it does not tell.
std::string workingDirectory() {
    std::string own = ownWorkingDirectory();
    return worldInForce == nullptr ? own : worldInForce->directory(std::move(own));
}

std::string textOf(const std::string& path) {
    std::string text = textFromSystemPath(path);
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

/// Bytes read into `buffer`, fewer than `size` at the end of the file only; -1 on failure.
ssize_t readUpTo(int descriptor, char* buffer, std::size_t size) {
    std::size_t total = 0;
    while (total < size) {
        const ssize_t count = ::read(descriptor, buffer + total, size - total);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        total += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(total);
}

/// Each step fails when the target exists. A directory goes in the place of an empty one that is made for it; a file
/// has both names for a moment.
bool renameBySteps(const std::string& source, const std::string& target) {
    struct stat status {};
    if (::lstat(source.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        if (::mkdir(target.c_str(), kNewDirectoryMode) != 0) {
            return false;
        }
        if (std::rename(source.c_str(), target.c_str()) == 0) {
            return true;
        }
        ::rmdir(target.c_str());
        return false;
    }
    if (::link(source.c_str(), target.c_str()) != 0) {
        return false;
    }
    if (::unlink(source.c_str()) == 0) {
        return true;
    }
    ::unlink(target.c_str());
    return false;
}

bool writeTo(const std::optional<std::string>& file, int flags, std::string_view bytes) {
    if (!file) {
        return false;
    }
    Descriptor descriptor(openRetrying(file->c_str(), O_WRONLY | flags, kNewFileMode));
    return descriptor.isOpen() && writeAll(descriptor.number(), bytes) && descriptor.close();
}

}  // namespace

std::string fromSystemPath(std::string_view text) { return textFromSystemPath(text); }

bool namesFile(const char* path) { return systemPath(path).has_value(); }

std::string currentDirectory() { return textOf(workingDirectory()); }

std::string namedCurrentDirectory() {
    const std::string path = workingDirectory();
    std::string text = textOf(path);
    return systemPathFromText(text) == path ? text : std::string();
}

bool changeDirectory(const char* path) {
    const auto directory = systemPath(path);
    return directory && ::chdir(directory->c_str()) == 0;
}

std::optional<FileStatus> fileStatus(const char* path) {
    struct stat status {};
    if (!readStatus(path, status)) {
        return std::nullopt;
    }
    return FileStatus{S_ISDIR(status.st_mode), (status.st_mode & S_IXUSR) != 0, (status.st_mode & S_IWUSR) != 0,
                      static_cast<std::int64_t>(status.st_size)};
}

bool renameFile(const char* from, const char* to) {
    const auto source = systemPath(from);
    const auto target = systemPath(to);
    if (!source || !target) {
        return false;
    }
    if (::renameat2(AT_FDCWD, source->c_str(), AT_FDCWD, target->c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    // Some file systems do not know the flag.
    return (errno == EINVAL || errno == ENOSYS) && renameBySteps(*source, *target);
}

bool removeFile(const char* path) {
    const auto file = systemPath(path);
    return file && ::unlink(file->c_str()) == 0;
}

bool makeDirectories(const char* path) {
    const auto directory = systemPath(path);
    if (!directory) {
        return false;
    }
    std::size_t end = 0;
    while (end != std::string::npos) {
        end = directory->find('/', end + 1);
        const std::string part = directory->substr(0, end);
        if (::mkdir(part.c_str(), kNewDirectoryMode) != 0 && !isDirectory(part)) {
            return false;
        }
    }
    return true;
}

std::optional<std::string> readFile(const char* path, std::uint64_t maximumSize) {
    const auto file = systemPath(path);
    if (!file || !mayReadInWorld(path)) {
        return std::nullopt;
    }
    // Opening a pipe without a writer would wait for ever; it is no regular file and is refused below.
    const Descriptor descriptor(openRetrying(file->c_str(), O_RDONLY | O_NONBLOCK));
    struct stat status {};
    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::uint64_t>(status.st_size) > maximumSize) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = readUpTo(descriptor.number(), bytes.data(), bytes.size());
    if (count < 0) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

bool writeFile(const char* path, std::string_view bytes) { return writeTo(systemPath(path), O_CREAT | O_TRUNC, bytes); }

bool writeNewFile(const char* path, std::string_view bytes) {
    // The system makes no file exclusively through a link, so the link is followed before.
    const auto file = systemPath(path);
    return file && writeTo(replacement::resolveLinks(*file), O_CREAT | O_EXCL, bytes);
}

}  // namespace zelutil::platform
