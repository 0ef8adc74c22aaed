#ifndef ZELUTIL_TESTS_SUPPORT_PROCESS_MEMORY_H
#define ZELUTIL_TESTS_SUPPORT_PROCESS_MEMORY_H

#include <cstdint>

namespace zelutil::test {

/// The most memory this process has had in RAM so far, in bytes; 0 when the system does not tell.
std::int64_t peakMemory();

}  // namespace zelutil::test

#endif
