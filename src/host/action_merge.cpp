#include "host/action_merge.h"

#include "host/action_obstacles.h"

#include <algorithm>
#include <optional>

namespace zelutil::host {
namespace {

const ActionValues& valuesOf(const ActionValuesById& values, int id) {
    static const ActionValues kNone;
    const auto found = values.find(id);
    return found == values.end() ? kNone : found->second;
}

std::string textOf(bool inMenu) { return inMenu ? "in the menu" : "not in the menu"; }

Conflict conflictOf(int id, std::string ours, std::string theirs) {
    Conflict conflict;
    conflict.action = id;
    conflict.ours = std::move(ours);
    conflict.theirs = std::move(theirs);
    return conflict;
}

class Merge {
public:
    Merge(const ShippedActions& shipped, const ActionSides& sides) : shipped_(shipped), sides_(sides) {}

    MergedActions run() {
        for (const auto& [id, here] : sides_.here.values) {
            merged_.aim.values[id] = {shortcutOf(id), flagOf(id)};
        }
        if (!ours_.empty() && !theirs_.empty()) {
            settleClaims();
        }
        for (const auto& [id, here] : sides_.here.values) {
            if (merged_.aim.values[id] != here) {
                merged_.ofOthers.push_back(id);
            }
        }
        mergeHolders();
        return std::move(merged_);
    }

private:
    /// The keyboard and the shortcut.
    using Claim = std::pair<std::string, std::string>;

    /// The value of one property, and what is to be said about it.
    template <typename T, typename Text>
    T merged(int id, T ActionValues::*property, Text text, bool& isOurs, bool& isTheirs) {
        const T& here = valuesOf(sides_.here.values, id).*property;
        const T& file = valuesOf(sides_.file.values, id).*property;
        isOurs = sides_.touched.count(id) != 0 || here != valuesOf(sides_.hereBefore, id).*property;
        isTheirs = file != valuesOf(sides_.fileBefore, id).*property;
        if (!isOurs) {
            return isTheirs ? file : valuesOf(sides_.aimBefore, id).*property;
        }
        if (isTheirs && file != here) {
            merged_.conflicts.push_back(conflictOf(id, text(here), text(file)));
        }
        return here;
    }

    std::string shortcutOf(int id) {
        bool isOurs = false;
        bool isTheirs = false;
        std::string shortcut = merged(
            id, &ActionValues::shortcut, [](const std::string& text) { return text; }, isOurs, isTheirs);
        if (isOurs) {
            ours_.insert(id);
        } else if (shortcut != valuesOf(sides_.here.values, id).shortcut) {
            theirs_.insert(id);
        }
        return shortcut;
    }

    bool flagOf(int id) {
        bool isOurs = false;
        bool isTheirs = false;
        return merged(id, &ActionValues::inMenu, textOf, isOurs, isTheirs);
    }

    /// Linked contexts are one keyboard.
    Claim claimOf(const ShippedAction& action, const std::string& shortcut) const {
        return {std::min(action.context, linkedContext(action.context)), shortcut};
    }

    void settleClaims() {
        std::set<int> losers;
        for (const auto& [claim, ids] : claims()) {
            const auto winner = std::find_if(ids.begin(), ids.end(), [this](int id) { return ours_.count(id) != 0; });
            for (const int id : ids) {
                if (winner != ids.end() && theirs_.count(id) != 0 &&
                    shipped_.topAbove(id) != shipped_.topAbove(*winner)) {
                    losers.insert(shipped_.topAbove(id));
                }
            }
        }
        for (const int top : losers) {
            fallBack(top);
        }
    }

    std::map<Claim, std::vector<int>> claims() const {
        std::map<Claim, std::vector<int>> claims;
        for (const ShippedAction& action : shipped_.inOrder()) {
            const std::string& shortcut = valuesOf(merged_.aim.values, action.id).shortcut;
            if (!shortcut.empty()) {
                claims[claimOf(action, shortcut)].push_back(action.id);
            }
        }
        return claims;
    }

    /// Gives the action, and all below it that the other process changed, what the file had for them, or nothing.
    void fallBack(int top) {
        const std::vector<int> family = changedBelow(top);
        const auto claimed = claims();
        const bool free = std::all_of(family.begin(), family.end(), [&](int id) {
            const auto found = claimed.find(claimOf(*shipped_.find(id), valuesOf(sides_.fileBefore, id).shortcut));
            return found == claimed.end() || std::all_of(found->second.begin(), found->second.end(),
                                                         [&](int other) { return shipped_.topAbove(other) == top; });
        });
        for (const int id : family) {
            std::string& shortcut = merged_.aim.values[id].shortcut;
            const std::string theirs = shortcut;
            shortcut = free ? valuesOf(sides_.fileBefore, id).shortcut : std::string();
            merged_.conflicts.push_back(conflictOf(id, shortcut, theirs));
        }
    }

    std::vector<int> changedBelow(int top) const {
        std::vector<int> changed;
        std::copy_if(theirs_.begin(), theirs_.end(), std::back_inserter(changed),
                     [&](int id) { return shipped_.find(id) != nullptr && shipped_.topAbove(id) == top; });
        return changed;
    }

    /// Who holds a shortcut here keeps it when it keeps its value; else whoever holds it by the file.
    void mergeHolders() {
        if (merged_.ofOthers.empty()) {
            merged_.aim.holders = sides_.here.holders;
            return;
        }
        for (const ActionState* const side : {&sides_.here, &sides_.file}) {
            for (const auto& [place, id] : side->holders) {
                const std::string& shortcut = valuesOf(merged_.aim.values, id).shortcut;
                const bool kept = shortcut == valuesOf(side->values, id).shortcut;
                if (kept && (side == &sides_.here || !keepsHere(id))) {
                    merged_.aim.holders.emplace(place, id);
                }
            }
        }
        addUnheld();
    }

    bool keepsHere(int id) const {
        return valuesOf(merged_.aim.values, id).shortcut == valuesOf(sides_.here.values, id).shortcut;
    }

    /// An action that went back to what it had is on neither side.
    void addUnheld() {
        for (const ShippedAction& action : shipped_.inOrder()) {
            const std::string& shortcut = valuesOf(merged_.aim.values, action.id).shortcut;
            if (!shortcut.empty() && theirs_.count(action.id) != 0) {
                merged_.aim.holders.emplace(ActionState::Place(action.context, shortcut), action.id);
            }
        }
    }

    const ShippedActions& shipped_;
    const ActionSides& sides_;
    MergedActions merged_;
    /// The actions whose shortcut was changed here, and those that get another one from the file.
    std::set<int> ours_;
    std::set<int> theirs_;
};

}  // namespace

MergedActions mergeActions(const ShippedActions& shipped, const ActionSides& sides) {
    return Merge(shipped, sides).run();
}

}  // namespace zelutil::host
