#ifndef ZELUTIL_BENCH_SUPPORT_ALLOCATION_COUNT_H
#define ZELUTIL_BENCH_SUPPORT_ALLOCATION_COUNT_H

#include <cstdint>

namespace zelutil::bench {

/// Number of calls of `operator new`, in any of its forms, that the calling thread has made: the program's, the
/// library's and the standard library's. What is taken with malloc alone is not counted.
std::uint64_t allocationCount();

}  // namespace zelutil::bench

#endif
