// The platform seam on Windows. Order and contracts: platform.h.
#include <algorithm>
#include <array>
#include <vector>

#include "platform/platform.h"
#include "platform/windows/file.h"

/// The library needs no thread notifications; without them a host's threads start and end faster. The system refuses
/// for a module with static thread-local storage, which gcc's runtime gives every DLL: there they come and find nothing
/// to do.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {  // NOLINT(readability-identifier-naming)
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

namespace zelutil::platform {

using namespace windows;

namespace {

constexpr wchar_t kCharactersOfNoName[] = L"\"*?<>|";

/// Calls `fill(buffer, size)` with a growing buffer. `fill` answers, as these system calls do, 0 on failure, the length
/// when it fitted, and otherwise the size it needs or `size` itself.
template <typename Fill>
std::optional<std::wstring> textOf(Fill fill) {
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) {
            return std::nullopt;
        }
        if (length < buffer.size()) {
            buffer.resize(length);
            return buffer;
        }
        buffer.resize(std::max<std::size_t>(length, buffer.size() * 2));
    }
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

std::wstring ownModulePath() {
    HMODULE self = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ownModulePath), &self) == 0) {
        return {};
    }
    return textOf([&](wchar_t* buffer, DWORD size) { return GetModuleFileNameW(self, buffer, size); }).value_or(L"");
}

HMODULE loadModuleAt(const std::wstring& path) {
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

bool isAbsolute(std::wstring_view directory) {
    const auto isSeparator = [](wchar_t c) { return c == L'\\' || c == L'/'; };
    return directory.size() >= 3 && ((directory[1] == L':' && isSeparator(directory[2])) ||
                                     (isSeparator(directory[0]) && isSeparator(directory[1])));
}

/// The loader's own walk over PATH visits the current directory first, so the entries are visited here.
HMODULE loadModuleFromPath(const std::wstring& fileName) {
    const std::wstring list = widen(environment("PATH").value_or(""));
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(L';', start), list.size());
        const std::wstring directory = list.substr(start, end - start);
        if (isAbsolute(directory)) {
            if (const HMODULE module = loadModuleAt(directory + L'\\' + fileName)) {
                return module;
            }
        }
        start = end + 1;
    }
    return nullptr;
}

}  // namespace

const char* fixedTemporaryDirectory() { return "C:\\Temp"; }

const char* libraryFileName() { return "zelutil.dll"; }

std::string fromSystemPath(std::string_view text) { return std::string(text); }

std::optional<std::string> environment(const char* name) {
    if (name == nullptr) {
        return std::nullopt;
    }
    const std::wstring wideName = widen(name);
    SetLastError(ERROR_SUCCESS);
    const auto value =
        textOf([&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(wideName.c_str(), buffer, size); });
    if (!value) {
        return GetLastError() == ERROR_SUCCESS ? std::optional<std::string>("") : std::nullopt;
    }
    return narrow(*value);
}

std::optional<std::string> environmentPath(const char* name) { return environment(name); }

std::optional<std::string> environmentPathList(const char* name) { return environment(name); }

std::string currentDirectory() {
    const auto path = textOf([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); });
    return narrow(path.value_or(L""));
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
    // What cannot be made on the way (a drive, a server and its share) shows at the end.
    for (std::size_t end = 0; end != std::wstring::npos;) {
        end = directory.find_first_of(L"\\/", end + 1);
        CreateDirectoryW(directory.substr(0, end).c_str(), nullptr);
    }
    return isDirectory(directory);
}

std::optional<std::string> readFile(const char* path, std::uint64_t maximumSize) {
    const File file(CreateFileW(systemPath(path).c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
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

bool writeFile(const char* path, std::string_view bytes) {
    // Shared as the C runtime's streams share: a file that somebody has open in the usual way can be overwritten.
    File file(CreateFileW(systemPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.isOpen() && writeAll(file.handle(), bytes) && file.close();
}

std::string modulePath() { return narrow(ownModulePath()); }

void* openModule(const char* baseName) {
    const std::wstring fileName = widen(baseName) + L".dll";
    HMODULE module = nullptr;
    if (GetModuleHandleExW(0, fileName.c_str(), &module) != 0) {
        return module;
    }
    const std::wstring own = ownModulePath();
    const std::size_t directoryEnd = own.rfind(L'\\');
    if (directoryEnd != std::wstring::npos) {
        module = loadModuleAt(own.substr(0, directoryEnd + 1) + fileName);
    }
    if (module == nullptr) {
        module = LoadLibraryExW(fileName.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    }
    return module != nullptr ? module : loadModuleFromPath(fileName);
}

void* moduleFunction(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

}  // namespace zelutil::platform
