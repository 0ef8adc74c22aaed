#ifndef ZELUTIL_COMMAND_LINT_SHORTCUT_SPELLING_H
#define ZELUTIL_COMMAND_LINT_SHORTCUT_SPELLING_H

#include <string>
#include <string_view>
#include <vector>

#include "command/lint/report.h"
#include "json/view.h"

namespace zelutil::lint {

struct WrittenShortcut {
    std::string_view text;
    json::View place;  ///< Absent for one that only counts as a neighbour.
};

/// Reports shortcuts that spell something unlike most others do: a key's name, the case of a letter or of names, the
/// plus sign, blanks around it, the order of the modifiers. The library compares shortcuts byte by byte, so such a one
/// is another key.
void checkSpelling(const std::vector<WrittenShortcut>& shortcuts, Report& report);

/// One choice in the spelling of a shortcut, as "letter" -> "upper case".
struct SpellingChoice {
    std::string about;
    std::string spelling;
    bool isOfAllNames = false;  ///< About names in general, where the choice before it is about one of them.
};

/// Returns the choices that a shortcut has made.
std::vector<SpellingChoice> choicesOf(std::string_view shortcut);

}  // namespace zelutil::lint

#endif
