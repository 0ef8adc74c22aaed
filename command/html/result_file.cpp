#include "command/html/result_file.h"

#include "command/text.h"
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

}  // namespace

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
