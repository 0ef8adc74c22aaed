#include "host/action_merge.h"

#include "host/action_obstacles.h"

#include <algorithm>
#include <optional>

namespace zelutil::host {
namespace {

const ActionValues& valuesIn(const ActionValuesById& values, int id) {
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
        findSettled();
        merged_.known.shortcutChangedHere = std::move(ours_);
        return std::move(merged_);
    }

private:
    /// The keyboard and the shortcut.
    using Claim = std::pair<std::string, std::string>;

    /// The value of one property, and what is to be said about it.
    template <typename T, typename Text>
    T merged(int id, T ActionValues::*property, Text text, bool& isOurs, bool& isTheirs) {
        const T& here = valuesOf(sides_.here, id).*property;
        const T& file = valuesOf(sides_.file, id).*property;
        isOurs = sides_.touched.count(id) != 0 || here != valuesIn(sides_.hereBefore, id).*property;
        isTheirs = file != valuesOf(sides_.fileBefore, id).*property;
        if (!isOurs) {
            return isTheirs ? file : valuesOf(sides_.aimBefore, id).*property;
        }
        merged_.known.changedHere.insert(id);
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
        } else if (shortcut != valuesOf(sides_.here, id).shortcut) {
            theirs_.insert(id);
        }
        if (!isOurs && isTheirs) {
            fromFile_.insert(id);
        }
        return shortcut;
    }

    bool flagOf(int id) {
        bool isOurs = false;
        bool isTheirs = false;
        return merged(id, &ActionValues::inMenu, textOf, isOurs, isTheirs);
    }

    Claim claimOf(const ShippedAction& action, const std::string& shortcut) const {
        return {std::string(keyboardOf(action.context)), shortcut};
    }

    void settleClaims() {
        makeClaims();
        std::set<int> losers;
        for (const auto& [claim, ids] : claims_) {
            const auto winner = std::find_if(ids.begin(), ids.end(), [this](int id) { return ours_.count(id) != 0; });
            for (const int id : ids) {
                if (winner != ids.end() && theirs_.count(id) != 0 &&
                    shipped_.topAbove(id) != shipped_.topAbove(*winner)) {
                    losers.insert(shipped_.topAbove(id));
                }
            }
        }
        std::map<int, std::vector<int>> families;
        for (const int id : theirs_) {
            const int top = shipped_.topAbove(id);
            if (shipped_.find(id) != nullptr && losers.count(top) != 0) {
                families[top].push_back(id);
            }
        }
        for (const auto& [top, family] : families) {
            fallBack(top, family);
        }
    }

    void makeClaims() {
        for (const ShippedAction& action : shipped_.inOrder()) {
            const std::string& shortcut = valuesOf(merged_.aim, action.id).shortcut;
            if (!shortcut.empty()) {
                claims_[claimOf(action, shortcut)].push_back(action.id);
            }
        }
    }

    void claim(int id, const std::string& shortcut) {
        const ShippedAction& action = *shipped_.find(id);
        std::string& claimed = merged_.aim.values[id].shortcut;
        if (!claimed.empty()) {
            std::vector<int>& ids = claims_[claimOf(action, claimed)];
            ids.erase(std::remove(ids.begin(), ids.end(), id), ids.end());
        }
        claimed = shortcut;
        if (!claimed.empty()) {
            claims_[claimOf(action, claimed)].push_back(id);
        }
    }

    /// Whether nobody outside the family has one of the shortcuts that the state has for the family.
    bool isFree(int top, const std::vector<int>& family, const ActionState& state) const {
        return std::all_of(family.begin(), family.end(), [&](int id) {
            const auto found = claims_.find(claimOf(*shipped_.find(id), valuesOf(state, id).shortcut));
            return found == claims_.end() || std::all_of(found->second.begin(), found->second.end(),
                                                         [&](int other) { return shipped_.topAbove(other) == top; });
        });
    }

    /// Gives the actions, those below one that the other process changed, what they can go back to, or nothing.
    void fallBack(int top, const std::vector<int>& family) {
        const ActionState* free = nullptr;
        for (const ActionState* const state : {&sides_.fileBefore, &sides_.here, &shipped_.loaded()}) {
            if (free == nullptr && isFree(top, family, *state)) {
                free = state;
            }
        }
        for (const int id : family) {
            std::string theirs = valuesOf(merged_.aim, id).shortcut;
            claim(id, free == nullptr ? std::string() : valuesOf(*free, id).shortcut);
            merged_.conflicts.push_back(conflictOf(id, valuesOf(merged_.aim, id).shortcut, std::move(theirs)));
        }
    }

    /// An action that has what it has here holds it as here. Else it holds it as in the file, where that was changed,
    /// or as it was to hold it before.
    void mergeHolders() {
        if (merged_.ofOthers.empty()) {
            merged_.aim.holders = sides_.here.holders;
            return;
        }
        findChangedHolders();
        addHolders(sides_.here, [this](int id) { return keepsHere(id); });
        addHolders(sides_.file, [this](int id) { return !keepsHere(id) && fromFile_.count(id) != 0; });
        addHolders(sides_.aimBefore, [this](int id) { return !keepsHere(id) && fromFile_.count(id) == 0; });
        addUnheld();
    }

    /// Collects the actions that hold a shortcut by one text of the file and not by the other, which happens where two
    /// actions are shipped with one shortcut.
    void findChangedHolders() {
        for (const ActionState* const side : {&sides_.file, &sides_.fileBefore}) {
            const ActionState& other = side == &sides_.file ? sides_.fileBefore : sides_.file;
            for (const auto& [place, id] : side->holders) {
                const auto holder = other.holders.find(place);
                if (holder == other.holders.end() || holder->second != id) {
                    fromFile_.insert(id);
                }
            }
        }
    }

    template <typename Counts>
    void addHolders(const ActionState& side, Counts counts) {
        for (const auto& [place, id] : side.holders) {
            if (valuesOf(merged_.aim, id).shortcut == valuesOf(side, id).shortcut && counts(id)) {
                merged_.aim.holders.emplace(place, id);
            }
        }
    }

    bool keepsHere(int id) const { return valuesOf(merged_.aim, id).shortcut == valuesOf(sides_.here, id).shortcut; }

    /// An action that went back to what it had is on neither side.
    void addUnheld() {
        for (const ShippedAction& action : shipped_.inOrder()) {
            const std::string& shortcut = valuesOf(merged_.aim, action.id).shortcut;
            if (!shortcut.empty() && theirs_.count(action.id) != 0 && !keepsHere(action.id)) {
                merged_.aim.holders.emplace(ActionState::Place(action.context, shortcut), action.id);
            }
        }
    }

    void findSettled() {
        for (const auto& [id, values] : merged_.aim.values) {
            merged_.known.settled.insert(merged_.known.settled.end(), id);
        }
        for (const ActionState* const side : {&sides_.here, &sides_.file}) {
            for (const auto& different : {differentKeys(merged_.aim, *side), differentFlags(merged_.aim, *side)}) {
                for (const int id : different) {
                    merged_.known.settled.erase(id);
                }
            }
        }
    }

    const ShippedActions& shipped_;
    const ActionSides& sides_;
    MergedActions merged_;
    /// The actions whose shortcut was changed here, those that get another one from the file, and those for which the
    /// file was changed and this process did nothing.
    std::set<int> ours_;
    std::set<int> theirs_;
    std::set<int> fromFile_;
    std::map<Claim, std::vector<int>> claims_;
};

}  // namespace

MergedActions mergeActions(const ShippedActions& shipped, const ActionSides& sides) {
    return Merge(shipped, sides).run();
}

}  // namespace zelutil::host
