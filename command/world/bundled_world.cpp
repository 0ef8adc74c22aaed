#include "command/world/bundled_world.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "command/text.h"

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;
using platform::NativeText;

/// Holds the results of the functions below, which have no argument that leads to it.
const CommonLibrary* recorded = nullptr;

/// Writes a path as the common library does, cut where the buffer ends.
void copyTo(char* buffer, int size, const std::string& text) {
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

int toolsPathInBuf(char* buffer, int size, int /*reserved*/) {
    if (recorded->toolsPath) {
        copyTo(buffer, size, *recorded->toolsPath);
    }
    return recorded->toolsPath ? 1 : 0;
}

int initDone() { return recorded->initDone ? 1 : 0; }

int initialize(void** /*handle*/, ...) { return recorded->canSearch ? 0 : 1; }

int search(void* /*handle*/, const char* /*relativeName*/, char* buffer, int size) {
    if (recorded->found) {
        copyTo(buffer, size, *recorded->found);
    }
    return recorded->found ? 0 : 1;
}

struct NamedFunction {
    std::string_view name;
    void* function;
};

void* functionOf(std::string_view name) {
    static const std::array<NamedFunction, 4> functions = {{
        {"qtxGetToolsPathInBuf", reinterpret_cast<void*>(&toolsPathInBuf)},
        {"qtxInitDone", reinterpret_cast<void*>(&initDone)},
        {"wemInitialize", reinterpret_cast<void*>(&initialize)},
        {"wemSearch", reinterpret_cast<void*>(&search)},
    }};
    for (const NamedFunction& one : functions) {
        if (one.name == name) {
            return one.function;
        }
    }
    return nullptr;
}

constexpr int kMostLinks = 40;

/// Variables of the terminal on which the command is read.
bool isOfTheTerminal(std::string_view name) { return name == "NO_COLOR" || name == "TERM"; }

/// Returns whether the predicate holds for a path or one of the directories above it.
template <typename Predicate>
bool isOnTheWay(fs::path path, Predicate predicate) {
    while (path.has_relative_path() && !predicate(path)) {
        path = path.parent_path();
    }
    return path.has_relative_path();
}

std::optional<std::string> bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream.is_open()) {
        return std::nullopt;
    }
    return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace

BundledWorld::BundledWorld(const fs::path& bundle, Manifest manifest)
    : manifest_(std::move(manifest)),
      mirror_(bundle / kFilesName, manifest_.directory, manifest_.links),
      // Nothing is behind a file, and nothing can be made there.
      nowhere_(bundle / kManifestName / "nowhere") {
    recorded = &manifest_.commonLibrary;
}

std::optional<std::string> BundledWorld::variable(const char* name, std::optional<std::string> own) {
    if (isOfTheTerminal(name)) {
        return own;
    }
    const auto found = manifest_.variables.find(name);
    return found == manifest_.variables.end() ? std::nullopt : std::optional<std::string>(found->second);
}

NativeText BundledWorld::directory(NativeText /*own*/) { return manifest_.directory.native(); }

NativeText BundledWorld::file(NativeText path) {
    const fs::path resolved = mirror_.resolved(fs::path(std::move(path)));
    return (isBehindDeadLink(resolved) ? nowhere_ : mirror_.placeOfResolved(resolved)).native();
}

template <typename Answer>
Answer BundledWorld::recordedOr(const std::map<fs::path, Answer>& answers, const NativeText& path, Answer own) const {
    const auto recorded = answers.find(mirror_.resolved(path));
    return recorded == answers.end() ? own : recorded->second;
}

/// The library says of a file that may be there and that it cannot read so much; under a name that is too long there is
/// none.
bool BundledWorld::mayRead(NativeText path) {
    const fs::path resolved = mirror_.resolved(path);
    const std::errc hidden = recordedOr(manifest_.hidden, path, std::errc());
    const auto isRound = [this](const fs::path& link) { return isCircle(link); };
    return manifest_.unreadable.count(resolved) == 0 &&
           (hidden == std::errc() || hidden == std::errc::filename_too_long) && !isOnTheWay(resolved, isRound);
}

std::string BundledWorld::modulePath(std::string /*own*/) { return manifest_.module; }

std::optional<void*> BundledWorld::openModule(const char* /*baseName*/, std::vector<platform::ModulePlace>* places) {
    if (places != nullptr) {
        *places = manifest_.commonLibrary.places;
    }
    return manifest_.commonLibrary.isThere ? this : nullptr;
}

std::optional<void*> BundledWorld::moduleFunction(void* /*module*/, const char* name) {
    const auto& missing = manifest_.commonLibrary.missingFunctions;
    return std::find(missing.begin(), missing.end(), name) == missing.end() ? functionOf(name) : nullptr;
}

bool BundledWorld::mayWrite(NativeText path, bool own) { return recordedOr(manifest_.writeable, path, own); }

std::errc BundledWorld::hiddenBy(NativeText path, std::errc own) { return recordedOr(manifest_.hidden, path, own); }

bool BundledWorld::isCircle(const fs::path& resolved) const {
    const auto link = manifest_.links.find(resolved);
    return link != manifest_.links.end() && link->second == resolved;
}

bool BundledWorld::leadsRound(const fs::path& path) const { return isCircle(mirror_.resolved(path)); }

std::optional<fs::path> BundledWorld::targetOfDeadLink(const fs::path& path) const {
    const auto asDirectory = manifest_.deadDirectories.find(mirror_.resolved(path));
    if (asDirectory != manifest_.deadDirectories.end()) {
        return asDirectory->second;
    }
    const auto link = manifest_.links.find(mirror_.resolved(path.parent_path()) / path.filename());
    std::error_code error;
    const bool isDead = link != manifest_.links.end() && link->second != link->first &&
                        fs::status(mirror_.placeOfResolved(link->second), error).type() == fs::file_type::not_found;
    return isDead ? std::optional<fs::path>(link->second) : std::nullopt;
}

bool BundledWorld::isBehindDeadLink(const fs::path& resolved) const {
    return isOnTheWay(resolved, [this](const fs::path& path) {
        return manifest_.deadDirectories.count(path) != 0 || isCircle(path);
    });
}

namespace {

/// The bundle in force, null for none.
std::unique_ptr<BundledWorld>& bundleInForce() {
    static std::unique_ptr<BundledWorld> bundle;
    return bundle;
}

/// Its directory, as it was named.
fs::path& directoryInForce() {
    static fs::path directory;
    return directory;
}

/// Returns the first thing below a directory that no bundle has, such as a link, which would lead to this machine's
/// files; nothing for none.
std::optional<fs::path> strangerIn(const fs::path& directory) {
    if (!fs::is_directory(fs::symlink_status(directory))) {
        return directory;
    }
    constexpr auto kOptions = fs::directory_options::skip_permission_denied;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory, kOptions)) {
        const fs::file_status status = entry.symlink_status();
        if (!fs::is_directory(status) && !fs::is_regular_file(status)) {
            return entry.path();
        }
    }
    return std::nullopt;
}

std::optional<std::string> textOfManifestIn(const fs::path& bundle) {
    const fs::path file = bundle / kManifestName;
    std::error_code ignored;
    return fs::is_regular_file(fs::symlink_status(file, ignored)) ? bytesOf(file) : std::nullopt;
}

/// Returns whether the user has no right to read the manifest or the files.
bool isShut(const fs::path& bundle) {
    std::error_code manifest;
    const bool isThere = fs::exists(bundle / kManifestName, manifest);
    std::error_code files;
    const fs::directory_iterator ignored(bundle / kFilesName, files);
    return manifest == std::errc::permission_denied || files == std::errc::permission_denied ||
           (isThere && fs::is_regular_file(fs::symlink_status(bundle / kManifestName, manifest)) &&
            !std::ifstream(bundle / kManifestName).is_open());
}

std::string enterUnchecked(const fs::path& bundle) {
    const auto text = textOfManifestIn(bundle);
    if (!text) {
        return "There is no bundle in \"" + textOf(bundle) + "\": its " + kManifestName + " cannot be read.";
    }
    auto manifest = manifestOf(*text);
    if (!manifest) {
        return "\"" + textOf(bundle / kManifestName) + "\" is not of the form that this version of zelutil reads.";
    }
    if (manifest->system != nameOfThisSystem()) {
        return "The bundle was made on another system (" + manifest->system + "), whose paths this one cannot have.";
    }
    if (fs::symlink_status(bundle / kFilesName).type() == fs::file_type::not_found) {
        return "The bundle in \"" + textOf(bundle) + "\" is not whole: it lacks its directory \"" + kFilesName + "\".";
    }
    if (const auto stranger = strangerIn(bundle / kFilesName)) {
        return "In a bundle there is nothing like \"" + textOf(*stranger) + "\": it has directories and files alone.";
    }
    std::error_code error;
    const fs::path directory = fs::absolute(bundle, error);
    bundleInForce() = std::make_unique<BundledWorld>(directory.lexically_normal(), *std::move(manifest));
    platform::worldInForce = bundleInForce().get();
    directoryInForce() = bundle;
    return {};
}

}  // namespace

Obstacle enterWorld(const fs::path& bundle) {
    if (isShut(bundle)) {
        return {"The bundle in \"" + textOf(bundle) + "\" may not be read by this user.",
                "Ask it as the user who has it, or have that user give the right to read it."};
    }
    constexpr char kAdvice[] = "\"zelutil bundle DIR\" makes one on the machine that is asked about.";
    try {
        const std::string text = enterUnchecked(bundle);
        return {text, text.empty() ? "" : kAdvice};
    } catch (const std::exception& error) {
        return {"The bundle in \"" + textOf(bundle) + "\" cannot be read: " + error.what(), kAdvice};
    }
}

fs::path directoryOfBundleInForce() { return directoryInForce(); }

const Manifest* manifestInForce() { return bundleInForce() == nullptr ? nullptr : &bundleInForce()->manifest(); }

bool leadsRound(const fs::path& path) {
    if (bundleInForce() != nullptr) {
        return bundleInForce()->leadsRound(path);
    }
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::none && error == std::errc::too_many_symbolic_link_levels;
}

std::optional<fs::path> targetOfDeadLink(const fs::path& path) {
    if (bundleInForce() != nullptr) {
        return bundleInForce()->targetOfDeadLink(path);
    }
    std::error_code error;
    if (fs::status(path, error).type() != fs::file_type::not_found || !fs::is_symlink(path, error)) {
        return std::nullopt;
    }
    fs::path target = path;
    // A chain is no longer than the system follows one; meanwhile somebody may have made a circle of it.
    for (int links = 0; links < kMostLinks && fs::is_symlink(target, error); ++links) {
        target = fs::weakly_canonical(target.parent_path() / fs::read_symlink(target, error), error);
    }
    return target;
}

ArgumentPlace placeOfArgument(const fs::path& path) {
    const fs::path place = platform::placeInWorld(path);
    std::error_code ignored;
    const bool isInBundle = platform::worldInForce != nullptr && fs::exists(place, ignored);
    return {isInBundle ? place : path, platform::worldInForce != nullptr && !isInBundle};
}

}  // namespace zelutil::command::world
