#include <zelutil/host/save.h>

#include <zelutil/actions/action_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "actions/manager_access.h"
#include "host/action_reset.h"
#include "host/current_preferences.h"
#include "host/nesting.h"
#include "host/save_plan.h"
#include "host/save_state.h"
#include "host/save_status.h"
#include "host/save_text.h"
#include "host/subscription.h"
#include "json/document.h"
#include "platform/file_turn.h"
#include "platform/replace_file.h"
#include "prefs/preference_files.h"

namespace zelutil::host {
namespace {

using Status = SaveResult::Status;

constexpr int kReadingAttempts = 3;

actions::ActionCatalogue& currentActions() { return actions::ManagerAccess::catalogueOf(UCPActionManager::instance()); }

/// Holds what the file held just now.
struct FileNow {
    /// Nothing when there is no file and when it cannot be read.
    std::optional<std::string> text;
    prefs::UserSettingsFile::Seen seen = prefs::UserSettingsFile::Seen::Yes;
};

/// Reads the file. One that cannot be read is not given up at once: what another process saved there would be lost.
FileNow read(const std::string& path) {
    // The file that the saves of a regression test go to is nobody else's, and the one that was read is another.
    if (prefs::isWrittenUserFileRedirected() && saveState().path != path) {
        return {};
    }
    for (int attempt = 0; attempt < kReadingAttempts; ++attempt) {
        auto file = platform::readWhole(path.c_str(), json::kMaximumTextSize);
        if (file.bytes || !file.mayBeThere) {
            return {std::move(file.bytes)};
        }
    }
    return {std::nullopt, prefs::UserSettingsFile::Seen::No};
}

struct Planned {
    FileNow now;
    SavePlan plan;
};

Planned readAndPlan(prefs::Catalogue& catalogue, const prefs::UserSettingsFile& file, const SettingsRequest& request,
                    const std::string& path) {
    bringUpToDate(catalogue, currentActions(), file);
    Planned planned;
    planned.now = read(path);
    forgetOtherFile(catalogue, file, path, planned.now.text);
    planned.plan = planSave(catalogue, currentActions(), saveState(), request, planned.now.text);
    return planned;
}

bool isLeftUnread(const Planned& planned) {
    return !planned.plan.isToBeWritten && planned.now.seen == prefs::UserSettingsFile::Seen::No;
}

/// Takes the text out of the plan.
Status write(prefs::UserSettingsFile& file, Planned& planned, SaveResult& result) {
    if (!planned.plan.settings.hasSections) {
        return Status::NoDefaults;
    }
    // A value that was reset here may still be in a file that cannot be read.
    if (!planned.plan.text || isLeftUnread(planned)) {
        return Status::NotWritten;
    }
    if (!planned.plan.isToBeWritten) {
        return Status::Unchanged;
    }
    // An entry that the text lacks is as good as not seen.
    const auto seen = planned.plan.losesContent ? prefs::UserSettingsFile::Seen::No : planned.now.seen;
    auto written = file.write(result.path, std::move(*planned.plan.text), seen);
    result.keptCopy = std::move(written.keptCopy);
    return statusOf(written.written);
}

/// Sets the text of the result. A lack of memory for it undoes nothing that was done.
void describe(const Planned& planned, bool tookTurn, SaveResult& result) noexcept {
    try {
        if (planned.plan.settings.hasSections && !planned.plan.text) {
            result.text = textOfUnreadable(result);
        } else {
            result.text = isLeftUnread(planned) && result.status == Status::NotWritten ? textOfUnread(result)
                                                                                       : textOf(result, tookTurn);
        }
    } catch (const std::bad_alloc&) {
        result.text.clear();
    }
}

/// Returns what the observers of sub-managers are to be told. Of one change that cannot be written they are told once.
prefs::SubManagerTexts changedTexts(const SavePlan& plan) {
    prefs::SubManagerTexts changed;
    if (plan.changesActions && saveState().toldActions != plan.actions.text) {
        changed.emplace(prefs::SubManagerType::Actions, plan.actions.text);
    }
    return changed;
}

/// Reads, plans and writes in one turn. Returns what the observers of sub-managers are to be told.
prefs::SubManagerTexts saveInTurn(prefs::Catalogue& catalogue, prefs::UserSettingsFile& file,
                                  const SettingsRequest& request, SaveResult& result) {
    // Without a directory there is nobody to wait for, and where nothing is to be saved it is not made.
    const bool hasDirectory = prefs::UserSettingsFile::hasDirectoryOf(result.path);
    std::optional<platform::FileTurn> turn;
    Planned planned;
    if (!hasDirectory) {
        planned = readAndPlan(catalogue, file, request, result.path);
    }
    if (hasDirectory || planned.plan.isToBeWritten) {
        prefs::UserSettingsFile::makeDirectoryOf(result.path);
        turn.emplace(result.path.c_str());
        planned = readAndPlan(catalogue, file, request, result.path);
    }
    SavePlan& plan = planned.plan;
    prefs::SubManagerTexts changed = changedTexts(plan);
    std::optional<std::string> told = plan.changesActions ? std::optional(plan.actions.text) : std::nullopt;
    const bool isTheFileFromNowOn = plan.isToBeWritten || !prefs::isWrittenUserFileRedirected();
    std::optional<std::string> path = isTheFileFromNowOn ? std::optional(result.path) : std::nullopt;
    report(plan, result);
    catalogue.putInForce(std::move(plan.settings.newValues), plan.settings.takenBack);
    result.status = write(file, planned, result);
    describe(planned, !turn || turn->isTaken(), result);
    if (result.ok()) {
        remember(catalogue, plan, std::move(path));
    }
    saveState().toldActions = result.ok() ? std::nullopt : std::move(told);
    return changed;
}

void saveNow(const SettingsRequest& request, SaveResult& result) {
    prefs::Preferences* const preferences = currentPreferences();
    if (arePreferencesBeingMade()) {
        result.status = Status::Starting;
        result.text = textOf(result, true);
        return;
    }
    if (preferences == nullptr) {
        result.status = Status::NoDefaults;
        result.text = "Nothing was saved, because the preferences are gone at the end of the process.";
        return;
    }
    // The common library and the observers may call the host back, which may assign the manager and so end its share,
    // and which may save: this save goes on with what is in force then.
    const std::shared_ptr<prefs::UserSettingsFile> file = preferences->userFile;
    result.path = prefs::writtenUserFilePath();
    const auto changedTexts = saveInTurn(preferences->catalogue, *file, request, result);
    if (!result.changedSettings.empty() || !changedTexts.empty()) {
        attachToPreferencesAgain();
        ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged(result.changedSettings, changedTexts);
    }
}

/// Saves and resets count together.
Nesting saves(kMaximumSaveDepth);

/// `work` is told the result and does the saving.
template <typename Work>
SaveResult unlessTooDeep(Work work) {
    const Nesting::Call save(saves);
    SaveResult result;
    if (save.admitted()) {
        work(result);
    } else {
        result.status = Status::TooDeep;
        result.text = textOf(result, true);
    }
    return result;
}

/// `reset` edits the actions and returns what it did. Observers of the actions may save meanwhile.
template <typename Reset>
SaveResult saveAfter(Reset reset) {
    return unlessTooDeep([&](SaveResult& result) {
        if (currentPreferences() != nullptr) {
            ActionsReset done = reset(currentActions());
            rememberReset(currentActions(), std::move(done.touched));
            result.notRestored = std::move(done.refused);
        }
        SettingsRequest request;
        request.followsResetOfActions = true;
        saveNow(request, result);
    });
}

}  // namespace

SaveResult save(const std::map<std::string, std::string>& settings) {
    // The host may change its own while it is called back.
    const std::map<std::string, std::string> values = settings;
    SettingsRequest request;
    request.values = &values;
    return unlessTooDeep([&](SaveResult& result) { saveNow(request, result); });
}

SaveResult reset(const std::vector<std::string>& settings) {
    const std::vector<std::string> names = settings;
    SettingsRequest request;
    request.resets = &names;
    return unlessTooDeep([&](SaveResult& result) { saveNow(request, result); });
}

SaveResult resetShortcuts(const std::vector<int>& ids) {
    return saveAfter([&](actions::ActionCatalogue& catalogue) { return resetActions(catalogue, ids); });
}

SaveResult resetAllShortcuts() {
    return saveAfter([](actions::ActionCatalogue& catalogue) { return resetAllActions(catalogue); });
}

}  // namespace zelutil::host
