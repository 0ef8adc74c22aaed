#ifndef ZELUTIL_TESTS_PREFS_SAVING_HOST_H
#define ZELUTIL_TESTS_PREFS_SAVING_HOST_H

#include <zelutil/prefs/user_preference_server.h>

#include <functional>
#include <set>
#include <string>
#include <utility>

/// A host that saves "s::value" of `defaultsWithValue` and listens.
namespace zelutil::test {

/// Counts its calls and does something in each.
class Listener : public ZelU::Marl::IUserPreferenceObserver {
public:
    explicit Listener(std::function<void()> whenTold = [] {}) : whenTold_(std::move(whenTold)) {
        ZelU::Marl::UserPreferenceServer::getInstance().attach(this);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { ZelU::Marl::UserPreferenceServer::getInstance().detach(this); }

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        ++calls;
        whenTold_();
        names = changedNames;
    }

    int calls = 0;
    std::set<std::string> names;

private:
    std::function<void()> whenTold_;
};

inline void save(const std::string& value) {
    UserPreferenceManager::GetInstance().updateUserPrefSettings({{"s::value", value}}, {});
}

/// The text of the user's file that such a save writes.
inline std::string savedText(const std::string& value) {
    return "{\n"
           "    \"meta\": [\n"
           "        {\n"
           "            \"header\": \"S\",\n"
           "            \"attribute\": \"s\",\n"
           "            \"overriddensettings\": [\n"
           "                {\n"
           "                    \"value\": \"" +
           value +
           "\"\n"
           "                }\n"
           "            ]\n"
           "        }\n"
           "    ]\n"
           "}";
}

}  // namespace zelutil::test

#endif
