#include "support/thread_exhaustion.h"

#include <atomic>

#ifdef _WIN32
#include <windows.h>
#else
#include <pthread.h>

#include <cerrno>
#endif

namespace zelutil::test {
namespace {

std::atomic<bool> exhausted{false};
std::atomic<int> count{0};

bool refuses() {
    count += exhausted ? 1 : 0;
    return exhausted;
}

}  // namespace

ThreadExhaustion::ThreadExhaustion() {
    count = 0;
    exhausted = true;
}

ThreadExhaustion::~ThreadExhaustion() { exhausted = false; }

int ThreadExhaustion::refused() const { return count; }

}  // namespace zelutil::test

// NOLINTBEGIN(bugprone-reserved-identifier): the linker gives these names.
#ifdef _WIN32
using CreateThreadFunction = decltype(&CreateThread);

extern "C" {
extern CreateThreadFunction __real___imp_CreateThread;
extern CreateThreadFunction __wrap___imp_CreateThread;
}

static HANDLE WINAPI createThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackSize, LPTHREAD_START_ROUTINE routine,
                                  LPVOID argument, DWORD flags, LPDWORD id) {
    return zelutil::test::refuses() ? nullptr
                                    : __real___imp_CreateThread(security, stackSize, routine, argument, flags, id);
}

CreateThreadFunction __wrap___imp_CreateThread = createThread;
#else
extern "C" {
int __real_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*), void* argument);
int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*), void* argument);
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*),
                          void* argument) {
    return zelutil::test::refuses() ? EAGAIN : __real_pthread_create(thread, attributes, routine, argument);
}
#endif
// NOLINTEND(bugprone-reserved-identifier)
