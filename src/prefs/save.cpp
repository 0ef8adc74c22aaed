#include "prefs/save.h"

#include <zelutil/prefs/user_preference_server.h>

#include <string>
#include <utility>

#include "prefs/preference_files.h"

namespace zelutil::prefs {
namespace {

bool isIn(const SavePlan& plan, SubManagerType type, const std::string& text) {
    const auto found = plan.changedTexts.find(type);
    return found != plan.changedTexts.end() && found->second == text;
}

/// Returns the texts that a host handed over and that the plan has.
SubManagerTexts handedOver(const SavePlan& plan, const SubManagerTexts& texts) {
    SubManagerTexts handed;
    for (const auto& [type, text] : texts) {
        if (type != SubManagerType::Actions && isIn(plan, type, text)) {
            handed.emplace(type, text);
        }
    }
    return handed;
}

bool hasHostsActions(const SavePlan& plan, const SubManagerTexts& texts) {
    const auto handed = texts.find(SubManagerType::Actions);
    return handed != texts.end() && isIn(plan, handed->first, handed->second);
}

/// Keeps them for the next save.
void keepUsersSettings(const Catalogue& catalogue, SavePlan& plan) noexcept {
    if (plan.usersSettings) {
        catalogue.keptForSaves().usersSettings = std::move(*plan.usersSettings);
        catalogue.keptForSaves().changesThen = catalogue.changes();
    }
}

}  // namespace

void save(Catalogue& catalogue, UserSettingsFile& file, const SaveRequest& request) {
    const SaveValues values(catalogue, request);
    // The common library may call the host back here, and the host may save: this save goes on with its own values.
    std::string path = writtenUserFilePath();
    auto plan = planSave(catalogue, values);
    if (!plan) {
        return;
    }
    // Before anything is done, for it needs memory.
    SubManagerTexts texts = handedOver(*plan, request.subManagerTexts);
    const bool isHosts = hasHostsActions(*plan, request.subManagerTexts);
    catalogue.putInForce(std::move(plan->newValues));
    keepUsersSettings(catalogue, *plan);
    if (plan->fileText && file.write(path, std::move(*plan->fileText)).written == UserSettingsFile::Written::Yes) {
        catalogue.restartJournal(std::move(plan->journal));
        catalogue.handedOver().written({std::move(path), std::move(plan->actionsText), isHosts}, std::move(texts));
    } else {
        catalogue.handedOver().notWritten(std::move(texts));
    }
    // An observer may save in its turn: the catalogue is whole again, and the plan is this save's own.
    ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged(plan->changedNames, plan->changedTexts);
}

}  // namespace zelutil::prefs
