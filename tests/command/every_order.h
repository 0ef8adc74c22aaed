#ifndef ZELUTIL_TESTS_COMMAND_EVERY_ORDER_H
#define ZELUTIL_TESTS_COMMAND_EVERY_ORDER_H

#include <algorithm>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "actions/overwritable.h"
#include "command/shortcuts/wish_plan.h"

/// The slow twin of the planner: a search that tries every order of edits.
namespace zelutil::test {

using actions::ActionCatalogue;
using shortcuts::KeyWish;

/// The actions of a text after a user's text.
struct Loaded {
    Loaded(const std::string& shipped, const std::string& user) : catalogue(nobody) { catalogue.load(shipped, user); }

    actions::ObserverRegistry nobody;
    ActionCatalogue catalogue;
};

/// Returns whether queries say that the action has its wish: it shows the shortcut, and it or a child of it holds it.
inline bool hasItsWish(const ActionCatalogue& catalogue, const KeyWish& wish) {
    const UCPActionItem item = catalogue.find(wish.action)->item();
    const std::string& shown = item.shortcut.overwritten ? item.shortcut.userValue : item.shortcut.defaultValue;
    if (shown != wish.shortcut) {
        return false;
    }
    const int holder = catalogue.idByShortcut(item.context, wish.shortcut);
    return wish.shortcut.empty() || holder == wish.action ||
           (holder != 0 && catalogue.find(holder)->parentId == wish.action);
}

inline bool haveTheirWishes(const ActionCatalogue& catalogue, const std::vector<KeyWish>& wishes) {
    return std::all_of(wishes.begin(), wishes.end(), [&](const auto& wish) { return hasItsWish(catalogue, wish); });
}

/// Tries every order of edits of the actions with a wish, for which one of the wished shortcuts, none and an unused one
/// may be given.
class EveryOrder {
public:
    EveryOrder(std::string shipped, std::string user, const std::vector<KeyWish>& wishes)
        : shipped_(std::move(shipped)), user_(std::move(user)), wishes_(wishes) {
        std::set<std::string> shortcuts{"", "unused"};
        for (const KeyWish& wish : wishes) {
            shortcuts.insert(wish.shortcut);
        }
        for (const KeyWish& wish : wishes) {
            for (const std::string& shortcut : shortcuts) {
                steps_.push_back({wish.action, shortcut});
            }
        }
    }

    /// Returns the smallest number of edits that grant all wishes; nothing where none do.
    std::optional<std::size_t> fewest() {
        std::set<std::string> seen;
        std::deque<std::vector<KeyWish>> open{{}};
        while (!open.empty()) {
            const std::vector<KeyWish> edits = std::move(open.front());
            open.pop_front();
            Loaded loaded(shipped_, user_);
            for (const KeyWish& edit : edits) {
                loaded.catalogue.updateShortcut(edit.action, edit.shortcut);
            }
            if (!seen.insert(keyOf(loaded.catalogue)).second) {
                continue;
            }
            if (haveTheirWishes(loaded.catalogue, wishes_)) {
                return edits.size();
            }
            for (const KeyWish& step : steps_) {
                if (loaded.catalogue.find(step.action)->boundTo() != step.shortcut &&
                    loaded.catalogue.shortcutTakenBy(step.action, step.shortcut) == 0) {
                    open.push_back(edits);
                    open.back().push_back(step);
                }
            }
        }
        return std::nullopt;
    }

private:
    static std::string keyOf(const ActionCatalogue& catalogue) {
        std::string key;
        catalogue.forEachAction([&](int, const ActionCatalogue::Action& action) {
            key += actions::effectiveValue(action.shortcut) + "," + action.boundTo() + ";";
        });
        std::set<std::string> holders;
        catalogue.forEachHolder([&](std::string_view context, const std::string& shortcut, int id) {
            holders.insert(std::string(context) + "/" + shortcut + "=" + std::to_string(id));
        });
        for (const std::string& holder : holders) {
            key += holder + ";";
        }
        return key;
    }

    std::string shipped_;
    std::string user_;
    const std::vector<KeyWish>& wishes_;
    std::vector<KeyWish> steps_;
};

}  // namespace zelutil::test

#endif
