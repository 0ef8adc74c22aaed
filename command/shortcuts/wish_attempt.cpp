#include "command/shortcuts/wish_attempt.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <numeric>

#include "actions/overwritable.h"

namespace zelutil::shortcuts {

using actions::ActionCatalogue;

bool isGranted(const ActionCatalogue& catalogue, const KeyWish& wish) {
    const ActionCatalogue::Action* const action = catalogue.find(wish.action);
    if (action == nullptr || actions::effectiveValue(action->shortcut) != wish.shortcut) {
        return false;
    }
    if (wish.shortcut.empty()) {
        return true;
    }
    const int holder = catalogue.idByShortcut(action->contextName(), wish.shortcut);
    return holder != 0 && action->sharesWith(holder, catalogue.find(holder)->parentId);
}

Attempt::Attempt(const host::ShippedActions& shipped, const std::string& userText, const std::vector<KeyWish>& wishes)
    : shipped_(shipped), catalogue_(nobody_), wishes_(wishes) {
    catalogue_.load(shipped.text(), userText);
}

std::vector<KeyWish> Attempt::open() const {
    std::vector<KeyWish> open;
    std::copy_if(wishes_.begin(), wishes_.end(), std::back_inserter(open),
                 [this](const KeyWish& wish) { return !isGranted(catalogue_, wish); });
    return open;
}

void Attempt::run(const std::set<int>& first) {
    std::for_each(first.begin(), first.end(), [this](int id) { edit({id, ""}); });
    // An edit can undo another one where a text ships a shortcut twice, so the rounds are counted.
    for (std::size_t round = 0; round <= wishes_.size(); ++round) {
        const std::size_t before = edits_.size();
        giveAll();
        if (edits_.size() == before) {
            return;
        }
    }
}

/// Asks for each wish once, and again when the family in whose way it was has had an edit.
void Attempt::giveAll() {
    std::deque<std::size_t> pending(wishes_.size());
    std::iota(pending.begin(), pending.end(), std::size_t{0});
    std::map<int, std::vector<std::size_t>> waitingFor;
    while (!pending.empty()) {
        const std::size_t place = pending.front();
        const KeyWish& wish = wishes_[place];
        pending.pop_front();
        if (isGranted(catalogue_, wish)) {
            continue;
        }
        if (const int holder = catalogue_.shortcutTakenBy(wish.action, wish.shortcut)) {
            waitingFor[shipped_.topAbove(holder)].push_back(place);
        } else if (edit(wish)) {
            const auto released = waitingFor.extract(wish.action);
            if (!released.empty()) {
                pending.insert(pending.end(), released.mapped().begin(), released.mapped().end());
            }
        }
    }
}

/// Returns whether that changed something.
bool Attempt::edit(const KeyWish& wish) {
    const std::uint64_t before = catalogue_.work().changes;
    catalogue_.updateShortcut(wish.action, wish.shortcut);
    const bool changed = catalogue_.work().changes != before;
    if (changed) {
        edits_.push_back(wish);
    }
    return changed;
}

}  // namespace zelutil::shortcuts
