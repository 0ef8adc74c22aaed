#ifndef ZELUTIL_COMMAND_LINT_OBJECT_FORM_H
#define ZELUTIL_COMMAND_LINT_OBJECT_FORM_H

#include <string_view>
#include <vector>

#include "command/lint/report.h"
#include "json/view.h"

namespace zelutil::lint {

enum class Type { Any, Text, TextNotEmpty, Integer, IntegerFrom0, IntegerFrom1, Truth, Array };

enum class Need { Optional, Required };

struct MemberForm {
    std::string_view key;
    Type type = Type::Any;
    Need need = Need::Optional;
    /// A sentence that says what a value of another type does; empty where it counts as missing.
    const char* ofAnotherType = "";
};

/// Says what the readers look at in an object of one kind.
struct ObjectForm {
    const char* what;  ///< With its article: "a section".
    std::vector<MemberForm> members;
};

/// Reports members that the form does not know, that stand twice, that are of another type or that are missing. Returns
/// false for a value that is no object, which is reported, too.
bool checkObject(json::View value, const ObjectForm& form, Report& report);

/// Reports a value that is there and not of the type, with a sentence behind it.
void checkType(json::View value, std::string_view key, Type type, Report& report, const char* sentence = "");

}  // namespace zelutil::lint

#endif
