#ifndef ZELUTIL_ACTIONS_ACTION_FOLLOWERS_H
#define ZELUTIL_ACTIONS_ACTION_FOLLOWERS_H

#include "actions/action_tables.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace zelutil::actions {

/// Tells which actions below a changed one may follow it to its new shortcut: those for which `shortcutTakenBy` finds
/// nobody in the way.
///
/// Asking that of every action down a chain of n would look at n * n / 2 actions. One survey looks at each once and
/// marks those that are refused; later a refusal can only be added, by an action that becomes the holder in one of the
/// contexts, so that just the actions of these contexts are looked at again. Where an observer has edited meanwhile,
/// none of this holds, and the next action asked for is surveyed anew with all that is below it.
class ActionCatalogue::Followers {
public:
    /// For a change of the action.
    Followers(ActionCatalogue& catalogue, Action& action, const std::string& shortcut);

    bool mayFollow(Action& action);

    /// Takes into account that the action has become the holder of the shortcut in its context.
    void noteHolder(const Action& action);

private:
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    struct Member {
        Action* action = nullptr;
        /// The places of the parent and of the member of the same context before this one.
        std::size_t parent = kNone;
        std::size_t sameContext = kNone;
        /// Tells whether somebody is in the way of this action or of one below it.
        bool refused = false;
    };

    void survey(Action& action);
    void collect(Action& first);
    void joinContexts();
    bool covers(const Action& action) const;
    void lookAt(std::size_t place);

    ActionCatalogue& catalogue_;
    const std::string& shortcut_;
    std::uint64_t edit_ = 0;
    /// The surveyed action and all below it, parents before their children.
    std::vector<Member> members_;
};

}  // namespace zelutil::actions

#endif
