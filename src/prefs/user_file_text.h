#ifndef ZELUTIL_PREFS_USER_FILE_TEXT_H
#define ZELUTIL_PREFS_USER_FILE_TEXT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/view.h"

namespace zelutil::prefs {

/// Something in a list of entries that means nothing to the defaults. One without a name is an element of the list and
/// no member of an object there.
struct KeptEntry {
    std::optional<std::string_view> name;
    json::View value;
};

/// Holds what the user's file has for one section of the defaults, as its "overriddensettings".
struct SavedSection {
    struct Value {
        std::string_view name;
        std::string_view value;
    };

    std::vector<Value> values;
    /// These follow the values.
    std::vector<KeptEntry> kept;
    /// The value of a sub-manager's text, which then stands in the place of both; or absent.
    json::View subManagerValue;
    /// Members that the section of the defaults lacks.
    std::vector<json::Member> members;
};

/// Holds entries that mean nothing to the defaults and are to stay in the user's file nevertheless.
struct KeptSection {
    std::string_view header;
    std::string attributePath;
    /// All members but those of which this structure tells otherwise.
    std::vector<json::Member> members;
    std::vector<KeptEntry> entries;
    /// The whole "overriddensettings", which then stands in the place of the entries; or absent.
    json::View whole;
};

/// Returns the text of the user's file: the defaults, with each section made the user's. `sections` holds one entry for
/// each section, in the order of a walk over them. The kept sections follow the others, at the top: there the attribute
/// is the whole path. `members` end the text. Returns nothing when the text could not be read back.
std::optional<std::string> userFileText(json::View defaults, const std::vector<SavedSection>& sections,
                                        const std::vector<KeptSection>& kept = {},
                                        const std::vector<json::Member>& members = {},
                                        json::Numbers numbers = json::Numbers::Fast);

/// The text of the user's file with a gap for what each section of the defaults gets as its "overriddensettings".
struct UserFileForm {
    struct Gap {
        std::size_t place;    ///< Its offset in the text.
        std::size_t section;  ///< The number of its section in a walk.
    };

    /// Nothing when no text with these sections could be read back.
    std::optional<std::string> text;
    /// In the order of the text, where a section may stand before the one around it ends.
    std::vector<Gap> gaps;
    /// Holds how many arrays and objects stand around each section's gap, by the numbers of the sections.
    std::vector<unsigned> depths;
};

UserFileForm userFileForm(json::View defaults);

}  // namespace zelutil::prefs

#endif
