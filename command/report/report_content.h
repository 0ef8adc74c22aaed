#ifndef ZELUTIL_COMMAND_REPORT_REPORT_CONTENT_H
#define ZELUTIL_COMMAND_REPORT_REPORT_CONTENT_H

#include <zelutil/host/settings.h>

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/doctor/diagnosis.h"
#include "command/shortcuts/shortcut_table.h"
#include "json/located_document.h"

/// The report: one page with all that is known of the settings and shortcuts here.
namespace zelutil::command::report {

struct Setting {
    host::SettingInfo info;
    std::optional<json::Position> definedAt;  ///< In the defaults.
    std::optional<json::Position> setAt;      ///< In the user's file, for a setting that the user set.
    std::vector<std::string> notes;           ///< Sentences about entries that do not do what they seem to.
};

/// An entry of the user's file that sets nothing, or something else in it that the start makes nothing of.
struct Stray {
    std::string name;
    std::string value;
    std::optional<json::Position> at;  ///< Known for entries of settings.
    std::string why;
    std::string section;  ///< The attribute path where an entry stands; empty for anything else.
};

/// Two actions that are in each other's way.
struct Conflict {
    std::string shortcut;
    std::string context;
    std::string action;
    std::string effect;
};

struct Content {
    std::string defaultsFile;  ///< The system's own path, as the next.
    std::string userFile;
    bool isUserFileUnread = false;  ///< Whether it is there, and nothing of it is read.
    std::vector<Setting> settings;
    std::vector<Stray> strays;
    std::vector<std::string> sections;  ///< Attribute paths in the order of the defaults.
    std::vector<shortcuts::ShortcutRow> actions;
    std::vector<Conflict> conflicts;
    Diagnosis diagnosis;
};

/// The searches are one step, the settings the next and the shortcuts the last.
inline constexpr std::size_t kStepsToContent = 3;

/// Finds out everything and sets `done` to the number of steps that are done, at the end `kStepsToContent`. To be
/// called before anything else that needs the common library, as `diagnose` says. Where no installation is found, there
/// is only the diagnosis.
Content contentHere(std::atomic<std::size_t>& done);

/// Returns the content as the JSON text that the page reads, without white space; nothing where it would be longer than
/// the library reads.
std::optional<std::string> jsonOf(const Content& content);

/// Returns the page, with the JSON text in it.
std::string pageOf(std::string_view json);

}  // namespace zelutil::command::report

#endif
