// Directories and files on Windows. Order and contracts: files.h.
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/replacement_primitives.h"
#include "platform/windows/file.h"
#include "platform/windows/system_text.h"
#include "platform/world.h"

namespace zelutil::platform {

using namespace windows;

namespace {

constexpr wchar_t kCharactersOfNoName[] = L"\"*?<>|";

/// A path that begins so is not looked into by the system.
constexpr std::wstring_view kExtendedPrefix = L"\\\\?\\";

constexpr int kReadingRetries = 5;
constexpr DWORD kReadingRetryDelay = 20;

/// Empty when the system does not tell.
std::wstring workingDirectory() {
    std::wstring own =
        textOf([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); }).value_or(L"");
    return worldInForce == nullptr ? own : worldInForce->directory(std::move(own));
}

bool isDirectory(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool hasExecutableExtension(std::wstring_view path) {
    const std::size_t dot = path.find_last_of(L".\\/");
    if (dot == std::wstring_view::npos || path[dot] != L'.') {
        return false;
    }
    const std::wstring extension(path.substr(dot));
    constexpr std::array<const wchar_t*, 4> kExecutable = {L".exe", L".com", L".bat", L".cmd"};
    return std::any_of(kExecutable.begin(), kExecutable.end(), [&](const wchar_t* one) {
        return CompareStringOrdinal(extension.c_str(), -1, one, -1, TRUE) == CSTR_EQUAL;
    });
}

/// Puts what a symbolic link leads to in the place of the link's own data. False when it leads to nothing.
bool followLink(const std::wstring& path, WIN32_FILE_ATTRIBUTE_DATA& data) {
    const File target(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION found{};
    if (!target.isOpen() || GetFileInformationByHandle(target.handle(), &found) == 0) {
        const DWORD error = GetLastError();
        return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
    }
    data.dwFileAttributes = found.dwFileAttributes;
    data.nFileSizeHigh = found.nFileSizeHigh;
    data.nFileSizeLow = found.nFileSizeLow;
    return true;
}

/// Bytes read into `bytes` from the start, which is cut to them; false on failure.
bool readAll(HANDLE file, std::string& bytes) {
    std::size_t total = 0;
    while (total < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - total, kLargestTransfer));
        DWORD count = 0;
        if (ReadFile(file, bytes.data() + total, wanted, &count, nullptr) == 0) {
            return false;
        }
        if (count == 0) {
            break;
        }
        total += count;
    }
    bytes.resize(total);
    return true;
}

/// The last error says why there is nothing.
std::optional<std::string> readOnce(const std::wstring& path, std::uint64_t maximumSize) {
    SetLastError(ERROR_SUCCESS);
    const File file(
        CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size{};
    if (!file.isOpen() || GetFileType(file.handle()) != FILE_TYPE_DISK || GetFileSizeEx(file.handle(), &size) == 0 ||
        static_cast<std::uint64_t>(size.QuadPart) > maximumSize) {
        return std::nullopt;
    }
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    if (!readAll(file.handle(), bytes)) {
        return std::nullopt;
    }
    return bytes;
}

/// Locks of parts of the file show only when these are read.
bool isHeldBySomebody(DWORD error) { return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION; }

bool writeTo(const std::wstring& path, DWORD disposition, std::string_view bytes) {
    // Shared as the C runtime's streams share: a file that somebody has open in the usual way can be overwritten.
    File file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.isOpen() && writeAll(file.handle(), bytes) && file.close();
}

}  // namespace

std::string fromSystemPath(std::string_view text) { return std::string(text); }

bool namesFile(const char* path) {
    const std::wstring file = spelledPath(path);
    const std::size_t start =
        file.compare(0, kExtendedPrefix.size(), kExtendedPrefix) == 0 ? kExtendedPrefix.size() : 0;
    return !file.empty() && file.find_first_of(kCharactersOfNoName, start) == std::wstring::npos;
}

std::string currentDirectory() { return narrow(workingDirectory()); }

std::string namedCurrentDirectory() {
    const std::wstring path = workingDirectory();
    std::string text = narrow(path);
    return widen(text) == path ? text : std::string();
}

bool changeDirectory(const char* path) { return SetCurrentDirectoryW(systemPath(path).c_str()) != 0; }

std::optional<FileStatus> fileStatus(const char* path) {
    const std::wstring file = systemPath(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) == 0) {
        return std::nullopt;
    }
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && !followLink(file, data)) {
        return std::nullopt;
    }
    const bool directory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return FileStatus{directory, directory || hasExecutableExtension(file),
                      (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) == 0,
                      static_cast<std::int64_t>((std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow)};
}

bool renameFile(const char* from, const char* to) {
    return MoveFileExW(systemPath(from).c_str(), systemPath(to).c_str(), 0) != 0;
}

bool removeFile(const char* path) { return DeleteFileW(systemPath(path).c_str()) != 0; }

bool makeDirectories(const char* path) {
    const std::wstring directory = systemPath(path);
    // The system would refuse a part with such a character only after the parts before it were made.
    if (directory.empty() || directory.find_first_of(kCharactersOfNoName) != std::wstring::npos) {
        return false;
    }
    // A parent that cannot be made (a drive, a server and its share) shows at the end.
    for (std::size_t end = 0; end != std::wstring::npos;) {
        end = directory.find_first_of(L"\\/", end + 1);
        CreateDirectoryW(directory.substr(0, end).c_str(), nullptr);
    }
    return isDirectory(directory);
}

std::optional<std::string> readFile(const char* path, std::uint64_t maximumSize) {
    const std::wstring file = systemPath(path);
    if (!mayReadInWorld(path)) {
        return std::nullopt;
    }
    for (int retries = kReadingRetries;; --retries) {
        auto bytes = readOnce(file, maximumSize);
        if (bytes || retries == 0 || !isHeldBySomebody(GetLastError())) {
            return bytes;
        }
        Sleep(kReadingRetryDelay);
    }
}

bool writeFile(const char* path, std::string_view bytes) { return writeTo(systemPath(path), CREATE_ALWAYS, bytes); }

bool writeNewFile(const char* path, std::string_view bytes) {
    const auto file = replacement::resolveLinks(systemPath(path));
    return file && writeTo(*file, CREATE_NEW, bytes);
}

}  // namespace zelutil::platform
