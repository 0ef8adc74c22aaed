// A thread is killed by a cancellation, which this puts off. Contract: kill_shield.h.
#include "platform/kill_shield.h"

#include <pthread.h>

#include "platform/posix/thread_list.h"

namespace zelutil::platform {

using namespace posix;

namespace {

/// Gives the thread back how it may be cancelled, and leaves the list locked. When the thread is to be killed already,
/// it stays without asynchronous cancellation, which would strike here: a destructor may not be unwound.
void restoreWithListLocked(ThreadRecord& self, int type) {
    pthread_mutex_lock(&threadListMutex);
    if (self.killed) {
        self.heldBack = self.heldBack || type == PTHREAD_CANCEL_ASYNCHRONOUS;
    } else {
        pthread_setcanceltype(type, nullptr);
    }
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
}

}  // namespace

KillShield::KillShield() noexcept {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state_);
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &type_);
}

KillShield::~KillShield() {
    if (lifted_) {
        return;
    }
    if (state_ == PTHREAD_CANCEL_DISABLE) {
        pthread_setcanceltype(type_, nullptr);
        return;
    }
    ThreadRecord* const self = currentThreadRecord();
    if (self == nullptr) {
        // Nobody knows whether this thread is being cancelled, so the type stays deferred.
        pthread_setcancelstate(state_, nullptr);
        return;
    }
    restoreWithListLocked(*self, type_);
    // The last step: from here on the thread may be killed.
    pthread_mutex_unlock(&threadListMutex);
}

void KillShield::lift() {
    lifted_ = true;
    const ThreadRecord* const self = currentThreadRecord();
    pthread_setcanceltype(self != nullptr && self->heldBack ? PTHREAD_CANCEL_ASYNCHRONOUS : type_, nullptr);
    pthread_setcancelstate(state_, nullptr);
}

}  // namespace zelutil::platform
