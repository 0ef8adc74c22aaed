#include <zelutil/c_api.h>
#include <zelutil/server/server.h>

#include "platform/discard_exceptions.h"

namespace ZelU::Marl {

namespace platform = zelutil::platform;

/// Observers and the editor finder may throw, the callers of these functions cannot catch.
struct ServerCApi {
    static int activeAppId() {
        Server& server = Server::getInstance();
        int id = 0;
        const bool told = platform::discardExceptions([&] { id = server.getActiveAppId(); });
        return told ? id : server.m_activeAppId;
    }

    static int setActiveAppId(int appId, bool editorSwitch) {
        Server& server = Server::getInstance();
        int old = server.m_activeAppId;
        platform::discardExceptions([&] { old = server.setActiveAppId(appId, editorSwitch); });
        return old;
    }
};

}  // namespace ZelU::Marl

using ZelU::Marl::Server;
using ZelU::Marl::ServerCApi;

int MarlActiveAppId(void) { return ServerCApi::activeAppId(); }

int MarlDefaultAppId(void) { return Server::defaultAppId(); }

int SetActiveAppId(int appId, int editorSwitch) { return ServerCApi::setActiveAppId(appId, editorSwitch != 0); }
