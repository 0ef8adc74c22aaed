#ifndef ZELUTIL_COMMAND_SHORTCUTS_IMPORTING_H
#define ZELUTIL_COMMAND_SHORTCUTS_IMPORTING_H

#include <zelutil/host/result.h>

#include <string>

#include "command/shortcuts/named_wishes.h"
#include "command/shortcuts/wish_plan.h"
#include "command/shortcuts/wish_text.h"

/// Gives the actions in force what wishes say, as far as that can be, and saves.
namespace zelutil::shortcuts {

struct Import {
    /// Lists what was found, and all that was skipped, with the shortcuts that somebody was in the way of.
    NamedWishes wishes;
    PartialPlan partial;
    host::SaveResult save;
};

/// Imports what a profile says. Menu flags are set also where the shortcut of the same action was skipped.
Import importWishes(const WishText& text);

/// Edits the manager of the actions and saves: gives and takes away shortcuts in the order of the plan, and sets the
/// menu flags.
host::SaveResult applyWishes(const WishPlan& plan, const std::map<int, bool>& menuFlags);

}  // namespace zelutil::shortcuts

#endif
