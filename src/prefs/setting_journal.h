#ifndef ZELUTIL_PREFS_SETTING_JOURNAL_H
#define ZELUTIL_PREFS_SETTING_JOURNAL_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace zelutil::prefs {

/// Tells how one setting in the user's file, as this process last read or wrote it, stands to the record.
struct JournalEntry {
    /// The user's value in the file; nothing where the file has none.
    std::optional<std::string> inFile;
    /// Whether the record was changed here since then, be it to the same value again.
    bool touched = false;
};

/// The entries by `Setting::number`. A setting without one was not touched, and the file has what the record has.
using SettingJournal = std::map<std::uint32_t, JournalEntry>;

}  // namespace zelutil::prefs

#endif
