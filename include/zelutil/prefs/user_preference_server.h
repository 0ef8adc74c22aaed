#ifndef ZELUTIL_PREFS_USER_PREFERENCE_SERVER_H
#define ZELUTIL_PREFS_USER_PREFERENCE_SERVER_H

#include <zelutil/export.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <map>
#include <set>
#include <string>

namespace ZelU {
namespace Marl {

/// A host's view on the settings: told which of them a save changed.
class ZELUTIL_API IUserPreferenceObserver {
public:
    IUserPreferenceObserver() = default;
    IUserPreferenceObserver(const IUserPreferenceObserver&) = default;
    IUserPreferenceObserver(IUserPreferenceObserver&&) = default;
    IUserPreferenceObserver& operator=(const IUserPreferenceObserver&) = default;
    IUserPreferenceObserver& operator=(IUserPreferenceObserver&&) = default;

    /// Full names of the changed settings, as the defaults file writes them; perhaps none. Valid during the call.
    virtual void onUserSettingsChanged(const std::set<std::string>& changedNames) = 0;

protected:
    ~IUserPreferenceObserver() = default;
};

/// A host's view on the sections of sub-managers: told which texts a save wrote.
class ZELUTIL_API IUserPreferenceSubManagerObserver {
public:
    IUserPreferenceSubManagerObserver() = default;
    IUserPreferenceSubManagerObserver(const IUserPreferenceSubManagerObserver&) = default;
    IUserPreferenceSubManagerObserver(IUserPreferenceSubManagerObserver&&) = default;
    IUserPreferenceSubManagerObserver& operator=(const IUserPreferenceSubManagerObserver&) = default;
    IUserPreferenceSubManagerObserver& operator=(IUserPreferenceSubManagerObserver&&) = default;

    /// The JSON texts by the sub-manager they are for; perhaps none. Valid during the call.
    virtual void onSubManagerSettingsChanged(
        const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) = 0;

protected:
    ~IUserPreferenceSubManagerObserver() = default;
};

/// Tells the hosts' observers what a save of the preferences changed.
///
/// Observers are called on the saving thread, inside the save, when the new values are in force. They are never owned:
/// a host detaches an observer before destroying it. An observer must not attach or detach one while it is being told,
/// and attaching, detaching and saving must not run on several threads at once.
class ZELUTIL_API UserPreferenceServer {
public:
    /// The server of this process, made at the first call, or by the preference manager before itself. It is destroyed
    /// when the library goes: exit functions and destructors of static objects of a program that is linked with this
    /// library may still ask it, and a save in one of them, while the manager lives, still notifies.
    static UserPreferenceServer& getInstance();

    /// Has the observer told from now on. Null is ignored, and so is one that is attached already.
    void attach(IUserPreferenceObserver* observer);
    /// The same for an observer of sub-managers.
    void attach(IUserPreferenceSubManagerObserver* observer);

    /// Ends that, however often it was attached. Null is ignored, and so is one that is not attached.
    void detach(IUserPreferenceObserver* observer);
    /// The same for an observer of sub-managers.
    void detach(IUserPreferenceSubManagerObserver* observer);

    /// Tells every observer of settings the names, and then every observer of sub-managers the texts, each kind in the
    /// order of addresses. Empty ones are told too.
    void notifyUserSettingsChanged(const std::set<std::string>& changedNames,
                                   const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts);

private:
    std::set<IUserPreferenceObserver*> observers_;
    std::set<IUserPreferenceSubManagerObserver*> subManagerObservers_;
};

}  // namespace Marl
}  // namespace ZelU

#endif
