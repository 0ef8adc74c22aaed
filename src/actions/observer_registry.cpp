#include "actions/observer_registry.h"

#include "util/notification.h"

namespace zelutil::actions {

void ObserverRegistry::attach(int key, IUCPActionObserver* observer) {
    // In this order a lack of memory leaves no observer behind that detaching would not find.
    keysByObserver_[observer].insert(key);
    observersByKey_[key].insert(observer);
}

void ObserverRegistry::detach(IUCPActionObserver* observer) {
    const auto found = keysByObserver_.find(observer);
    if (found == keysByObserver_.end()) {
        return;
    }
    for (const int key : found->second) {
        observersByKey_[key].erase(observer);
    }
    keysByObserver_.erase(found);
}

template <typename Call>
void ObserverRegistry::notify(int id, Call call) const {
    const Notification<ObserverRegistry> notification;
    for (const int key : {id, kAllActions}) {
        const auto found = observersByKey_.find(key);
        if (found == observersByKey_.end()) {
            continue;
        }
        for (IUCPActionObserver* const observer : found->second) {
            call(*observer);
        }
    }
}

void ObserverRegistry::notifyShortcut(int id, const std::string& oldShortcut, const std::string& newShortcut) const {
    notify(id, [&](IUCPActionObserver& observer) { observer.onShortcutChanged(id, oldShortcut, newShortcut); });
}

void ObserverRegistry::notifyMenu(int id, bool inMenu) const {
    notify(id, [&](IUCPActionObserver& observer) { observer.onRMBMenuChanged(id, inMenu); });
}

}  // namespace zelutil::actions
