// Uses each function of zelutil::host once, where nothing is installed: so nothing is found and nothing is written.
#include <zelutil/host/host.h>

#include <zelutil/actions/action_manager.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

extern "C" int useEachCFunction(void);

namespace {

namespace host = zelutil::host;

int failures = 0;

void expect(bool holds, const char* what) {
    if (!holds) {
        std::printf("not so: %s\n", what);
        ++failures;
    }
}

void useStart() {
    expect(!host::options().pathsWithBlanks, "options are off");
    expect(host::setOptions(host::Options{}), "options can be set");
    expect(host::startWarnings().empty(), "no warnings");
    expect(!host::diagnose().empty(), "a diagnosis");
    expect(!host::userFilePath().empty(), "a place for the user's file");
}

void useSettings() {
    expect(host::settings().empty(), "no settings");
    expect(!host::setting("grid"), "no setting");
    expect(host::sectionsInFileOrder().empty(), "no sections");
    expect(!host::read<bool>("grid") && !host::read<int>("grid"), "no values");
    expect(!host::read<double>("grid") && !host::read<std::string>("grid"), "no more values");
    expect(host::get<bool>("grid", true) && host::get<int>("grid", 7) == 7, "fallbacks");
    expect(host::get<double>("grid", 0.5) > 0.4 && host::get<std::string>("grid", "x") == "x", "more fallbacks");
    expect(host::textOf(true) == "true" && host::textOf(7) == "7" && host::textOf(0.5) == "0.5", "texts of values");
}

void useActions() {
    expect(host::actions().empty(), "no actions");
    expect(!host::action(1), "no action");
}

void useSaves() {
    using Status = host::SaveResult::Status;
    expect(host::save().status == Status::NoDefaults, "nothing to save");
    expect(!host::save({{"grid", "1"}}).ok(), "nothing is saved");
    expect(!host::reset({"grid"}).ok(), "nothing is reset");
    expect(!host::resetShortcuts({1}).ok() && !host::resetAllShortcuts().ok(), "no shortcut is reset");
    expect(host::restorableActionsText(UCPActionManager::instance()).notRestored.empty(), "a text of the actions");
}

void usePaths() {
    const ZelU::File::Path path = host::fromNative("directory/file");
    expect(!path.Empty(), "the library's path");
    const std::filesystem::path file = host::nativePath(path);
    expect(file.filename() == "file", "the system's path");
    expect(host::nativePath(std::string(path)) == host::nativePath(path), "the path of a text");
}

class Observer : public ZelU::Marl::IUserPreferenceObserver,
                 public ZelU::Marl::IUserPreferenceSubManagerObserver,
                 public ZelU::Marl::IServerObserver,
                 public IUCPActionObserver {
public:
    void onUserSettingsChanged(const std::set<std::string>&) override {}
    void onSubManagerSettingsChanged(const std::map<UserPreferenceManager::SubManagerType, std::string>&) override {}
    void activeAppChanged(int, bool) override {}
    void onShortcutChanged(int, const std::string&, const std::string&) override {}
    void onRMBMenuChanged(int, bool) override {}
};

void useObservers() {
    Observer observer;
    std::vector<host::Subscription> all;
    all.push_back(host::observe(static_cast<ZelU::Marl::IUserPreferenceObserver&>(observer)));
    all.push_back(host::observe(static_cast<ZelU::Marl::IUserPreferenceSubManagerObserver&>(observer)));
    all.push_back(host::observe(static_cast<ZelU::Marl::IServerObserver&>(observer)));
    all.push_back(host::observe(static_cast<IUCPActionObserver&>(observer)));
    all.push_back(host::onSettingsChanged([](const std::set<std::string>&) {}));
    all.push_back(host::onSectionChanged("display", [](const std::set<std::string>&) {}));
    all.push_back(host::onShortcutChanged([](int, const std::string&, const std::string&) {}));
    all.push_back(host::onMenuChanged([](int, bool) {}));
    all.push_back(host::onActiveApplicationChanged([](int, bool) {}));
    for (host::Subscription& subscription : all) {
        expect(static_cast<bool>(subscription), "an observer is attached");
        subscription.cancel();
    }
    expect(!host::observe(1, observer), "there is no action to observe");
    expect(!host::onSettingChanged("grid", [](const std::string&) {}), "there is no setting to observe");
    host::Subscription empty;
    empty = std::move(all.front());
}

}  // namespace

int main() {
    useStart();
    useSettings();
    useActions();
    useSaves();
    usePaths();
    useObservers();
    expect(useEachCFunction() == 0, "all is so in C");
    return failures == 0 ? 0 : 1;
}
