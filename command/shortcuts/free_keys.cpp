#include "command/shortcuts/free_keys.h"

#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <set>

#include "actions/manager_access.h"
#include "command/shortcut_keys.h"
#include "command/shortcuts/key_answer.h"
#include "host/action_obstacles.h"

namespace zelutil::shortcuts {
namespace {

std::vector<std::string> allKeyNames() {
    std::vector<std::string> names;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        names.emplace_back(1, letter);
    }
    for (char digit = '0'; digit <= '9'; ++digit) {
        names.emplace_back(1, digit);
    }
    for (int number = 1; number <= 12; ++number) {
        names.push_back("F" + std::to_string(number));
    }
    for (const char* const name : {"Ins", "Del", "Home", "End", "PgUp", "PgDown", "Up", "Down", "Left", "Right",
                                   "Space", "Tab", "Return", "Backspace", "Esc", "+", "-"}) {
        names.emplace_back(name);
    }
    return names;
}

const actions::ActionCatalogue& catalogueOfAll() {
    return actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
}

/// Returns the shortcuts that are held or shown in the context or in the one linked with it, in one spelling.
std::set<std::string> spellingsIn(const std::string& context, const std::vector<ShortcutRow>& rows) {
    const std::string_view keyboard = host::keyboardOf(context);
    std::set<std::string> spellings;
    for (const ShortcutRow& row : rows) {
        if (host::keyboardOf(row.action.item.context) == keyboard) {
            spellings.insert(oneSpelling(row.action.shortcut));
        }
    }
    catalogueOfAll().forEachHolder([&](std::string_view place, const std::string& shortcut, int) {
        if (host::keyboardOf(place) == keyboard) {
            spellings.insert(oneSpelling(shortcut));
        }
    });
    return spellings;
}

/// Returns the modifiers in an order that does not depend on that of the text; a text that is none stays as it is.
std::vector<std::string> modifiersIn(std::string_view text) {
    std::vector<std::string> modifiers;
    for (const std::string_view token : text.empty() ? std::vector<std::string_view>() : command::tokensOf(text)) {
        const std::string_view known = command::modifierNamed(token);
        modifiers.emplace_back(known.empty() ? token : known);
    }
    std::sort(modifiers.begin(), modifiers.end());
    return modifiers;
}

}  // namespace

const std::vector<std::string>& modifierSets() {
    static const std::vector<std::string> kSets = {"",    "Shift",     "Ctrl",     "Ctrl+Shift",
                                                   "Alt", "Alt+Shift", "Ctrl+Alt", "Ctrl+Alt+Shift"};
    return kSets;
}

std::optional<std::string> modifierSetNamed(std::string_view text) {
    const std::vector<std::string> wanted = modifiersIn(text);
    for (const std::string& set : modifierSets()) {
        if (modifiersIn(set) == wanted) {
            return set;
        }
    }
    return std::nullopt;
}

const std::vector<std::string>& keyNames() {
    static const std::vector<std::string> kNames = allKeyNames();
    return kNames;
}

std::vector<FreeKey> freeKeys(const std::string& context, const std::vector<ShortcutRow>& rows) {
    const std::set<std::string> taken = spellingsIn(context, rows);
    std::vector<FreeKey> keys;
    for (const std::string& modifiers : modifierSets()) {
        for (const std::string& name : keyNames()) {
            const std::string shortcut = modifiers.empty() ? name : modifiers + '+' + name;
            if (taken.count(oneSpelling(shortcut)) == 0) {
                keys.push_back({shortcut, modifiers, catalogueOfAll().idByShortcut(context, shortcut, true)});
            }
        }
    }
    return keys;
}

}  // namespace zelutil::shortcuts
