#ifndef ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_CHANGES_H
#define ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_CHANGES_H

#include <zelutil/host/result.h>

#include <map>
#include <string>
#include <vector>

#include "command/before_save.h"
#include "command/output.h"
#include "command/shortcuts/named_wishes.h"
#include "command/shortcuts/shortcut_table.h"
#include "command/shortcuts/wish_plan.h"

/// Tells what edits of shortcuts change.
namespace zelutil::shortcuts {

/// Tells `output` the actions that have another shortcut or menu flag than before, children that follow among them, and
/// the result of the save, which was the last thing to be done. Where it failed, nothing of that is told but why: that
/// is `reason` where there is one.
void tellSavedShortcuts(const std::vector<ShortcutRow>& before, const command::BeforeSave& places,
                        const host::SaveResult& result, command::Output& output, const std::string& reason = {});

/// Returns a sentence that says who is in the way.
std::string textOf(const InTheWay& one, const std::vector<ShortcutRow>& rows);

/// Tells `output` the first of many findings, and how many more there are.
void addTheFirst(std::vector<command::Finding> findings, command::Output& output);
inline constexpr std::size_t kMostTold = 20;

/// Tells `output` who is in the way of wishes, which other actions the edits change, or have changed, and what no save
/// brings back.
void tellInTheWay(const std::vector<InTheWay>& inTheWay, const std::vector<ShortcutRow>& rows, command::Output& output);
void tellSideEffects(const WishPlan& plan, bool isDone, const std::vector<ShortcutRow>& rows, command::Output& output);
void tellLost(const std::vector<host::NotRestored>& notRestored, command::Output& output);

/// Tells `output` where wishes are for a shortcut that no action shows, and one shows the same key in another spelling.
void tellOtherSpellings(const std::vector<KeyWish>& wishes, const std::vector<ShortcutRow>& rows,
                        command::Output& output);

/// Tells `output` which of the menu flags change.
void tellMenuFlags(const std::map<int, bool>& menuFlags, const std::vector<ShortcutRow>& rows, command::Output& output);

/// Returns those of the menu flags that change.
std::map<int, bool> changedFlags(const std::map<int, bool>& menuFlags, const std::vector<ShortcutRow>& rows);

/// Write the members "skipped", "edits", "inTheWay", "menuFlags", "sideEffects" and "notRestored".
void writeSkipped(command::JsonWriter& json, const std::vector<SkippedWish>& skipped);
void writeEdits(command::JsonWriter& json, const std::vector<KeyWish>& edits);
void writeInTheWay(command::JsonWriter& json, const std::vector<InTheWay>& inTheWay);
void writeMenuFlags(command::JsonWriter& json, const std::map<int, bool>& menuFlags);
void writeSideEffects(command::JsonWriter& json, const WishPlan& plan);
void writeNotRestored(command::JsonWriter& json, const std::vector<host::NotRestored>& notRestored);

}  // namespace zelutil::shortcuts

#endif
