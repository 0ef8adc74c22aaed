// A thread is killed by a cancellation, which this puts off. Contract: kill_shield.h.
#include "platform/kill_shield.h"

#include <pthread.h>

namespace zelutil::platform {

KillShield::KillShield() {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state_);
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &type_);
}

KillShield::~KillShield() {
    // The type stays deferred: with the other one the thread could be unwound from here, and no destructor may be.
    if (!lifted_) {
        pthread_setcancelstate(state_, nullptr);
    }
}

void KillShield::lift() {
    lifted_ = true;
    pthread_setcanceltype(type_, nullptr);
    pthread_setcancelstate(state_, nullptr);
}

}  // namespace zelutil::platform
