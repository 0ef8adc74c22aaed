#include "support/process_memory.h"

#ifdef _WIN32
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>
#else
#include <sys/resource.h>
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
#else
std::int64_t peakMemory() {
    struct rusage usage {};
    if (::getrusage(RUSAGE_SELF, &usage) != 0) {
        return 0;
    }
    return std::int64_t{usage.ru_maxrss} * 1024;
}
#endif

}  // namespace zelutil::test
