#ifndef ZELUTIL_ACTIONS_OBSERVER_REGISTRY_H
#define ZELUTIL_ACTIONS_OBSERVER_REGISTRY_H

#include <zelutil/actions/action_observer.h>

#include <map>
#include <set>
#include <string>

namespace zelutil::actions {

/// Knows who is told of what. Observers are not owned.
class ObserverRegistry {
public:
    /// The key of those that are told of every action; no action has it.
    static constexpr int kAllActions = 0;

    /// `observer` is not null. A pair that is there stays there once.
    void attach(int key, IUCPActionObserver* observer);

    /// From all its keys.
    void detach(IUCPActionObserver* observer);

    /// Those of the action first, then those of all actions, each group in the order of their addresses.
    void notifyShortcut(int id, const std::string& oldShortcut, const std::string& newShortcut) const;
    void notifyMenu(int id, bool inMenu) const;

private:
    template <typename Call>
    void notify(int id, Call call) const;

    std::map<int, std::set<IUCPActionObserver*>> observersByKey_;
    std::map<IUCPActionObserver*, std::set<int>> keysByObserver_;
};

}  // namespace zelutil::actions

#endif
