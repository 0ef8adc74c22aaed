#include "command/shortcuts/key_answer.h"

#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <set>

#include "actions/manager_access.h"
#include "command/shortcut_keys.h"
#include "host/action_obstacles.h"

namespace zelutil::shortcuts {
namespace {

std::string joinedParts(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : "; ") + part;
    }
    return text;
}

/// Returns the number of the token that is the key: the last one, but where that is a modifier and one before it is
/// none, that one.
std::size_t placeOfKey(const std::vector<std::string_view>& tokens) {
    const auto isKey = [](std::string_view token) { return command::modifierNamed(token).empty(); };
    const auto key = std::find_if(tokens.rbegin(), tokens.rend(), isKey);
    return key == tokens.rend() ? tokens.size() - 1 : static_cast<std::size_t>(tokens.rend() - key) - 1;
}

}  // namespace

std::string oneSpelling(const std::string& shortcut) {
    const std::vector<std::string_view> tokens = command::tokensOf(shortcut);
    const std::size_t key = placeOfKey(tokens);
    std::set<std::string> modifiers;
    for (std::size_t place = 0; place < tokens.size(); ++place) {
        const std::string_view modifier = command::modifierNamed(tokens[place]);
        if (place != key) {
            modifiers.insert(modifier.empty() ? command::keyNamed(tokens[place]) : std::string(modifier));
        }
    }
    std::string spelled;
    for (const std::string& modifier : modifiers) {
        spelled += modifier + '+';
    }
    return spelled + command::keyNamed(tokens[key]);
}

std::string differenceOf(const std::string& shortcut, const std::string& other) {
    return "\"" + shortcut + "\" is another shortcut than \"" + other + "\".";
}

namespace {

/// Adds the shortcuts of a context that are the asked one in another spelling.
void addSpellings(KeyAnswer& answer, const std::string& context, const std::vector<ShortcutRow>& rows) {
    for (const ShortcutRow& row : rows) {
        const std::string& shortcut = row.action.shortcut;
        if (row.action.item.context == context && !shortcut.empty() && shortcut != answer.shortcut &&
            !answer.shortcut.empty() && oneSpelling(shortcut) == oneSpelling(answer.shortcut)) {
            answer.otherSpellings.push_back(shortcut);
        }
    }
}

}  // namespace

KeyAnswer answerOf(const std::string& shortcut, const std::string& context, const std::vector<ShortcutRow>& rows) {
    const UCPActionManager& manager = UCPActionManager::instance();
    const actions::ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    KeyAnswer answer;
    answer.shortcut = shortcut;
    answer.context = context;
    answer.command = manager.getCommand(context, shortcut, false);
    answer.action = manager.getActionIdByShortcut(context, shortcut);
    answer.commandWithFallback = manager.getCommand(context, shortcut, true);
    answer.actionWithFallback = shortcut.empty() ? 0 : catalogue.idByShortcut(context, shortcut, true);
    const std::string linked = host::linkedContext(context);
    answer.linkedHolder = linked == context ? 0 : manager.getActionIdByShortcut(linked, shortcut);
    for (const ShortcutRow& row : rows) {
        if (row.action.item.context == context && row.action.shortcut == shortcut && row.action.id != answer.action) {
            answer.shownBy.push_back(row.action.id);
        }
    }
    addSpellings(answer, context, rows);
    if (context != actions::ActionCatalogue::kFallbackContext) {
        addSpellings(answer, std::string(actions::ActionCatalogue::kFallbackContext), rows);
    }
    return answer;
}

std::string whyOf(const KeyAnswer& answer, const std::vector<ShortcutRow>& rows) {
    std::vector<std::string> parts;
    const ShortcutRow* const row = findRow(rows, answer.actionWithFallback);
    if (answer.action == 0) {
        parts.push_back("no action of " + answer.context + " holds it");
        if (row != nullptr) {
            parts.push_back(std::string(actions::ActionCatalogue::kFallbackContext) + " is the fallback");
        }
    }
    if (row != nullptr) {
        parts.push_back(row->action.shortcut == answer.shortcut ? row->why
                                                                : "held from before the action took over another one");
    }
    if (answer.linkedHolder != 0 && answer.linkedHolder != answer.actionWithFallback) {
        parts.push_back("action " + std::to_string(answer.linkedHolder) + " holds it in the linked context");
    }
    for (const int id : answer.shownBy) {
        parts.push_back("action " + std::to_string(id) + " shows it and does not run");
    }
    return joinedParts(parts);
}

void writeAnswer(command::JsonWriter& json, const KeyAnswer& answer) {
    json.member("shortcut", answer.shortcut);
    json.member("context", answer.context);
    json.member("command", answer.command);
    json.member("action", answer.action);
    json.member("commandWithFallback", answer.commandWithFallback);
    json.member("actionWithFallback", answer.actionWithFallback);
    json.member("linkedHolder", answer.linkedHolder);
    json.list("shownBy", answer.shownBy, [&](int id) { json.integer(id); });
    json.list("otherSpellings", answer.otherSpellings, [&](const std::string& text) { json.text(text); });
}

}  // namespace zelutil::shortcuts
