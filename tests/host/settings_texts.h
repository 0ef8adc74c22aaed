#ifndef ZELUTIL_TESTS_HOST_SETTINGS_TEXTS_H
#define ZELUTIL_TESTS_HOST_SETTINGS_TEXTS_H

#include <string>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/section_walk.h"

/// Small preference files, put together for reading.
namespace zelutil::test {

/// A section of the defaults whose settings have these names, and the value "1" each.
inline std::string defined(const std::string& attribute, const std::initializer_list<std::string>& names,
                           const std::string& more = "") {
    std::string settings;
    for (const std::string& name : names) {
        settings += (settings.empty() ? "" : ",") + std::string(R"({"name":")") + name + R"(","value":"1"})";
    }
    return R"({"header":"H","attribute":")" + attribute + R"(","tclCommand":"t","defaultsettings":[)" + settings + "]" +
           more + "}";
}

/// A section of the user's file; `entries` is what its array holds.
inline std::string given(const std::string& attribute, const std::string& entries) {
    return R"({"header":"H","attribute":")" + attribute + R"(","overriddensettings":[)" + entries + "]}";
}

/// A file with these sections.
inline std::string fileWith(const std::initializer_list<std::string>& sections) {
    std::string text;
    for (const std::string& section : sections) {
        text += (text.empty() ? "" : ",") + section;
    }
    return R"({"meta":[)" + text + "]}";
}

/// Returns what the sections of a file hold, one line each: "a::b: [...]", without white space.
inline std::string entriesOf(const std::string& file) {
    const json::Document document(file);
    std::string lines;
    prefs::forEachSection(document.root(), [&lines](const prefs::VisitedSection& visited) {
        const json::View overridden = visited.element.member(prefs::kOverriddenSettings);
        lines += visited.attributePath + ": " + json::compactText(overridden).value_or("(absent)") + "\n";
    });
    return lines;
}

}  // namespace zelutil::test

#endif
