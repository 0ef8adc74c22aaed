#ifndef ZELUTIL_TESTS_UTIL_KILLABLE_OBJECTS_H
#define ZELUTIL_TESTS_UTIL_KILLABLE_OBJECTS_H

#include <atomic>

/// Functions for threads that destroy thread objects and are killed afterwards, compiled without sanitizers as those of
/// support/killable.h are. Each counts its argument (a `Progress`) up for ever in the end.
namespace zelutil::test {

/// Counts how often the helper of `destroyObjectOfRunningThread` has called its function.
inline std::atomic<int> callsOfAbandoned{0};

void* destroyIdleObjects(void* progress);
void* destroyObjectOfEndedThread(void* progress);
void* destroyObjectOfRunningThread(void* progress);

}  // namespace zelutil::test

#endif
