// Hosts that save and hosts that start after them, as processes with real files.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/save_world.h"
#include "prefs/many_settings.h"
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

    /// The state of the world with these values and the last changes of these actions.
    std::string stateOf(const std::map<int, std::string>& settings, const std::map<int, StormStep>& actions) const {
        std::string state;
        for (int number = 0; number < size_.settings; ++number) {
            const auto changed = settings.find(number);
            state += (changed == settings.end() ? defaultOfWorld(number) : changed->second) + '|';
        }
        for (int id = 1; id <= size_.actions; ++id) {
            const auto changed = actions.find(id);
            const bool isShipped = changed == actions.end();
            const bool inMenu = isShipped ? id % 5 == 0 : changed->second.inMenu;
            state += std::to_string(id) + '=' +
                     (isShipped ? "Ctrl+" + std::to_string(id) : changed->second.shortcut()) + (inMenu ? "+|" : "|");
        }
        return state;
    }

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

TEST_F(SaveProcesses, AResetTakesTheEntryOutOfTheFile) {
    BackgroundProcess host = newHost();
    const std::string shipped = host.ask(stateQuestion());
    host.ask("value part0::value0=user's");
    ASSERT_EQ(host.ask("swap 1 4"), "1");
    host.ask("menu 1 1");
    EXPECT_EQ(host.ask("save"), savedIn());
    EXPECT_EQ(host.ask("reset part0::value0"), savedIn());
    EXPECT_EQ(host.ask("reset actions"), savedIn());
    EXPECT_EQ(host.ask(stateQuestion()), shipped);
    EXPECT_EQ(stateOfNewHost(), shipped);
    const std::string text = readTextFile(world_.userFile());
    EXPECT_EQ(text.find("user's"), std::string::npos);
    EXPECT_EQ(text.find("shortcut"), std::string::npos);
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
    EXPECT_EQ(stateOfNewHost(), stateOf(settings, actions));
    std::printf("%d saves by %d hosts, %d restarts\n", kSteps, kHosts, restarts);
}

/// Several hosts save as fast as they can, and nobody waits for anybody but for a turn.
TEST_F(SaveProcesses, AtTheSameTimeNobodysLastValueIsLost) {
    constexpr int kHosts = 3;
    constexpr int kSaves = 200;
    std::vector<BackgroundProcess> hosts;
    hosts.reserve(kHosts);
    for (int own = 0; own < kHosts; ++own) {
        hosts.push_back(newHost());
    }
    for (int own = 0; own < kHosts; ++own) {
        hosts[static_cast<std::size_t>(own)].tell("storm " + std::to_string(own) + ' ' + std::to_string(kSaves) + ' ' +
                                                  std::to_string(own) + ' ' + std::to_string(kHosts));
    }
    for (BackgroundProcess& host : hosts) {
        EXPECT_EQ(host.hear(), "0") << "so many saves failed or met a conflict";
    }
    std::map<int, std::string> settings;
    std::map<int, StormStep> actions;
    for (int own = 0; own < kHosts; ++own) {
        std::mt19937 random(static_cast<unsigned>(own));
        for (int i = 0; i < kSaves; ++i) {
            const StormStep step(random, own, kHosts, i);
            settings[step.setting] = step.value;
            actions.insert_or_assign(step.action, step);
        }
    }
    EXPECT_EQ(stateOfNewHost(), stateOf(settings, actions));
    EXPECT_EQ(filesBeside(), 0);
    std::printf("%d saves by %d processes at once\n", kHosts * kSaves, kHosts);
}

/// Returns how long a process has to live to come to its second save or further, which differs with the machine.
std::chrono::microseconds timeOfSomeSaves(BackgroundProcess& host) {
    constexpr std::chrono::microseconds kShortest{40'000};
    constexpr int kSaves = 8;
    const auto begin = std::chrono::steady_clock::now();
    host.ask("value part3::value1=before all kills");
    host.ask("save");
    const auto one = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    return std::max(kShortest, one * kSaves);
}

TEST_F(SaveProcesses, AKilledOneLeavesAWholeFileAndTheOthersValues) {
    constexpr int kUsualKills = 60;
    const int rounds = kills(kUsualKills);
    std::mt19937 random(5);
    BackgroundProcess other = newHost();
    const std::chrono::microseconds longest = timeOfSomeSaves(other);
    int damaged = 0;
    bool hasSaved = false;
    int lost = 0;
    int second = 0;
    std::ptrdiff_t mostLeft = 0;
    for (int i = 0; i < rounds; ++i) {
        BackgroundProcess victim = newHost();
        ASSERT_EQ(victim.ask("for-ever"), "saving");
        std::this_thread::sleep_for(std::chrono::microseconds(random() % longest.count()));
        victim.kill();
        mostLeft = std::max(mostLeft, fs::exists(world_.userFile()) ? filesBeside() : 0);
        const std::string state = stateOfNewHost();
        // It saves all settings and a shortcut together.
        const bool isFirst = state.find("round 0") != std::string::npos;
        const bool isSecond = state.find("round 1") != std::string::npos;
        const bool isWhole = isFirst != isSecond && state.find(isFirst ? "|1=F1" : "|1=F2") != std::string::npos;
        // The first ones may be killed before they have saved anything.
        const bool isUnsaved = !hasSaved && !isFirst && !isSecond;
        hasSaved = hasSaved || isFirst || isSecond;
        damaged += isWhole || isUnsaved ? 0 : 1;
        second += isSecond ? 1 : 0;
        const std::string value = "after kill " + std::to_string(i);
        other.ask("value part3::value1=" + value);
        EXPECT_EQ(other.ask("save").substr(0, 2), "0 ");
        lost += newHost().ask("get part3::value1") == value ? 0 : 1;
        EXPECT_EQ(filesBeside(), 0);
    }
    std::printf("%d kills, %d damaged files, %d lost values, %d times the second state, at most %td files left\n",
                rounds, damaged, lost, second, mostLeft);
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(lost, 0);
    EXPECT_GT(second, 0);
    EXPECT_LE(mostLeft, 1);
}

class SaveOfAProduct : public SaveProcesses {
protected:
    SaveOfAProduct() : SaveProcesses(kProductSize) {}

    /// Two actions of one context.
    std::pair<int, int> twoActions(std::mt19937& random) const {
        const int context = static_cast<int>(random() % static_cast<unsigned>(size_.contexts));
        const auto one = [&] {
            const int actions = (size_.actions - 1 - context) / size_.contexts + (context == 0 ? 0 : 1);
            const int place = static_cast<int>(random() % static_cast<unsigned>(actions));
            return context + size_.contexts * (context == 0 ? place + 1 : place);
        };
        return {one(), one()};
    }
};

TEST_F(SaveOfAProduct, SwappedShortcutsComeBack) {
    constexpr int kRounds = 30;
    std::mt19937 random(3);
    int swaps = 0;
    int different = 0;
    int named = 0;
    for (int round = 0; round < kRounds; ++round) {
        fs::remove(world_.userFile());
        BackgroundProcess host = newHost();
        for (unsigned swap = 0; swap <= random() % 8; ++swap) {
            const auto [one, other] = twoActions(random);
            if (one != other) {
                ASSERT_EQ(host.ask("swap " + std::to_string(one) + ' ' + std::to_string(other)), "1");
                ++swaps;
            }
        }
        host.ask("menu 77 1");
        ASSERT_EQ(host.ask("save"), savedIn());
        named += host.ask("last") == "not restored, conflicts, others, kept " ? 0 : 1;
        different += stateOfNewHost() == host.ask(stateQuestion()) ? 0 : 1;
    }
    std::printf("%d sequences, %d swaps: %d came back otherwise, %d results name something\n", kRounds, swaps,
                different, named);
    EXPECT_EQ(different, 0);
    EXPECT_EQ(named, 0);
    EXPECT_GT(swaps, kRounds);
}

TEST_F(SaveOfAProduct, AHundredSettingsComeBack) {
    constexpr int kRounds = 10;
    std::mt19937 random(4);
    int different = 0;
    for (int round = 0; round < kRounds; ++round) {
        fs::remove(world_.userFile());
        BackgroundProcess host = newHost();
        for (int i = 0; i < 100; ++i) {
            const int setting = static_cast<int>(random() % static_cast<unsigned>(size_.settings));
            host.ask("value " + settingOfWorld(setting) + "=value " + std::to_string(i));
        }
        ASSERT_EQ(host.ask("save"), savedIn());
        EXPECT_EQ(host.ask("last"), "not restored, conflicts, others, kept ");
        different += stateOfNewHost() == host.ask(stateQuestion()) ? 0 : 1;
    }
    EXPECT_EQ(different, 0);
}

}  // namespace
}  // namespace zelutil::test
