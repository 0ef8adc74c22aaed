#include "host/observer_depth.h"

#include <zelutil/host/observers.h>

namespace zelutil::host {
namespace {

int depth = 0;
bool exceeded = false;

}  // namespace

ObserverDepth::ObserverDepth() noexcept {
    exceeded = exceeded || depth == kMaximumNotificationDepth;
    admitted_ = !exceeded;
    ++depth;
}

ObserverDepth::~ObserverDepth() {
    --depth;
    exceeded = exceeded && depth > 0;
}

}  // namespace zelutil::host
