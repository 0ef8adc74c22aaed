#ifndef ZELUTIL_COMMAND_HTML_HTML_TEXT_H
#define ZELUTIL_COMMAND_HTML_HTML_TEXT_H

#include <string>
#include <string_view>

/// Texts from files in pages of HTML.
namespace zelutil::command::html {

/// Returns the text as an element or an attribute in double quotes shows it: as `printable`, with the characters that
/// mean something in HTML as references.
///
///     "</script>" => "&lt;/script&gt;"    "a\nb" => "a\\nb"
std::string escaped(std::string_view text);

/// Returns a JSON text as it may stand in a script element: no character of it ends the element or begins another one,
/// and none ends a line of a script. It still is the same JSON.
///
///     "\"</script>\"" => "\"\\u003C/script\\u003E\""
std::string asScriptData(std::string_view json);

}  // namespace zelutil::command::html

#endif
