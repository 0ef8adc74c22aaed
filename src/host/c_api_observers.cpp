// The C interface: functions of hosts that are told of changes.
#include <zelutil/host/c_api.h>
#include <zelutil/host/observers.h>

#include <set>
#include <string>
#include <utility>

#include "host/c_api_guard.h"
#include "host/c_api_records.h"

namespace c = zelutil::host::c;
namespace host = zelutil::host;

struct zelutil_subscription {
    host::Subscription subscription;
};

namespace {

/// Hands out the subscription that `attach` returns; an empty one counts as unknown.
template <typename Callback, typename Attach>
zelutil_status subscribe(Callback call, zelutil_subscription** out, Attach attach) {
    if (out != nullptr && call == nullptr) {
        *out = nullptr;
        return ZELUTIL_BAD_ARGUMENT;
    }
    return c::guardedInto(out, [&]() -> zelutil_subscription* {
        host::Subscription subscription = attach();
        return subscription ? new zelutil_subscription{std::move(subscription)} : nullptr;
    });
}

/// Calls a function of C with names. It may end its own registration, and all that was captured with it: nothing of
/// that is used after the call.
auto withNames(zelutil_names_callback call, void* userData) {
    return [call, userData](const std::set<std::string>& fullNames) {
        const c::Names names(fullNames);
        const zelutil_names view = names.view();
        call(&view, userData);
    };
}

}  // namespace

zelutil_status zelutil_on_settings_changed(zelutil_names_callback call, void* userData,
                                           zelutil_subscription** subscription) {
    return subscribe(call, subscription, [&] { return host::onSettingsChanged(withNames(call, userData)); });
}

zelutil_status zelutil_on_setting_changed(const char* name, zelutil_value_callback call, void* userData,
                                          zelutil_subscription** subscription) {
    return subscribe(name == nullptr ? nullptr : call, subscription, [&] {
        return host::onSettingChanged(name,
                                      [call, userData](const std::string& value) { call(value.c_str(), userData); });
    });
}

zelutil_status zelutil_on_section_changed(const char* attributePath, zelutil_names_callback call, void* userData,
                                          zelutil_subscription** subscription) {
    return subscribe(attributePath == nullptr ? nullptr : call, subscription,
                     [&] { return host::onSectionChanged(attributePath, withNames(call, userData)); });
}

zelutil_status zelutil_on_shortcut_changed(zelutil_shortcut_callback call, void* userData,
                                           zelutil_subscription** subscription) {
    return subscribe(call, subscription, [&] {
        return host::onShortcutChanged([call, userData](int id, const std::string& before, const std::string& now) {
            call(id, before.c_str(), now.c_str(), userData);
        });
    });
}

zelutil_status zelutil_on_menu_changed(zelutil_menu_callback call, void* userData,
                                       zelutil_subscription** subscription) {
    return subscribe(call, subscription, [&] {
        return host::onMenuChanged([call, userData](int id, bool inMenu) { call(id, inMenu, userData); });
    });
}

zelutil_status zelutil_on_active_application_changed(zelutil_application_callback call, void* userData,
                                                     zelutil_subscription** subscription) {
    return subscribe(call, subscription, [&] {
        return host::onActiveApplicationChanged(
            [call, userData](int appId, bool editorSwitch) { call(appId, editorSwitch, userData); });
    });
}

void zelutil_cancel(zelutil_subscription* subscription) { delete subscription; }
