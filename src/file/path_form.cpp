#include "file/path_form.h"

#include <atomic>

namespace zelutil::file {
namespace {

std::atomic<PathForm> form{PathForm::Shell};
std::atomic<bool> isSettled{false};

}  // namespace

bool choosePathForm(PathForm wanted) {
    if (!isSettled) {
        form = wanted;
    }
    return form == wanted;
}

PathForm pathForm() { return form; }

void settlePathForm() { isSettled = true; }

std::string textToOpen(const ZelU::File::Path& path) {
    settlePathForm();
    return form == PathForm::Plain ? std::string(static_cast<const char*>(path)) : path.GetPath4Shell();
}

}  // namespace zelutil::file
