#include "command/shortcuts/shortcut_changes.h"

#include <set>
#include <string>
#include <utility>

#include "command/obstacle_advice.h"
#include "command/saved_settings.h"
#include "command/shortcuts/key_answer.h"
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

namespace {

/// Says how the action that is in the way has the shortcut: now, with its parent, or by a wish only.
std::string howHeld(const InTheWay& one, const std::vector<ShortcutRow>& rows) {
    const ShortcutRow* const row = findRow(rows, one.holder);
    if (row == nullptr || row->action.shortcut != one.shortcut) {
        return " is to have it by another wish.";
    }
    const int parent = row->action.item.parent_id;
    return parent < 1 ? " has it." : ", which follows action " + std::to_string(parent) + ", has it.";
}

}  // namespace

std::string textOf(const InTheWay& one, const std::vector<ShortcutRow>& rows) {
    const std::string child =
        one.asked == one.action ? "" : ", since its child " + labelOf(rows, one.asked) + " could not follow";
    return "Action " + labelOf(rows, one.action) + " cannot have \"" + one.shortcut + "\"" + child + ": action " +
           labelOf(rows, one.holder) + howHeld(one, rows);
}

void tellSavedShortcuts(const std::vector<ShortcutRow>& before, const command::BeforeSave& places,
                        const host::SaveResult& result, Output& output, const std::string& reason) {
    // If nothing was written, the changes are in force in this process alone.
    const std::vector<RowChange> changes = result.ok() ? changedRows(before) : std::vector<RowChange>();
    for (const RowChange& change : changes) {
        tellRowChange(change, output);
    }
    output.members([&](command::JsonWriter& json) {
        json.objects("changes", changes, [&](const RowChange& change) { writeRowChange(json, change); });
    });
    command::tellChanged({}, places, result, output, reason);
}

void addTheFirst(std::vector<command::Finding> findings, Output& output) {
    const std::size_t more = findings.size() > kMostTold ? findings.size() - kMostTold : 0;
    findings.resize(findings.size() - more);
    for (command::Finding& finding : findings) {
        output.add(std::move(finding));
    }
    if (more != 0) {
        output.add({Severity::Note, "There are " + std::to_string(more) + " more of that kind.", "", std::nullopt});
    }
}

void tellInTheWay(const std::vector<InTheWay>& inTheWay, const std::vector<ShortcutRow>& rows, Output& output) {
    std::vector<command::Finding> findings;
    for (const InTheWay& one : inTheWay) {
        findings.push_back(
            {Severity::Warning, textOf(one, rows), "Wish another shortcut for one of the two, or none.", std::nullopt});
    }
    addTheFirst(std::move(findings), output);
}

void tellSideEffects(const WishPlan& plan, bool isDone, const std::vector<ShortcutRow>& rows, Output& output) {
    const char* const loses = isDone ? " has lost \"" : " loses \"";
    const char* const gains = isDone ? " has come to hold \"" : " comes to hold \"";
    std::vector<command::Finding> findings;
    for (const SideEffect& effect : plan.sideEffects) {
        const std::string action = "Action " + labelOf(rows, effect.action);
        for (const std::string& shortcut : effect.lost) {
            findings.push_back({Severity::Warning,
                                action + loses + shortcut + "\", since another action that shows it " +
                                    (isDone ? "was" : "is") + " given another one.",
                                "Wish this action another shortcut, too: \"zelutil free\" lists some.", std::nullopt});
        }
        for (const std::string& shortcut : effect.gained) {
            findings.push_back({Severity::Warning, action + gains + shortcut + "\".",
                                "Wish this action another shortcut, or none, if that is not meant.", std::nullopt});
        }
    }
    addTheFirst(std::move(findings), output);
}

void tellLost(const std::vector<host::NotRestored>& notRestored, Output& output) {
    std::vector<command::Finding> findings;
    for (const host::NotRestored& item : notRestored) {
        findings.push_back({Severity::Warning, item.text, command::adviceOn(item.obstacle), std::nullopt});
    }
    addTheFirst(std::move(findings), output);
}

void tellOtherSpellings(const std::vector<KeyWish>& wishes, const std::vector<ShortcutRow>& rows, Output& output) {
    std::map<std::string, std::string> spelled;
    std::set<std::string> shown;
    for (const ShortcutRow& row : rows) {
        spelled.emplace(oneSpelling(row.action.shortcut), row.action.shortcut);
        shown.insert(row.action.shortcut);
    }
    std::vector<command::Finding> findings;
    for (const KeyWish& wish : wishes) {
        const auto other = spelled.find(oneSpelling(wish.shortcut));
        if (shown.count(wish.shortcut) == 0 && !wish.shortcut.empty() && other != spelled.end()) {
            findings.push_back(
                {Severity::Note, differenceOf(wish.shortcut, other->second), kHowCompared, std::nullopt});
        }
    }
    addTheFirst(std::move(findings), output);
}

std::map<int, bool> changedFlags(const std::map<int, bool>& menuFlags, const std::vector<ShortcutRow>& rows) {
    std::map<int, bool> changed;
    for (const ShortcutRow& row : rows) {
        const auto flag = menuFlags.find(row.action.id);
        if (flag != menuFlags.end() && flag->second != row.action.inMenu) {
            changed.insert(*flag);
        }
    }
    return changed;
}

void tellMenuFlags(const std::map<int, bool>& menuFlags, const std::vector<ShortcutRow>& rows, Output& output) {
    for (const auto& [id, inMenu] : changedFlags(menuFlags, rows)) {
        RowChange change{findRow(rows, id)->action, findRow(rows, id)->action};
        change.now.inMenu = inMenu;
        tellRowChange(change, output);
    }
}

void writeSkipped(command::JsonWriter& json, const std::vector<SkippedWish>& skipped) {
    json.objects("skipped", skipped, [&](const SkippedWish& wish) {
        json.member("place", wish.place);
        json.member("action", wish.action);
        json.member("why", wish.text);
    });
}

void writeMenuFlags(command::JsonWriter& json, const std::map<int, bool>& menuFlags) {
    json.objects("menuFlags", menuFlags, [&](const auto& flag) {
        json.member("id", flag.first);
        json.member("inMenu", flag.second);
    });
}

void writeSideEffects(command::JsonWriter& json, const WishPlan& plan) {
    const auto write = [&](const std::string& text) { json.text(text); };
    json.objects("sideEffects", plan.sideEffects, [&](const SideEffect& effect) {
        json.member("id", effect.action);
        json.list("loses", effect.lost, write);
        json.list("gains", effect.gained, write);
    });
}

void writeNotRestored(command::JsonWriter& json, const std::vector<host::NotRestored>& notRestored) {
    json.objects("notRestored", notRestored, [&](const host::NotRestored& item) {
        json.member("action", item.action);
        json.member("otherAction", item.otherAction);
        json.member("text", item.text);
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
