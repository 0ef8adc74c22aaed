#ifndef ZELUTIL_TESTS_PREFS_NESTED_SECTIONS_H
#define ZELUTIL_TESTS_PREFS_NESTED_SECTIONS_H

#include <cstddef>
#include <string>

namespace zelutil::test {

/// `levels` sections inside each other, attribute "a" each, around `innermost`.
inline std::string nestedSections(std::size_t levels, const std::string& innermost) {
    std::string text;
    for (std::size_t i = 1; i < levels; ++i) {
        text += R"([{"header":"H","attribute":"a","children":)";
    }
    text += "[" + innermost + "]";
    for (std::size_t i = 1; i < levels; ++i) {
        text += "}]";
    }
    return text;
}

inline std::string repeated(std::size_t count, const std::string& part) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

/// Sections that define the setting "g", which is "1", and that make it "2".
inline constexpr char kInnermostDefaults[] =
    R"({"header":"H","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}]})";
inline constexpr char kInnermostUser[] = R"({"header":"H","attribute":"a","overriddensettings":[{"g":"2"}]})";

}  // namespace zelutil::test

#endif
