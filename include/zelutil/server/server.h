#ifndef ZELUTIL_SERVER_SERVER_H
#define ZELUTIL_SERVER_SERVER_H

#include <zelutil/export.h>

#include <map>
#include <set>

namespace ZelU::Marl {

/// Told of switches between applications. The host implements it, keeps the observer alive as long as the server may
/// notify it, which is to the end of the process, and deletes it through its own type.
class ZELUTIL_API IServerObserver {
public:
    /// `appId` has become the active application, or an editor switch to it was announced; `editorSwitch` is handed
    /// through from the call that notifies. Called on the thread of that call, before it returns.
    virtual void activeAppChanged(int appId, bool editorSwitch) = 0;

protected:
    ~IServerObserver() = default;
};

/// Numbers the host's editor applications, knows which is active and which was before, and tells observers of switches.
///
/// An editor is a pointer of the host's choice that is compared and stored, never followed; null is an editor like any
/// other. Ids are the order of registration and are never reused or released.
///
/// Nothing but `getInstance` may be called on several threads at once. No operation fails but for lack of memory; what
/// an observer or the editor finder throws passes through.
class ZELUTIL_API Server {
public:
    /// The one server, made at the first call, with the default id of that moment as active and as previous id. It
    /// is destroyed when the library goes: exit functions and destructors of static objects of a program that is linked
    /// with this library may still ask it.
    static Server& getInstance();

    /// Copies have every field, also when they are made of an rvalue, which stays as it is. They share the numbering:
    /// an id handed out by one server of the process is not handed out by another.
    Server(const Server&) = default;
    Server& operator=(const Server&) = default;

    /// Has `observer` notified from now on, for good. One that is attached already is not attached again; null is
    /// ignored. The server does not own it.
    void attach(IServerObserver* observer);

    /// Gives `editor` the next id; one that is registered keeps the id it has. The first id handed out in the process
    /// is the default id at the first call of this function: 0, unless the host set another one before.
    void registerApp(void* editor);

    /// The id of `editor`; the default id when it is not registered.
    int getApplicationId(void* editor);

    /// Returns the result of the editor finder where one is set, else the id made active last.
    int getActiveAppId();

    /// The id that was active before the last change, whatever the editor finder says.
    int getPreviousAppId() const;

    /// Makes `appId` active, whether or not an editor has it, and then notifies the observers, in ascending order of
    /// their addresses. When it is active already nothing changes and nobody is notified. Answers the id that was
    /// active before. When an observer throws, the ids have been changed and the observers after it are not called.
    int setActiveAppId(int appId, bool editorSwitch);

    /// The same for the id of `editor`.
    int setActiveAppId(void* editor, bool editorSwitch);

    /// Makes the id of `editor` active and then notifies the observers, in ascending order of their addresses, that an
    /// editor switch took place, also when the id was active already (the previous id then stays as it is). When an
    /// observer throws, the same holds as above.
    void notifyEditorSwitch(void* editor);

    /// Has `finder` answer `getActiveAppId` from now on; null removes it.
    void setActiveEditorFinder(int (*finder)());

    /// The id that unregistered editors are answered with; 0 until it is set.
    static int defaultAppId();

    /// Sets the default id. Ids handed out, the numbering once it has begun and the active and previous id of a server
    /// that exists stay as they are.
    static void setDefaultAppId(int appId);

private:
    /// The functions with C linkage.
    friend struct ServerCApi;

    Server();

    void makeActive(int appId);
    void notify(int appId, bool editorSwitch) const;

    static int m_defaultAppId;

    int (*m_finder)();
    std::set<IServerObserver*> m_observers;
    std::map<void*, int> m_applications;
    int m_previousAppId;
    int m_activeAppId;
};

}  // namespace ZelU::Marl

#endif
