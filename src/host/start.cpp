#include <zelutil/host/start.h>

#include "file/path_form.h"
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

std::string userFilePath() { return prefs::writtenUserFilePath(); }

}  // namespace zelutil::host
