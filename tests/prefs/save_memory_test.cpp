// Memory runs out at each allocation of a save in turn. A save that throws has changed nothing; where only the writing
// fails, the values are in force and the observers are told.
#include <gtest/gtest.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <filesystem>
#include <iterator>
#include <map>
#include <new>
#include <set>
#include <string>

#include "prefs/preference_world.h"
#include "prefs/saving_host.h"
#include "support/scarce_memory.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

/// Needs no memory to be told.
class CountingListener : public ZelU::Marl::IUserPreferenceObserver {
public:
    CountingListener() { ZelU::Marl::UserPreferenceServer::getInstance().attach(this); }
    CountingListener(const CountingListener&) = delete;
    CountingListener& operator=(const CountingListener&) = delete;
    ~CountingListener() { ZelU::Marl::UserPreferenceServer::getInstance().detach(this); }

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        ++calls;
        EXPECT_EQ(changedNames.size(), 1U);
    }

    int calls = 0;
};

enum class Outcome { Thrown, NotWritten, Written };

class SaveWithLittleMemory : public testing::Test {
protected:
    SaveWithLittleMemory() { world_.writeDefaults(defaultsWithValue("default")); }

    /// Saves the value and checks that the outcome is one that may be. `ranOut` tells whether memory did.
    Outcome saveWith(int allowed, const std::string& value, bool& ranOut) {
        const std::map<std::string, std::string> settings = {{"s::value", value}};
        const std::string before = UserPreferenceManager::GetInstance().getUserPrefSetting("value");
        // Another process's file is looked into before it is replaced, which takes memory on every system.
        const std::string theirs = userWithValue("theirs");
        world_.writeUser(theirs);
        const int callsBefore = listener_.calls;
        bool thrown = false;
        {
            const ScarceMemory scarce(allowed);
            try {
                UserPreferenceManager::GetInstance().updateUserPrefSettings(settings, {});
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            ranOut = scarce.ranOut();
        }
        const std::string text = readTextFile(world_.userFile());
        EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("value"), thrown ? before : value) << allowed;
        EXPECT_EQ(listener_.calls, callsBefore + (thrown ? 0 : 1)) << allowed;
        if (text == savedText(value)) {
            EXPECT_FALSE(thrown) << allowed;
            return Outcome::Written;
        }
        EXPECT_EQ(text, theirs) << allowed;
        return thrown ? Outcome::Thrown : Outcome::NotWritten;
    }

    PreferenceWorld world_;
    CountingListener listener_;
};

TEST_F(SaveWithLittleMemory, IsNotBegunOrInForceAndTold) {
    UserPreferenceManager::GetInstance();
    std::map<Outcome, int> outcomes;
    bool ranOut = true;
    for (int allowed = 0; ranOut && !HasFailure(); ++allowed) {
        ++outcomes[saveWith(allowed, "a value too long to lie in its string, number " + std::to_string(allowed),
                            ranOut)];
    }
    EXPECT_GT(outcomes[Outcome::Thrown], 0);
    EXPECT_GT(outcomes[Outcome::NotWritten], 0);
    EXPECT_GT(outcomes[Outcome::Written], 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}), 1);
}

}  // namespace
}  // namespace zelutil::test
