#include "support/killable.h"

#include <chrono>
#include <thread>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>
#endif

namespace zelutil::test {
namespace {

#ifdef _WIN32
void sleepFor(unsigned microseconds) { Sleep((microseconds + 999) / 1000); }
#else
/// Past the thread sanitizer, which would take the thread to be in the C library's function for ever.
void sleepFor(unsigned microseconds) {
    const timespec duration{microseconds / 1000000, static_cast<long>(microseconds % 1000000) * 1000};
    syscall(SYS_nanosleep, &duration, nullptr);
}
#endif

}  // namespace

void* computeForEver(void* progress) {
    for (;;) {
        static_cast<Progress*>(progress)->fetch_add(1, std::memory_order_relaxed);
    }
}

void* sleepForEver(void* progress) {
    for (;;) {
        static_cast<Progress*>(progress)->fetch_add(1, std::memory_order_relaxed);
        sleepFor(1000);
    }
}

void* sleepMicroseconds(void* microseconds) {
    sleepFor(*static_cast<unsigned*>(microseconds));
    return nullptr;
}

bool standsStill(const Progress& progress) {
    const unsigned long before = progress;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return progress == before;
}

}  // namespace zelutil::test
