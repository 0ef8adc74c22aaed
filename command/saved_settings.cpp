#include "command/saved_settings.h"

#include <utility>

#include "command/doctor/diagnosis.h"
#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/obstacle_advice.h"
#include "command/text.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

using host::SaveResult;
using host::SettingInfo;
using Status = SaveResult::Status;

std::vector<SettingChange> changesSince(const std::vector<SettingInfo>& before) {
    std::vector<SettingChange> changes;
    for (const SettingInfo& setting : before) {
        host::SettingInfo now = host::setting(findableName(setting)).value_or(setting);
        changes.push_back({setting, std::move(now.value), now.setByUser});
    }
    return changes;
}

void tellChanges(const std::vector<SettingChange>& changes, Output& output) {
    for (const auto& [before, now, isUsers] : changes) {
        const std::string name = output.shown(Role::Name, before.fullName);
        const std::string value = output.shownValue(Role::Value, now);
        if (before.value == now && before.setByUser == isUsers) {
            output.line("{}: {}, as before", name, value);
        } else if (before.value == now) {
            const char* const whose = isUsers ? "the user's own value now" : "no longer the user's own value";
            output.line("{}: {}, the default, and {}", name, value, whose);
        } else {
            output.line("{}: {} -> {}", name, output.shownValue(Role::Old, before.value), value);
        }
    }
}

void tellFile(const SaveResult& result, Output& output) {
    const char* const outcome = result.status == Status::Saved ? "Saved in" : "Nothing changed in";
    output.line("{} {}", outcome, output.shown(Role::Faint, nativeOrAsItStands(result.path)));
    if (prefs::isWrittenUserFileRedirected()) {
        output.add({Severity::Note, "The variable regression_testing has files saved in the current directory.",
                    "Unset it to have them saved where \"zelutil doctor\" says that they are read.", std::nullopt});
    }
}

/// Tells the reason that the doctor knows. Another one, as a full disk, is over soon or comes back by turns.
void tellNotWritten(const std::string& file, Output& output) {
    if (const auto obstacle = obstacleToSaving(diagnose())) {
        output.fail("Nothing was saved. " + obstacle->text, obstacle->advice);
    } else {
        output.fail("Nothing was saved, because \"" + file + "\" could not be written.",
                    "See whether the file and its directory may be written and the disk has room, and try again.");
    }
}

/// Tells why nothing was saved, or not all.
void tellFailure(const SaveResult& result, Output& output) {
    const std::string file = nativeOrAsItStands(result.path);
    switch (result.status) {
        case Status::NoDefaults:
            output.fail("Nothing was saved, because there are no shipped defaults.",
                        adviceWithoutDefaults(areDefaultsNamed()));
            break;
        case Status::NoPath:
            output.fail("Nothing was saved, because there is no place for the user's file: \"" + file + "\".",
                        adviceOnUserPath(result.path));
            break;
        case Status::NotKept:
            output.fail("Nothing was saved: \"" + file + "\" could not be read, and no copy could be kept beside it.",
                        "Take the file away or make room for a copy, and try again.");
            break;
        case Status::NotWritten:
            tellNotWritten(file, output);
            break;
        case Status::Torn:
            output.fail("\"" + file + "\" was only written in part.", "Make room on the disk, and try again at once.");
            break;
        default:
            output.fail(result.text, "Try again.");
            break;
    }
}

void tellConflicts(const SaveResult& result, Output& output) {
    for (const host::Conflict& conflict : result.conflicts) {
        const std::string name =
            conflict.setting.empty() ? "Action " + std::to_string(conflict.action) : conflict.setting;
        output.add({Severity::Warning,
                    name + " was changed by another process meanwhile, to \"" + conflict.theirs +
                        "\"; the file has \"" + conflict.ours + "\" now.",
                    conflict.setting.empty() ? "See which one is wanted: \"zelutil shortcuts --changed\" shows them."
                                             : "\"zelutil set\" brings the other value back.",
                    std::nullopt});
    }
}

void tellObstacles(const SaveResult& result, Output& output) {
    for (const host::NotRestored& item : result.notRestored) {
        output.add({Severity::Warning, item.text, adviceOn(item.obstacle), std::nullopt});
    }
    for (const std::string& name : result.settingsOfOthers) {
        output.add({Severity::Note, name + ": the file has what another process saved meanwhile.", "", std::nullopt});
    }
    for (const std::string& name : result.unknownSettings) {
        output.add({Severity::Error, "There is no setting \"" + name + "\".", "\"zelutil list\" shows all names.",
                    std::nullopt});
    }
    if (!result.keptCopy.empty()) {
        output.add({Severity::Warning,
                    "What was there could not be taken over whole; it is kept as \"" +
                        nativeOrAsItStands(result.keptCopy) + "\".",
                    "Take from it by hand whatever is still wanted.", std::nullopt});
    }
}

void writeSave(const std::vector<SettingChange>& changes, const BeforeSave& places, const SaveResult& result,
               JsonWriter& json) {
    json.objects("settings", changes, [&](const SettingChange& change) {
        json.member("name", change.before.fullName);
        json.member("before", change.before.value);
        json.member("value", change.value);
    });
    json.key("save");
    json.beginObject();
    json.member("status", nameOf(result.status));
    json.member("file", nativeOrAsItStands(result.path));
    if (!result.keptCopy.empty()) {
        json.member("keptCopy", nativeOrAsItStands(result.keptCopy));
    }
    if (const std::string made = madeDirectory(places); !made.empty()) {
        json.member("madeDirectory", made);
    }
    json.endObject();
}

}  // namespace

std::optional<SaveResult> nothingToSave() {
    if (prefs::isWrittenUserFileRedirected()) {
        return std::nullopt;
    }
    SaveResult result;
    result.status = Status::Unchanged;
    result.path = prefs::writtenUserFilePath();
    return result;
}

std::string nameOf(Status status) {
    switch (status) {
        case Status::Saved:
            return "saved";
        case Status::Unchanged:
            return "unchanged";
        case Status::NoDefaults:
            return "noDefaults";
        case Status::NoPath:
            return "noPath";
        case Status::NotKept:
            return "notKept";
        case Status::NotWritten:
            return "notWritten";
        case Status::Torn:
            return "torn";
        case Status::TooDeep:
            return "tooDeep";
        case Status::Starting:
            break;
    }
    return "starting";
}

void tellSaved(const std::vector<SettingInfo>& before, const BeforeSave& places, const SaveResult& result,
               Output& output) {
    // If nothing was written, the new values are in force in this process alone.
    tellChanged(result.ok() ? changesSince(before) : std::vector<SettingChange>(), places, result, output);
}

void tellChanged(const std::vector<SettingChange>& changes, const BeforeSave& places, const SaveResult& result,
                 Output& output, const std::string& reason) {
    putRight(places, result, output);
    tellConflicts(result, output);
    tellObstacles(result, output);
    output.members([&](JsonWriter& json) { writeSave(changes, places, result, json); });
    if (!reason.empty()) {
        output.fail(reason, isOutOfReach(prefs::userFilePath()) ? adviceOnUserPath(prefs::userFilePath())
                                                                : "Nothing was done. Try again once that is mended.");
        return;
    }
    if (result.ok()) {
        tellChanges(changes, output);
    }
    // A save that fails may have got that far.
    if (const std::string made = madeDirectory(places); !made.empty()) {
        output.line("Made the directory {}", output.shown(Role::Faint, made));
    }
    if (result.ok()) {
        tellFile(result, output);
    } else {
        tellFailure(result, output);
    }
}

}  // namespace zelutil::command
