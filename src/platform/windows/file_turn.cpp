// The turns of processes on Windows: a mutex that is named after the directory's identity, since a directory has many
// paths.
#include "platform/file_turn.h"

#include <cstdio>

#include "platform/windows/file.h"
#include "platform/windows/named_mutex.h"

namespace zelutil::platform {

using namespace replacement;
using namespace windows;

namespace {

constexpr DWORD kLongestWait = 3000;

/// Returns the name for the directory that the file is in; empty where the system does not tell which it is.
std::wstring mutexNameFor(const NativeText& file) {
    const NativeText directory = file.substr(0, nameStart(file));
    const File opened(CreateFileW(directory.empty() ? L"." : directory.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION information{};
    if (!opened.isOpen() || GetFileInformationByHandle(opened.handle(), &information) == 0) {
        return {};
    }
    char name[64];
    std::snprintf(name, sizeof name, "zelutil-save-%08lx-%08lx%08lx", information.dwVolumeSerialNumber,
                  information.nFileIndexHigh, information.nFileIndexLow);
    return widen(name);
}

}  // namespace

FileTurn::FileTurn(const char* path) {
    const auto named = nativePath(path);
    const auto target = named ? resolveLinks(*named) : std::nullopt;
    const std::wstring name = target ? mutexNameFor(*target) : std::wstring();
    const HANDLE mutex = name.empty() ? nullptr : openMutex(name);
    if (mutex == nullptr) {
        return;
    }
    native_.reset(reinterpret_cast<std::intptr_t>(mutex));
    isTaken_ = takeMutex(mutex, kLongestWait);
}

FileTurn::~FileTurn() {
    if (isTaken_) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the number is a handle.
        ReleaseMutex(reinterpret_cast<HANDLE>(native_.native()));
    }
}

}  // namespace zelutil::platform
