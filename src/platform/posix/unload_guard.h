#ifndef ZELUTIL_PLATFORM_POSIX_UNLOAD_GUARD_H
#define ZELUTIL_PLATFORM_POSIX_UNLOAD_GUARD_H

#include "platform/posix/thread_list.h"

/// A thread must not be in the library's code when that goes. So threads announce their last steps, and the unloading
/// waits for those that have.
namespace zelutil::platform::posix {

/// From here on the unloading of the library waits for the thread. Called with the list locked.
void announceEnd(ThreadRecord& record);

/// The last thing a started thread does, whether its body returned or is being unwound. It stays in the list until
/// another reclaims it, because it is still in the library's code when this is done.
class LastSteps {
public:
    explicit LastSteps(ThreadRecord& record) : record_(record) {}
    LastSteps(const LastSteps&) = delete;
    LastSteps& operator=(const LastSteps&) = delete;
    ~LastSteps();

private:
    ThreadRecord& record_;
};

}  // namespace zelutil::platform::posix

#endif
