#include "command/html/result_file.h"

#include "command/text.h"
#include "json/document.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/replace_file.h"
#include "platform/world.h"

namespace zelutil::command {
namespace {

void tellUnwritten(const std::string& file, platform::Replaced result, Output& output) {
    if (result == platform::Replaced::Torn) {
        output.fail("\"" + file + "\" was only written in part.", "Make room on the disk, and try again at once.");
    } else {
        output.fail("\"" + file + "\" could not be written.",
                    "See whether its directory is there, may be written and has room, and try again.");
    }
}

/// Returns whether the file is there and is JSON that begins with a bracket.
bool holdsJson(const std::string& file) {
    const platform::OutsideTheWorld thisMachine;
    const auto libraryPath = platform::textOfNativePath(pathOf(file));
    const auto bytes = libraryPath && platform::namesFile(libraryPath->c_str())
                           ? platform::readFile(libraryPath->c_str(), json::kMaximumTextSize)
                           : std::nullopt;
    if (!bytes) {
        return false;
    }
    const std::size_t first = bytes->find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    return first != std::string::npos && ((*bytes)[first] == '{' || (*bytes)[first] == '[') &&
           json::Document(*bytes).valid();
}

}  // namespace

bool writePage(const std::string& file, const std::string& text, Output& output) {
    if (holdsJson(file)) {
        output.fail("\"" + file + "\" is there and holds JSON, as preferences and profiles do, so it stays as it is.",
                    "Name another file, or take it away.");
        return false;
    }
    return writeResult(file, text, output);
}

bool writeResult(const std::string& file, const std::string& text, Output& output) {
    // Also with another machine's files in the place of this one's.
    const platform::OutsideTheWorld thisMachine;
    const std::filesystem::path path = pathOf(file);
    const auto libraryPath = platform::textOfNativePath(path);
    const bool isNamed = libraryPath && platform::namesFile(libraryPath->c_str());
    const auto result = isNamed ? platform::replaceFile(libraryPath->c_str(), text) : platform::Replaced::No;
    if (result != platform::Replaced::Yes) {
        tellUnwritten(file, result, output);
        return false;
    }
    const std::string written = textOf(path);
    output.line("Written to {}", output.shown(Role::Faint, written));
    output.members([&](JsonWriter& json) { json.member("file", written); });
    return true;
}

}  // namespace zelutil::command
