#include "command/shortcuts/shortcut_changes.h"

#include <string>

#include "command/saved_settings.h"
#include "command/shortcuts/known_shortcuts.h"

namespace zelutil::shortcuts {
namespace {

using command::Output;
using command::Role;
using command::Severity;

struct RowChange {
    host::ActionInfo before;
    host::ActionInfo now;
};

std::vector<RowChange> changedRows(const std::vector<ShortcutRow>& before) {
    std::vector<RowChange> changes;
    for (const ShortcutRow& now : shortcutTable()) {
        const ShortcutRow* const old = findRow(before, now.action.id);
        if (old != nullptr &&
            (old->action.shortcut != now.action.shortcut || old->action.inMenu != now.action.inMenu)) {
            changes.push_back({old->action, now.action});
        }
    }
    return changes;
}

std::string quotedOrNone(const std::string& shortcut) { return shortcut.empty() ? "none" : shortcut; }

void tellRowChange(const RowChange& change, Output& output) {
    const auto& [before, now] = change;
    std::string text;
    if (before.shortcut != now.shortcut) {
        text = output.shown(Role::Old, quotedOrNone(before.shortcut)) + " -> " +
               output.shown(Role::Value, quotedOrNone(now.shortcut));
    }
    if (before.inMenu != now.inMenu) {
        text += std::string(text.empty() ? "" : ", ") + (now.inMenu ? "into the menu" : "out of the menu");
    }
    output.line("{} {}: {}", now.id, output.shown(Role::Name, now.item.context + " " + now.item.command), text);
}

void writeRowChange(command::JsonWriter& json, const RowChange& change) {
    json.member("id", change.now.id);
    json.member("context", change.now.item.context);
    json.member("command", change.now.item.command);
    json.member("shortcutBefore", change.before.shortcut);
    json.member("shortcut", change.now.shortcut);
    json.member("inMenuBefore", change.before.inMenu);
    json.member("inMenu", change.now.inMenu);
}

}  // namespace

std::string textOf(const InTheWay& one, const std::vector<ShortcutRow>& rows) {
    const std::string child =
        one.asked == one.action ? "" : ", since its child " + labelOf(rows, one.asked) + " could not follow";
    return "Action " + labelOf(rows, one.action) + " cannot have \"" + one.shortcut + "\"" + child + ": action " +
           labelOf(rows, one.holder) + " has it.";
}

void tellSavedShortcuts(const std::vector<ShortcutRow>& before, const host::SaveResult& result, Output& output) {
    // Where nothing was written, the changes are in force in this process alone.
    const std::vector<RowChange> changes = result.ok() ? changedRows(before) : std::vector<RowChange>();
    for (const RowChange& change : changes) {
        tellRowChange(change, output);
    }
    output.members([&](command::JsonWriter& json) {
        json.objects("changes", changes, [&](const RowChange& change) { writeRowChange(json, change); });
    });
    command::tellSaved({}, result, output);
}

void tellInTheWay(const std::vector<InTheWay>& inTheWay, const std::vector<ShortcutRow>& rows, Output& output) {
    for (const InTheWay& one : inTheWay) {
        output.add(
            {Severity::Warning, textOf(one, rows), "Wish another shortcut for one of the two, or none.", std::nullopt});
    }
}

void tellSideEffects(const WishPlan& plan, const std::vector<ShortcutRow>& rows, Output& output) {
    for (const int id : plan.sideEffects) {
        output.add({Severity::Warning, "What \"zelutil who\" says of action " + labelOf(rows, id) + " changes too.",
                    "It shows a shortcut that another action holds or has held.", std::nullopt});
    }
}

void writeSkipped(command::JsonWriter& json, const std::vector<SkippedWish>& skipped) {
    json.objects("skipped", skipped, [&](const SkippedWish& wish) {
        json.member("place", wish.place);
        json.member("action", wish.action);
        json.member("why", wish.text);
    });
}

void writeEdits(command::JsonWriter& json, const std::vector<KeyWish>& edits) {
    json.objects("edits", edits, [&](const KeyWish& edit) {
        json.member("id", edit.action);
        json.member("shortcut", edit.shortcut);
    });
}

void writeInTheWay(command::JsonWriter& json, const std::vector<InTheWay>& inTheWay) {
    json.objects("inTheWay", inTheWay, [&](const InTheWay& one) {
        json.member("id", one.action);
        json.member("shortcut", one.shortcut);
        json.member("asked", one.asked);
        json.member("holder", one.holder);
    });
}

}  // namespace zelutil::shortcuts
