#ifndef ZELUTIL_PREFS_CATALOGUE_READER_H
#define ZELUTIL_PREFS_CATALOGUE_READER_H

#include <functional>
#include <string>
#include <string_view>

#include "json/view.h"
#include "prefs/catalogue.h"

/// Makes a catalogue of the texts of the two preference files: first the defaults, then the user's text, which has
/// the same layout. A text is never refused: what cannot be used of it is passed over, element by element.
namespace zelutil::prefs {

/// Reads sections, settings and the texts for sub-managers into an empty catalogue.
void readDefaults(std::string text, Catalogue& catalogue);

/// Reads them from a text that was parsed. The catalogue does not learn the text.
void readDefaults(json::View root, Catalogue& catalogue);

/// Reads the user's values and texts of the sections and settings that the catalogue has. Returns whether the text is
/// JSON.
bool readUserSettings(std::string_view text, Catalogue& catalogue);

/// Is told of a finding as soon as it is made, and of the value in the document that it is about: that of the entry, or
/// the element or section as a whole.
using FindingSink = std::function<void(const EntryFinding& finding, json::View place)>;

/// Reads them from a text that was parsed.
void readUserSettings(json::View root, Catalogue& catalogue, const FindingSink& sink);

}  // namespace zelutil::prefs

#endif
