// Replacing and keeping files on Windows; the contracts are in replace_file.h.
#include <algorithm>
#include <optional>
#include <vector>

#include "platform/replace_file.h"
#include "platform/replacement_name.h"
#include "platform/windows/file.h"

namespace zelutil::platform {

using namespace windows;

namespace {

constexpr int kMostNamesTried = 100;

/// Virus scanners and indexers hold a file for some milliseconds after it was written.
constexpr int kSharingRetries = 5;
constexpr DWORD kSharingRetryDelay = 20;

constexpr DWORD kCopyBufferSize = 65'536;

constexpr DWORD kLongestWaitForTurn = 2000;

/// ERROR_DISK_QUOTA_EXCEEDED; not every SDK has the name.
constexpr DWORD kDiskQuotaExceeded = 1295;

constexpr DWORD kAttributesTakenOver =
    FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

/// How an attempt to write beside the target ended.
enum class Beside { Done, Failed, Impossible };

std::size_t nameStart(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(L"\\/:");
    return separator == std::wstring::npos ? 0 : separator + 1;
}

bool isShortOfSpace(DWORD error) {
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == kDiskQuotaExceeded;
}

/// Writing into the file itself is tried only where nothing can be put in its place, not where space is short.
Beside afterError(DWORD error) { return isShortOfSpace(error) ? Beside::Failed : Beside::Impossible; }

bool isSharingError(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED ||
           error == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

/// Calls `attempt` until it succeeds or fails for another reason than that somebody holds the file; a few times.
template <typename Attempt>
bool retryingWhileShared(Attempt attempt) {
    for (int retries = kSharingRetries;; --retries) {
        if (attempt()) {
            return true;
        }
        const DWORD error = GetLastError();
        if (retries == 0 || !isSharingError(error)) {
            SetLastError(error);
            return false;
        }
        Sleep(kSharingRetryDelay);
    }
}

/// The file behind any symbolic links.
std::wstring withoutLinks(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    const File file(CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD size = file.isOpen() ? GetFinalPathNameByHandleW(file.handle(), nullptr, 0, 0) : 0;
    std::wstring target(size, L'\0');
    if (size == 0 || GetFinalPathNameByHandleW(file.handle(), target.data(), size, 0) >= size) {
        return path;
    }
    target.resize(target.find(L'\0'));
    return target;
}

void removeLeftovers(const std::wstring& target) {
    const std::size_t start = nameStart(target);
    const std::string name = narrow(target.substr(start));
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW((target + L".zelutil-*.tmp").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        // One that its maker is still writing is not shared, and cannot be deleted.
        if (isReplacementName(narrow(entry.cFileName), name)) {
            DeleteFileW((target.substr(0, start) + entry.cFileName).c_str());
        }
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
}

/// Copies the whole file. False when any step fails.
bool copyAll(HANDLE source, HANDLE target) {
    std::string buffer(kCopyBufferSize, '\0');
    for (;;) {
        DWORD count = 0;
        if (ReadFile(source, buffer.data(), kCopyBufferSize, &count, nullptr) == 0) {
            return false;
        }
        if (count == 0) {
            return true;
        }
        if (!writeAll(target, std::string_view(buffer).substr(0, count))) {
            return false;
        }
    }
}

/// A new file beside the target, removed again unless it was put in its place.
class Replacement {
public:
    explicit Replacement(const std::wstring& target) {
        const std::size_t start = nameStart(target);
        const std::string name = narrow(target.substr(start));
        for (int i = 0; i < kMostNamesTried && !file_.isOpen(); ++i) {
            path_ =
                target.substr(0, start) + widen(replacementName(name, GetCurrentProcessId(), nextReplacementCall()));
            file_.reset(
                CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (!file_.isOpen() && GetLastError() != ERROR_FILE_EXISTS) {
                return;
            }
        }
        exists_ = file_.isOpen();
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (file_.isOpen()) {
            file_.close();
        }
        if (exists_) {
            DeleteFileW(path_.c_str());
        }
    }

    bool isOpen() const { return file_.isOpen(); }

    /// Writes the bytes to the disk and lets go of the file.
    bool fill(std::string_view bytes) {
        return writeAll(file_.handle(), bytes) && FlushFileBuffers(file_.handle()) != 0 && file_.close();
    }

    /// Gives the new file the attributes and access rights of the old one.
    bool takeOver(const std::wstring& target) {
        DWORD size = 0;
        GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
        std::vector<unsigned char> rights(size);
        const bool known = GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) != 0;
        const DWORD attributes = GetFileAttributesW(target.c_str()) & kAttributesTakenOver;
        return known && SetFileAttributesW(path_.c_str(), attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL) != 0 &&
               SetFileSecurityW(path_.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != 0;
    }

    bool copyFrom(HANDLE source) {
        return copyAll(source, file_.handle()) && FlushFileBuffers(file_.handle()) != 0 && file_.close();
    }

    bool keepAs(const std::wstring& path) {
        for (std::uint32_t number = 1; exists_ && number <= kMaximumKeptNames; ++number) {
            const std::wstring kept = path + widen(keptSuffix(number));
            exists_ = MoveFileExW(path_.c_str(), kept.c_str(), MOVEFILE_WRITE_THROUGH) == 0;
            if (exists_ && GetLastError() != ERROR_ALREADY_EXISTS && GetLastError() != ERROR_FILE_EXISTS) {
                return false;
            }
        }
        return !exists_;
    }

    bool putInPlaceOf(const std::wstring& target) {
        exists_ = !retryingWhileShared([&] { return putOnce(target); });
        return !exists_;
    }

private:
    bool putOnce(const std::wstring& target) {
        if (GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES) {
            return move(target, 0);
        }
        return isLetGo(target) && ((takeOver(target) && move(target, MOVEFILE_REPLACE_EXISTING)) || replace(target));
    }

    /// One step for the system, however it ends.
    bool move(const std::wstring& target, DWORD flags) {
        return MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH | flags) != 0;
    }

    /// Also goes where somebody has the file open, but by two steps: a process killed between them leaves no file under
    /// the name. Keeps attributes and access rights by itself.
    bool replace(const std::wstring& target) {
        const DWORD flags = REPLACEFILE_IGNORE_MERGE_ERRORS;
        if (ReplaceFileW(target.c_str(), path_.c_str(), nullptr, flags, nullptr, nullptr) != 0) {
            return true;
        }
        // The system may also have given up half-way, with the old file already gone.
        return move(target, MOVEFILE_REPLACE_EXISTING);
    }

    /// Asked before the system begins to move anything, since not every system goes back when it cannot go on.
    static bool isLetGo(const std::wstring& target) {
        return File(CreateFileW(target.c_str(), DELETE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr)).isOpen();
    }

    std::wstring path_;
    File file_{INVALID_HANDLE_VALUE};
    bool exists_ = false;
};

Beside writeBeside(const std::wstring& target, std::string_view bytes) {
    Replacement replacement(target);
    if (!replacement.isOpen()) {
        return afterError(GetLastError());
    }
    if (!replacement.fill(bytes)) {
        return Beside::Failed;
    }
    return replacement.putInPlaceOf(target) ? Beside::Done : afterError(GetLastError());
}

File openForWriting(const std::wstring& path) {
    HANDLE handle = INVALID_HANDLE_VALUE;
    retryingWhileShared([&] {
        handle = CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
        return handle != INVALID_HANDLE_VALUE;
    });
    return File(handle);
}

bool setSize(HANDLE file, std::uint64_t size) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(file) != 0;
}

Replaced writeInto(const std::wstring& target, std::string_view bytes) {
    File file = openForWriting(target);
    LARGE_INTEGER oldSize{};
    if (!file.isOpen() || GetFileSizeEx(file.handle(), &oldSize) == 0) {
        return Replaced::No;
    }
    // The file grows before any of its bytes is touched, so that a full disk shows in time.
    const auto old = static_cast<std::uint64_t>(oldSize.QuadPart);
    if (!setSize(file.handle(), std::max<std::uint64_t>(old, bytes.size()))) {
        return Replaced::No;
    }
    const bool written = SetFilePointer(file.handle(), 0, nullptr, FILE_BEGIN) == 0 && writeAll(file.handle(), bytes) &&
                         SetEndOfFile(file.handle()) != 0;
    const bool flushed = written && FlushFileBuffers(file.handle()) != 0;
    return file.close() && flushed ? Replaced::Yes : Replaced::Torn;
}

/// Keeps the saves of all processes of the session apart. Not waited for longer than a save takes.
class Turn {
public:
    Turn() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\zelutil-replace-file")) {
        // A process that died in the middle of its turn has handed it on.
        const DWORD result = mutex_ == nullptr ? WAIT_FAILED : WaitForSingleObject(mutex_, kLongestWaitForTurn);
        taken_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() {
        if (taken_) {
            ReleaseMutex(mutex_);
        }
        if (mutex_ != nullptr) {
            CloseHandle(mutex_);
        }
    }

private:
    HANDLE mutex_;
    bool taken_;
};

/// What is there, as far as it decides how to write it.
struct Target {
    bool exists;
    bool writable;
    bool hasOtherLinks;
};

Target look(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return {false, true, false};
    }
    if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        return {true, false, false};
    }
    const File file = openForWriting(path);
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = file.isOpen() && GetFileType(file.handle()) == FILE_TYPE_DISK &&
                       GetFileInformationByHandle(file.handle(), &information) != 0;
    return {true, known, known && information.nNumberOfLinks > 1};
}

}  // namespace

Replaced replaceFile(const char* path, std::string_view bytes) {
    const std::wstring target = withoutLinks(systemPath(path));
    const Turn turn;
    const Target found = look(target);
    if (!found.writable) {
        return Replaced::No;
    }
    removeLeftovers(target);
    const Beside beside = found.hasOtherLinks ? Beside::Impossible : writeBeside(target, bytes);
    if (beside == Beside::Impossible && found.exists) {
        return writeInto(target, bytes);
    }
    return beside == Beside::Done ? Replaced::Yes : Replaced::No;
}

bool keepCopy(const char* path) {
    const std::wstring file = systemPath(path);
    const Turn turn;
    HANDLE handle = INVALID_HANDLE_VALUE;
    retryingWhileShared([&] {
        handle = CreateFileW(file.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
        return handle != INVALID_HANDLE_VALUE;
    });
    const File source(handle);
    if (!source.isOpen() || GetFileType(source.handle()) != FILE_TYPE_DISK) {
        return false;
    }
    Replacement copy(file);
    return copy.isOpen() && copy.takeOver(file) && copy.copyFrom(source.handle()) && copy.keepAs(file);
}

}  // namespace zelutil::platform
