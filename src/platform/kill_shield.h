#ifndef ZELUTIL_PLATFORM_KILL_SHIELD_H
#define ZELUTIL_PLATFORM_KILL_SHIELD_H

namespace zelutil::platform {

/// While one of these lives, the calling thread is not killed by unwinding its stack: what it locks it unlocks.
/// (Killing that does not unwind is not held off; who kills must hold the same lock.)
class KillShield {
public:
    KillShield() noexcept;
    KillShield(const KillShield&) = delete;
    KillShield& operator=(const KillShield&) = delete;
    /// A thread that was to be killed meanwhile ends later: where it waits or asks the system for something, or where
    /// the next shield is lifted.
    ~KillShield();

    /// Ends the protection now. A thread that was to be killed meanwhile does not return from this.
    void lift();

private:
    int state_ = 0;
    int type_ = 0;
    bool lifted_ = false;
};

}  // namespace zelutil::platform

#endif
