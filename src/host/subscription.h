#ifndef ZELUTIL_HOST_SUBSCRIPTION_H
#define ZELUTIL_HOST_SUBSCRIPTION_H

#include <zelutil/actions/action_observer.h>
#include <zelutil/host/observers.h>
#include <zelutil/prefs/user_preference_server.h>
#include <zelutil/server/server.h>

#include <memory>

namespace zelutil::host {

/// Keeps an observer attached until it is destroyed.
class Subscription::Link {
public:
    Link() = default;
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    virtual ~Link() = default;
};

// Attach an observer, which is kept while it is attached or being told, to the one of this module that its server
// knows.

Subscription subscribe(std::shared_ptr<ZelU::Marl::IUserPreferenceObserver> observer);
Subscription subscribe(std::shared_ptr<ZelU::Marl::IUserPreferenceSubManagerObserver> observer);
Subscription subscribe(std::shared_ptr<IUCPActionObserver> observer);
Subscription subscribe(std::shared_ptr<ZelU::Marl::IServerObserver> observer);

/// Makes the preference server know the observers that are attached. A host may have assigned it a copy that was made
/// before it knew them.
void attachToPreferencesAgain();

}  // namespace zelutil::host

#endif
