#include "command/html/preference_places.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "facet/facet_groups.h"
#include "file/hierarchy_root.h"
#include "file/installed_file.h"
#include "platform/native_paths.h"
#include "platform/replacement_name.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

namespace fs = std::filesystem;

/// Returns the path without links, as far as it is there.
fs::path withoutLinks(const fs::path& path) {
    std::error_code error;
    fs::path real = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path.lexically_normal() : real;
}

bool isSamePlace(const fs::path& one, const fs::path& other) {
    std::error_code ignored;
    return fs::equivalent(one, other, ignored) || withoutLinks(one) == withoutLinks(other);
}

/// Returns whether the file is the one at the place, or a copy of it that a save kept.
bool isFileOrCopy(const fs::path& file, const fs::path& place) {
    return isSamePlace(file, place) || (platform::isKeptName(file.filename().native(), place.filename().native()) &&
                                        isSamePlace(file.parent_path(), place.parent_path()));
}

/// Systems differ in whether the case of letters counts in names.
fs::path inLowerCase(const fs::path& name) {
    std::string lower = name.u8string();
    std::transform(lower.begin(), lower.end(), lower.begin(), ascii::lowerCase);
    return fs::u8path(lower);
}

bool hasNameOfPreferences(const fs::path& path) {
    const fs::path name = inLowerCase(path.filename());
    const fs::path settings = prefs::kSettingsFileName;
    return name == settings || name == facet::kFacetFileName ||
           platform::isKeptName(name.native(), settings.native()) ||
           platform::isReplacementName(name.native(), settings.native());
}

/// Returns the files of this installation and user, whatever their names are.
std::vector<fs::path> placesInForce() {
    text::SearchTrace silent(text::SearchTrace::Until::Found);
    ZelU::File::Path root;
    const ZelU::File::Path* const installation = file::locateRoot(root, silent) ? &root : nullptr;
    std::vector<fs::path> places;
    for (std::string text : {prefs::defaultsFilePath(installation, silent), prefs::userFilePath(silent),
                             prefs::writtenUserFilePath(silent),
                             file::installedSettingsFile(facet::kFacetFileName, installation, silent)}) {
        // A path with a blank stands in quotes.
        text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
        places.push_back(platform::nativePathOf(text.c_str()));
    }
    return places;
}

}  // namespace

bool isPlaceOfPreferences(const fs::path& path) {
    const fs::path real = withoutLinks(path);
    if (hasNameOfPreferences(path) || hasNameOfPreferences(real)) {
        return true;
    }
    const std::vector<fs::path> places = placesInForce();
    return std::any_of(places.begin(), places.end(),
                       [&](const fs::path& place) { return !place.empty() && isFileOrCopy(real, place); });
}

}  // namespace zelutil::command
