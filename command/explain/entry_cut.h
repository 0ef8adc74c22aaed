#ifndef ZELUTIL_COMMAND_EXPLAIN_ENTRY_CUT_H
#define ZELUTIL_COMMAND_EXPLAIN_ENTRY_CUT_H

#include <functional>
#include <string>
#include <vector>

#include "json/located_document.h"

namespace zelutil::command {

/// Returns the text of a user's file without the entries that have these values, each with its comma and the blanks up
/// to the next one. An object of which nothing is left goes too. Every other byte stays.
///
///     [{"a": "1", "b": "2"}]     without a   => [{"b": "2"}]
///     [{"a": "1", "b": "2"}]     without b   => [{"a": "1"}]
///     [{"a": "1"}, {"b": "2"}]   without a   => [{"b": "2"}]
///     [ {"a": "1"} ]             without a   => []
std::string withoutEntries(const json::LocatedDocument& document, const std::vector<json::View>& values);

/// Returns the text without those elements of one of its arrays for which `goes` is true, each with its comma and the
/// blanks up to the next one. Every other byte stays.
std::string withoutElements(const json::LocatedDocument& document, json::View array,
                            const std::function<bool(json::View)>& goes);

}  // namespace zelutil::command

#endif
