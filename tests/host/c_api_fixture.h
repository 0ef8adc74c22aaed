#ifndef ZELUTIL_TESTS_HOST_C_API_FIXTURE_H
#define ZELUTIL_TESTS_HOST_C_API_FIXTURE_H

#include <gtest/gtest.h>
#include <zelutil/host/c_api.h>

#include <memory>
#include <string>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {

/// Frees what it holds by the function of its type.
struct Freer {
    void operator()(const zelutil_text* handle) const { zelutil_text_free(handle); }
    void operator()(const zelutil_names* handle) const { zelutil_names_free(handle); }
    void operator()(const zelutil_warning_list* handle) const { zelutil_warning_list_free(handle); }
    void operator()(const zelutil_setting_list* handle) const { zelutil_setting_list_free(handle); }
    void operator()(const zelutil_action_list* handle) const { zelutil_action_list_free(handle); }
    void operator()(const zelutil_save_result* handle) const { zelutil_save_result_free(handle); }
    void operator()(const zelutil_restorable_text* handle) const { zelutil_restorable_text_free(handle); }
    void operator()(zelutil_subscription* handle) const { zelutil_cancel(handle); }
};

template <typename Handle>
using Held = std::unique_ptr<Handle, Freer>;

/// Makes a call that hands something out, whose place for that it is given; expects the status, and a handle with
/// `ZELUTIL_OK` alone.
template <typename Handle, typename Call>
Held<Handle> handedOut(zelutil_status expected, Call call) {
    char somewhere = 0;
    Handle* handle = reinterpret_cast<Handle*>(&somewhere);
    EXPECT_EQ(call(&handle), expected);
    EXPECT_EQ(handle != nullptr, expected == ZELUTIL_OK);
    return Held<Handle>(handle);
}

/// The same for a call that is to succeed.
template <typename Handle, typename Call>
Held<Handle> handedOut(Call call) {
    return handedOut<Handle>(ZELUTIL_OK, call);
}

/// Returns the text that the call hands out.
template <typename Call>
std::string textOf(Call call) {
    const Held<const zelutil_text> text = handedOut<const zelutil_text>(call);
    return text ? text->text : "none";
}

inline std::vector<std::string> textsOf(const zelutil_names& names) { return {names.items, names.items + names.count}; }

constexpr char kCApiDefaults[] = R"({"meta": [
    {"header": "Display", "attribute": "display", "tclCommand": "show", "defaultsettings": [
        {"name": "grid", "value": "0.5"},
        {"name": "rats", "value": "true"},
        {"name": "layers", "value": "4"},
        {"name": "units", "value": "mm"}
    ], "children": [
        {"header": "Colors", "attribute": "colors", "unique": false, "tclCommand": "paint", "defaultsettings": [
            {"name": "grid", "value": "grey"}
        ]}
    ]},
    {"header": "Keys", "attribute": "keys", "tclCommand": "keys", "submanagerId": 100, "defaultsettings": {"actions": [
        {"id": 1, "name": "Save", "icon": "save.svg", "context": "ucpedit", "command": "file save",
         "shortcut": "Ctrl+S"},
        {"id": 2, "name": "Open", "context": "ucpedit", "command": "file open", "shortcut": "Ctrl+O", "rmb": true},
        {"id": 3, "parent_id": 1, "context": "panel", "command": "panel save"}
    ]}}
]})";

/// An installation with the defaults above and a user without a file.
class CApi : public ::testing::Test {
protected:
    CApi() { world.writeDefaults(kCApiDefaults); }

    PreferenceWorld world;
};

}  // namespace zelutil::test

#endif
