#ifndef ZELUTIL_TESTS_SUPPORT_KILLABLE_H
#define ZELUTIL_TESTS_SUPPORT_KILLABLE_H

#include <atomic>

/// Functions for threads that are to be killed. They are compiled without sanitizers, whose run-time libraries do not
/// survive the sudden end of a thread that is inside them.
namespace zelutil::test {

using Progress = std::atomic<unsigned long>;

/// Counts `progress` (a `Progress`) up for ever, without ever calling the system.
void* computeForEver(void* progress);

/// Counts `progress` (a `Progress`) up for ever, sleeping a millisecond each time.
void* sleepForEver(void* progress);

/// Sleeps so many (an `unsigned`) microseconds.
void* sleepMicroseconds(void* microseconds);

/// Whether nobody counts `progress` up any more, as far as can be seen by looking for a while.
bool standsStill(const Progress& progress);

}  // namespace zelutil::test

#endif
