#ifndef ZELUTIL_FILE_PATH_FORM_H
#define ZELUTIL_FILE_PATH_FORM_H

#include <zelutil/file/path.h>

#include <string>

/// The form in which the library opens the preference and facet files. A process settles it once.
namespace zelutil::file {

enum class PathForm {
    /// In double quotes where the path holds a blank, so that nothing is read or written there.
    Shell,
    /// As the path stands.
    Plain,
};

/// Sets the form. False, with nothing changed, once it is settled in the other one.
bool choosePathForm(PathForm wanted);

PathForm pathForm();

/// Has the form settled as it is.
void settlePathForm();

/// Returns the text in that form, which is settled from then on.
std::string textToOpen(const ZelU::File::Path& path);

}  // namespace zelutil::file

#endif
