#ifndef ZELUTIL_PREFS_CATALOGUE_READER_H
#define ZELUTIL_PREFS_CATALOGUE_READER_H

#include <string>
#include <string_view>

#include "prefs/catalogue.h"

/// Makes a catalogue of the texts of the two preference files: first the defaults, then the user's text, which has
/// the same layout. A text is never refused: what cannot be used of it is passed over, element by element.
namespace zelutil::prefs {

/// Reads sections, settings and the texts for sub-managers into an empty catalogue.
void readDefaults(std::string text, Catalogue& catalogue);

/// Reads the user's values and texts of the sections and settings that the catalogue has. Returns whether the text is
/// JSON.
bool readUserSettings(std::string_view text, Catalogue& catalogue);

}  // namespace zelutil::prefs

#endif
