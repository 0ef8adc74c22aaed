#ifndef ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_CHANGES_H
#define ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_CHANGES_H

#include <zelutil/host/result.h>

#include <string>
#include <vector>

#include "command/output.h"
#include "command/shortcuts/shortcut_table.h"
#include "command/shortcuts/named_wishes.h"
#include "command/shortcuts/wish_plan.h"

/// Tells what edits of shortcuts change.
namespace zelutil::shortcuts {

/// Tells `output` the actions that have another shortcut or menu flag than before, children that follow among them, and
/// the result of the save, which was the last thing to be done. Where it failed, nothing of that is told but why.
void tellSavedShortcuts(const std::vector<ShortcutRow>& before, const host::SaveResult& result,
                        command::Output& output);

/// Returns a sentence that says who is in the way.
std::string textOf(const InTheWay& one, const std::vector<ShortcutRow>& rows);

/// Tells `output` who is in the way of wishes, and whose other actions the edits change.
void tellInTheWay(const std::vector<InTheWay>& inTheWay, const std::vector<ShortcutRow>& rows, command::Output& output);
void tellSideEffects(const WishPlan& plan, const std::vector<ShortcutRow>& rows, command::Output& output);

/// Writes the members "skipped", "edits" and "inTheWay".
void writeSkipped(command::JsonWriter& json, const std::vector<SkippedWish>& skipped);
void writeEdits(command::JsonWriter& json, const std::vector<KeyWish>& edits);
void writeInTheWay(command::JsonWriter& json, const std::vector<InTheWay>& inTheWay);

}  // namespace zelutil::shortcuts

#endif
