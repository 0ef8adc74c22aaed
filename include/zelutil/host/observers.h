#ifndef ZELUTIL_HOST_OBSERVERS_H
#define ZELUTIL_HOST_OBSERVERS_H

#include <zelutil/actions/action_observer.h>
#include <zelutil/export.h>
#include <zelutil/host/callback.h>
#include <zelutil/prefs/user_preference_server.h>
#include <zelutil/server/server.h>

#include <map>
#include <memory>
#include <set>
#include <string>

/// Observers that last as long as an object of the host's, and that may attach, detach and save while they are told.
///
/// The library's servers know one observer of this module each, for good; it tells those of the hosts. They are told in
/// the order in which they were attached. One that is detached while others are told is not told any more; one that is
/// attached meanwhile, also by an observer that is attached to the server itself, is told from the next time on. What
/// an observer throws ends the round and passes through. A preference server that a host assigns an earlier copy of it
/// may have forgotten the observer of this module: it knows it again from the next subscription on, or the next save or
/// reset of `zelutil::host`.
///
/// A notification may come from inside another one, when an observer saves or changes a shortcut, say. Beyond
/// `kMaximumNotificationDepth` of them inside each other nobody is told: what changes then is changed all the same. To
/// bring observers to an end that change something at each notification, from that moment on nothing that is nested is
/// told until the outermost notification has ended.
///
/// Where an edit changes several actions, as the shortcut of a parent and its children, each notification comes when
/// its action has changed and the next ones have not. What an observer saves then is in force at that moment; the next
/// save writes the rest.
///
/// As the servers themselves, these are for one thread at a time.
namespace zelutil::host {

/// The number of notifications that may be in progress inside each other, of all servers together.
inline constexpr int kMaximumNotificationDepth = 16;

/// Keeps an observer attached for its own lifetime. It may be moved, destroyed on any occasion, and may outlive the
/// server. An empty one does nothing.
class ZELUTIL_API Subscription {
public:
    /// Makes an empty one.
    Subscription() noexcept;
    /// Takes over what the other keeps attached; the other is empty afterwards.
    Subscription(Subscription&& other) noexcept;
    /// Detaches its own observer and takes over what the other keeps attached.
    Subscription& operator=(Subscription&& other) noexcept;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    /// Detaches the observer.
    ~Subscription();

    /// Detaches the observer now.
    void cancel() noexcept;

    /// Returns whether an observer is attached.
    explicit operator bool() const noexcept;

    class Link;  ///< Is opaque to hosts.
    /// Makes one of what the functions of this header attach; not for hosts, who cannot make a link.
    explicit Subscription(std::unique_ptr<Link> link) noexcept;

private:
    std::unique_ptr<Link> link_;
};

// Observers of the library's own interfaces. They are not owned and must live as long as the subscription.

/// Observes the settings that a save or a reset changes.
[[nodiscard]] ZELUTIL_API Subscription observe(ZelU::Marl::IUserPreferenceObserver& observer);
/// Observes the texts of sub-managers that a save hands over.
[[nodiscard]] ZELUTIL_API Subscription observe(ZelU::Marl::IUserPreferenceSubManagerObserver& observer);
/// Observes all actions.
[[nodiscard]] ZELUTIL_API Subscription observe(IUCPActionObserver& observer);
/// Observes one action; the subscription is empty for an id that no action has now.
[[nodiscard]] ZELUTIL_API Subscription observe(int actionId, IUCPActionObserver& observer);
/// Observes the application server, which by itself has no way to detach an observer.
[[nodiscard]] ZELUTIL_API Subscription observe(ZelU::Marl::IServerObserver& observer);

// Functions. An empty one gives an empty subscription.

/// Has `call` called with the full names of the settings that a save or a reset changed, when there are any.
[[nodiscard]] ZELUTIL_API Subscription onSettingsChanged(Callback<void(const std::set<std::string>& fullNames)> call);

/// Has `call` called with the new value of the setting of that name, bare or in full, in any case, when it is another
/// one than at the last call, or than at the subscription. The subscription is empty for an unknown name.
[[nodiscard]] ZELUTIL_API Subscription onSettingChanged(const std::string& name,
                                                        Callback<void(const std::string& value)> call);

/// Has `call` called with the full names of changed settings of the section with that attribute path and of the
/// sections inside it, when there are any: "display" stands for the names that begin with "display::". The path need
/// not be known; the case of its letters matters.
[[nodiscard]] ZELUTIL_API Subscription onSectionChanged(const std::string& attributePath,
                                                        Callback<void(const std::set<std::string>& fullNames)> call);

/// Has `call` called when the shortcut of an action changes.
[[nodiscard]] ZELUTIL_API Subscription
onShortcutChanged(Callback<void(int actionId, const std::string& before, const std::string& now)> call);

/// Has `call` called when an action enters or leaves the right-mouse-button menu.
[[nodiscard]] ZELUTIL_API Subscription onMenuChanged(Callback<void(int actionId, bool inMenu)> call);

/// Has `call` called when an application becomes active or an editor switch is announced.
[[nodiscard]] ZELUTIL_API Subscription onActiveApplicationChanged(Callback<void(int appId, bool editorSwitch)> call);

}  // namespace zelutil::host

#endif
