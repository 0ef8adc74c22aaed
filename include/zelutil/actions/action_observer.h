#ifndef ZELUTIL_ACTIONS_ACTION_OBSERVER_H
#define ZELUTIL_ACTIONS_ACTION_OBSERVER_H

#include <zelutil/export.h>

#include <string>

/// A host's view on the actions, told of changes by `UCPActionManager`. It is called on the thread and inside the call
/// that makes the change, when the action's children, its own record and the look-ups already show the new state. It
/// may ask the manager anything, but must neither attach nor detach an observer meanwhile.
///
/// The manager never owns or deletes an observer; the host detaches it before destroying it.
class ZELUTIL_API IUCPActionObserver {
public:
    IUCPActionObserver() = default;
    IUCPActionObserver(const IUCPActionObserver&) = default;
    IUCPActionObserver(IUCPActionObserver&&) = default;
    IUCPActionObserver& operator=(const IUCPActionObserver&) = default;
    IUCPActionObserver& operator=(IUCPActionObserver&&) = default;

    /// The shortcut of the action changed. The texts live as long as the call; empty is no shortcut.
    virtual void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) = 0;

    /// The action entered or left the right-mouse-button menu.
    virtual void onRMBMenuChanged(int actionId, bool inMenu) = 0;

protected:
    ~IUCPActionObserver() = default;
};

#endif
