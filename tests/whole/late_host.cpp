// A host in small that ends: its static object, or an exit function, asks the library once more. Either is there before
// the first use of the library, so that it outlives every function-local static object.
//
//     late_host object|function WHAT...   asks for each in main and again at the end
//     late_host end WHAT...               has its static object ask, the first time and the last
//     late_host after WHAT...             makes the preference manager before it registers the exit function
//
//     root, pcbenv    prints the path
//     temporary       prints the directory of a temporary name
//     entered         makes a temporary file that is to be deleted at exit
//     facet           prints the type of the facet Net, Length
//     actions         loads one action, gives it a shortcut, and prints what the observer is told
//     server          makes an application active, and prints what the observer is told
//     settings        has the preference server tell its observer, and prints what that is told
//     value           prints the setting s::value
//     save            saves another value of that setting
#include <zelutil/zelutil.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

using ZelU::File::Hierarchy;
using ZelU::File::Path;

/// Observes everything, and prints what it is told.
class Observer : public ZelU::Marl::IServerObserver,
                 public ZelU::Marl::IUserPreferenceObserver,
                 public IUCPActionObserver {
public:
    void activeAppChanged(int appId, bool) override { std::printf("application %d\n", appId); }
    void onUserSettingsChanged(const std::set<std::string>& names) override {
        std::printf("changed %s\n", names.empty() ? "nothing" : names.begin()->c_str());
    }
    void onShortcutChanged(int, const std::string& before, const std::string& now) override {
        std::printf("shortcut \"%s\" -> \"%s\"\n", before.c_str(), now.c_str());
    }
    void onRMBMenuChanged(int, bool) override {}
};

Observer observer;

/// Counts how often the program has asked: 0 in main.
int round = 0;

void print(const Path& path) { std::printf("%s\n", static_cast<const char*>(path)); }

void makeTemporaryFile() {
    const Path path = Path::GetTempFile(true, "x");
    zelutil::test::writeTextFile(zelutil::test::fileOfText(static_cast<const char*>(path)), "x");
    std::printf("%s\n", path.Exists() ? "made" : "not made");
}

void useActions() {
    UCPActionManager& actions = UCPActionManager::instance();
    if (round == 0) {
        actions.load(R"({"actions":[{"id":1,"context":"ucpedit","command":"file save"}]})", "{}");
        actions.attachObserver(&observer);
    }
    actions.updateShortcut(1, "a shortcut that needs memory of its own " + std::to_string(round));
    std::printf("now \"%s\"\n", actions.getShortcut(1).c_str());
}

/// Too long for a text without memory of its own.
std::string value() {
    return (round == 0 ? "the first" : "the last") + std::string(" value that is saved by this program");
}

void ask(const std::string& what) {
    if (what == "root") {
        print(Hierarchy::GetRoot());
    } else if (what == "pcbenv") {
        print(Hierarchy::GetPcbEnv());
    } else if (what == "temporary") {
        print(Path::GetTempFile(false, "x").Parent());
    } else if (what == "entered") {
        makeTemporaryFile();
    } else if (what == "facet") {
        std::printf("%d\n", ZelUGetFacetType("Net", "Length"));
    } else if (what == "actions") {
        useActions();
    } else if (what == "server") {
        ZelU::Marl::Server::getInstance().attach(&observer);
        SetActiveAppId(round + 5, 0);
    } else if (what == "settings") {
        ZelU::Marl::UserPreferenceServer::getInstance().attach(&observer);
        ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged({"a name"}, {});
    } else if (what == "value") {
        const char* const value = get_user_setting("s::value");
        std::printf("value %s\n", value == nullptr ? "null" : value);
    } else if (what == "save") {
        UserPreferenceManager::GetInstance().updateUserPrefSettings({{"s::value", value()}}, {});
    } else {
        std::printf("unknown question %s\n", what.c_str());
    }
}

char** questions = nullptr;

void askAll() {
    for (char** question = questions; *question != nullptr; ++question) {
        ask(*question);
    }
    std::fflush(stdout);
    ++round;
}

struct StaticObject {
    ~StaticObject() {
        if (asksAtEnd) {
            askAll();
        }
    }

    bool asksAtEnd = false;
};

StaticObject staticObject;

}  // namespace

int main(int, char** arguments) {
    const std::string who = arguments[1];
    questions = arguments + 2;
    staticObject.asksAtEnd = who == "object" || who == "end";
    if (who == "after") {
        UserPreferenceManager::GetInstance();
    }
    if (!staticObject.asksAtEnd) {
        std::atexit(askAll);
    }
    if (who != "end") {
        askAll();
    }
    return 0;
}
