#ifndef ZELUTIL_PLATFORM_REPLACEMENT_PLAN_H
#define ZELUTIL_PLATFORM_REPLACEMENT_PLAN_H

#include "platform/replacement_primitives.h"

/// The decision how a target is replaced. Pure.
namespace zelutil::platform::replacement {

enum class WayToReplace {
    /// Moving the new file over the target loses nothing.
    Move,
    /// The system replaces it and gives the new file all of the old one.
    Exchange,
    /// The target itself must stay.
    WriteInto,
};

inline WayToReplace wayToReplace(const Target& target) {
    if (target.hasOtherLinks || target.isSparse) {
        return WayToReplace::WriteInto;
    }
    return target.isEncryptedOrCompressed || target.hasNamedStreams ? WayToReplace::Exchange : WayToReplace::Move;
}

}  // namespace zelutil::platform::replacement

#endif
