#include "support/process_memory.h"

#ifdef _WIN32
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>
#else
#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#endif

namespace zelutil::test {

#ifdef _WIN32
std::int64_t peakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)) == 0) {
        return 0;
    }
    return static_cast<std::int64_t>(counters.PeakWorkingSetSize);
}

std::int64_t systemObjects() {
    // Wine does not count them, but a new handle is the next free multiple of four.
    const HANDLE next = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(next);
    return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(next) / 4);
}
#else
std::int64_t peakMemory() {
    struct rusage usage {};
    if (::getrusage(RUSAGE_SELF, &usage) != 0) {
        return 0;
    }
    return std::int64_t{usage.ru_maxrss} * 1024;
}

std::int64_t systemObjects() {
    std::ifstream maps("/proc/self/maps");
    return std::count(std::istreambuf_iterator<char>(maps), {}, '\n');
}
#endif

}  // namespace zelutil::test
