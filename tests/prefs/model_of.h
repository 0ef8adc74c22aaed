#ifndef ZELUTIL_TESTS_PREFS_MODEL_OF_H
#define ZELUTIL_TESTS_PREFS_MODEL_OF_H

#include <string>
#include <vector>

#include "prefs/preference_model.h"

namespace zelutil::test {

using Model = UserPreferenceManager::Model;

/// The text of a preference file with this array of sections.
inline std::string withMeta(const std::string& sections) { return R"({"meta":)" + sections + "}"; }

/// What the two texts give, in the order in which the files are read.
inline Model modelOfTexts(const std::string& defaults, const std::string& user) {
    Model model;
    model.takeDefaults(defaults);
    model.takeUserSettings(user);
    return model;
}

inline Model modelOf(const std::string& defaultSections, const std::string& userSections = "[]") {
    return modelOfTexts(withMeta(defaultSections), withMeta(userSections));
}

/// What the two functions below answer for an unknown name.
inline constexpr char kUnknown[] = "(unknown)";

/// The value in force.
inline std::string valueOf(const Model& model, const std::string& name) {
    const auto* const setting = model.findSetting(name);
    return setting == nullptr ? kUnknown : Model::getMergedValueForSetting(setting);
}

inline std::string defaultOf(const Model& model, const std::string& name) {
    const auto* const setting = model.findSetting(name);
    return setting == nullptr ? kUnknown : Model::getDefaultValueForSetting(setting);
}

struct Answer {
    const char* name;
    const char* value;
};

/// Sections of one of the two texts, and what is asked of the model.
struct Row {
    const char* what;
    const char* sections;
    std::vector<Answer> answers;
};

}  // namespace zelutil::test

#endif
