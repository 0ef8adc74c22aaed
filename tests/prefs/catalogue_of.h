#ifndef ZELUTIL_TESTS_PREFS_CATALOGUE_OF_H
#define ZELUTIL_TESTS_PREFS_CATALOGUE_OF_H

#include <string>
#include <vector>

#include "prefs/catalogue.h"
#include "prefs/catalogue_reader.h"

namespace zelutil::test {

using prefs::Catalogue;

/// The text of a preference file with this array of sections.
inline std::string withMeta(const std::string& sections) { return R"({"meta":)" + sections + "}"; }

/// The catalogue of the two texts, in the order in which the files are read.
inline Catalogue catalogueOfTexts(const std::string& defaults, const std::string& user) {
    Catalogue catalogue;
    prefs::readDefaults(defaults, catalogue);
    prefs::readUserSettings(user, catalogue);
    return catalogue;
}

inline Catalogue catalogueOf(const std::string& defaultSections, const std::string& userSections = "[]") {
    return catalogueOfTexts(withMeta(defaultSections), withMeta(userSections));
}

/// The two functions below return it for an unknown name.
inline constexpr char kUnknown[] = "(unknown)";

/// The value in force.
inline std::string valueOf(const Catalogue& catalogue, const std::string& name) {
    const prefs::Setting* const setting = catalogue.find(name);
    return setting == nullptr ? kUnknown : setting->valueInForce();
}

inline std::string defaultOf(const Catalogue& catalogue, const std::string& name) {
    const prefs::Setting* const setting = catalogue.find(name);
    return setting == nullptr ? kUnknown : setting->defaultValue;
}

struct Answer {
    const char* name;
    const char* value;
};

/// Sections of one of the two texts, and what is asked of the catalogue.
struct Row {
    const char* what;
    const char* sections;
    std::vector<Answer> answers;
};

}  // namespace zelutil::test

#endif
