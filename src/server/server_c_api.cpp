#include <zelutil/c_api.h>
#include <zelutil/server/server.h>

namespace ZelU::Marl {

/// Observers and the editor finder may throw, the callers of these functions cannot catch.
struct ServerCApi {
    static int activeAppId() noexcept {
        Server& server = Server::getInstance();
        try {
            return server.getActiveAppId();
        } catch (...) {
            return server.m_activeAppId;
        }
    }

    static int setActiveAppId(int appId, bool editorSwitch) noexcept {
        Server& server = Server::getInstance();
        const int old = server.m_activeAppId;
        try {
            return server.setActiveAppId(appId, editorSwitch);
        } catch (...) {
            return old;
        }
    }
};

}  // namespace ZelU::Marl

using ZelU::Marl::Server;
using ZelU::Marl::ServerCApi;

int MarlActiveAppId(void) { return ServerCApi::activeAppId(); }

int MarlDefaultAppId(void) { return Server::defaultAppId(); }

int SetActiveAppId(int appId, int editorSwitch) { return ServerCApi::setActiveAppId(appId, editorSwitch != 0); }
