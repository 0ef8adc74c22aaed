#include "host/subscription.h"

#include <zelutil/actions/action_manager.h>

#include <type_traits>
#include <utility>

#include "actions/observer_registry.h"
#include "host/nesting.h"
#include "host/observer_list.h"
#include "util/notification.h"

namespace zelutil::host {
namespace {

using ZelU::Marl::IServerObserver;
using ZelU::Marl::IUserPreferenceObserver;
using ZelU::Marl::IUserPreferenceSubManagerObserver;
using ZelU::Marl::Server;
using ZelU::Marl::UserPreferenceServer;

/// Those of all servers count together, for observers may cause one by way of another.
Nesting notifications(kMaximumNotificationDepth);

template <typename Observer>
ObserverList<Observer>& observers() {
    static ObserverList<Observer> list;
    static_assert(std::is_trivially_destructible_v<ObserverList<Observer>>);
    return list;
}

/// The notifications in which the observers of each kind are told.
template <typename Observer>
struct Told;
template <>
struct Told<IUserPreferenceObserver> : Notification<UserPreferenceServer> {};
template <>
struct Told<IUserPreferenceSubManagerObserver> : Notification<UserPreferenceServer> {};
template <>
struct Told<IUCPActionObserver> : Notification<actions::ObserverRegistry> {};
template <>
struct Told<IServerObserver> : Notification<Server> {};

template <typename Observer, typename Call>
void tell(Call call) {
    const Nesting::Call notification(notifications);
    if (notification.admitted()) {
        observers<Observer>().tell(Told<Observer>::current(), call);
    }
}

// The observers that the servers know. A server, and each copy of one, may tell them as long as the library is there,
// and the application server never forgets one. So they are no objects with an end.

class SettingsRelay final : public IUserPreferenceObserver {
public:
    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        tell<IUserPreferenceObserver>([&](auto& observer) { observer.onUserSettingsChanged(changedNames); });
    }
};

class SubManagerRelay final : public IUserPreferenceSubManagerObserver {
public:
    void onSubManagerSettingsChanged(
        const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) override {
        tell<IUserPreferenceSubManagerObserver>(
            [&](auto& observer) { observer.onSubManagerSettingsChanged(changedTexts); });
    }
};

class ActionRelay final : public IUCPActionObserver {
public:
    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        tell<IUCPActionObserver>(
            [&](auto& observer) { observer.onShortcutChanged(actionId, oldShortcut, newShortcut); });
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        tell<IUCPActionObserver>([&](auto& observer) { observer.onRMBMenuChanged(actionId, inMenu); });
    }
};

class ServerRelay final : public IServerObserver {
public:
    void activeAppChanged(int appId, bool editorSwitch) override {
        tell<IServerObserver>([&](auto& observer) { observer.activeAppChanged(appId, editorSwitch); });
    }
};

template <typename Relay>
Relay* relay() {
    static Relay only;
    static_assert(std::is_trivially_destructible_v<Relay>);
    return &only;
}

template <typename Observer>
class ListLink final : public Subscription::Link {
public:
    explicit ListLink(std::shared_ptr<Observer> observer) noexcept
        : entry_(observers<Observer>(), std::move(observer), Told<Observer>::lastBegun()) {}

private:
    typename ObserverList<Observer>::Entry entry_;
};

template <typename Observer>
Subscription subscriptionOf(std::shared_ptr<Observer> observer) {
    return Subscription(std::make_unique<ListLink<Observer>>(std::move(observer)));
}

template <typename Observer, typename Relay>
void attachWhereNeeded() {
    if (!observers<Observer>().empty()) {
        UserPreferenceServer::getInstance().attach(relay<Relay>());
    }
}

}  // namespace

void attachToPreferencesAgain() {
    attachWhereNeeded<IUserPreferenceObserver, SettingsRelay>();
    attachWhereNeeded<IUserPreferenceSubManagerObserver, SubManagerRelay>();
}

// Each attaches the relay anew, which changes nothing where it is attached: a server that was made again at the end of
// the process does not know it, and neither may one that a host assigned to.

Subscription subscribe(std::shared_ptr<IUserPreferenceObserver> observer) {
    UserPreferenceServer::getInstance().attach(relay<SettingsRelay>());
    return subscriptionOf(std::move(observer));
}

Subscription subscribe(std::shared_ptr<IUserPreferenceSubManagerObserver> observer) {
    UserPreferenceServer::getInstance().attach(relay<SubManagerRelay>());
    return subscriptionOf(std::move(observer));
}

Subscription subscribe(std::shared_ptr<IUCPActionObserver> observer) {
    UCPActionManager::instance().attachObserver(relay<ActionRelay>());
    return subscriptionOf(std::move(observer));
}

Subscription subscribe(std::shared_ptr<IServerObserver> observer) {
    Server::getInstance().attach(relay<ServerRelay>());
    return subscriptionOf(std::move(observer));
}

Subscription::Subscription() noexcept = default;
Subscription::Subscription(Subscription&& other) noexcept = default;
Subscription& Subscription::operator=(Subscription&& other) noexcept = default;
Subscription::Subscription(std::unique_ptr<Link> link) noexcept : link_(std::move(link)) {}
Subscription::~Subscription() = default;

void Subscription::cancel() noexcept { link_.reset(); }

Subscription::operator bool() const noexcept { return link_ != nullptr; }

}  // namespace zelutil::host
