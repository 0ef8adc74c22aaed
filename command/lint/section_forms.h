#ifndef ZELUTIL_COMMAND_LINT_SECTION_FORMS_H
#define ZELUTIL_COMMAND_LINT_SECTION_FORMS_H

#include <string>
#include <string_view>

#include "command/lint/object_form.h"
#include "prefs/section_walk.h"
#include "prefs/setting_name.h"

namespace zelutil::lint {

/// Returns the name under which a setting of a section is always found.
inline std::string fullNameOf(const std::string& attributePath, std::string_view name) {
    return attributePath + std::string(prefs::kNameSeparator) + std::string(name);
}

/// Returns whether a section says that it belongs to the actions.
inline bool isOfActions(json::View section) {
    return prefs::SubManagerType{prefs::subManagerNumber(section)} == prefs::SubManagerType::Actions;
}

/// Reports what is wrong with the form of a preference file above its sections, and calls `check` with every element
/// that has to be a section and is an object.
template <typename Check>
class SectionForms {
public:
    SectionForms(Report& report, Check check) : report_(report), check_(check) {}

    void run(json::View root) {
        const ObjectForm form{"the file", {{prefs::kMeta, Type::Array, Need::Required}, {"version", Type::Any}}};
        if (checkObject(root, form, report_)) {
            walk(root.member(prefs::kMeta));
        }
    }

private:
    /// Recurses as deep as the document nests.
    void walk(json::View sections) {
        for (const json::View section : sections.elements()) {
            check_(section);
            walk(section.member(prefs::kChildren));
        }
    }

    Report& report_;
    Check check_;
};

}  // namespace zelutil::lint

#endif
