// zelutil export: the user's shortcuts and menu flags, for another installation.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

#include <zelutil/host/start.h>

#include "command/arguments.h"
#include "command/html/result_file.h"
#include "command/input_file.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/profile.h"
#include "command/shortcuts/wish_text.h"
#include "command/subcommands/table.h"
#include "command/text.h"

namespace zelutil::command {
namespace {

using shortcuts::KnownShortcuts;
using shortcuts::ShortcutRow;

/// Another file than a profile is not written over.
bool mayBeWritten(const std::string& file, Output& output) {
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
    const std::vector<host::StartWarning> warnings = host::startWarnings();
    const bool isRead = std::none_of(warnings.begin(), warnings.end(), [](const host::StartWarning& warning) {
        return warning.kind == host::StartWarning::Kind::FileNotRead;
    });
    if (!isRead) {
        output.fail("The user's file was not read, so \"" + file + "\" is not written.",
                    "\"zelutil doctor\" says what is wrong with the user's file.");
    }
    return isRead;
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
}

Work declareExport(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    addText(arguments, "PROFILE", *file, "The file to be written")->required();
    return [file](Output& output) { exportProfile(*file, output); };
}

}  // namespace

const Subcommand kExport{"export", "Write the user's shortcuts and menu flags into a profile",
                         "$ zelutil export mine.json\n"
                         "Written to mine.json\n"
                         "Actions in it: 5",
                         FindingsAre::BesideResult, declareExport};

}  // namespace zelutil::command
