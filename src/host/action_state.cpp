#include "host/action_state.h"

#include "actions/overwritable.h"

namespace zelutil::host {
namespace {

/// Calls `call` with the value of both maps, or null, for each key of either.
template <typename Map, typename Call>
void forEachPair(const Map& first, const Map& second, Call call) {
    auto left = first.begin();
    auto right = second.begin();
    while (left != first.end() || right != second.end()) {
        const bool noLeft = left == first.end() || (right != second.end() && right->first < left->first);
        const bool noRight = !noLeft && (right == second.end() || left->first < right->first);
        call(noLeft ? right->first : left->first, noLeft ? nullptr : &left->second, noRight ? nullptr : &right->second);
        if (!noLeft) {
            ++left;
        }
        if (!noRight) {
            ++right;
        }
    }
}

const ActionValues kNothing;

}  // namespace

ActionState stateOf(const actions::ActionCatalogue& catalogue) {
    ActionState state;
    catalogue.forEachAction([&](int id, const actions::ActionCatalogue::Action& action) {
        state.values.emplace_hint(
            state.values.end(), id,
            ActionValues{actions::effectiveValue(action.shortcut), actions::effectiveValue(action.rmb)});
    });
    catalogue.forEachHolder([&](std::string_view context, const std::string& shortcut, int id) {
        state.holders.emplace(ActionState::Place(context, shortcut), id);
    });
    return state;
}

const ActionValues& valuesOf(const ActionState& state, int id) {
    const auto found = state.values.find(id);
    return found == state.values.end() ? kNothing : found->second;
}

std::set<int> differentKeys(const ActionState& aim, const ActionState& other) {
    std::set<int> different;
    forEachPair(aim.values, other.values, [&](int id, const ActionValues* left, const ActionValues* right) {
        if ((left ? *left : kNothing).shortcut != (right ? *right : kNothing).shortcut) {
            different.insert(id);
        }
    });
    forEachPair(aim.holders, other.holders, [&](const ActionState::Place&, const int* left, const int* right) {
        if (left == nullptr || right == nullptr || *left != *right) {
            different.insert(left == nullptr ? *right : *left);
            different.insert(right == nullptr ? *left : *right);
        }
    });
    return different;
}

std::set<int> differentFlags(const ActionState& aim, const ActionState& other) {
    std::set<int> different;
    forEachPair(aim.values, other.values, [&](int id, const ActionValues* left, const ActionValues* right) {
        if ((left ? *left : kNothing).inMenu != (right ? *right : kNothing).inMenu) {
            different.insert(id);
        }
    });
    return different;
}

}  // namespace zelutil::host
