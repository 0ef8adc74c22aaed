// zelutil export: the user's shortcuts and menu flags, for another installation.
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/start.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <vector>

#include "actions/manager_access.h"
#include "command/arguments.h"
#include "command/explain/unread_user_file.h"
#include "command/html/result_file.h"
#include "command/input_file.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/profile.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/shortcuts/unread_actions.h"
#include "command/shortcuts/wish_text.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "host/action_warnings.h"
#include "json/document.h"
#include "platform/world.h"

namespace zelutil::command {
namespace {

using shortcuts::KnownShortcuts;
using shortcuts::ShortcutRow;

/// Another file than a profile is not written over.
bool mayBeWritten(const std::string& file, Output& output) {
    if (!mayTakePlace(file, output)) {
        return false;
    }
    const platform::OutsideTheWorld thisMachine;
    std::error_code ignored;
    if (!std::filesystem::exists(pathOf(file), ignored)) {
        return true;
    }
    const std::optional<std::string> bytes = readInput(file, output);
    if (bytes && !bytes->empty() && !shortcuts::readProfile(*bytes).unreadable.empty()) {
        output.fail("\"" + file + "\" is there and is no profile, so it stays as it is.",
                    "Name another file, or take it away.");
        return false;
    }
    return bytes.has_value();
}

/// Whether what the user changed is known. A profile without it would take the place of one that has it.
bool isUsersFileRead(const std::string& file, Output& output) {
    const bool isRead = !isUserFileUnread();
    if (!isRead) {
        output.fail("The user's file was not read, so \"" + file + "\" is not written.",
                    "\"zelutil doctor\" says what is wrong with the user's file.");
    }
    return isRead;
}

/// Returns whether the entry has an effect all the same, which is in the profile.
bool countsAsSomething(const host::ActionEntryFinding& finding) {
    return finding.kind == host::ActionEntryFinding::Kind::NoText ||
           finding.kind == host::ActionEntryFinding::Kind::NoTruth;
}

Finding notInProfile(const host::StartWarning& warning) {
    return {Severity::Warning, "Not in the profile: " + warning.text, "\"zelutil roundtrip\" says more.", std::nullopt};
}

/// Entries of the user's file that did nothing at the start are not in the profile.
void tellLeftOut(Output& output) {
    const actions::ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
    const auto& [shipped, userText] = catalogue.texts();
    const json::Document user(userText);
    const auto odd =
        userText.empty() ? std::vector<host::ActionEntryFinding>() : host::actionEntryFindings(shipped, user.root());
    std::vector<host::StartWarning> leftOut = shortcuts::unreadActions().warnings;
    std::vector<Finding> findings;
    std::transform(leftOut.begin(), leftOut.end(), std::back_inserter(findings), notInProfile);
    for (const auto& finding : odd) {
        const host::StartWarning& warning = finding.warning;
        if (countsAsSomething(finding)) {
            findings.push_back({Severity::Warning, warning.text,
                                "Correct the entry if the profile is to have something else than what it counts as.",
                                std::nullopt});
        } else {
            findings.push_back(notInProfile(warning));
            leftOut.push_back(warning);
        }
    }
    shortcuts::addTheFirst(std::move(findings), output);
    output.members([&](JsonWriter& json) {
        json.objects("skipped", leftOut, [&](const host::StartWarning& warning) {
            json.member("action", warning.action);
            json.member("holder", warning.holder);
            json.member("why", warning.text);
        });
    });
}

void exportProfile(const std::string& file, Output& output) {
    const KnownShortcuts known(output);
    if (!known.areThere() || !isUsersFileRead(file, output) || !mayBeWritten(file, output)) {
        return;
    }
    const std::vector<ShortcutRow> rows = shortcuts::rowsOfProfile(known.rows());
    if (!writeResult(file, shortcuts::profileOf(rows), output)) {
        return;
    }
    output.line("Actions in it: {}", rows.size());
    output.members([&](JsonWriter& json) {
        json.list("actions", rows, [&](const ShortcutRow& row) { json.integer(row.action.id); });
    });
    tellLeftOut(output);
}

Work declareExport(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    addName(arguments, "PROFILE", *file, "The file to be written")->required();
    return [file](Output& output) { exportProfile(*file, output); };
}

}  // namespace

const Subcommand kExport{"export", "Write the user's shortcuts and menu flags into a profile",
                         "$ zelutil export mine.json\n"
                         "Written to mine.json\n"
                         "Actions in it: 5",
                         FindingsAre::BesideResult, declareExport};

}  // namespace zelutil::command
