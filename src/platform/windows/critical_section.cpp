// Critical sections on Windows. Order and contracts: critical_section.h.
#include "platform/critical_section.h"

#include <memory>

#include "platform/windows/windows_h.h"

namespace zelutil::platform {

struct CriticalSection {
    CRITICAL_SECTION section;
};

CriticalSection* createCriticalSection() {
    auto section = std::make_unique<CriticalSection>();
    InitializeCriticalSection(&section->section);
    return section.release();
}

void destroyCriticalSection(CriticalSection* section) noexcept {
    DeleteCriticalSection(&section->section);
    delete section;
}

void enterCriticalSection(CriticalSection* section) noexcept { EnterCriticalSection(&section->section); }

void leaveCriticalSection(CriticalSection* section) noexcept {
    // Leaving a section that one is not in would spoil its count, and the next thread would wait for ever.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const HANDLE self = reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(GetCurrentThreadId()));
    if (section->section.OwningThread == self) {
        LeaveCriticalSection(&section->section);
    }
}

}  // namespace zelutil::platform
