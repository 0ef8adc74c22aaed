#ifndef ZELUTIL_HOST_USER_FILE_READING_H
#define ZELUTIL_HOST_USER_FILE_READING_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/view.h"
#include "prefs/catalogue.h"
#include "prefs/section_walk.h"
#include "prefs/user_file_text.h"

namespace zelutil::host {

/// What a text of the user's file says to a catalogue that does not take it over: the values it would give, and all
/// that means nothing there. Its views point into the text's document.
class UserFileReading {
public:
    /// An absent root says nothing.
    UserFileReading(const prefs::Catalogue& catalogue, json::View root);

    /// Returns the user's value of a setting; of several entries the last counts, as for the reader.
    std::optional<std::string_view> valueOf(const prefs::Setting& setting) const { return values_[setting.number]; }

    /// Returns what the file has for a sub-manager; of several sections the first counts, as for the reader.
    json::View subManagerValue(prefs::SubManagerType type) const;

    /// Returns the entries of a section with settings whose values are texts and whose names no setting has.
    std::vector<prefs::SavedSection::Value> takeUnknownEntries(const std::string& attributePath);

    /// Returns everything else that has no meaning: sections that are not there, and what is no text.
    std::vector<prefs::KeptSection> takeKept() { return std::move(kept_); }

private:
    void readSection(const prefs::VisitedSection& visited);
    void readEntries(const prefs::VisitedSection& visited, json::View overridden);
    void readEntry(const json::Member& entry, const std::string& attributePath, prefs::KeptSection& rest);

    const prefs::Catalogue& catalogue_;
    /// By the numbers of the records.
    std::vector<std::optional<std::string_view>> values_;
    std::map<prefs::SubManagerType, json::View> subManagerValues_;
    std::map<std::string, std::vector<prefs::SavedSection::Value>> unknownEntries_;
    std::vector<prefs::KeptSection> kept_;
};

}  // namespace zelutil::host

#endif
