// The steps of replacing and keeping files on Windows. Order and contracts: replacement_primitives.h.
#include <algorithm>
#include <array>

#include "platform/replacement_primitives.h"
#include "platform/windows/file.h"
#include "platform/windows/named_mutex.h"
#include "platform/windows/replace_rules.h"
#include "platform/windows/system_text.h"

// It needs what comes before it.
#include <winioctl.h>

namespace zelutil::platform::replacement {

using namespace windows;

namespace {

constexpr DWORD kMaximumWaitForTurn = 2000;
constexpr int kMaximumLinks = 40;

/// ERROR_DISK_QUOTA_EXCEEDED; not every SDK has the name.
constexpr DWORD kDiskQuotaExceeded = 1295;

/// The byte that a process locks while it writes into a file. It is far behind the last one, where it is in no reader's
/// way.
constexpr DWORD kLockedByteHigh = 0x40000000;

// NOLINTBEGIN(performance-no-int-to-ptr): the numbers are handles.
HANDLE handleOf(const OpenFile& file) { return reinterpret_cast<HANDLE>(file.native()); }

HANDLE mutexOf(std::intptr_t native) { return reinterpret_cast<HANDLE>(native); }
// NOLINTEND(performance-no-int-to-ptr)

bool isShortOfSpace(DWORD error) {
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == kDiskQuotaExceeded;
}

bool isMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
}

bool isNameTaken(DWORD error) { return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS; }

bool isHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

StepResult resultOf(DWORD error) {
    if (isShortOfSpace(error)) {
        return StepResult::Failed;
    }
    if (isMissing(error)) {
        return StepResult::Gone;
    }
    if (isNameTaken(error)) {
        return StepResult::Taken;
    }
    return isHeld(error) ? StepResult::Busy : StepResult::Refused;
}

/// Access to a file that is there is also denied while somebody holds it or while it is being deleted.
StepResult resultForTarget(DWORD error) { return error == ERROR_ACCESS_DENIED ? StepResult::Busy : resultOf(error); }

StepResult open(const NativeText& path, DWORD access, DWORD sharing, OpenFile& file) {
    file.reset(reinterpret_cast<std::intptr_t>(
        CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
    return file.isOpen() ? StepResult::Done : resultForTarget(GetLastError());
}

/// Asked before the system begins to move anything, since not every system goes back when it cannot go on.
StepResult isLetGo(const NativeText& target) {
    OpenFile file;
    return open(target, DELETE, kShareAll, file);
}

StepResult moveTo(const NativeText& from, const NativeText& to, DWORD flags) {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH | flags) != 0 ? StepResult::Done
                                                                                      : resultForTarget(GetLastError());
}

bool setSize(HANDLE file, std::uint64_t size) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(file) != 0;
}

StepResult lock(const OpenFile& file, DWORD flags) {
    OVERLAPPED place{};
    place.OffsetHigh = kLockedByteHigh;
    if (LockFileEx(handleOf(file), flags | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0) {
        return StepResult::Done;
    }
    switch (GetLastError()) {
        case ERROR_LOCK_VIOLATION:
        case ERROR_IO_PENDING:
            return StepResult::Busy;
        case ERROR_NOT_SUPPORTED:
        case ERROR_INVALID_FUNCTION:
            // This file system has no locks, so nobody else takes one either.
            return StepResult::Done;
        default:
            return StepResult::Refused;
    }
}

bool hasNamedStreams(const NativeText& path) {
    WIN32_FIND_STREAM_DATA stream{};
    const HANDLE search = FindFirstStreamW(path.c_str(), FindStreamInfoStandard, &stream, 0);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    bool isFound = isNamedStream(stream.cStreamName);
    while (!isFound && FindNextStreamW(search, &stream) != 0) {
        isFound = isNamedStream(stream.cStreamName);
    }
    FindClose(search);
    return isFound;
}

/// Room for the rights of one owner.
constexpr std::size_t kDwordsOfRights =
    (sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE) / sizeof(DWORD);

constexpr SECURITY_INFORMATION kOwnerAndRights = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

/// Owner and access rights of the file; empty when the system does not tell.
std::vector<unsigned char> securityOf(const NativeText& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), kOwnerAndRights, nullptr, 0, &size);
    std::vector<unsigned char> security(size);
    const bool isTold = GetFileSecurityW(path.c_str(), kOwnerAndRights, security.data(), size, &size) != 0;
    return isTold ? security : std::vector<unsigned char>();
}

PSID ownerIn(std::vector<unsigned char>& security) {
    PSID owner = nullptr;
    BOOL isDefault = FALSE;
    return GetSecurityDescriptorOwner(security.data(), &owner, &isDefault) != 0 ? owner : nullptr;
}

bool haveOneOwner(std::vector<unsigned char>& one, std::vector<unsigned char>& other) {
    const PSID owner = ownerIn(one);
    const PSID otherOwner = ownerIn(other);
    return owner != nullptr && otherOwner != nullptr && EqualSid(owner, otherOwner) != 0;
}

/// Gives all rights to the owner, who may always do so, and none to anybody else.
bool leaveToOwnerAlone(const NativeText& path) {
    auto own = securityOf(path);
    const PSID owner = own.empty() ? nullptr : ownerIn(own);
    std::array<DWORD, kDwordsOfRights> memory{};
    const auto rights = reinterpret_cast<PACL>(memory.data());
    SECURITY_DESCRIPTOR security{};
    return owner != nullptr && InitializeAcl(rights, sizeof memory, ACL_REVISION) != 0 &&
           AddAccessAllowedAce(rights, ACL_REVISION, FILE_ALL_ACCESS, owner) != 0 &&
           InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION) != 0 &&
           SetSecurityDescriptorDacl(&security, TRUE, rights, FALSE) != 0 &&
           SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, &security) != 0;
}

/// Returns the path that the link leads to, which need not be there; nothing when it cannot be told.
std::optional<NativeText> readLink(const NativeText& link) {
    const File file(CreateFileW(link.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::string data(MAXIMUM_REPARSE_DATA_BUFFER_SIZE, '\0');
    DWORD size = 0;
    if (!file.isOpen() || DeviceIoControl(file.handle(), FSCTL_GET_REPARSE_POINT, nullptr, 0, data.data(),
                                          static_cast<DWORD>(data.size()), &size, nullptr) == 0) {
        return std::nullopt;
    }
    return targetOfLink(std::string_view(data).substr(0, size), link);
}

std::optional<NativeText> finalPathOf(const OpenFile& file) {
    return textOf(
        [&](wchar_t* buffer, DWORD size) { return GetFinalPathNameByHandleW(handleOf(file), buffer, size, 0); });
}

NativeText withRoomBeside(const NativeText& path) {
    const auto full =
        textOf([&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(path.c_str(), size, buffer, nullptr); });
    return full ? pathWithRoomBeside(path, *full) : path;
}

}  // namespace

OpenFile::~OpenFile() { close(); }

void OpenFile::reset(std::intptr_t native) {
    close();
    native_ = native;
}

bool OpenFile::close() {
    const HANDLE handle = handleOf(*this);
    const bool wasOpen = isOpen();
    native_ = kNone;
    return !wasOpen || CloseHandle(handle) != 0;
}

Turn::Turn() : isTaken_(false) {
    const HANDLE mutex = openMutex(L"zelutil-replace-file");
    native_ = reinterpret_cast<std::intptr_t>(mutex);
    isTaken_ = mutex != nullptr && takeMutex(mutex, kMaximumWaitForTurn);
}

Turn::~Turn() {
    const HANDLE mutex = mutexOf(native_);
    if (isTaken_) {
        ReleaseMutex(mutex);
    }
    if (mutex != nullptr) {
        CloseHandle(mutex);
    }
}

std::optional<NativeText> nativePath(const char* text) {
    const NativeText path = systemPath(text);
    return path.empty() ? std::nullopt : std::optional<NativeText>(withRoomBeside(path));
}

std::optional<NativeText> resolveLinks(NativeText path) {
    for (int links = 0; links <= kMaximumLinks; ++links) {
        const DWORD attributes = GetFileAttributesW(path.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            return isMissing(GetLastError()) ? std::optional<NativeText>(path) : std::nullopt;
        }
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
            return path;
        }
        OpenFile file;
        const StepResult opened = open(path, 0, kShareAll, file);
        if (opened == StepResult::Done) {
            return finalPathOf(file);
        }
        auto next = opened == StepResult::Gone ? readLink(path) : std::nullopt;
        if (!next) {
            return std::nullopt;
        }
        path = withRoomBeside(*next);
    }
    return std::nullopt;
}

std::size_t nameStart(const NativeText& path) { return path.find_last_of(L"\\/:") + 1; }

std::string textOfName(const NativeText& name) { return narrow(name); }

std::uint32_t processNumber() { return GetCurrentProcessId(); }

StepResult probeTarget(const NativeText& path, Target& target) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return resultForTarget(GetLastError());
    }
    if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        return StepResult::Refused;
    }
    OpenFile file;
    const StepResult opened = openForWriting(path, file);
    if (opened != StepResult::Done) {
        return opened;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileType(handleOf(file)) != FILE_TYPE_DISK ||
        GetFileInformationByHandle(handleOf(file), &information) == 0) {
        return StepResult::Refused;
    }
    target.hasOtherLinks = information.nNumberOfLinks > 1;
    target.isSparse = (attributes & FILE_ATTRIBUTE_SPARSE_FILE) != 0;
    target.isEncryptedOrCompressed = (attributes & (FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_COMPRESSED)) != 0;
    target.hasNamedStreams = hasNamedStreams(path);
    return StepResult::Done;
}

StepResult createBeside(const NativeText& path, bool, OpenFile& file) {
    // Not shared, it can be opened by nobody else, least of all as a leftover.
    file.reset(reinterpret_cast<std::intptr_t>(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                                           CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
    return file.isOpen() ? StepResult::Done : resultOf(GetLastError());
}

bool takeOver(const OpenFile&, const NativeText& path, const NativeText& from) {
    const DWORD attributes = GetFileAttributesW(from.c_str());
    auto old = securityOf(from);
    auto own = securityOf(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || old.empty() || own.empty()) {
        return false;
    }
    const bool hasOwner =
        haveOneOwner(old, own) || SetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, old.data()) != 0;
    return hasOwner && SetFileAttributesW(path.c_str(), attributesOfNewFile(attributes)) != 0 &&
           SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, old.data()) != 0;
}

// It has what the directory hands down: the rights that the user chose for files in it.
bool makePrivate(const OpenFile&, const NativeText&) { return true; }

bool writeBytes(const OpenFile& file, std::string_view bytes) { return writeAll(handleOf(file), bytes); }

bool flushToDisk(const OpenFile& file) { return FlushFileBuffers(handleOf(file)) != 0; }

StepResult putInPlace(OpenFile& file, const NativeText& path, const NativeText& target, bool replaces) {
    if (!replaces) {
        const StepResult put = putUnderFreeName(file, path, target);
        return put == StepResult::Taken ? StepResult::Gone : put;
    }
    if (!file.close()) {
        return StepResult::Failed;
    }
    const StepResult ready = isLetGo(target);
    return ready == StepResult::Done ? moveTo(path, target, MOVEFILE_REPLACE_EXISTING) : ready;
}

/// A process killed between the steps of this call leaves no file under the name, but the new one beside it.
StepResult exchange(OpenFile& file, const NativeText& path, const NativeText& target, bool mustKeepAll) {
    if (!file.close()) {
        return StepResult::Failed;
    }
    const StepResult ready = isLetGo(target);
    if (ready != StepResult::Done) {
        return ready;
    }
    const DWORD flags = mustKeepAll ? 0 : REPLACEFILE_IGNORE_MERGE_ERRORS;
    if (ReplaceFileW(target.c_str(), path.c_str(), nullptr, flags, nullptr, nullptr) != 0) {
        return StepResult::Done;
    }
    const StepResult result = resultForTarget(GetLastError());
    if (GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES && isMissing(GetLastError())) {
        return StepResult::Gone;
    }
    return result == StepResult::Gone ? StepResult::Refused : result;
}

StepResult putUnderFreeName(OpenFile& file, const NativeText& path, const NativeText& name) {
    return file.close() ? moveTo(path, name, 0) : StepResult::Failed;
}

void discard(OpenFile& file, const NativeText& path) {
    file.close();
    // The rights that the file took over may be without that to delete it.
    if (DeleteFileW(path.c_str()) == 0 && GetLastError() == ERROR_ACCESS_DENIED && leaveToOwnerAlone(path)) {
        DeleteFileW(path.c_str());
    }
}

StepResult openForWriting(const NativeText& path, OpenFile& file) { return open(path, GENERIC_WRITE, kShareAll, file); }

StepResult lockForWriting(const OpenFile& file) { return lock(file, LOCKFILE_EXCLUSIVE_LOCK); }

bool isStillThere(const OpenFile& file, const NativeText& path) {
    // A file that was replaced has no name any more; one that was deleted keeps it until it is closed everywhere.
    FILE_STANDARD_INFO information{};
    OpenFile again;
    return GetFileInformationByHandleEx(handleOf(file), FileStandardInfo, &information, sizeof information) != 0 &&
           information.NumberOfLinks > 0 && information.DeletePending == 0 &&
           open(path, 0, kShareAll, again) == StepResult::Done;
}

std::optional<std::uint64_t> sizeOf(const OpenFile& file) {
    LARGE_INTEGER size{};
    return GetFileSizeEx(handleOf(file), &size) != 0
               ? std::optional<std::uint64_t>(static_cast<std::uint64_t>(size.QuadPart))
               : std::nullopt;
}

bool reserve(const OpenFile& file, std::uint64_t oldSize, std::uint64_t size) {
    return setSize(handleOf(file), std::max(oldSize, size)) &&
           SetFilePointer(handleOf(file), 0, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER;
}

bool truncate(const OpenFile& file, std::uint64_t size) { return setSize(handleOf(file), size); }

StepResult openForReading(const NativeText& path, OpenFile& file) {
    const StepResult opened = open(path, GENERIC_READ, kShareAll, file);
    return opened == StepResult::Done && GetFileType(handleOf(file)) != FILE_TYPE_DISK ? StepResult::Refused : opened;
}

StepResult lockForReading(const OpenFile& file) { return lock(file, 0); }

std::optional<std::size_t> readBytes(const OpenFile& file, std::string& buffer) {
    DWORD count = 0;
    const auto size = static_cast<DWORD>(std::min(buffer.size(), kLargestTransfer));
    return ReadFile(handleOf(file), buffer.data(), size, &count, nullptr) != 0 ? std::optional<std::size_t>(count)
                                                                               : std::nullopt;
}

std::vector<NativeText> namesBeside(const NativeText& path) {
    std::vector<NativeText> names;
    WIN32_FIND_DATAW entry{};
    const NativeText pattern = path.substr(0, nameStart(path)) + L"*.zelutil-*.tmp";
    const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        names.emplace_back(entry.cFileName);
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
    return names;
}

StepResult openLeftover(const NativeText& path, OpenFile& file) {
    // One that its maker is still writing is not shared.
    return open(path, GENERIC_READ, FILE_SHARE_DELETE, file);
}

}  // namespace zelutil::platform::replacement
