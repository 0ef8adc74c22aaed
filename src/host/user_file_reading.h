#ifndef ZELUTIL_HOST_USER_FILE_READING_H
#define ZELUTIL_HOST_USER_FILE_READING_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "json/view.h"
#include "prefs/catalogue.h"
#include "prefs/section_walk.h"
#include "prefs/unread_content.h"
#include "prefs/user_file_text.h"

namespace zelutil::host {

/// Holds what a text of the user's file says to a catalogue that does not take it over: the values it would give, and
/// all that means nothing there. Its views point into the text's document.
class UserFileReading {
public:
    /// An absent root says nothing.
    UserFileReading(const prefs::Catalogue& catalogue, json::View defaults, json::View root);

    /// Returns the user's value of a setting; of several entries the last counts, as for the reader.
    std::optional<std::string_view> valueOf(const prefs::Setting& setting) const { return values_[setting.number]; }

    /// Returns what the file has for a sub-manager; of several sections the first counts, as for the reader.
    json::View subManagerValue(prefs::SubManagerType type) const;

    /// Returns what the lists of a section with settings hold that sets nothing: entries whose names no setting has,
    /// and what is no text.
    std::vector<prefs::KeptEntry> takeUnknownEntries(const std::string& attributePath);

    /// Returns the members of a section of the defaults that these lack.
    std::vector<json::Member> takeMembers(const std::string& attributePath);

    /// Returns the members of the whole that the defaults lack.
    std::vector<json::Member> takeMembers() { return std::move(members_); }

    /// Returns what later sections of a sub-manager hold that is not what the first one holds, which alone counts.
    std::vector<prefs::UnreadContent> takeSecondValues() { return std::move(secondValues_); }

    /// Returns everything else that has no meaning: sections that are not there, and what stands in the place of a
    /// list.
    std::vector<prefs::KeptSection> takeKept() { return std::move(kept_); }

private:
    void readDefaults(json::View defaults);
    void readMembers(json::View defaults, json::View root);
    std::vector<json::Member> unknownMembers(const prefs::VisitedSection& visited) const;
    void readSubManagerValue(prefs::SubManagerType type, const std::string& attributePath, json::View overridden);
    void readUnknownSection(const prefs::VisitedSection& visited, json::View overridden);
    void readSection(const prefs::VisitedSection& visited);
    void readEntries(const std::string& attributePath, json::View overridden);
    void readEntry(const json::Member& entry, const std::string& attributePath, std::vector<prefs::KeptEntry>& unknown);

    const prefs::Catalogue& catalogue_;
    /// By the numbers of the records.
    std::vector<std::optional<std::string_view>> values_;
    std::map<prefs::SubManagerType, json::View> subManagerValues_;
    std::map<std::string, std::vector<prefs::KeptEntry>> unknownEntries_;
    std::vector<prefs::KeptSection> kept_;
    /// The members of the defaults' sections by attribute paths.
    std::map<std::string, std::set<std::string_view>> defaultMembers_;
    std::map<std::string, std::vector<json::Member>> sectionMembers_;
    std::vector<json::Member> members_;
    std::vector<prefs::UnreadContent> secondValues_;
};

}  // namespace zelutil::host

#endif
