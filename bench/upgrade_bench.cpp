// Comparing a thousand users' files with two versions of the shipped defaults, as `zelutil upgrade` does on one core,
// against reading, parsing and writing these files alone. A row is the time for one file: its inverse is the files a
// second and core. Each user has 100 of 1000 settings changed and 20 of 600 actions; the new version renames a tenth of
// the settings and moves a fifth of the keys.
#include <atomic>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "action_corpus.h"
#include "command/upgrade/upgrade.h"
#include "command/upgrade/user_files.h"
#include "peers/plain_json_peer.h"
#include "run_directory.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::CorpusAction;
using zelutil::bench::SettingsCorpus;

constexpr std::size_t kUsers = 1000;

/// Returns the text with a section for the actions at the end of its list.
std::string withActions(std::string text, const std::string& member, const std::string& actions) {
    const std::string section = R"(,{"header":"A","attribute":"actions","tclCommand":"t","submanagerId":100,")" +
                                member + "\":" + actions + '}';
    return text.insert(text.rfind(']'), section);
}

std::string newActionText(std::vector<CorpusAction> actions) {
    for (std::size_t i = 0; i + 1 < actions.size(); i += 10) {
        std::swap(actions[i].shortcut, actions[i + 1].shortcut);
    }
    return zelutil::bench::actionText(actions);
}

/// Returns the user's text of the actions. Each user has changed other ones.
std::string userActionText(const std::vector<CorpusAction>& actions, std::size_t user) {
    std::string list;
    for (std::size_t i = 0; i < 20; ++i) {
        const CorpusAction& action = actions[(user + i * 31) % actions.size()];
        list += (list.empty() ? "" : ",") + std::string(R"({"id":)") + std::to_string(action.id) +
                R"(,"shortcut":"Super+)" + std::to_string(i) + "\"}";
    }
    return R"([{"actions":[)" + list + "]}]";
}

struct Users {
    Users() {
        const auto actions = zelutil::bench::makeActions(4, 150);
        oldDefaults = withActions(corpus.defaultsText(), "defaultsettings", zelutil::bench::actionText(actions));
        newDefaults = withActions(corpus.defaultsText(), "defaultsettings", newActionText(actions));
        // Every setting whose number ends in 0 has got another name; a user has changed each of them.
        const std::string ending = "0\", \"value\"";
        for (std::size_t at = newDefaults.find(ending); at != std::string::npos; at = newDefaults.find(ending, at)) {
            newDefaults[at] = 'x';
        }
        for (std::size_t user = 0; user < kUsers; ++user) {
            const std::string file = "user" + std::to_string(user) + "/tessel_settings.cfg";
            files.push_back(directory.write(
                file, withActions(corpus.userText(), "overriddensettings", userActionText(actions, user))));
        }
    }

    SettingsCorpus corpus{1000};
    std::string oldDefaults;
    std::string newDefaults;
    zelutil::bench::RunDirectory directory;
    std::vector<std::string> files;
};

std::string textOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Returns how many users lose something. No thread works beside the calling one, which is the one that is timed.
std::uint64_t losersAmong(const Users& users) {
    namespace upgrade = zelutil::command::upgrade;
    upgrade::UserFiles gathered;
    gathered.add(users.directory.path());
    std::atomic<std::size_t> done{0};
    const auto results = upgrade::compareAll(users.oldDefaults, users.newDefaults, gathered.files(), 0, done);
    std::uint64_t losers = 0;
    for (const upgrade::UserResult& user : results.users) {
        losers += user.effect.losesAnything() ? 1 : 0;
    }
    return losers;
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Users users;

    Comparison("upgrade of 1000 users' files", kUsers)
        .zelutil([] { return losersAmong(users); })
        .peer("RapidJSON, read, parse and write", [] {
            std::uint64_t parsed = 0;
            for (const std::string& file : users.files) {
                parsed += peers::parseAndWrite(textOf(file)).empty() ? 0 : 1;
            }
            return parsed;
        });
}
