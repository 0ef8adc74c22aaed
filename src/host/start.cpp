#include <zelutil/host/start.h>

#include "file/path_form.h"
#include "host/current_preferences.h"
#include "prefs/preference_files.h"

namespace zelutil::host {

bool setOptions(const Options& options) {
    return file::choosePathForm(options.pathsWithBlanks ? file::PathForm::Plain : file::PathForm::Shell);
}

Options options() {
    Options inForce;
    inForce.pathsWithBlanks = file::pathForm() == file::PathForm::Plain;
    return inForce;
}

std::vector<StartWarning> startWarnings() {
    std::vector<StartWarning> warnings;
    const prefs::Preferences* const preferences = currentPreferences();
    if (preferences == nullptr) {
        return warnings;
    }
    if (const auto& unread = preferences->userFile->unreadAtStart()) {
        StartWarning& warning = warnings.emplace_back();
        warning.kind = StartWarning::Kind::FileNotRead;
        warning.text = "The file " + *unread +
                       " could not be read or is no JSON, so the shipped defaults are in force. A copy of it is kept "
                       "before it is first overwritten.";
    }
    return warnings;
}

std::string userFilePath() { return prefs::writtenUserFilePath(); }

}  // namespace zelutil::host
