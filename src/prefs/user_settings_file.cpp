#include "prefs/user_settings_file.h"

#include <cstdint>
#include <utility>

#include "json/document.h"
#include "platform/platform.h"
#include "platform/replace_file.h"

namespace zelutil::prefs {
namespace {

constexpr char kBadSuffix[] = ".bad";

/// Many times what a user's file can be; a larger one is no settings gone wrong.
constexpr std::uint64_t kLargestFileKept = json::kMaximumTextSize * 4;

constexpr char kSeparators[] = "\\/";

/// The path without the file's name and the separators before it.
std::string directoryOf(const std::string& path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == std::string::npos) {
        return {};
    }
    return path.substr(0, path.find_last_not_of(kSeparators, separator) + 1);
}

/// `readable` is a text known to be readable, to save the look into a file that holds just that.
void keepUnreadable(const std::string& path, const std::string& readable) {
    static bool kept = false;
    if (kept) {
        return;
    }
    const auto bytes = platform::readFile(path.c_str(), kLargestFileKept);
    if (bytes && !bytes->empty() && *bytes != readable && !json::Document(*bytes).valid()) {
        kept = platform::replaceFile((path + kBadSuffix).c_str(), *bytes) == platform::Replaced::Yes;
    }
}

}  // namespace

void writeUserSettingsFile(const std::string& path, std::string text) {
    static std::string lastWritten;
    platform::makeDirectories(directoryOf(path).c_str());
    keepUnreadable(path, lastWritten);
    platform::replaceFile(path.c_str(), text);
    lastWritten = std::move(text);
}

}  // namespace zelutil::prefs
