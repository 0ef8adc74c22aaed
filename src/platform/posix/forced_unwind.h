#ifndef ZELUTIL_PLATFORM_POSIX_FORCED_UNWIND_H
#define ZELUTIL_PLATFORM_POSIX_FORCED_UNWIND_H

#include <cxxabi.h>

/// A kill unwinds the stack with an exception of its own kind. Who catches it throws it on, since an unwinding that
/// does not go on ends the process. Only the runtime library of gcc has a type for it. With that of LLVM a killed
/// thread takes the process with it, as docs/portability.md says.
namespace zelutil::platform::posix {

#ifdef __GLIBCXX__
using ForcedUnwind = abi::__forced_unwind;
#else
/// It is never thrown.
struct ForcedUnwind {};
#endif

}  // namespace zelutil::platform::posix

#endif
