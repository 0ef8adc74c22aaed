#include "command/world/bundle.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "command/doctor/file_state.h"
#include "command/text.h"
#include "command/world/bundled_world.h"
#include "command/world/identity.h"
#include "command/world/recording_world.h"
#include "common_library/common_library.h"
#include "json/document.h"
#include "platform/environment.h"
#include "platform/modules.h"
#include "platform/native_paths.h"
#include "platform/world.h"

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;
using Source = text::Candidate::Source;
using Verdict = text::Candidate::Verdict;

/// Says whose a file's content is.
enum class Content { Shipped, Users, Kept };

/// Notes what is asked beyond the searches of the doctor: by the library's own loads, and by a redaction.
void askTheRest() {
    platform::environment("QTX_ZELUTIL_DEBUG");
    identityInForce();
}

/// Returns the links of a bundle that is in force, which has none among its files.
Links linksInForce() { return manifestInForce() == nullptr ? Links() : manifestInForce()->links; }

Links deadDirectoriesInForce() { return manifestInForce() == nullptr ? Links() : manifestInForce()->deadDirectories; }

Account accountInForce() { return manifestInForce() == nullptr ? account() : manifestInForce()->account; }

CommonLibrary commonLibraryBy(const Diagnosis& diagnosis) {
    CommonLibrary library;
    for (const text::Candidate& place : diagnosis.step(kCommonLibraryStep).candidates) {
        const auto kind = place.source == Source::Process         ? platform::ModulePlace::Kind::Process
                          : place.source == Source::BesideLibrary ? platform::ModulePlace::Kind::BesideLibrary
                                                                  : platform::ModulePlace::Kind::Loader;
        library.places.push_back({kind, place.seen, place.verdict == Verdict::Taken});
    }
    library.isThere = diagnosis.missingFunctions.has_value();
    library.missingFunctions = diagnosis.missingFunctions.value_or(std::vector<std::string>());
    library.toolsPath = common_library::toolsPath();
    library.initDone = common_library::initDone();
    library.canSearch = common_library::SetupPathSearch::prepare().has_value();
    const text::Candidate& first = diagnosis.step(kUserFileReadStep).candidates.front();
    if (first.verdict == Verdict::Taken) {
        library.found = first.seen;
    }
    return library;
}

class BundleMaker {
public:
    BundleMaker(const fs::path& directory, const Redaction& redaction) : directory_(directory), redaction_(redaction) {}

    Bundle run() {
        ask();
        for (const fs::path& file : files_) {
            noteLinks(file);
        }
        noteContents();
        addDeadFiles();
        target_ = Mirror(directory_ / kFilesName, redaction_.path(source_.directory()));
        fs::create_directories(directory_ / kFilesName);
        for (const fs::path& file : files_) {
            carry(source_.resolved(file));
        }
        for (const auto& [file, content] : contents_) {
            carry(file);
        }
        writeManifest();
        return std::move(bundle_);
    }

private:
    // --- What there is ----------------------------------------------------------------------------------------------

    /// Has the library look for everything, and notes what it looks at.
    void ask() {
        RecordingWorld recording;
        bundle_.diagnosis = diagnose();
        askTheRest();
        source_ = Mirror({}, fs::path(recording.directory({})), linksInForce());
        deadDirectories_ = deadDirectoriesInForce();
        variables_ = recording.variables();
        for (const char* const name : {kUserFileReadStep, kUserFileWrittenStep}) {
            besideFile(stateOfFile(withoutQuotes(bundle_.diagnosis.step(name).result), FileUse::Users));
        }
        files_ = recording.files();
        writeable_ = recording.writeable();
        hidden_ = recording.hidden();
    }

    static fs::path here(const fs::path& path) { return platform::placeInWorld(path); }

    /// Returns a path as --paths-with-blanks opens it: without the quotes that a blank puts it into.
    static std::string withoutQuotes(std::string text) {
        text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
        return text;
    }

    void noteContent(const fs::path& path, Content content) {
        if (!path.empty()) {
            noteLinks(path);
            contents_.emplace(source_.resolved(path), content);
        }
    }

    void noteContents() {
        noteStep(kUserFileReadStep, Content::Users);
        noteStep(kUserFileWrittenStep, Content::Users);
        noteStep(kDefaultsStep, Content::Shipped);
        noteStep(kFacetsStep, Content::Shipped);
        for (const std::string& file : kept_) {
            noteContent(pathOf(file), Content::Kept);
        }
    }

    void noteStep(const char* name, Content content) {
        const SearchStep& step = bundle_.diagnosis.step(name);
        noteContent(platform::nativePathOf(withoutQuotes(step.result).c_str()), content);
        for (const text::Candidate& candidate : step.candidates) {
            noteContent(platform::nativePathOf(withoutQuotes(candidate.seen).c_str()), content);
        }
    }

    void besideFile(const FileState& state) {
        kept_.insert(state.keptCopies.begin(), state.keptCopies.end());
        kept_.insert(state.leftovers.begin(), state.leftovers.end());
    }

    /// A link that leads round in a circle has itself as its target.
    void noteLinks(const fs::path& path) {
        const fs::path absolute = source_.directory() / path;
        const fs::path relative = absolute.relative_path();
        fs::path place = absolute.root_path();
        for (auto component = relative.begin(); component != relative.end(); ++component) {
            place = source_.resolved(place / *component);
            std::error_code error;
            if (!fs::is_symlink(here(place), error)) {
                continue;
            }
            if (const auto target = targetOfDeadLink(place)) {
                (std::next(component) == relative.end() ? deadFiles_ : deadDirectories_)[place] = *target;
                return;
            }
            const fs::path target = fs::weakly_canonical(place, error);
            if (error == std::errc::too_many_symbolic_link_levels) {
                source_.addLink(place, place);
            } else if (!error && target != place) {
                source_.addLink(place, target);
                place = target;
            }
        }
    }

    /// A save makes a file behind a link, and no directory. The paths that go on behind a link tell which it stands
    /// for.
    void addDeadFiles() {
        for (const auto& [link, target] : deadFiles_) {
            if (deadDirectories_.count(link) == 0) {
                source_.addLink(link, target);
            }
        }
    }

    // --- What is made -----------------------------------------------------------------------------------------------

    fs::path placeFor(const fs::path& resolved) const { return target_.placeOfResolved(redaction_.path(resolved)); }

    /// Makes the file or directory and those around it, as far as they are there.
    void carry(const fs::path& resolved) {
        fs::path path = resolved.root_path();
        for (const fs::path& component : resolved.relative_path()) {
            path /= component;
            std::error_code ignored;
            const fs::file_status status = fs::status(here(path), ignored);
            // The library takes what may not be looked at for something that is not there.
            if (!fs::exists(status) || status.type() == fs::file_type::unknown) {
                return;
            }
            if (!takesPlace(path)) {
                return;
            }
            if (!fs::is_directory(status)) {
                carryFile(path, status);
                return;
            }
            fs::create_directories(placeFor(path));
        }
    }

    /// Returns whether the path has its place in the bundle for itself. Two that differ in a masked name have the same.
    bool takesPlace(const fs::path& path) {
        const fs::path& owner = owners_.emplace(placeFor(path), path).first->second;
        if (owner != path && collided_.insert(path).second) {
            bundle_.findings.push_back({Severity::Warning,
                                        "Another path than \"" + textOf(redaction_.path(path)) +
                                            "\" is the same when it is masked, and one of them is left out.",
                                        "Say so to whoever gets the bundle.", std::nullopt});
        }
        return owner == path;
    }

    void carryFile(const fs::path& path, const fs::file_status& status) {
        const fs::path place = placeFor(path);
        if (!done_.insert(path).second) {
            return;
        }
        if (!fs::is_regular_file(status)) {
            bundle_.findings.push_back(
                {Severity::Warning, "\"" + textOf(redaction_.path(path)) + "\" is no ordinary file and is left out.",
                 "Say so to whoever gets the bundle.", std::nullopt});
            return;
        }
        fs::create_directories(place.parent_path());
        const auto content = contents_.find(path);
        const BundledFile::Kind kind =
            content == contents_.end() ? emptyStandIn(place) : copy(path, place, content->second);
        bundle_.files.push_back({textOf(redaction_.path(path)), kind});
        // Whoever packs the bundle reads its files; the manifest has which ones its maker could not.
        fs::permissions(place, status.permissions() | fs::perms::owner_read);
        if (kind == BundledFile::Kind::Unreadable) {
            unreadable_.insert(redaction_.path(path));
        }
    }

    static void write(const fs::path& place, const std::string& bytes) {
        std::ofstream stream(place, std::ios::binary);
        stream << bytes;
        stream.close();
        if (!stream) {
            throw fs::filesystem_error("A file could not be written", place, std::make_error_code(std::errc::io_error));
        }
    }

    static BundledFile::Kind emptyStandIn(const fs::path& place) {
        write(place, "");
        return BundledFile::Kind::StandIn;
    }

    static BundledFile::Kind unreadStandIn(const fs::path& place, std::uintmax_t size) {
        write(place, "");
        fs::resize_file(place, size);
        return BundledFile::Kind::Unreadable;
    }

    BundledFile::Kind copy(const fs::path& path, const fs::path& place, Content content) {
        const std::uintmax_t size = fs::file_size(here(path));
        std::ifstream stream(here(path), std::ios::binary);
        const bool mayRead = platform::worldInForce == nullptr || platform::worldInForce->mayRead(path.native());
        if (size > json::kMaximumTextSize || !mayRead || !stream.is_open()) {
            return unreadStandIn(place, size);
        }
        const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        const std::string written = redacted(bytes, content);
        write(place, written);
        return written == bytes ? BundledFile::Kind::Copied : BundledFile::Kind::Redacted;
    }

    std::string redacted(const std::string& bytes, Content content) {
        switch (content) {
            case Content::Users:
                return redaction_.usersFile(bytes, shippedValues());
            case Content::Shipped:
                return redaction_.shippedFile(bytes);
            case Content::Kept:
                break;
        }
        return redaction_.isOn() ? std::string() : bytes;
    }

    std::set<std::string> shippedValues() const {
        const std::string file = withoutQuotes(bundle_.diagnosis.step(kDefaultsStep).result);
        std::ifstream stream(here(platform::nativePathOf(file.c_str())), std::ios::binary);
        return shippedValuesIn(std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()});
    }

    void writeManifest() {
        Manifest manifest;
        manifest.system = nameOfThisSystem();
        manifest.redacted = redaction_.isOn();
        manifest.directory = target_.directory();
        manifest.module = redaction_.words(platform::modulePath());
        for (const auto& [name, value] : variables_) {
            manifest.variables.emplace(name, redaction_.words(value));
            bundle_.variables.push_back(name);
        }
        manifest.links = redacted(source_.links());
        manifest.deadDirectories = redacted(deadDirectories_);
        const Account own = accountInForce();
        manifest.account = {redaction_.words(own.user), redaction_.words(own.host)};
        manifest.unreadable = unreadable_;
        manifest.writeable = inBundle(writeable_);
        manifest.hidden = inBundle(hidden_);
        manifest.commonLibrary = commonLibraryBy(bundle_.diagnosis);
        redact(manifest.commonLibrary);
        const auto text = textOfManifest(manifest);
        write(directory_ / kManifestName, text.value_or(""));
    }

    Links redacted(const Links& links) const {
        Links result;
        for (const auto& [from, to] : links) {
            result[redaction_.path(from)] = redaction_.path(to);
        }
        return result;
    }

    /// Returns them by the paths that the bundle has.
    template <typename Answer>
    std::map<fs::path, Answer> inBundle(const std::map<fs::path, Answer>& answers) const {
        std::map<fs::path, Answer> result;
        for (const auto& [path, answer] : answers) {
            result[redaction_.path(source_.resolved(path))] = answer;
        }
        return result;
    }

    void redact(CommonLibrary& library) const {
        for (platform::ModulePlace& place : library.places) {
            place.file = redaction_.words(place.file);
        }
        for (std::optional<std::string>* const path : {&library.toolsPath, &library.found}) {
            *path = *path ? std::optional<std::string>(redaction_.words(**path)) : std::nullopt;
        }
    }

    fs::path directory_;
    const Redaction& redaction_;
    Bundle bundle_;
    /// The paths of the machine, and those in the bundle.
    Mirror source_;
    Mirror target_;
    Links deadDirectories_;
    Links deadFiles_;
    std::map<std::string, std::string> variables_;
    std::set<fs::path> files_;
    /// Names the files that saves left beside the user's file.
    std::set<std::string> kept_;
    Rights writeable_;
    Reasons hidden_;
    std::map<fs::path, Content> contents_;
    std::set<fs::path> done_;
    /// The path of the machine to which each place in the bundle belongs, and those that found theirs taken.
    std::map<fs::path, fs::path> owners_;
    std::set<fs::path> collided_;
    /// Paths of the bundle.
    std::set<fs::path> unreadable_;
};

// --- The look at the bundle -----------------------------------------------------------------------------------------

void redact(Diagnosis& diagnosis, const Redaction& redaction) {
    diagnosis.standIn = redaction.words(diagnosis.standIn);
    for (SearchStep& step : diagnosis.steps) {
        step.result = redaction.words(step.result);
        for (text::Candidate& candidate : step.candidates) {
            candidate.seen = redaction.words(candidate.seen);
            candidate.found = redaction.words(candidate.found);
        }
    }
}

/// Looks at the files and the symptoms again, with the bundle's machine in force.
void lookAgain(Diagnosis& diagnosis) {
    lookAtFiles(diagnosis);
    diagnosis.symptoms = symptomsOf(diagnosis);
}

bool isSame(const std::vector<Symptom>& one, const std::vector<Symptom>& other) {
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(),
        [](const Symptom& left, const Symptom& right) { return left.kind == right.kind && left.step == right.step; });
}

}  // namespace

const char* nameOf(BundledFile::Kind kind) {
    switch (kind) {
        case BundledFile::Kind::Copied:
            return "copied";
        case BundledFile::Kind::Redacted:
            return "redacted";
        case BundledFile::Kind::StandIn:
            return "stand-in";
        case BundledFile::Kind::Unreadable:
            break;
    }
    return "unreadable";
}

Bundle makeBundle(const fs::path& directory, const Redaction& redaction) {
    Bundle bundle = BundleMaker(directory, redaction).run();
    const std::vector<Symptom> before = bundle.diagnosis.symptoms;
    redact(bundle.diagnosis, redaction);
    if (const Obstacle obstacle = enterWorld(directory)) {
        throw std::runtime_error(obstacle.text);
    }
    lookAgain(bundle.diagnosis);
    if (!isSame(before, bundle.diagnosis.symptoms)) {
        bundle.findings.push_back({Severity::Warning,
                                   "The doctor says something else of the bundle than of this machine.",
                                   "Send what \"zelutil doctor --json\" prints here, too.", std::nullopt});
    }
    return bundle;
}

}  // namespace zelutil::command::world
