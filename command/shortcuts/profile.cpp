#include "command/shortcuts/profile.h"

#include <algorithm>
#include <iterator>

#include "command/shortcuts/wish_text.h"

namespace zelutil::shortcuts {
namespace {

/// Returns whether the user has decided about the shortcut. An action that shows it and no longer runs follows from
/// what another one is given.
bool hasShortcut(const ShortcutRow& row) { return row.changedByUser || (row.runsChangedByUser && row.action.runs); }

}  // namespace

std::vector<ShortcutRow> rowsOfProfile(const std::vector<ShortcutRow>& rows) {
    std::vector<ShortcutRow> chosen;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(chosen), [](const ShortcutRow& row) {
        return row.action.item.id != 0 && row.action.item.parent_id == 0 && (hasShortcut(row) || row.menuChangedByUser);
    });
    return chosen;
}

std::string profileOf(const std::vector<ShortcutRow>& rows) {
    command::JsonWriter json;
    json.beginObject();
    json.member("zelutilProfile", kProfileForm);
    json.objects("actions", rows, [&](const ShortcutRow& row) {
        json.member("id", row.action.id);
        json.member("context", row.action.item.context);
        json.member("command", row.action.item.command);
        json.member("name", row.action.item.name);
        if (hasShortcut(row)) {
            json.member("shortcut", row.action.shortcut);
        }
        if (row.menuChangedByUser) {
            json.member("inMenu", row.action.inMenu);
        }
    });
    json.endObject();
    return json.take().value_or("") + '\n';
}

}  // namespace zelutil::shortcuts
