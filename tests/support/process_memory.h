#ifndef ZELUTIL_TESTS_SUPPORT_PROCESS_MEMORY_H
#define ZELUTIL_TESTS_SUPPORT_PROCESS_MEMORY_H

#include <cstdint>

namespace zelutil::test {

/// The most memory this process has had in RAM so far, in bytes; 0 when the system does not tell.
std::int64_t peakMemory();

/// About how many things of the system this process holds now: open handles on Windows, parts of its address space
/// elsewhere. A thread that has ended but was not let go holds one or two.
std::int64_t systemObjects();

}  // namespace zelutil::test

#endif
