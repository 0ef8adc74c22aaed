#ifndef ZELUTIL_TESTS_PREFS_MANY_SETTINGS_H
#define ZELUTIL_TESTS_PREFS_MANY_SETTINGS_H

#include <zelutil/prefs/user_preference_manager.h>

#include <cstdlib>
#include <map>
#include <string>

/// Many settings, all of them changed by every save, so that a save takes its time and may be killed in it.
namespace zelutil::test {

inline constexpr int kManySettings = 300;

/// The two values that a process under fire saves in turn.
inline constexpr char kShortValue[] = "short";
inline constexpr char kLongValue[] = "a value that is longer than the other one";

/// Returns how many saves are killed; the variable ZELUTIL_TEST_KILLS asks for another number than the usual one.
inline int kills(int usual) {
    const char* const asked = std::getenv("ZELUTIL_TEST_KILLS");
    return asked == nullptr ? usual : std::atoi(asked);
}

inline std::string manyDefaults() {
    std::string text = R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[)";
    for (int i = 0; i < kManySettings; ++i) {
        text +=
            (i == 0 ? "" : ",") + std::string(R"({"name":"setting_)") + std::to_string(i) + R"(","value":"default"})";
    }
    return text + "]}]}";
}

/// Saves `value` for every setting.
inline void saveMany(const std::string& value) {
    std::map<std::string, std::string> settings;
    for (int i = 0; i < kManySettings; ++i) {
        settings["s::setting_" + std::to_string(i)] = value;
    }
    UserPreferenceManager::GetInstance().updateUserPrefSettings(settings, {});
}

/// The text of a user's file in which every setting has `value`, as a save lays it out.
inline std::string manySavedText(const std::string& value) {
    std::string text =
        "{\n    \"meta\": [\n        {\n            \"header\": \"S\",\n            \"attribute\": \"s\",\n"
        "            \"overriddensettings\": [";
    for (int i = 0; i < kManySettings; ++i) {
        text += (i == 0 ? "\n" : ",\n") + std::string("                {\n                    \"setting_") +
                std::to_string(i) + "\": \"" + value + "\"\n                }";
    }
    return text + "\n            ]\n        }\n    ]\n}";
}

}  // namespace zelutil::test

#endif
