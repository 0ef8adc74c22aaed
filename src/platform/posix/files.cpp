// The platform seam on POSIX systems. Order and contracts: platform.h.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "platform/platform.h"
#include "platform/posix/drive_text.h"
#include "platform/posix/file.h"

namespace zelutil::platform {

using namespace posix;

namespace {

constexpr mode_t kNewDirectoryMode = 0777;

bool isDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
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

/// Path of the file mapped at `address`, as the kernel lists it; empty where it lists none.
std::string mappedFileAt(const void* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);) {
        std::istringstream fields(line);
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        char dash = '\0';
        fields >> std::hex >> start >> dash >> end;
        const std::size_t path = line.find('/');
        if (start <= wanted && wanted < end && path != std::string::npos) {
            return line.substr(path);
        }
    }
    return {};
}

/// Path of the file that holds the code at `address`. The loader knows it as it was told, which may be relative to a
/// current directory that has changed since; then the kernel is asked.
std::string modulePathOf(const void* address) {
    Dl_info info{};
    const bool known = ::dladdr(address, &info) != 0 && info.dli_fname != nullptr;
    return known && info.dli_fname[0] == '/' ? info.dli_fname : mappedFileAt(address);
}

std::string ownModulePath() { return modulePathOf(reinterpret_cast<const void*>(&ownModulePath)); }

void* loadModuleAt(const std::string& path) { return ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }

/// The loader's own walk over LD_LIBRARY_PATH takes an empty entry for the current directory, and visits relative ones
/// too. So the others are visited here, and the loader is asked only when none of these leads to such a file.
void* loadModuleByName(const std::string& fileName) {
    const std::string list = environment("LD_LIBRARY_PATH").value_or("");
    bool isFoundFromHere = false;
    for (std::size_t start = 0; !list.empty() && start <= list.size();) {
        const std::size_t end = std::min(list.find_first_of(":;", start), list.size());
        const std::string directory = list.substr(start, end - start);
        const std::string file = directory.empty() ? fileName : directory + '/' + fileName;
        if (file.front() != '/') {
            isFoundFromHere = isFoundFromHere || ::access(file.c_str(), F_OK) == 0;
        } else if (void* const module = loadModuleAt(file)) {
            return module;
        }
        start = end + 1;
    }
    return isFoundFromHere ? nullptr : loadModuleAt(fileName);
}

}  // namespace

const char* fixedTemporaryDirectory() { return "Z:\\tmp"; }

const char* libraryFileName() { return "libzelutil.so"; }

std::string fromSystemPath(std::string_view text) { return textFromSystemPath(text); }

std::optional<std::string> environment(const char* name) {
    const char* const value = name == nullptr ? nullptr : std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::string> environmentPath(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(textFromSystemPath(value));
}

std::optional<std::string> environmentPathList(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(textListFromSystemList(value));
}

std::string currentDirectory() {
    std::string path(PATH_MAX, '\0');
    if (::getcwd(path.data(), path.size()) == nullptr) {
        return {};
    }
    path.resize(path.find('\0'));
    std::string text = textFromSystemPath(path);
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

bool changeDirectory(const char* path) {
    const auto directory = systemPath(path);
    return directory && ::chdir(directory->c_str()) == 0;
}

std::optional<FileStatus> fileStatus(const char* path) {
    const auto file = systemPath(path);
    struct stat status {};
    if (!file || ::stat(file->c_str(), &status) != 0) {
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
    // Some file systems do not know the flag; there a target made in this very moment is not seen.
    const bool flagUnknown = errno == EINVAL || errno == ENOSYS;
    return flagUnknown && ::access(target->c_str(), F_OK) != 0 && std::rename(source->c_str(), target->c_str()) == 0;
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
    if (!file) {
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

bool writeFile(const char* path, std::string_view bytes) {
    const auto file = systemPath(path);
    if (!file) {
        return false;
    }
    Descriptor descriptor(openRetrying(file->c_str(), O_WRONLY | O_CREAT | O_TRUNC, kNewFileMode));
    return descriptor.isOpen() && writeAll(descriptor.number(), bytes) && descriptor.close();
}

std::string modulePath() { return textFromSystemPath(ownModulePath()); }

void* openModule(const char* baseName) {
    const std::string fileName = std::string("lib") + baseName + ".so";
    if (void* const loaded = ::dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD)) {
        return loaded;
    }
    const std::string own = ownModulePath();
    const std::size_t directoryEnd = own.rfind('/');
    if (directoryEnd != std::string::npos) {
        if (void* const beside = loadModuleAt(own.substr(0, directoryEnd + 1) + fileName)) {
            return beside;
        }
    }
    return loadModuleByName(fileName);
}

void* moduleFunction(void* module, const char* name) { return ::dlsym(module, name); }

}  // namespace zelutil::platform
