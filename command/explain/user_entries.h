#ifndef ZELUTIL_COMMAND_EXPLAIN_USER_ENTRIES_H
#define ZELUTIL_COMMAND_EXPLAIN_USER_ENTRIES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command/explain/setting_account.h"
#include "json/located_document.h"
#include "prefs/catalogue.h"

namespace zelutil::command {

/// An entry of the user's file and the settings that it concerns, by the numbers of their records.
struct FoundEntry {
    std::string section;
    std::string name;
    json::View value;
    UserEntry::Effect effect = UserEntry::Effect::InForce;
    /// The setting that it sets, or would set if it had an effect.
    std::optional<std::uint32_t> means;
    /// The setting of its section that has its name, where it means another one: somebody who reads the entry takes it
    /// for that one's.
    std::optional<std::uint32_t> seems;
};

/// Has the library's reader read the user's text into the catalogue, which has the defaults, and returns every entry in
/// the order of the text, also those that the reader passes over.
std::vector<FoundEntry> readUserEntries(const json::LocatedDocument& user, const json::LocatedDocument& defaults,
                                        prefs::Catalogue& catalogue);

}  // namespace zelutil::command

#endif
