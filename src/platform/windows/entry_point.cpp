#include "platform/windows/windows_h.h"

/// The library needs no thread notifications; without them a host's threads start and end faster. The system refuses
/// for a module with static thread-local storage, which gcc's runtime gives every DLL: there they come and find nothing
/// to do.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {  // NOLINT(readability-identifier-naming)
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}
