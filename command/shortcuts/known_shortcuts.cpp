#include "command/shortcuts/known_shortcuts.h"

#include <algorithm>

#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/nearest_names.h"
#include "host/current_preferences.h"

namespace zelutil::shortcuts {

using command::Severity;

KnownShortcuts::KnownShortcuts(command::Output& output) {
    if (!command::areDefaultsNamed()) {
        command::failWithoutDefaults("action", output);
        return;
    }
    rows_ = shortcutTable();
    const prefs::Preferences* const preferences = host::currentPreferences();
    if (rows_.empty() && (preferences == nullptr || preferences->catalogue.sections().empty())) {
        command::failWithoutDefaults("action", output);
        return;
    }
    command::tellUnreadUserFile(output);
    if (rows_.empty()) {
        output.add({Severity::Warning, "The shipped defaults have no actions.",
                    "See whether they are those of the product that is meant: \"zelutil doctor\" says where they are.",
                    std::nullopt});
    }
}

bool KnownShortcuts::hasContext(const std::string& context, command::Output& output) const {
    const std::vector<std::string> contexts = contextsOf(rows_);
    if (std::find(contexts.begin(), contexts.end(), context) != contexts.end()) {
        return true;
    }
    std::string advice = command::questionAbout(command::nearestNames(context, contexts));
    if (advice.empty()) {
        advice = "\"zelutil shortcuts\" shows all contexts.";
    }
    output.add({Severity::Error, "There is no context \"" + context + "\".", std::move(advice), std::nullopt});
    return false;
}

std::string labelOf(const std::vector<ShortcutRow>& rows, int id) {
    const ShortcutRow* const row = findRow(rows, id);
    const std::string number = std::to_string(id);
    return row == nullptr || row->action.item.context.empty()
               ? number
               : number + " (" + row->action.item.context + ", " + row->action.item.command + ")";
}

}  // namespace zelutil::shortcuts
