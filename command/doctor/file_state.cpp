#include "command/doctor/file_state.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "command/json_failure.h"
#include "command/sections.h"
#include "command/system/rights.h"
#include "command/text.h"
#include "command/world/bundled_world.h"
#include "json/located_document.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/replacement_name.h"
#include "platform/world.h"

namespace zelutil::command {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostShown = 40;

/// A longer path is too long by itself for the system, whose calls take no more.
constexpr std::size_t kMostInPath = 4095;

FileState::Remark remark(std::string text, const json::Position& position) {
    return {std::move(text), static_cast<int>(position.line), static_cast<int>(position.column)};
}

/// Returns the beginning of what stands at a place, up to the line's end.
std::string textAt(std::string_view text, std::size_t offset) {
    const std::string_view rest = text.substr(std::min(offset, text.size()));
    return beginningOf(rest.substr(0, rest.find_first_of("\r\n")), kMostShown);
}

FileState::Remark malformedBy(const json::LocatedDocument& document) {
    const auto failure = *document.failure();
    const std::string there = textAt(document.text(), failure.position.offset);
    return remark(textOfFailure(document) + (there.empty() ? " The text ends there." : " There stands: " + there),
                  failure.position);
}

/// Returns the first byte that is no part of UTF-8.
std::optional<FileState::Remark> notUtf8In(const json::LocatedDocument& document) {
    const auto bad = badBytesOf(document.text());
    if (!bad) {
        return std::nullopt;
    }
    return remark("The byte " + nameOfByte(document.text()[bad->first]) + " in it is no part of UTF-8.",
                  document.positionAt(bad->first));
}

/// Fills in what a JSON text tells.
void tellContent(FileState& state, const json::LocatedDocument& document) {
    state.notUtf8 = notUtf8In(document);
    state.lacksGroups = !document.root().member(prefs::kMeta).isArray();
    state.lacksDefaults = true;
    state.holdsNoSection = holdsNoSection(document.root());
    prefs::forEachSection(document.root(), [&](const prefs::VisitedSection& visited) {
        state.lacksDefaults = state.lacksDefaults && !visited.element.member(prefs::kDefaultSettings);
    });
}

/// Fills in what the bytes tell, and returns them where they are JSON.
std::unique_ptr<const ReadFile> readInto(FileState& state, const std::string& path) {
    auto bytes = platform::readFile(path.c_str(), json::kMaximumTextSize);
    if (!bytes) {
        state.kind = FileState::Kind::Unreadable;
        return nullptr;
    }
    auto read = std::make_unique<const ReadFile>(std::move(*bytes));
    if (!read->document.valid()) {
        state.kind = FileState::Kind::Malformed;
        state.malformed = malformedBy(read->document);
        return nullptr;
    }
    state.kind = FileState::Kind::Fine;
    tellContent(state, read->document);
    return read;
}

/// Looks for what saves left beside the file, which may be missing itself.
void lookBeside(FileState& state, const std::string& path) {
    const fs::path file = platform::nativePathOf(path.c_str());
    const fs::path target = file.filename();
    std::error_code ignored;
    const fs::path directory = file.parent_path();
    for (const fs::directory_entry& entry : fs::directory_iterator(platform::placeInWorld(directory), ignored)) {
        const fs::path name = entry.path().filename();
        if (platform::isReplacementName(name.native(), target.native())) {
            state.leftovers.push_back(textOf(directory / name));
        } else if (platform::isKeptName(name.native(), target.native())) {
            state.keptCopies.push_back(textOf(directory / name));
        }
    }
    std::sort(state.leftovers.begin(), state.leftovers.end());
    std::sort(state.keptCopies.begin(), state.keptCopies.end());
}

FileState::Kind kindOfText(const std::string& path) {
    if (path.empty()) {
        return FileState::Kind::NoPath;
    }
    if (path.front() == '"') {
        return FileState::Kind::InQuotes;
    }
    return platform::namesFile(path.c_str()) ? FileState::Kind::Missing : FileState::Kind::NotSpellable;
}

/// Returns whether the system says that something is there; false also where it says nothing.
bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(platform::placeInWorld(path), ignored);
}

bool isDirectory(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(platform::placeInWorld(path), ignored);
}

/// Returns why something may be there that the system does not tell of; `std::errc()` where nothing hides it.
std::errc hiddenBy(const fs::path& path) {
    const std::errc own = whyHidden(platform::placeInWorld(path));
    return platform::worldInForce == nullptr ? own : platform::worldInForce->hiddenBy(path.native(), own);
}

bool mayWriteThere(const fs::path& path) {
    const bool own = mayWrite(platform::placeInWorld(path));
    return platform::worldInForce == nullptr ? own : platform::worldInForce->mayWrite(path.native(), own);
}

bool isRegular(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(platform::placeInWorld(path), ignored);
}

/// Fills in the first link on the way to the file that leads round in a circle, or to nothing; returns whether there is
/// one.
bool lookForLink(FileState& state, const fs::path& file) {
    for (fs::path path = file; path.has_relative_path(); path = path.parent_path()) {
        if (world::leadsRound(path)) {
            state.kind = FileState::Kind::LinkCircle;
            state.link = textOf(path);
        } else if (const auto target = world::targetOfDeadLink(path)) {
            state.kind = FileState::Kind::DeadLink;
            state.link = textOf(path);
            state.linkTarget = textOf(*target);
        }
    }
    return !state.link.empty();
}

/// Returns whether a save makes the file that such a link leads to. In the place of a directory it makes none.
bool canMakeBehind(const FileState& state, const fs::path& file) {
    const fs::path directory = pathOf(state.linkTarget).parent_path();
    return state.kind == FileState::Kind::DeadLink && state.link == textOf(file) && isDirectory(directory) &&
           mayWriteThere(directory);
}

/// Returns the nearest thing above the file that is there; empty for none.
fs::path nearestThere(const fs::path& file) {
    fs::path directory = file.parent_path();
    while (directory.has_relative_path() && !isThere(directory)) {
        directory = directory.parent_path();
    }
    return directory;
}

/// Returns the first name on the way to the file that is too long; empty where the path is as a whole.
std::string longNameIn(const fs::path& file) {
    std::string name;
    for (fs::path path = file; path.has_relative_path(); path = path.parent_path()) {
        const bool isWhole = path.native().size() > kMostInPath && path.filename().native().size() <= kMostInName;
        name = hiddenBy(path) == std::errc::filename_too_long && !isWhole ? textOf(path.filename()) : name;
    }
    return name;
}

/// Fills in what hides the file.
void tellHidden(FileState& state, const fs::path& file, std::errc by) {
    state.writeable = false;
    state.kind = FileState::Kind::Unreadable;
    if (by == std::errc::filename_too_long) {
        state.kind = FileState::Kind::NameTooLong;
        state.longName = longNameIn(file);
    } else if (by == std::errc::permission_denied || by == std::errc::operation_not_permitted) {
        state.shutDirectory = textOf(nearestThere(file));
    } else {
        state.reason = std::make_error_code(by).message();
    }
}

/// Fills in why nothing is there: the way to it may be shut.
void lookAround(FileState& state, const fs::path& file, FileUse use) {
    if (lookForLink(state, file)) {
        state.writeable = canMakeBehind(state, file);
        return;
    }
    if (const std::errc by = hiddenBy(file); by != std::errc()) {
        tellHidden(state, file, by);
        return;
    }
    const fs::path nearest = nearestThere(file);
    if (use == FileUse::Users && !isDirectory(nearest)) {
        state.writeable = false;
    } else if (use == FileUse::Users && !mayWriteThere(nearest)) {
        state.shutDirectory = textOf(nearest);
        state.writeable = false;
    }
}

}  // namespace

FileLook lookAtFile(const std::string& path, FileUse use) {
    FileLook look;
    FileState& state = look.state;
    state.kind = kindOfText(path);
    if (state.kind != FileState::Kind::Missing) {
        return look;
    }
    if (use == FileUse::Users) {
        lookBeside(state, path);
    }
    const fs::path file = platform::nativePathOf(path.c_str());
    const auto status = platform::fileStatus(path.c_str());
    if (!status) {
        lookAround(state, file, use);
        return look;
    }
    state.writeable = status->ownerWrite && (status->directory || mayWriteThere(file));
    if (status->directory) {
        state.kind = FileState::Kind::Directory;
        return look;
    }
    if (!isRegular(file)) {
        state.kind = FileState::Kind::NotRegular;
        return look;
    }
    state.size = status->size;
    if (static_cast<std::uint64_t>(status->size) > json::kMaximumTextSize) {
        state.kind = FileState::Kind::TooLarge;
        return look;
    }
    look.read = readInto(state, path);
    return look;
}

std::vector<FileState::Remark> repeatedSectionsIn(const ReadFile& file, const SectionOwners& owners) {
    std::vector<FileState::Remark> repeated;
    const auto ownerOf = [&](const prefs::VisitedSection& visited) { return owners.ownerOf(visited.attributePath); };
    forEachRepeatedSection(file.document.root(), ownerOf, [&](const prefs::VisitedSection& visited, json::View) {
        repeated.push_back(
            remark(visited.attributePath, file.document.positionOf(visited.element).value_or(json::Position())));
    });
    return repeated;
}

std::string blockerOf(const std::string& path) {
    const fs::path nearest = nearestThere(platform::nativePathOf(path.c_str()));
    return nearest.empty() || isDirectory(nearest) ? std::string() : textOf(nearest);
}

std::string topmostMissingDirectory(const std::string& path) {
    if (kindOfText(path) != FileState::Kind::Missing) {
        return {};
    }
    fs::path missing;
    for (fs::path directory = platform::nativePathOf(path.c_str()).parent_path();
         directory.has_relative_path() && !isThere(directory); directory = directory.parent_path()) {
        missing = directory;
    }
    return textOf(missing);
}

}  // namespace zelutil::command
