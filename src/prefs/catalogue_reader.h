#ifndef ZELUTIL_PREFS_CATALOGUE_READER_H
#define ZELUTIL_PREFS_CATALOGUE_READER_H

#include <cstdint>
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

/// A definition in the defaults, at the moment at which its record is made.
struct Definition {
    std::uint32_t number;              ///< `Setting::number` of the record.
    std::string_view name;             ///< The setting's own.
    const std::string& attributePath;  ///< That of the section around it.
    bool lendsBareName;                ///< Whether its own name alone is a key too, unless an earlier setting has it.
    json::View element;
};

using DefinitionSink = std::function<void(const Definition& definition)>;

/// Does the same and tells the sink each definition, also one whose names all belong to earlier ones.
void readDefaults(json::View root, Catalogue& catalogue, const DefinitionSink& sink);

/// Reads the user's values and texts of the sections and settings that the catalogue has. Returns whether the text is
/// JSON.
bool readUserSettings(std::string_view text, Catalogue& catalogue);

/// Is told of a finding as soon as it is made, and of the value in the document that it is about: that of the entry, or
/// the element or section as a whole.
using FindingSink = std::function<void(const EntryFinding& finding, json::View place)>;

/// Reads them from a text that was parsed.
void readUserSettings(json::View root, Catalogue& catalogue, const FindingSink& sink);

/// An entry at the moment at which it gives a setting its value.
struct AcceptedEntry {
    const Setting& setting;
    const std::string& attributePath;  ///< That of the section in which it stands.
    json::Member entry;
};

/// Both are called: an entry that sets a setting of another section is a finding first.
struct EntrySinks {
    FindingSink finding;
    std::function<void(const AcceptedEntry& accepted)> accepted;
};

/// Does the same and tells of the entries that set something too, in the order in which they do. Of several for one
/// setting the last counts.
void readUserSettings(json::View root, Catalogue& catalogue, const EntrySinks& sinks);

}  // namespace zelutil::prefs

#endif
