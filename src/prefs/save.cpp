#include "prefs/save.h"

#include <zelutil/prefs/user_preference_server.h>

#include <string>
#include <utility>

#include "prefs/preference_files.h"

namespace zelutil::prefs {

void save(Catalogue& catalogue, UserSettingsFile& file, const SaveRequest& request) {
    const SaveValues values(catalogue, request);
    // The common library may call the host back here, and the host may save: this save goes on with its own values.
    const std::string path = writtenUserFilePath();
    auto plan = planSave(catalogue, values);
    if (!plan) {
        return;
    }
    const SaveValues::SubManagerText* const given = values.textOf(SubManagerType::Actions);
    std::string actions = given == nullptr ? std::string() : given->text;
    catalogue.putInForce(std::move(plan->newValues));
    if (plan->fileText && file.write(path, *plan->fileText).written == UserSettingsFile::Written::Yes) {
        catalogue.restartJournal(std::move(plan->journal));
        file.noteActions(std::move(actions));
    }
    // An observer may save in its turn: the catalogue is whole again, and the plan is this save's own.
    ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged(plan->changedNames, plan->changedTexts);
}

}  // namespace zelutil::prefs
