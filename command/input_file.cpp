#include "command/input_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "command/text.h"
#include "command/world/bundled_world.h"
#include "json/document.h"

namespace zelutil::command {

namespace fs = std::filesystem;

namespace {

/// Tells `output` why the file at a place of this machine cannot be read, by the name that people gave it, and returns
/// true; false where it can be opened.
bool tellUnreadable(const fs::path& place, const std::string& name, Output& output) {
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    if (error == std::errc::too_many_symbolic_link_levels) {
        output.fail('"' + name + "\" is a link that leads round in a circle.",
                    "Have the link lead to the file, or name the file itself.");
        return true;
    }
    // To open a pipe would wait for whoever writes into it.
    if (fs::is_other(status)) {
        output.fail('"' + name + "\" is no regular file.",
                    "Write what is to be read into a file first, and name that.");
        return true;
    }
    if (fs::is_directory(status) || !std::ifstream(place, std::ios::binary).is_open()) {
        output.fail("The file \"" + name + "\" could not be read.",
                    "See whether it is there, is a file and may be read.");
        return true;
    }
    return false;
}

}  // namespace

std::optional<fs::path> placeOfInput(const std::string& argument, const char* used, Output& output) {
    const fs::path path = pathOf(argument);
    const world::ArgumentPlace place = world::placeOfArgument(path);
    if (tellUnreadable(place.path, textOf(path), output)) {
        return std::nullopt;
    }
    if (place.isBesideBundle) {
        output.add({Severity::Note,
                    std::string("The bundle has no such file, so that this machine's was ") + used + '.', "",
                    Place{textOf(path), std::nullopt, std::nullopt}});
    }
    return place.path;
}

std::optional<std::string> readInput(const std::string& argument, Output& output) {
    const std::optional<fs::path> place = placeOfInput(argument, "read", output);
    if (!place) {
        return std::nullopt;
    }
    std::error_code ignored;
    if (fs::file_size(*place, ignored) > json::kMaximumTextSize) {
        output.fail("The file \"" + textOf(pathOf(argument)) + "\" is too large.", "At most 64 MiB are read.");
        return std::nullopt;
    }
    std::ifstream stream(*place, std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace zelutil::command
