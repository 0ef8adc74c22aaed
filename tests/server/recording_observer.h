#ifndef ZELUTIL_TESTS_SERVER_RECORDING_OBSERVER_H
#define ZELUTIL_TESTS_SERVER_RECORDING_OBSERVER_H

#include <zelutil/server/server.h>

#include <ostream>
#include <vector>

namespace zelutil::test {

struct Notification {
    int appId;
    bool editorSwitch;
};

inline bool operator==(const Notification& a, const Notification& b) {
    return a.appId == b.appId && a.editorSwitch == b.editorSwitch;
}

inline std::ostream& operator<<(std::ostream& out, const Notification& notification) {
    return out << '(' << notification.appId << ", " << (notification.editorSwitch ? "true" : "false") << ')';
}

using Notifications = std::vector<Notification>;

/// Keeps what it was told.
class RecordingObserver : public ZelU::Marl::IServerObserver {
public:
    void activeAppChanged(int appId, bool editorSwitch) override { told.push_back({appId, editorSwitch}); }

    Notifications told;
};

/// The same, and throws.
class ThrowingObserver : public RecordingObserver {
public:
    struct Thrown {};

    void activeAppChanged(int appId, bool editorSwitch) override {
        RecordingObserver::activeAppChanged(appId, editorSwitch);
        throw Thrown();
    }
};

}  // namespace zelutil::test

#endif
