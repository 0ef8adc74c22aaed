#ifndef ZELUTIL_COMMAND_LINT_ACTION_FORMS_H
#define ZELUTIL_COMMAND_LINT_ACTION_FORMS_H

#include "command/lint/object_form.h"

namespace zelutil::lint {

inline constexpr std::string_view kActions = "actions";
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kShortcut = "shortcut";
inline constexpr std::string_view kMenuFlag = "rmb";

/// Returns the form of the object that holds the list.
inline const ObjectForm& actionListForm() {
    static const ObjectForm kForm{"the list of actions", {{kActions, Type::Array, Need::Required}}};
    return kForm;
}

}  // namespace zelutil::lint

#endif
