// The rules for the shipped actions. Who holds a shortcut or stands in whose way is asked of the library's own
// catalogue.
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "actions/action_catalogue.h"
#include "actions/action_tables.h"
#include "actions/action_text.h"
#include "actions/overwritable.h"
#include "command/lint/action_forms.h"
#include "command/lint/checks.h"
#include "command/lint/section_forms.h"
#include "command/lint/shortcut_spelling.h"

namespace zelutil::lint {
namespace {

using actions::ActionCatalogue;
using actions::ActionDefinition;
using json::View;

const ObjectForm& definitionForm() {
    static const ObjectForm kForm{"an action",
                                  {{kId, Type::IntegerFrom1, Need::Required},
                                   {"parent_id", Type::IntegerFrom0},
                                   {"name", Type::Text},
                                   {"icon", Type::Text},
                                   {"context", Type::TextNotEmpty, Need::Required},
                                   {"command", Type::TextNotEmpty, Need::Required},
                                   {kShortcut, Type::Text},
                                   {kMenuFlag, Type::Truth}}};
    return kForm;
}

std::string actionText(int id) { return "action " + std::to_string(id); }

/// An action of which a load takes the definition, and where that stands.
using TakenAction = std::pair<ActionDefinition, View>;

/// Goes through the list beside a catalogue that has loaded it.
class ShippedActions {
public:
    ShippedActions(View list, Report& report, const ActionCatalogue& catalogue)
        : list_(list), report_(report), catalogue_(catalogue) {
        collect();
    }

    void run() {
        for (const auto& [definition, element] : taken_) {
            checkAction(definition, element, *catalogue_.find(definition.id));
        }
    }

    /// Returns them in the order of the list.
    const std::vector<TakenAction>& taken() const { return taken_; }

private:
    /// Takes those that a load takes, in the order of the list.
    void collect() {
        const std::size_t most = list_.elements().size();
        taken_.reserve(most);
        places_.reserve(most);
        for (const View element : list_.elements()) {
            const ActionDefinition definition = actions::definitionOf(element);
            const int id = definition.id;
            if (!definition.isUsable()) {
                continue;
            }
            const auto [first, isNew] = places_.try_emplace(id, taken_.size());
            if (isNew) {
                taken_.emplace_back(definition, element);
            } else {
                report_.add(Rule::RepeatedId, element.member(kId),
                            "The id " + std::to_string(id) + " is that of another action (" + lineOf(id) +
                                "), and the first one counts.");
            }
        }
    }

    std::string lineOf(int id) const {
        const auto place = places_.find(id);
        return place == places_.end() ? "not in the list" : report_.lineOf(taken_[place->second].second);
    }

    void checkAction(const ActionDefinition& definition, View element, const ActionCatalogue::Action& action) {
        checkCommand(definition, element, action.binding->action);
        checkShortcut(definition, element, action);
        checkParent(definition, element);
    }

    /// `first` is the first action with the command.
    void checkCommand(const ActionDefinition& definition, View element, int first) {
        if (first != definition.id) {
            report_.add(Rule::RepeatedCommand, element.member("command"),
                        "The command is that of " + actionText(first) + " in the same context (" + lineOf(first) +
                            "), and both count as bound to one shortcut.");
        }
    }

    /// Tells of the later one of two that are in each other's way.
    void checkShortcut(const ActionDefinition& definition, View element, const ActionCatalogue::Action& action) {
        if (definition.shortcut.empty()) {
            return;
        }
        const int holder = action.inTheWay(std::string(definition.shortcut));
        const auto place = places_.find(holder);
        if (holder != 0 && place != places_.end() && place->second < places_.at(definition.id)) {
            report_.add(Rule::KeyShippedTwice, element.member(kShortcut),
                        "The shortcut " + inQuotes(definition.shortcut) + " is that of " + actionText(holder) + " (" +
                            lineOf(holder) + "), in this context or in the one that is linked with it.");
        }
    }

    void checkParent(const ActionDefinition& definition, View element) {
        if (definition.parentId == 0) {
            return;
        }
        const View parent = element.member("parent_id");
        if (catalogue_.find(definition.parentId) == nullptr) {
            report_.add(Rule::MissingParent, parent, "There is no " + actionText(definition.parentId) + '.');
        } else {
            followParents(definition.id);
        }
        for (const std::string_view own : {kShortcut, kMenuFlag}) {
            if (element.member(own)) {
                report_.addAtKey(Rule::ChildProperty, element.member(own), own,
                                 "A load replaces it by that of the parent, " + actionText(definition.parentId) + '.');
            }
        }
    }

    /// Goes up from an action and reports the circle in which that ends, once for each circle: at the action where the
    /// way up closes.
    void followParents(int id) {
        std::set<int> way;
        int at = id;
        while (at > 0 && known_.count(at) == 0 && way.insert(at).second) {
            const ActionCatalogue::Action* const action = catalogue_.find(at);
            at = action == nullptr ? 0 : action->parentId;
        }
        if (way.count(at) != 0) {
            report_.add(Rule::CircleOfParents, taken_[places_.at(at)].second.member("parent_id"),
                        "The parents of " + actionText(at) + " lead back to it.");
        }
        known_.insert(way.begin(), way.end());
    }

    View list_;
    Report& report_;
    const ActionCatalogue& catalogue_;
    std::vector<TakenAction> taken_;
    std::unordered_map<int, std::size_t> places_;
    /// Holds the ids of the actions that were followed to the top already.
    std::unordered_set<int> known_;
};

/// Reports the children that a load gives their parent's shortcut although their context refuses it.
void checkHeirs(const std::vector<TakenAction>& taken, const ActionCatalogue& loaded, Report& report) {
    for (const auto& [definition, element] : taken) {
        if (definition.parentId == 0) {
            continue;
        }
        const ActionCatalogue::Action& child = *loaded.find(definition.id);
        if (child.parentId == 0) {
            continue;
        }
        const std::string& shortcut = actions::effectiveValue(child.shortcut);
        const int holder = child.boundTo() == shortcut ? 0 : loaded.shortcutTakenBy(child.id, shortcut);
        if (holder != 0) {
            report.add(Rule::RefusedToChild, element.member("parent_id"),
                       "Action " + std::to_string(child.id) + " takes over the shortcut " + inQuotes(shortcut) +
                           " of its parent, " + actionText(child.parentId) +
                           ", and does not get it, because it is that of " + actionText(holder) + '.');
        }
    }
}

}  // namespace

View shippedActions(View root) {
    View found = root.member(kActions) ? root : View();
    prefs::forEachSection(root, [&](const prefs::VisitedSection& visited) {
        if (!found && prefs::hasSubManager(visited.element) && isOfActions(visited.element)) {
            found = visited.element.member(prefs::kDefaultSettings);
        }
    });
    return found;
}

void checkActions(View object, Report& report) {
    if (!checkObject(object, actionListForm(), report)) {
        return;
    }
    const View list = object.member(kActions);
    std::vector<WrittenShortcut> shortcuts;
    for (const View element : list.elements()) {
        checkObject(element, definitionForm(), report);
        const View shortcut = element.member(kShortcut);
        shortcuts.push_back({shortcut.text().value_or(std::string_view()), shortcut});
    }
    checkSpelling(shortcuts, report);
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    // Before children take over from their parents everything is as it is shipped.
    ShippedActions shipped(list, report, catalogue);
    catalogue.loadAndEdit(object, [&](ActionCatalogue&) { shipped.run(); });
    checkHeirs(shipped.taken(), catalogue, report);
}

}  // namespace zelutil::lint
