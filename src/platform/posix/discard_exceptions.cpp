#include "platform/discard_exceptions.h"

#include "platform/posix/forced_unwind.h"
#include "platform/posix/sanitizer.h"

namespace zelutil::platform {

// A kill unwinds the stack with an exception of its own kind. There is no object behind a reference to it, which the
// undefined-behaviour sanitizer would report, and who does not throw it on ends the process.
__attribute__((no_sanitize("address", "undefined"))) bool callDiscardingExceptions(void (*function)(void*),
                                                                                   void* argument) {
    try {
        function(argument);
        return true;
    } catch (const posix::ForcedUnwind&) {
        posix::forgetFramesBelow(__builtin_frame_address(0));
        throw;
    } catch (...) {
        return false;
    }
}

}  // namespace zelutil::platform
