// Hosts that save and hosts that start after them, as processes with real files.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "host/save_world.h"
#include "prefs/preference_world.h"
#include "support/child_process.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

class SaveProcesses : public testing::Test {
protected:
    explicit SaveProcesses(const SaveWorldSize& size = {}) : size_(size) {
        world_.writeDefaults(defaultsOfWorld(size));
    }

    /// A host that has just started and read its files.
    BackgroundProcess newHost() const {
        BackgroundProcess host({ZELUTIL_TEST_HOST, {}, {}, world_.home().path()});
        host.ask("get nothing");
        return host;
    }

    std::string stateQuestion() const { return "state " + std::to_string(size_.settings); }

    /// All that a process that starts now has in force.
    std::string stateOfNewHost() const { return newHost().ask(stateQuestion()); }

    std::string savedIn() const { return "0 Saved in " + pathText() + "."; }
    std::string pathText() const { return readPathOf(world_); }

    static std::string readPathOf(const PreferenceWorld& world) {
        // As the library joins it: the home and what it adds.
        return windowsText(world.home().path()) + "\\pcbenv/tessel/tessel_settings.cfg";
    }

    std::ptrdiff_t filesBeside() const {
        return std::distance(fs::directory_iterator(world_.userFile().parent_path()), {}) - 1;
    }

    const SaveWorldSize size_;
    PreferenceWorld world_;
};

TEST_F(SaveProcesses, ANewProcessHasWhatWasSaved) {
    BackgroundProcess host = newHost();
    // Another section has a setting of that name first.
    host.ask("value part2::value0=mine");
    host.ask("value part1::value1=");
    ASSERT_EQ(host.ask("swap 1 4"), "1");
    host.ask("menu 2 1");
    EXPECT_EQ(host.ask("save"), savedIn());
    EXPECT_EQ(host.ask("last"), "not restored, conflicts, others, kept ");
    const std::string state = host.ask(stateQuestion());
    EXPECT_EQ(stateOfNewHost(), state);
    BackgroundProcess next = newHost();
    EXPECT_EQ(next.ask("get part2::value0"), "mine");
    EXPECT_EQ(next.ask("get part0::value0"), "default 0");
    EXPECT_EQ(next.ask("get part1::value1"), "");
    EXPECT_EQ(next.ask("save"), "1 Nothing has changed since the last save in " + pathText() + ".");
}

TEST_F(SaveProcesses, TwoInTurnDoNotUndoEachOther) {
    BackgroundProcess one = newHost();
    BackgroundProcess two = newHost();
    one.ask("value part0::value0=one's");
    one.ask("key 1 F1");
    EXPECT_EQ(one.ask("save"), savedIn());
    two.ask("value part1::value0=two's");
    two.ask("key 2 F2");
    EXPECT_EQ(two.ask("save"), savedIn());
    EXPECT_EQ(two.ask("last"), "not restored, conflicts, others part0::value0 1, kept ");
    EXPECT_EQ(two.ask("get part0::value0"), "default 0");
    one.ask("value part0::value1=one's too");
    EXPECT_EQ(one.ask("save"), savedIn());
    two.ask("key 5 F5");
    EXPECT_EQ(two.ask("save"), savedIn());
    BackgroundProcess next = newHost();
    EXPECT_EQ(next.ask("get part0::value0"), "one's");
    EXPECT_EQ(next.ask("get part0::value1"), "one's too");
    EXPECT_EQ(next.ask("get part1::value0"), "two's");
    EXPECT_NE(next.ask(stateQuestion()).find("|1=F1|2=F2|3=Ctrl+3|4=Ctrl+4|5=F5+|"), std::string::npos);
}

TEST_F(SaveProcesses, OfARealConflictTheLaterSaveCountsAndIsTold) {
    BackgroundProcess one = newHost();
    BackgroundProcess two = newHost();
    one.ask("value part0::value0=one's");
    one.ask("key 1 F1");
    EXPECT_EQ(one.ask("save"), savedIn());
    two.ask("value part0::value0=two's");
    two.ask("key 1 F2");
    EXPECT_EQ(two.ask("save"), savedIn());
    EXPECT_EQ(two.ask("last"), "not restored, conflicts part0::value0 1, others, kept ");
    EXPECT_EQ(newHost().ask("get part0::value0"), "two's");
    EXPECT_NE(stateOfNewHost().find("|1=F2|"), std::string::npos);
}

/// Several hosts save as their user works, each its own settings and actions, in a random order.
TEST_F(SaveProcesses, InAnyOrderNobodysLastValueIsLost) {
    constexpr int kHosts = 3;
    constexpr int kSteps = 300;
    std::mt19937 random(11);
    std::map<int, std::string> settings;
    std::map<int, StormStep> actions;
    std::vector<BackgroundProcess> hosts;
    hosts.reserve(kHosts);
    for (int own = 0; own < kHosts; ++own) {
        hosts.push_back(newHost());
    }
    int restarts = 0;
    for (int i = 0; i < kSteps; ++i) {
        const int own = static_cast<int>(random() % kHosts);
        if (random() % 25 == 0) {
            hosts[static_cast<std::size_t>(own)] = newHost();
            ++restarts;
        }
        BackgroundProcess& host = hosts[static_cast<std::size_t>(own)];
        const StormStep step(random, own, kHosts, i);
        host.ask("value " + settingOfWorld(step.setting) + "=" + step.value);
        ASSERT_EQ(host.ask("key " + std::to_string(step.action) + " " + step.shortcut()), "1");
        host.ask("menu " + std::to_string(step.action) + (step.inMenu ? " 1" : " 0"));
        ASSERT_EQ(host.ask("save"), savedIn());
        ASSERT_EQ(host.ask("last").find("not restored, conflicts, others"), 0U) << host.ask("last");
        settings[step.setting] = step.value;
        actions.insert_or_assign(step.action, step);
    }
    const std::string state = stateOfNewHost();
    std::string expected;
    for (int number = 0; number < size_.settings; ++number) {
        expected += (settings.count(number) != 0 ? settings[number] : defaultOfWorld(number)) + '|';
    }
    for (int id = 1; id <= size_.actions; ++id) {
        const auto changed = actions.find(id);
        const bool isChanged = changed != actions.end();
        const bool inMenu = isChanged ? changed->second.inMenu : id % 5 == 0;
        expected += std::to_string(id) + '=' + (isChanged ? changed->second.shortcut() : "Ctrl+" + std::to_string(id)) +
                    (inMenu ? "+|" : "|");
    }
    EXPECT_EQ(state, expected);
    std::printf("%d saves by %d hosts, %d restarts\n", kSteps, kHosts, restarts);
}

}  // namespace
}  // namespace zelutil::test
