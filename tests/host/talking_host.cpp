// A host that does what its standard input tells it and says a line to each line: a program that saves, reads and is
// killed while a test looks on.
//
//     value NAME=VALUE         is handed over to the next save
//     save                     the result's status, a blank, its text
//     reset NAME               the same
//     reset actions            the same, for all shortcuts
//     last                     what the last result names, see `named`
//     key ID SHORTCUT          1 when it is in force, else 0; without a shortcut it is taken away
//     menu ID 0|1
//     swap ID ID               two actions of one context take each other's shortcut: 1, else 0
//     get NAME                 the setting in force
//     state SETTINGS           all that is in force: so many settings of the world, and the actions
//     storm SEED SAVES OWN OTHERS   saves so often, at random, values of settings whose number is OWN modulo OTHERS
//     for-ever                 says a line and then saves two states in turn, until it is killed
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <chrono>
#include <iostream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <thread>

#include "host/save_world.h"

namespace {

using zelutil::host::SaveResult;

UCPActionManager& actions() { return UCPActionManager::instance(); }

std::string named(const SaveResult& result) {
    std::string text = "not restored";
    for (const auto& one : result.notRestored) {
        text += ' ' + (one.action != 0 ? std::to_string(one.action) : one.setting);
    }
    text += ", conflicts";
    for (const auto& one : result.conflicts) {
        text += ' ' + (one.action != 0 ? std::to_string(one.action) : one.setting);
    }
    text += ", others";
    for (const auto& name : result.settingsOfOthers) {
        text += ' ' + name;
    }
    for (const int id : result.actionsOfOthers) {
        text += ' ' + std::to_string(id);
    }
    return text + ", kept " + result.keptCopy;
}

bool inMenu(const UCPActionItem& action) {
    return action.rmb.overwritten ? action.rmb.userValue : action.rmb.defaultValue;
}

bool swapKeys(int one, int other) {
    const std::string first = actions().getShortcut(one);
    const std::string second = actions().getShortcut(other);
    const bool isFree = actions().updateShortcut(one, "");
    return isFree && actions().updateShortcut(other, first) && actions().updateShortcut(one, second);
}

/// Not the last one, which another host may change.
constexpr int kSettingsForEver = 7;

class Host {
public:
    std::string said(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        std::string rest;
        std::getline(words >> std::ws, rest);
        return said(command, rest);
    }

private:
    std::string said(const std::string& command, const std::string& rest) {
        std::istringstream words(rest);
        if (command == "value") {
            const std::size_t equals = rest.find('=');
            values_[rest.substr(0, equals)] = rest.substr(equals + 1);
            return "ok";
        }
        if (command == "save") {
            last_ = zelutil::host::save(values_);
            values_.clear();
            return outcome();
        }
        if (command == "reset") {
            last_ = rest == "actions" ? zelutil::host::resetAllShortcuts() : zelutil::host::reset({rest});
            return outcome();
        }
        if (command == "last") {
            return named(last_);
        }
        if (command == "get") {
            return preferences().getUserPrefSetting(rest);
        }
        if (command == "state") {
            return state(std::stoi(rest));
        }
        if (command == "for-ever") {
            saveForEver();
        }
        int first = 0;
        words >> first;
        if (command == "key") {
            std::string shortcut;
            words >> shortcut;
            return actions().updateShortcut(first, shortcut) ? "1" : "0";
        }
        int second = 0;
        words >> second;
        if (command == "menu") {
            actions().updateRMBMenu(first, second != 0);
            return "ok";
        }
        if (command == "swap") {
            return swapKeys(first, second) ? "1" : "0";
        }
        int own = 0;
        int others = 0;
        words >> own >> others;
        return storm(first, second, own, others);
    }

    static UserPreferenceManager& preferences() { return UserPreferenceManager::GetInstance(); }

    std::string outcome() const { return std::to_string(static_cast<int>(last_.status)) + ' ' + last_.text; }

    static std::string state(int settings) {
        std::string text;
        for (int number = 0; number < settings; ++number) {
            text += preferences().getUserPrefSetting(zelutil::test::settingOfWorld(number)) + '|';
        }
        for (const UCPActionItem& action : actions().getAllActions()) {
            text += std::to_string(action.id) + '=' + actions().getShortcut(action.id) + (inMenu(action) ? "+|" : "|");
        }
        return text;
    }

    [[noreturn]] static void saveForEver() {
        std::cout << "saving" << std::endl;
        for (int round = 0;; ++round) {
            for (int number = 0; number < kSettingsForEver; ++number) {
                forEver_[zelutil::test::settingOfWorld(number)] = "round " + std::to_string(round % 2);
            }
            actions().updateShortcut(1, round % 2 == 0 ? "F1" : "F2");
            zelutil::host::save(forEver_);
        }
    }

    static std::string storm(int seed, int saves, int own, int others) {
        std::mt19937 random(static_cast<unsigned>(seed));
        int refused = 0;
        for (int i = 0; i < saves; ++i) {
            const zelutil::test::StormStep step(random, own, others, i);
            actions().updateShortcut(step.action, step.shortcut());
            actions().updateRMBMenu(step.action, step.inMenu);
            const SaveResult result = zelutil::host::save({{zelutil::test::settingOfWorld(step.setting), step.value}});
            refused += result.ok() && result.conflicts.empty() ? 0 : 1;
            std::this_thread::sleep_for(std::chrono::microseconds(step.pause));
        }
        return std::to_string(refused);
    }

    static std::map<std::string, std::string> forEver_;

    std::map<std::string, std::string> values_;
    SaveResult last_;
};

std::map<std::string, std::string> Host::forEver_;

}  // namespace

int main() {
    UserPreferenceManager::GetInstance();
    Host host;
    std::string line;
    while (std::getline(std::cin, line)) {
        std::cout << host.said(line) << std::endl;
    }
}
