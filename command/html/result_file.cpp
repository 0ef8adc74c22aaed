#include "command/html/result_file.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include "command/html/preference_places.h"
#include "command/spelling_advice.h"
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

/// Returns whether the text is a page or a sheet that the command has made, in whatever language of these.
bool isOwnPage(std::string_view text) {
    constexpr std::string_view kBeginnings[] = {
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; ",
        "# Keyboard shortcuts\n", "context,shortcut,action,command,id,"};
    return std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                       [&](std::string_view beginning) { return text.substr(0, beginning.size()) == beginning; });
}

/// Returns whether something is there that a page would destroy.
bool holdsSomethingElse(const std::string& file) {
    const platform::OutsideTheWorld thisMachine;
    const auto libraryPath = platform::textOfNativePath(pathOf(file));
    std::error_code ignored;
    if (!libraryPath || !std::filesystem::is_regular_file(pathOf(file), ignored)) {
        return false;
    }
    const auto bytes = platform::readFile(libraryPath->c_str(), json::kMaximumTextSize);
    return !bytes || (!bytes->empty() && !isOwnPage(*bytes));
}

}  // namespace

bool mayTakePlace(const std::string& file, Output& output) {
    if (!isPlaceOfPreferences(pathOf(file))) {
        return true;
    }
    output.fail("\"" + file + "\" is where preferences are kept, so nothing else is written there.",
                "Name another file.");
    return false;
}

bool writePage(const std::string& file, const std::string& text, Output& output) {
    if (!mayTakePlace(file, output)) {
        return false;
    }
    if (holdsSomethingElse(file)) {
        output.fail("\"" + file + "\" is there and is no page or sheet of this command, so it stays as it is.",
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
    if (!isNamed) {
        output.fail("\"" + file + "\" could not be written, because the library has no spelling for its path.",
                    kOnlySpellable);
        return false;
    }
    const auto result = platform::replaceFile(libraryPath->c_str(), text);
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
