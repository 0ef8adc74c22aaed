// Windows ends a thread without unwinding its stack, so there is nothing to hold off.
#include "platform/kill_shield.h"

namespace zelutil::platform {

KillShield::KillShield() noexcept = default;

KillShield::~KillShield() = default;  // NOLINT(performance-trivially-destructible): not so on other systems

void KillShield::lift() {}

}  // namespace zelutil::platform
