#include <zelutil/host/observers.h>

#include <zelutil/actions/action_manager.h>

#include <cstdint>
#include <utility>

#include "host/current_preferences.h"
#include "host/subscription.h"
#include "prefs/setting_name.h"

namespace zelutil::host {
namespace {

using ZelU::Marl::IServerObserver;
using ZelU::Marl::IUserPreferenceObserver;
using ZelU::Marl::IUserPreferenceSubManagerObserver;

/// Returns the host's observer, which is not deleted.
template <typename Observer>
std::shared_ptr<Observer> borrowed(Observer& observer) {
    return std::shared_ptr<Observer>(std::shared_ptr<void>(), &observer);
}

/// Passes on what concerns one action.
class OneAction final : public IUCPActionObserver {
public:
    OneAction(int id, IUCPActionObserver& observer) : id_(id), observer_(observer) {}

    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        if (actionId == id_) {
            observer_.onShortcutChanged(actionId, oldShortcut, newShortcut);
        }
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        if (actionId == id_) {
            observer_.onRMBMenuChanged(actionId, inMenu);
        }
    }

private:
    int id_;
    IUCPActionObserver& observer_;
};

using NamesCall = Callback<void(const std::set<std::string>& fullNames)>;

class AllSettings final : public IUserPreferenceObserver {
public:
    explicit AllSettings(NamesCall call) : call_(std::move(call)) {}

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        if (!changedNames.empty()) {
            call_(changedNames);
        }
    }

private:
    NamesCall call_;
};

class SectionSettings final : public IUserPreferenceObserver {
public:
    SectionSettings(const std::string& attributePath, NamesCall call)
        : prefix_(attributePath + std::string(prefs::kNameSeparator)), call_(std::move(call)) {}

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        std::set<std::string> names;
        for (auto name = changedNames.lower_bound(prefix_); name != changedNames.end() && isInside(*name); ++name) {
            names.insert(names.end(), *name);
        }
        if (!names.empty()) {
            call_(names);
        }
    }

private:
    bool isInside(const std::string& name) const { return name.compare(0, prefix_.size(), prefix_) == 0; }

    std::string prefix_;
    NamesCall call_;
};

using ValueCall = Callback<void(const std::string& value)>;

/// Returns the record of the setting, or null. Settings are neither made nor removed after the start.
const prefs::Setting* settingOf(const std::string& name) {
    const prefs::Preferences* const preferences = currentPreferences();
    return preferences == nullptr ? nullptr : preferences->catalogue.find(name);
}

class OneSetting final : public IUserPreferenceObserver {
public:
    OneSetting(std::string name, const prefs::Setting& setting, ValueCall call)
        : name_(std::move(name)), key_(setting.key), value_(setting.valueInForce()), call_(std::move(call)) {}

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        for (const std::string& changed : changedNames) {
            if (prefs::keyOf(changed) == key_) {
                tell();
                return;
            }
        }
    }

private:
    void tell() {
        const prefs::Setting* const setting = settingOf(name_);
        // The full name may be that of a setting that was read before this one, which alone has changed then.
        if (setting != nullptr && setting->valueInForce() != value_) {
            value_ = setting->valueInForce();
            // The function gets a copy, since it may save another value.
            const std::string value = value_;
            call_(value);
        }
    }

    std::string name_;
    /// The key of the full name: under that of `name_` another setting may have changed, or none.
    std::uint64_t key_;
    /// The value that the function knows, or knew at the subscription.
    std::string value_;
    ValueCall call_;
};

class Shortcuts final : public IUCPActionObserver {
public:
    using Call = Callback<void(int actionId, const std::string& before, const std::string& now)>;

    explicit Shortcuts(Call call) : call_(std::move(call)) {}

    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        call_(actionId, oldShortcut, newShortcut);
    }
    void onRMBMenuChanged(int, bool) override {}

private:
    Call call_;
};

class MenuFlags final : public IUCPActionObserver {
public:
    using Call = Callback<void(int actionId, bool inMenu)>;

    explicit MenuFlags(Call call) : call_(std::move(call)) {}

    void onShortcutChanged(int, const std::string&, const std::string&) override {}
    void onRMBMenuChanged(int actionId, bool inMenu) override { call_(actionId, inMenu); }

private:
    Call call_;
};

class ActiveApplication final : public IServerObserver {
public:
    using Call = Callback<void(int appId, bool editorSwitch)>;

    explicit ActiveApplication(Call call) : call_(std::move(call)) {}

    void activeAppChanged(int appId, bool editorSwitch) override { call_(appId, editorSwitch); }

private:
    Call call_;
};

/// Subscribes a new `Observer`, unless there is nothing for it to call.
template <typename Interface, typename Observer, typename Call, typename... Arguments>
Subscription subscribeFunction(Call call, Arguments&&... arguments) {
    if (!call) {
        return {};
    }
    std::shared_ptr<Interface> observer =
        std::make_shared<Observer>(std::forward<Arguments>(arguments)..., std::move(call));
    return subscribe(std::move(observer));
}

}  // namespace

Subscription observe(IUserPreferenceObserver& observer) { return subscribe(borrowed(observer)); }

Subscription observe(IUserPreferenceSubManagerObserver& observer) { return subscribe(borrowed(observer)); }

Subscription observe(IUCPActionObserver& observer) { return subscribe(borrowed(observer)); }

Subscription observe(int actionId, IUCPActionObserver& observer) {
    if (!UCPActionManager::instance().getAction(actionId).first) {
        return {};
    }
    const std::shared_ptr<IUCPActionObserver> filter = std::make_shared<OneAction>(actionId, observer);
    return subscribe(filter);
}

Subscription observe(IServerObserver& observer) { return subscribe(borrowed(observer)); }

Subscription onSettingsChanged(NamesCall call) {
    return subscribeFunction<IUserPreferenceObserver, AllSettings>(std::move(call));
}

Subscription onSettingChanged(const std::string& name, ValueCall call) {
    const prefs::Setting* const setting = settingOf(name);
    if (setting == nullptr) {
        return {};
    }
    return subscribeFunction<IUserPreferenceObserver, OneSetting>(std::move(call), name, *setting);
}

Subscription onSectionChanged(const std::string& attributePath, NamesCall call) {
    return subscribeFunction<IUserPreferenceObserver, SectionSettings>(std::move(call), attributePath);
}

Subscription onShortcutChanged(Shortcuts::Call call) {
    return subscribeFunction<IUCPActionObserver, Shortcuts>(std::move(call));
}

Subscription onMenuChanged(MenuFlags::Call call) {
    return subscribeFunction<IUCPActionObserver, MenuFlags>(std::move(call));
}

Subscription onActiveApplicationChanged(ActiveApplication::Call call) {
    return subscribeFunction<IServerObserver, ActiveApplication>(std::move(call));
}

}  // namespace zelutil::host
