#include "support/windows_calls.h"

#include <algorithm>
#include <cwchar>

namespace zelutil::test {
namespace {

WindowsCalls* current = nullptr;

bool fails(const char* call) { return current != nullptr && current->fails(call); }

bool isRefused(LPCWSTR path) { return current != nullptr && current->refuses(path); }

template <typename Other>
bool isRefused(Other) {
    return false;
}

template <typename... Arguments>
bool areRefused(Arguments... arguments) {
    return (isRefused(arguments) || ...);
}

DWORD withAddedAttributes(DWORD attributes) {
    return current == nullptr || attributes == INVALID_FILE_ATTRIBUTES ? attributes
                                                                       : attributes | current->addedAttributes;
}

/// A search that finds one stream; it ends by the system's refusal of a handle that is none.
bool findsStream(void* found) {
    if (current == nullptr || !current->haveStreams) {
        return false;
    }
    auto& stream = *static_cast<WIN32_FIND_STREAM_DATA*>(found);
    std::wcscpy(stream.cStreamName, L":note:$DATA");
    return true;
}

}  // namespace

const std::vector<std::string>& wrappedWindowsCalls() {
    static const std::vector<std::string> calls = {
        "CreateFileW",      "WriteFile",        "FlushFileBuffers",
        "MoveFileExW",      "ReplaceFileW",     "DeleteFileW",
        "SetEndOfFile",     "LockFileEx",       "SetFileAttributesW",
        "SetFileSecurityW", "GetFileSecurityW", "GetFileAttributesW",
        "CreateMutexW",     "FindFirstFileW",   "FindFirstStreamW",
        "EqualSid",         "ReadFile",         "GetFileInformationByHandle"};
    return calls;
}

WindowsCalls::WindowsCalls() { current = this; }

WindowsCalls::~WindowsCalls() { current = nullptr; }

std::size_t WindowsCalls::count(const std::string& call) const {
    return static_cast<std::size_t>(std::count(log_.begin(), log_.end(), call));
}

std::vector<std::string> WindowsCalls::only(const std::vector<std::string>& wanted) const {
    std::vector<std::string> found;
    std::copy_if(log_.begin(), log_.end(), std::back_inserter(found), [&](const std::string& call) {
        return std::find(wanted.begin(), wanted.end(), call) != wanted.end();
    });
    return found;
}

bool WindowsCalls::refuses(LPCWSTR path) const {
    if (!areLongPathsRefused || isDeciding_ || path == nullptr || std::wcslen(path) < MAX_PATH ||
        std::wcsncmp(path, L"\\\\?\\", 4) == 0) {
        return false;
    }
    SetLastError(ERROR_PATH_NOT_FOUND);
    return true;
}

bool WindowsCalls::fails(const char* call) {
    if (isDeciding_) {
        return false;
    }
    log_.emplace_back(call);
    if (!decide) {
        return false;
    }
    isDeciding_ = true;
    const DWORD error = decide(call, count(call));
    isDeciding_ = false;
    if (error != 0) {
        SetLastError(error);
    }
    return error != 0;
}

}  // namespace zelutil::test

// NOLINTBEGIN(bugprone-reserved-identifier, cppcoreguidelines-macro-usage): the linker gives these names.
#define ZELUTIL_WRAP(call, failure)                                                   \
    extern "C" {                                                                      \
    extern decltype(&(call)) __real___imp_##call;                                     \
    extern decltype(&(call)) __wrap___imp_##call;                                     \
    }                                                                                 \
    decltype(&(call)) __wrap___imp_##call = [](auto... arguments) {                   \
        using Result = decltype(__real___imp_##call(arguments...));                   \
        return zelutil::test::fails(#call) || zelutil::test::areRefused(arguments...) \
                   ? (Result)(failure)                                                \
                   : __real___imp_##call(arguments...);                               \
    };

ZELUTIL_WRAP(CreateFileW, INVALID_HANDLE_VALUE)
ZELUTIL_WRAP(WriteFile, FALSE)
ZELUTIL_WRAP(ReadFile, FALSE)
ZELUTIL_WRAP(FlushFileBuffers, FALSE)
ZELUTIL_WRAP(MoveFileExW, FALSE)
ZELUTIL_WRAP(ReplaceFileW, FALSE)
ZELUTIL_WRAP(DeleteFileW, FALSE)
ZELUTIL_WRAP(SetEndOfFile, FALSE)
ZELUTIL_WRAP(LockFileEx, FALSE)
ZELUTIL_WRAP(SetFileAttributesW, FALSE)
ZELUTIL_WRAP(SetFileSecurityW, FALSE)
ZELUTIL_WRAP(GetFileSecurityW, FALSE)
ZELUTIL_WRAP(CreateMutexW, nullptr)
ZELUTIL_WRAP(FindFirstFileW, INVALID_HANDLE_VALUE)
ZELUTIL_WRAP(EqualSid, FALSE)
ZELUTIL_WRAP(GetFileInformationByHandle, FALSE)

extern "C" {
extern decltype(&GetFileAttributesW) __real___imp_GetFileAttributesW;
extern decltype(&GetFileAttributesW) __wrap___imp_GetFileAttributesW;
extern decltype(&FindFirstStreamW) __real___imp_FindFirstStreamW;
extern decltype(&FindFirstStreamW) __wrap___imp_FindFirstStreamW;
}

decltype(&GetFileAttributesW) __wrap___imp_GetFileAttributesW = [](LPCWSTR path) -> DWORD {
    return zelutil::test::fails("GetFileAttributesW")
               ? INVALID_FILE_ATTRIBUTES
               : zelutil::test::withAddedAttributes(__real___imp_GetFileAttributesW(path));
};

decltype(&FindFirstStreamW) __wrap___imp_FindFirstStreamW = [](LPCWSTR path, STREAM_INFO_LEVELS level, LPVOID found,
                                                               DWORD flags) -> HANDLE {
    if (zelutil::test::fails("FindFirstStreamW")) {
        return INVALID_HANDLE_VALUE;
    }
    return zelutil::test::findsStream(found) ? nullptr : __real___imp_FindFirstStreamW(path, level, found, flags);
};
// NOLINTEND(bugprone-reserved-identifier, cppcoreguidelines-macro-usage)
