#ifndef ZELUTIL_COMMAND_JSON_FAILURE_H
#define ZELUTIL_COMMAND_JSON_FAILURE_H

#include <string>

#include "json/located_document.h"

namespace zelutil::command {

/// Returns a sentence that says why a malformed text is none: the parser's, or where a comma too many is the reason,
/// which the parser only sees as a value that is missing, one that names it.
std::string textOfFailure(const json::LocatedDocument& document);

}  // namespace zelutil::command

#endif
