#ifndef ZELUTIL_PREFS_SAVE_LAYOUT_H
#define ZELUTIL_PREFS_SAVE_LAYOUT_H

// All that a save needs of the defaults' text, in flat arrays. It is here for the rows of later saves of
// bench/save_bench.cpp (10000 settings): the first save makes it, so that the others parse nothing and look up no name.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "prefs/catalogue.h"
#include "prefs/section_walk.h"
#include "prefs/user_file_text.h"

namespace zelutil::prefs {

/// The sections of a catalogue's defaults and the definitions in them, in the order of a walk. Values are not part of
/// it, so it holds for as long as the catalogue has these defaults.
class SaveLayout {
public:
    /// Stands for a place or a record that is not there.
    static constexpr std::uint32_t kNone = UINT32_MAX;

    struct Section {
        std::string attributePath;
        SubManagerType owner;
        /// Whether its entries are read. Those of a section without a record are not.
        bool isRead;
        /// The numbers of its definitions. One with an owner has none.
        std::uint32_t begin;
        std::uint32_t end;
    };

    explicit SaveLayout(const Catalogue& catalogue);

    /// Returns the layout of the catalogue. It is made when it is first asked for, and kept with the catalogue.
    static std::shared_ptr<SaveLayout> of(const Catalogue& catalogue);

    const UserFileForm& form() const { return form_; }
    const std::vector<Section>& sections() const { return sections_; }

    std::string_view nameOf(std::uint32_t definition) const {
        return std::string_view(names_).substr(definitions_[definition].nameBegin, definitions_[definition].nameSize);
    }

    std::size_t definitionCount() const { return definitions_.size(); }

    /// Returns the place of the full name in the index of the settings, or `kNone`.
    std::uint32_t placeOf(std::uint32_t definition) const { return definitions_[definition].place; }

    /// Return the first definition of the full name that has this place, and the next one of the same; `kNone` for
    /// none.
    std::uint32_t firstAt(std::uint32_t place) const { return firstAtPlaces_[place]; }
    std::uint32_t nextAfter(std::uint32_t definition) const { return definitions_[definition].next; }

    /// Returns the number of the record that a reader takes the entry for, or `kNone`.
    std::uint32_t recordRead(const Catalogue& catalogue, const Section& section, std::uint32_t definition);

    /// Returns the place of a record's full name, under which its value is saved; `kNone` for one that is not found at
    /// all.
    std::uint32_t placeOfRecord(std::uint32_t number) const { return placesOfRecords_[number]; }

    /// Returns the places of all records with a full name that several have. Of their values the one at the last place
    /// is saved.
    const std::vector<std::uint32_t>& sharedPlaces() const { return sharedPlaces_; }

private:
    /// Stands for a record that has not been looked for.
    static constexpr std::uint32_t kNotAsked = kNone - 1;

    struct Definition {
        std::uint32_t nameBegin;
        std::uint32_t nameSize;
        std::uint32_t place;
        std::uint32_t next;
        std::uint32_t recordRead = kNotAsked;
    };

    void findPlaces(const SettingIndex& settings);
    void findSharedPlaces(const SettingIndex& settings, const std::set<std::uint32_t>& fullNames);
    void addSection(const Catalogue& catalogue, const VisitedSection& visited);
    void addDefinitions(const SettingIndex& settings, const VisitedSection& visited, bool isWithoutOwner);
    void addDefinition(std::string_view name, std::uint32_t place);

    UserFileForm form_;
    std::vector<Section> sections_;
    std::vector<Definition> definitions_;
    /// By the places of the index.
    std::vector<std::uint32_t> firstAtPlaces_;
    std::string names_;
    /// By the numbers of the records.
    std::vector<std::uint32_t> placesOfRecords_;
    std::vector<std::uint32_t> sharedPlaces_;
    /// Counts the definitions of the walk as the reader did.
    std::uint32_t recordsMet_ = 0;
};

}  // namespace zelutil::prefs

#endif
