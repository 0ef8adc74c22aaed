#ifndef ZELUTIL_PLATFORM_POSIX_FORCED_UNWIND_H
#define ZELUTIL_PLATFORM_POSIX_FORCED_UNWIND_H

#include <cxxabi.h>

/// A kill unwinds the stack with an exception of its own kind. Who catches it throws it on, since an unwinding that
/// does not go on ends the process. The runtime library of gcc has a type for it. That of LLVM has none: there, only a
/// handler for everything catches it, and finds it to be no exception of C++.
namespace zelutil::platform::posix {

#ifdef __GLIBCXX__
using ForcedUnwind = abi::__forced_unwind;

/// Whether the handler for everything that asks has caught a kill.
inline bool hasCaughtForcedUnwind() { return false; }
#else
/// It is never thrown.
struct ForcedUnwind {};

inline bool hasCaughtForcedUnwind() { return abi::__cxa_current_exception_type() == nullptr; }
#endif

}  // namespace zelutil::platform::posix

#endif
