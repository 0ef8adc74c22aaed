// A host's plug-in with a static object that kills its thread at the end of the process, when Windows has ended all
// other threads, whatever they were doing.
#include <windows.h>
#include <zelutil/util/thread.h>

#include "support/module_export.h"

namespace {

struct Worker {
    Worker() = default;
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() { thread.Kill(); }

    ZelU::Thrd::Thread thread;
};

Worker worker;

DWORD WINAPI useThreadsForEver(LPVOID) {
    for (;;) {
        ZelU::Thrd::Thread thread;
        thread.Kill();
    }
}

}  // namespace

/// Starts threads that are in the library's lock most of the time.
ZELUTIL_TEST_EXPORT void keepBusy() {
    for (int i = 0; i < 2; ++i) {
        CloseHandle(CreateThread(nullptr, 0, useThreadsForEver, nullptr, 0, nullptr));
    }
}
