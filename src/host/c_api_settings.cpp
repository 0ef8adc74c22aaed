// The C interface: settings and their values.
#include <zelutil/host/c_api.h>
#include <zelutil/host/settings.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/c_api_guard.h"
#include "host/c_api_records.h"

namespace c = zelutil::host::c;
namespace host = zelutil::host;

namespace {

using SettingList = c::HandedOut<zelutil_setting_list, c::Settings>;
using NameList = c::HandedOut<zelutil_names, c::Names>;

template <typename T>
zelutil_status readInto(const char* name, T* value) {
    if (name == nullptr || value == nullptr) {
        return ZELUTIL_BAD_ARGUMENT;
    }
    return c::guarded([&] {
        if (const std::optional<T> found = host::read<T>(name)) {
            *value = *found;
            return ZELUTIL_OK;
        }
        return host::read<std::string>(name) ? ZELUTIL_WRONG_TYPE : ZELUTIL_UNKNOWN;
    });
}

template <typename T>
zelutil_status textOfInto(T value, const zelutil_text** text) {
    return c::guardedInto(text, [&] { return new c::TextHandedOut(host::textOf(value)); });
}

/// Null for a setting that is not there.
SettingList* listOf(std::optional<host::SettingInfo> setting) {
    if (!setting) {
        return nullptr;
    }
    std::vector<host::SettingInfo> one;
    one.push_back(std::move(*setting));
    return new SettingList(std::move(one));
}

}  // namespace

zelutil_status zelutil_get_settings(const zelutil_setting_list** settings) {
    return c::guardedInto(settings, [] { return new SettingList(host::settings()); });
}

zelutil_status zelutil_find_setting(const char* name, const zelutil_setting_list** settings) {
    return c::guardedInto(settings, name, [](const std::string& text) { return listOf(host::setting(text)); });
}

void zelutil_setting_list_free(const zelutil_setting_list* settings) { SettingList::free(settings); }

zelutil_status zelutil_get_sections(const zelutil_names** sections) {
    return c::guardedInto(sections, [] { return new NameList(host::sectionsInFileOrder()); });
}

void zelutil_names_free(const zelutil_names* names) { NameList::free(names); }

zelutil_status zelutil_read_bool(const char* name, bool* value) { return readInto(name, value); }

zelutil_status zelutil_read_int(const char* name, int* value) { return readInto(name, value); }

zelutil_status zelutil_read_double(const char* name, double* value) { return readInto(name, value); }

zelutil_status zelutil_read_text(const char* name, const zelutil_text** value) {
    return c::guardedInto(value, name, [](const std::string& text) {
        std::optional<std::string> found = host::read<std::string>(text);
        return found ? new c::TextHandedOut(std::move(*found)) : nullptr;
    });
}

zelutil_status zelutil_text_of_bool(bool value, const zelutil_text** text) { return textOfInto(value, text); }

zelutil_status zelutil_text_of_int(int value, const zelutil_text** text) { return textOfInto(value, text); }

zelutil_status zelutil_text_of_double(double value, const zelutil_text** text) { return textOfInto(value, text); }
