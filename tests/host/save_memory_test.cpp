// Memory runs out at each allocation of a save in turn. A save that throws has changed nothing; where only the writing
// fails, the values are in force, the observers are told and the next save writes everything.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <cstdio>
#include <map>
#include <new>
#include <set>
#include <string>

#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "support/scarce_memory.h"

namespace zelutil::test {
namespace {

using host::SaveResult;

/// Needs no memory to be told.
class CountingListener : public ZelU::Marl::IUserPreferenceObserver {
public:
    CountingListener() { ZelU::Marl::UserPreferenceServer::getInstance().attach(this); }
    CountingListener(const CountingListener&) = delete;
    CountingListener& operator=(const CountingListener&) = delete;
    ~CountingListener() { ZelU::Marl::UserPreferenceServer::getInstance().detach(this); }

    void onUserSettingsChanged(const std::set<std::string>&) override { ++calls; }

    int calls = 0;
};

enum class Outcome { Thrown, NotWritten, Written };

class HostSaveWithLittleMemory : public testing::Test {
protected:
    HostSaveWithLittleMemory() {
        world_.writeDefaults(defaultsOfWorld());
        UserPreferenceManager::GetInstance();
        host::save({{"part0::value1", "first"}});
    }

    static std::string valueInForce() {
        return UserPreferenceManager::GetInstance().getUserPrefSetting("part0::value0");
    }

    bool isInFile(const std::string& value) const {
        return readTextFile(world_.userFile()).find("\"" + value + "\"") != std::string::npos;
    }

    /// Saves the value and checks that the outcome is one that may be. `ranOut` is told whether memory did.
    Outcome saveWith(int allowed, const std::string& value, bool& ranOut) {
        const std::map<std::string, std::string> settings = {{"part0::value0", value}};
        const std::string before = valueInForce();
        const std::string textBefore = readTextFile(world_.userFile());
        const int callsBefore = listener_.calls;
        bool thrown = false;
        SaveResult result;
        {
            const ScarceMemory scarce(allowed);
            try {
                result = host::save(settings);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            ranOut = scarce.ranOut();
        }
        EXPECT_EQ(valueInForce(), thrown ? before : value) << allowed;
        EXPECT_EQ(listener_.calls, callsBefore + (thrown ? 0 : 1)) << allowed;
        if (isInFile(value)) {
            EXPECT_TRUE(!thrown && result.ok()) << allowed;
            return Outcome::Written;
        }
        EXPECT_EQ(readTextFile(world_.userFile()), textBefore) << allowed;
        EXPECT_TRUE(thrown || result.status == SaveResult::Status::NotWritten ||
                    result.status == SaveResult::Status::NotKept)
            << allowed;
        return thrown ? Outcome::Thrown : Outcome::NotWritten;
    }

    PreferenceWorld world_;
    CountingListener listener_;
};

TEST_F(HostSaveWithLittleMemory, IsNotBegunOrInForceAndToldAndTriedAgain) {
    std::map<Outcome, int> outcomes;
    bool ranOut = true;
    int lost = 0;
    for (int allowed = 0; ranOut; ++allowed) {
        const std::string value = "value " + std::to_string(allowed);
        const Outcome outcome = saveWith(allowed, value, ranOut);
        ++outcomes[outcome];
        if (outcome == Outcome::NotWritten) {
            lost += host::save().ok() && isInFile(value) ? 0 : 1;
        }
    }
    std::printf("%d times thrown, %d times not written, %d times written, %d times lost\n", outcomes[Outcome::Thrown],
                outcomes[Outcome::NotWritten], outcomes[Outcome::Written], lost);
    EXPECT_GT(outcomes[Outcome::Thrown], 0);
    EXPECT_GT(outcomes[Outcome::NotWritten], 0);
    EXPECT_EQ(lost, 0);
}

}  // namespace
}  // namespace zelutil::test
