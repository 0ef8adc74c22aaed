#include "support/windows_loader.h"

#include <windows.h>
#include <winternl.h>

#include <stdexcept>

namespace zelutil::test {
namespace {

/// The loader's record of a module, which the system's header declares only in part.
struct ModuleRecord {
    LIST_ENTRY inLoadOrder;
    LIST_ENTRY inMemoryOrder;
    LIST_ENTRY inInitialisationOrder;
    void* base;
    void* entryPoint;
    ULONG size;
    UNICODE_STRING fullName;
    UNICODE_STRING baseName;
    ULONG flags;
};

constexpr ULONG kDoNotCallForThreads = 0x40000;

using FindRecord = NTSTATUS(NTAPI*)(void* address, const ModuleRecord** record);

}  // namespace

bool hearsOfThreads(void* module) {
    void* const find = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "LdrFindEntryForAddress"));
    const ModuleRecord* record = nullptr;
    if (find == nullptr || reinterpret_cast<FindRecord>(find)(module, &record) != 0) {
        throw std::runtime_error("the loader does not know the module");
    }
    return (record->flags & kDoNotCallForThreads) == 0;
}

}  // namespace zelutil::test
