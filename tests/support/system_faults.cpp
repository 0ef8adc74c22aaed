#include "support/system_faults.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace zelutil::test {
namespace {

struct {
    const Fault* fault = nullptr;
    std::size_t calls = 0;
    bool happened = false;
} injection;

struct {
    std::string call;
    std::size_t occurrence = 0;
    std::function<void()> function;
    std::size_t calls = 0;
    bool happened = false;
    bool isRunning = false;
} hook;

std::vector<std::string>* log = nullptr;
bool locksAreLikeNfs = false;
/// 0 where second links can be made.
int simpleLinkError = 0;

void runHook(const char* call) {
    if (!hook.function || hook.call != call || ++hook.calls != hook.occurrence) {
        return;
    }
    hook.happened = true;
    hook.isRunning = true;
    hook.function();
    hook.isRunning = false;
}

/// Whether this call of that name is the one to fail; errno is set then.
bool isToFail(const char* call) {
    if (hook.isRunning) {
        return false;
    }
    if (log != nullptr) {
        log->emplace_back(call);
    }
    runHook(call);
    if (injection.fault == nullptr || injection.fault->call != call) {
        return false;
    }
    ++injection.calls;
    const bool later = injection.fault->writesHalfFirst && injection.calls > injection.fault->occurrence;
    if (injection.calls != injection.fault->occurrence && !later) {
        return false;
    }
    injection.happened = true;
    errno = injection.fault->error;
    return true;
}

bool isRefusedByNfs(int file, int operation) {
    const int access = ::fcntl(file, F_GETFL) & O_ACCMODE;
    const bool isExclusive = (operation & LOCK_EX) != 0;
    return locksAreLikeNfs && access == (isExclusive ? O_RDONLY : O_WRONLY);
}

/// Sets errno where the file system is a simple one.
bool isTooMuchToAsk(int error) {
    if (simpleLinkError == 0) {
        return false;
    }
    errno = error;
    return true;
}

bool isToWriteHalf() { return injection.fault->writesHalfFirst && injection.calls == injection.fault->occurrence; }

}  // namespace

const std::vector<std::string>& wrappedCalls() {
    static const std::vector<std::string> calls = {
        "open",  "close",     "write",  "fsync",    "fstat",           "fchmod",      "fchown",   "ftruncate",
        "flock", "rename",    "unlink", "mkdir",    "posix_fallocate", "stat",        "readlink", "opendir",
        "read",  "renameat2", "link",   "getxattr", "fsetxattr",       "fremovexattr"};
    return calls;
}

FaultInjection::FaultInjection(const Fault& fault) {
    injection.fault = &fault;
    injection.calls = 0;
    injection.happened = false;
}

FaultInjection::~FaultInjection() { injection.fault = nullptr; }

bool FaultInjection::happened() const { return injection.happened; }

CallHook::CallHook(std::string call, std::size_t occurrence, std::function<void()> function) {
    hook.call = std::move(call);
    hook.occurrence = occurrence;
    hook.function = std::move(function);
    hook.calls = 0;
    hook.happened = false;
}

CallHook::~CallHook() { hook.function = nullptr; }

bool CallHook::happened() const { return hook.happened; }

CallLog::CallLog() { log = &calls_; }

CallLog::~CallLog() { log = nullptr; }

std::ptrdiff_t CallLog::count(const std::string& call) const { return std::count(calls_.begin(), calls_.end(), call); }

NfsLocks::NfsLocks() { locksAreLikeNfs = true; }

NfsLocks::~NfsLocks() { locksAreLikeNfs = false; }

SimpleFileSystem::SimpleFileSystem(int linkError) { simpleLinkError = linkError; }

SimpleFileSystem::~SimpleFileSystem() { simpleLinkError = 0; }

}  // namespace zelutil::test

using zelutil::test::isRefusedByNfs;
using zelutil::test::isToFail;
using zelutil::test::isTooMuchToAsk;
using zelutil::test::isToWriteHalf;

// NOLINTBEGIN(bugprone-reserved-identifier): the linker gives these names.
extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return isToFail("open") ? -1 : __real_open(path, flags, mode);
}

int __real_close(int file);
int __wrap_close(int file) {
    if (!isToFail("close")) {
        return __real_close(file);
    }
    // A failing close has let go of the descriptor all the same.
    const int error = errno;
    __real_close(file);
    errno = error;
    return -1;
}

ssize_t __real_write(int file, const void* bytes, std::size_t size);
ssize_t __wrap_write(int file, const void* bytes, std::size_t size) {
    if (!isToFail("write")) {
        return __real_write(file, bytes, size);
    }
    return isToWriteHalf() ? __real_write(file, bytes, size / 2) : -1;
}

ssize_t __real_read(int file, void* bytes, std::size_t size);
ssize_t __wrap_read(int file, void* bytes, std::size_t size) {
    return isToFail("read") ? -1 : __real_read(file, bytes, size);
}

// The files of a test need not outlive the machine, and waiting for a disk would take most of a table's time.
int __wrap_fsync(int /*file*/) { return isToFail("fsync") ? -1 : 0; }

int __real_fstat(int file, struct stat* status);
int __wrap_fstat(int file, struct stat* status) { return isToFail("fstat") ? -1 : __real_fstat(file, status); }

int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status) { return isToFail("stat") ? -1 : __real_stat(path, status); }

int __real_fchmod(int file, mode_t mode);
int __wrap_fchmod(int file, mode_t mode) { return isToFail("fchmod") ? -1 : __real_fchmod(file, mode); }

int __real_fchown(int file, uid_t owner, gid_t group);
int __wrap_fchown(int file, uid_t owner, gid_t group) {
    return isToFail("fchown") ? -1 : __real_fchown(file, owner, group);
}

int __real_ftruncate(int file, off_t size);
int __wrap_ftruncate(int file, off_t size) { return isToFail("ftruncate") ? -1 : __real_ftruncate(file, size); }

int __real_flock(int file, int operation);
int __wrap_flock(int file, int operation) {
    if (isToFail("flock")) {
        return -1;
    }
    if (isRefusedByNfs(file, operation)) {
        errno = EBADF;
        return -1;
    }
    return __real_flock(file, operation);
}

int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) { return isToFail("rename") ? -1 : __real_rename(from, to); }

int __real_renameat2(int fromDirectory, const char* from, int toDirectory, const char* to, unsigned flags);
int __wrap_renameat2(int fromDirectory, const char* from, int toDirectory, const char* to, unsigned flags) {
    const bool isRefused = isToFail("renameat2") || (flags != 0 && isTooMuchToAsk(EINVAL));
    return isRefused ? -1 : __real_renameat2(fromDirectory, from, toDirectory, to, flags);
}

int __real_link(const char* from, const char* to);
int __wrap_link(const char* from, const char* to) {
    const bool isRefused = isToFail("link") || isTooMuchToAsk(zelutil::test::simpleLinkError);
    return isRefused ? -1 : __real_link(from, to);
}

ssize_t __real_getxattr(const char* path, const char* name, void* value, std::size_t size);
ssize_t __wrap_getxattr(const char* path, const char* name, void* value, std::size_t size) {
    return isToFail("getxattr") ? -1 : __real_getxattr(path, name, value, size);
}

int __real_fsetxattr(int file, const char* name, const void* value, std::size_t size, int flags);
int __wrap_fsetxattr(int file, const char* name, const void* value, std::size_t size, int flags) {
    return isToFail("fsetxattr") ? -1 : __real_fsetxattr(file, name, value, size, flags);
}

int __real_fremovexattr(int file, const char* name);
int __wrap_fremovexattr(int file, const char* name) {
    return isToFail("fremovexattr") ? -1 : __real_fremovexattr(file, name);
}

int __real_unlink(const char* path);
int __wrap_unlink(const char* path) { return isToFail("unlink") ? -1 : __real_unlink(path); }

int __real_mkdir(const char* path, mode_t mode);
int __wrap_mkdir(const char* path, mode_t mode) { return isToFail("mkdir") ? -1 : __real_mkdir(path, mode); }

int __real_posix_fallocate(int file, off_t offset, off_t size);
int __wrap_posix_fallocate(int file, off_t offset, off_t size) {
    return isToFail("posix_fallocate") ? errno : __real_posix_fallocate(file, offset, size);
}

ssize_t __real_readlink(const char* path, char* target, std::size_t size);
ssize_t __wrap_readlink(const char* path, char* target, std::size_t size) {
    return isToFail("readlink") ? -1 : __real_readlink(path, target, size);
}

DIR* __real_opendir(const char* path);
DIR* __wrap_opendir(const char* path) { return isToFail("opendir") ? nullptr : __real_opendir(path); }
}
// NOLINTEND(bugprone-reserved-identifier)
