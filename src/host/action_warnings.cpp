#include "host/action_warnings.h"

#include "json/document.h"
#include "json/writer.h"

#include <utility>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

StartWarning warning(StartWarning::Kind kind, int action, std::string text) {
    StartWarning result;
    result.kind = kind;
    result.action = action;
    result.text = std::move(text);
    return result;
}

StartWarning withoutEffect(int action, std::string text) {
    return warning(StartWarning::Kind::EntryWithoutEffect, action, std::move(text));
}

std::string entryFor(int id) { return "The entry for action " + std::to_string(id); }

/// The preferences load the actions with such a text where the user's file has nothing for them.
bool isEmptyValue(json::View value) {
    const auto text = json::compactText(value);
    return text == "{}" || text == "[]";
}

/// Applies the user's text once more, to a catalogue of its own, and looks at what each element does.
class Retelling {
public:
    explicit Retelling(ActionCatalogue& catalogue) : catalogue_(catalogue) {}

    std::vector<StartWarning> run(std::string_view userText) {
        const json::Document document(userText);
        if (userText.empty() || isEmptyValue(document.root())) {
            return {};
        }
        const json::Elements roots = document.root().elements();
        const json::View list = roots.size() == 1 ? (*roots.begin()).member("actions") : json::View();
        if (!list.isArray()) {
            add(withoutEffect(
                0, "The list of the changed actions is not in the form that is read, and nothing of it is."));
            return std::move(warnings_);
        }
        std::size_t place = 0;
        for (const json::View element : list.elements()) {
            ++place;
            const int id = element.member("id").integer().value_or(0);
            if (id < 1) {
                add(withoutEffect(
                    0, "Element " + std::to_string(place) +
                           " of the list of the changed actions has no id; it and all after it are not read."));
                break;
            }
            apply(id, element);
        }
        return std::move(warnings_);
    }

private:
    void add(StartWarning warning) { warnings_.push_back(std::move(warning)); }

    void apply(int id, json::View element) {
        const json::View shortcut = element.member("shortcut");
        const json::View flag = element.member("rmb");
        if (catalogue_.find(id) == nullptr) {
            add(withoutEffect(id, entryFor(id) + " is for none of the shipped actions."));
            return;
        }
        if (!shortcut && !flag) {
            add(withoutEffect(id, entryFor(id) + " has neither a shortcut nor a menu flag."));
        }
        if (shortcut) {
            applyShortcut(id, shortcut);
        }
        if (flag) {
            if (!flag.isTrue() && json::compactText(flag) != "false") {
                add(withoutEffect(
                    id, entryFor(id) + " has a menu flag that is neither true nor false and counts as false."));
            }
            catalogue_.updateMenu(id, flag.isTrue());
        }
    }

    void applyShortcut(int id, json::View value) {
        if (!value.text()) {
            add(withoutEffect(id, entryFor(id) + " has a shortcut that is no text and counts as none."));
        }
        const std::string shortcut(value.text().value_or(std::string_view()));
        if (const int holder = catalogue_.shortcutTakenBy(id, shortcut)) {
            StartWarning refused = warning(StartWarning::Kind::ShortcutRefused, id,
                                           "Action " + std::to_string(id) + " did not get the shortcut \"" + shortcut +
                                               "\": action " + std::to_string(holder) + " has it.");
            refused.holder = holder;
            add(std::move(refused));
            return;
        }
        catalogue_.updateShortcut(id, shortcut);
    }

    ActionCatalogue& catalogue_;
    std::vector<StartWarning> warnings_;
};

}  // namespace

std::vector<StartWarning> actionWarnings(std::string_view defaultsText, std::string_view userText) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue again(nobody);
    std::vector<StartWarning> warnings;
    again.loadAndEdit(defaultsText, [&](ActionCatalogue& loading) { warnings = Retelling(loading).run(userText); });
    return warnings;
}

std::vector<StartWarning> actionWarnings(const ActionCatalogue& catalogue) {
    return actionWarnings(catalogue.texts().defaults, catalogue.texts().user);
}

}  // namespace zelutil::host
