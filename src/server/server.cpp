#include <zelutil/server/server.h>

#include "util/notification.h"
#include "util/process_wide.h"

namespace ZelU::Marl {

int Server::m_defaultAppId = 0;

Server& Server::getInstance() {
    static zelutil::ProcessWide<Server> server([] { return new Server; });
    return server.get();
}

Server::Server() : m_finder(nullptr), m_previousAppId(m_defaultAppId), m_activeAppId(m_defaultAppId) {}

void Server::attach(IServerObserver* observer) {
    if (observer != nullptr) {
        m_observers.insert(observer);
    }
}

// Kept deliberately: the first editor gets the very id that is returned for unknown editors. Part of the published
// behaviour; hosts may depend on it.
void Server::registerApp(void* editor) {
    // Unsigned, because a host may begin at the largest id: the smallest follows it.
    static unsigned nextAppId = static_cast<unsigned>(m_defaultAppId);
    if (m_applications.emplace(editor, static_cast<int>(nextAppId)).second) {
        ++nextAppId;
    }
}

int Server::getApplicationId(void* editor) {
    const auto application = m_applications.find(editor);
    return application == m_applications.end() ? m_defaultAppId : application->second;
}

int Server::getActiveAppId() { return m_finder != nullptr ? m_finder() : m_activeAppId; }

int Server::getPreviousAppId() const { return m_previousAppId; }

int Server::setActiveAppId(int appId, bool editorSwitch) {
    const int old = m_activeAppId;
    if (appId == old) {
        return old;
    }
    makeActive(appId);
    notify(appId, editorSwitch);
    return old;
}

int Server::setActiveAppId(void* editor, bool editorSwitch) {
    return setActiveAppId(getApplicationId(editor), editorSwitch);
}

// Kept deliberately: unlike setActiveAppId it notifies even when the id stays. Editors that are not registered share an
// id, so an unchanged id does not tell that the editor is the same.
void Server::notifyEditorSwitch(void* editor) {
    const int appId = getApplicationId(editor);
    if (appId != m_activeAppId) {
        makeActive(appId);
    }
    notify(appId, true);
}

void Server::setActiveEditorFinder(int (*finder)()) { m_finder = finder; }

int Server::defaultAppId() { return m_defaultAppId; }

void Server::setDefaultAppId(int appId) { m_defaultAppId = appId; }

void Server::makeActive(int appId) {
    m_previousAppId = m_activeAppId;
    m_activeAppId = appId;
}

void Server::notify(int appId, bool editorSwitch) const {
    const zelutil::Notification<Server> notification;
    for (IServerObserver* observer : m_observers) {
        observer->activeAppChanged(appId, editorSwitch);
    }
}

}  // namespace ZelU::Marl
