#include "actions/action_followers.h"

namespace zelutil::actions {

ActionCatalogue::Followers::Followers(ActionCatalogue& catalogue, Action& action, const std::string& shortcut)
    : catalogue_(catalogue), shortcut_(shortcut), edit_(++catalogue.edits_) {
    // Most actions have no children.
    if (!action.children.empty()) {
        survey(action);
    }
}

bool ActionCatalogue::Followers::mayFollow(Action& action) {
    if (edit_ != catalogue_.edits_ || !covers(action)) {
        survey(action);
    }
    return !members_[action.place].refused;
}

void ActionCatalogue::Followers::survey(Action& action) {
    // The places in actions and contexts are this survey's from now on.
    edit_ = ++catalogue_.edits_;
    collect(action);
    joinContexts();
    for (std::size_t place = 0; place < members_.size(); ++place) {
        lookAt(place);
    }
}

void ActionCatalogue::Followers::collect(Action& first) {
    members_.clear();
    members_.push_back({&first});
    for (std::size_t parent = 0; parent < members_.size(); ++parent) {
        for (Action* const child : members_[parent].action->children) {
            if (child == &first) {
                // In a circle of parents the first is also below the last, and what is refused to it is to them too.
                members_.front().parent = parent;
            } else {
                members_.push_back({child, parent});
            }
        }
    }
}

void ActionCatalogue::Followers::joinContexts() {
    for (const Member& member : members_) {
        Context& context = *member.action->context;
        context.place = kNone;
        if (context.linked != nullptr) {
            context.linked->place = kNone;
        }
    }
    for (std::size_t place = 0; place < members_.size(); ++place) {
        Member& member = members_[place];
        member.action->place = place;
        member.sameContext = std::exchange(member.action->context->place, place);
    }
}

bool ActionCatalogue::Followers::covers(const Action& action) const {
    return action.place < members_.size() && members_[action.place].action == &action;
}

/// Marks the action and all above it where somebody is in its way.
void ActionCatalogue::Followers::lookAt(std::size_t place) {
    if (members_[place].refused) {
        return;
    }
    ++catalogue_.work_.looks;
    if (members_[place].action->inTheWay(shortcut_) == 0) {
        return;
    }
    while (place != kNone && !members_[place].refused) {
        members_[place].refused = true;
        place = members_[place].parent;
    }
}

void ActionCatalogue::Followers::noteHolder(const Action& action) {
    if (!covers(action)) {
        return;
    }
    for (const Context* const context : {action.context, action.context->linked}) {
        if (context == nullptr) {
            continue;
        }
        for (std::size_t place = context->place; place != kNone; place = members_[place].sameContext) {
            if (place != action.place) {
                lookAt(place);
            }
        }
    }
}

}  // namespace zelutil::actions
