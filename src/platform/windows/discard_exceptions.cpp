#include "platform/discard_exceptions.h"

namespace zelutil::platform {

bool callDiscardingExceptions(void (*function)(void*), void* argument) {
    try {
        function(argument);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace zelutil::platform
