#include "command/shortcuts/named_wishes.h"

#include <set>
#include <utility>

#include "command/nearest_names.h"
#include "command/shortcuts/shortcut_changes.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;

/// Returns whether the action has the context and the command that the wish names, as far as it names them.
bool isMeant(const Wish& wish, const ActionCatalogue::Action& action) {
    return (wish.context.empty() || wish.context == action.contextName()) &&
           (wish.command.empty() || wish.command == action.command);
}

std::string described(const ActionCatalogue::Action& action) {
    return "\"" + std::string(action.contextName()) + " " + std::string(action.command) + "\"";
}

class Naming {
public:
    explicit Naming(const ActionCatalogue& catalogue) : catalogue_(catalogue) {}

    NamedWishes name(const WishText& text) {
        for (const WishFault& fault : text.faults) {
            result_.skipped.push_back({fault.place, 0, fault.text});
        }
        for (const Wish& wish : text.wishes) {
            add(wish);
        }
        return std::move(result_);
    }

private:
    void add(const Wish& wish) {
        const int id = idOf(wish);
        if (id == 0) {
            result_.skipped.push_back({wish.place, 0, whyUnknown(wish), meantBy(wish)});
            return;
        }
        if (catalogue_.find(id)->parentId > 0) {
            result_.skipped.push_back({wish.place, id, whyNotForChild(id)});
            return;
        }
        if (!result_.places.emplace(id, wish.place).second) {
            result_.skipped.push_back(
                {wish.place, id, "Action " + std::to_string(id) + " has a wish before this one."});
            return;
        }
        if (wish.shortcut) {
            result_.keys.push_back({id, *wish.shortcut});
        }
        if (wish.inMenu) {
            result_.menuFlags[id] = *wish.inMenu;
        }
    }

    /// Says whom the wish is to be for instead, or that there is nobody.
    std::string whyNotForChild(int id) const {
        const int parent = catalogue_.find(id)->parentId;
        const std::string takesOver = "Action " + std::to_string(id) + " takes over what its parent, action " +
                                      std::to_string(parent) + ", has. ";
        std::set<int> seen{id};
        int top = parent;
        while (find(top) != nullptr && find(top)->parentId > 0 && seen.insert(top).second) {
            top = find(top)->parentId;
        }
        if (seen.count(top) != 0) {
            return takesOver + "Its parents go round in a circle, so nobody can be given one for it.";
        }
        if (find(top) == nullptr) {
            return takesOver + "No shipped text defines action " + std::to_string(top) +
                   ", so nobody can be given one for it.";
        }
        return takesOver + "Wish it for " +
               (top == parent ? "that one." : "the topmost one, action " + std::to_string(top) + ".");
    }

    /// Returns the action that no stand-in is, or null.
    const ActionCatalogue::Action* find(int id) const {
        const ActionCatalogue::Action* const action = id == 0 ? nullptr : catalogue_.find(id);
        return action == nullptr || action->id == 0 ? nullptr : action;
    }

    int idOf(const Wish& wish) const {
        const ActionCatalogue::Action* const action = find(wish.id);
        if (action != nullptr && isMeant(wish, *action)) {
            return wish.id;
        }
        return wish.context.empty() || wish.command.empty() ? 0 : catalogue_.idByCommand(wish.context, wish.command);
    }

    std::string whyUnknown(const Wish& wish) const {
        const std::string named = "\"" + wish.context + " " + wish.command + "\"";
        if (const ActionCatalogue::Action* const other = find(wish.id)) {
            return "Action " + std::to_string(wish.id) + " is " + described(*other) + " here, and not " + named + ".";
        }
        return wish.context.empty() || wish.command.empty() ? "There is no action " + std::to_string(wish.id) + "."
                                                            : "There is no action " + named + ".";
    }

    /// Asks whether an action of a name like that is meant. People are told the first wishes that are left out, so
    /// that nothing is looked for for the others, which may be as many as there are names.
    std::string meantBy(const Wish& wish) {
        if (wish.context.empty() || wish.command.empty()) {
            return "\"zelutil shortcuts\" shows all.";
        }
        if (asked_++ >= kMostTold) {
            return {};
        }
        const std::string question =
            command::questionAbout(command::nearestNames(wish.context + ' ' + wish.command, names()));
        return question.empty() ? "\"zelutil shortcuts\" shows all." : question;
    }

    /// Returns the names of the actions that may be wished something for.
    const std::vector<std::string>& names() {
        if (names_.empty()) {
            catalogue_.forEachAction([&](int, const ActionCatalogue::Action& action) {
                if (action.id != 0 && action.parentId == 0) {
                    names_.push_back(std::string(action.contextName()) + ' ' + std::string(action.command));
                }
            });
        }
        return names_;
    }

    const ActionCatalogue& catalogue_;
    std::vector<std::string> names_;
    std::size_t asked_ = 0;
    NamedWishes result_;
};

}  // namespace

NamedWishes nameWishes(const WishText& text, const ActionCatalogue& catalogue) { return Naming(catalogue).name(text); }

std::string placeIn(const WishText& text, int place) {
    return (text.isLines ? "line " : "element ") + std::to_string(place);
}

}  // namespace zelutil::shortcuts
