#include "util/killable_objects.h"

#include <zelutil/util/thread.h>

#include "support/killable.h"

namespace zelutil::test {
namespace {

using ZelU::Thrd::Thread;

void* count(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return counter;
}

}  // namespace

void* destroyIdleObjects(void* progress) {
    for (int i = 0; i < 10; ++i) {
        const Thread idle;
    }
    return computeForEver(progress);
}

void* destroyObjectOfEndedThread(void* progress) {
    std::atomic<int> calls{0};
    {
        Thread helper(count, &calls);
        helper.Join();
    }
    return computeForEver(progress);
}

void* destroyObjectOfRunningThread(void* progress) {
    {
        Thread helper;
        helper.Start(count, &callsOfAbandoned, 20);
    }
    return computeForEver(progress);
}

}  // namespace zelutil::test
