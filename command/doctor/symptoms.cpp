// Derives from a diagnosis which things are wrong, and says what to do about each.
#include <zelutil/file/path.h>

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "command/doctor/candidate_text.h"
#include "command/doctor/diagnosis.h"
#include "command/doctor/file_state.h"
#include "command/text.h"
#include "file/hierarchy_root.h"
#include "file/hierarchy_search.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/modules.h"
#include "platform/native_paths.h"
#include "platform/world.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

namespace fs = std::filesystem;
using text::Candidate;
using ZelU::File::Path;
using Kind = Symptom::Kind;
using Verdict = Candidate::Verdict;

std::string shown(const std::string& path) { return '"' + printable(nativeOrAsItStands(path)) + '"'; }

bool isSameDirectory(const std::string& one, const std::string& other) {
    std::error_code ignored;
    return one == other || fs::equivalent(platform::placeInWorld(platform::nativePathOf(one.c_str())),
                                          platform::placeInWorld(platform::nativePathOf(other.c_str())), ignored);
}

/// Returns the installation that a file or directory lies in; empty for none.
std::string installationAround(const std::string& text) {
    for (Path directory(text); !directory.Empty(); directory = directory.Parent()) {
        if (file::isInstallation(directory)) {
            return libraryText(directory);
        }
        if (libraryText(directory.Parent()) == libraryText(directory)) {
            break;
        }
    }
    return {};
}

class Symptoms {
public:
    explicit Symptoms(const Diagnosis& diagnosis) : diagnosis_(diagnosis), root_(diagnosis.step(kRootStep).result) {}

    std::vector<Symptom> run() {
        addCommonLibrary();
        addRoot();
        addSite();
        addEnvironment();
        addDefaultsVariable();
        addFile(diagnosis_.step(kDefaultsStep));
        const SearchStep& read = diagnosis_.step(kUserFileReadStep);
        const SearchStep& written = diagnosis_.step(kUserFileWrittenStep);
        addFile(read);
        if (written.result != read.result) {
            addFile(written);
        }
        addWriting(written);
        addFile(diagnosis_.step(kFacetsStep));
        return std::move(symptoms_);
    }

private:
    void add(Kind kind, const char* step, std::string text, std::string advice, Severity severity = Severity::Warning) {
        symptoms_.push_back({kind, step, {severity, std::move(text), std::move(advice), std::nullopt}});
    }

    /// Adds a symptom about a file.
    void addAbout(Kind kind, const SearchStep& step, const std::string& what, std::string advice,
                  Severity severity = Severity::Warning) {
        add(kind, step.name, "The file " + shown(step.result) + ' ' + what, std::move(advice), severity);
        symptoms_.back().finding.place = Place{nativeOrAsItStands(step.result), {}, {}};
    }

    /// Adds the place to the last symptom.
    void place(const FileState::Remark& remark) {
        symptoms_.back().finding.place->line = remark.line;
        symptoms_.back().finding.place->column = remark.column;
    }

    // --- The installation -------------------------------------------------------------------------------------------

    void addCommonLibrary() {
        if (diagnosis_.missingFunctions) {
            for (const std::string& function : *diagnosis_.missingFunctions) {
                add(Kind::CommonLibraryLacks, kCommonLibraryStep,
                    "The common library " + shown(diagnosis_.step(kCommonLibraryStep).result) + " lacks the function " +
                        function + '.',
                    "Install the common library that belongs to this product.");
            }
        }
        if (!diagnosis_.isReady) {
            add(Kind::NotReady, kCommonLibraryStep,
                "The common library is not initialised, so the installation may still change.", "", Severity::Note);
        }
    }

    void addRoot() {
        if (!diagnosis_.hasInstallation) {
            const std::string standIn = diagnosis_.standIn.empty()
                                            ? ""
                                            : " After its first failure the library uses the directory tried last, " +
                                                  shown(diagnosis_.standIn) + '.';
            add(Kind::NoInstallation, kRootStep, "No installation is found." + standIn,
                "Put the product's directory tools/bin into the PATH, or name the product in QTXROOT.");
        }
        for (const Candidate& candidate : diagnosis_.step(kRootStep).candidates) {
            addRootCandidate(candidate);
        }
    }

    void addRootCandidate(const Candidate& candidate) {
        const bool isOfVariable = candidate.source == Candidate::Source::ListEntry && candidate.variable != "PATH";
        if (candidate.verdict == Verdict::Hidden || isOfVariable) {
            // The programs are two levels below the tree.
            addVariable(candidate.variable, libraryText(Path(candidate.seen).Parent().Parent()));
        } else if (candidate.verdict == Verdict::Shadowed && !isSameDirectory(candidate.found, root_)) {
            add(Kind::Shadowed, kRootStep,
                "The installation " + shown(candidate.found) + " would be found too, but an earlier one is.", "",
                Severity::Note);
        }
    }

    /// A variable that names an installation.
    void addVariable(const std::string& variable, const std::string& tree) {
        const std::string value = platform::environment(variable.c_str()).value_or("");
        if (isSameDirectory(tree, root_)) {
            return;
        }
        if (value.empty()) {
            addNoProduct(variable + " is set but empty, so that the current directory " + shown(tree) +
                             " stands for the product, and that is no installation.",
                         "Set " + variable + " to the product's directory, or unset it.");
            return;
        }
        if (holdsNoPath(variable)) {
            addNoProduct(variable + " names \"" + printable(value) +
                             "\", which is no path, so that the current directory " + shown(tree) +
                             " stands for the product, and that is no installation.",
                         "Let " + variable + " name the product's directory, or unset it.");
            return;
        }
        addTreeOf(variable, value.find('"') != std::string::npos, tree);
    }

    /// A path loses its quotation marks, and may lose with the first of them that it begins at the root.
    void addTreeOf(const std::string& variable, bool isQuoted, const std::string& tree) {
        const Path library = Path(tree) + "tools/bin" + platform::libraryFileName();
        const std::string names = (isQuoted ? " has quotation marks in its value and names " : " names ") + shown(tree);
        if (file::isInstallation(Path(tree)) && !library.Exists()) {
            addNoProduct(variable + names + ", which has no " + shown(libraryText(library)) + '.',
                         "Install the product anew, or let " + variable + " name a whole one.");
        } else if (file::isInstallation(Path(tree))) {
            addOtherProduct(kRootStep, variable, tree);
        } else {
            addNoProduct(variable + names + ", which is no installation.",
                         "Let " + variable + " name the product's directory," +
                             (isQuoted ? " without quotation marks," : "") + " or unset it.");
        }
    }

    /// Adds a symptom whose text is a sentence without "The variable" at its beginning.
    void addNoProduct(const std::string& text, std::string advice) {
        add(Kind::NoProduct, kRootStep, "The variable " + text, std::move(advice));
    }

    void addOtherProduct(const char* step, const std::string& variable, const std::string& tree) {
        add(Kind::OtherProduct, step,
            "The variable " + variable + " points to another product's tree, " + shown(tree) + '.',
            "Unset " + variable + ", or let it name this product.");
    }

    void addSite() {
        const SearchStep& step = diagnosis_.step(kSiteStep);
        if (step.candidates.empty() || step.candidates[0].verdict == Verdict::NotDefined) {
            return;
        }
        if (!Path(step.result).IsDirectory()) {
            addSiteOfNoDirectory(step.candidates[0].seen, step.result);
            return;
        }
        addTreeAround(kSiteStep, file::kSiteVariable, step.result);
    }

    void addSiteOfNoDirectory(const std::string& value, const std::string& path) {
        const std::string variable = std::string("The variable ") + file::kSiteVariable;
        if (value.find('"') == std::string::npos) {
            add(Kind::NoSite, kSiteStep, variable + " names " + shown(value) + ", which is no directory.",
                "Let it name the site's directory, or unset it.");
            return;
        }
        add(Kind::NoSite, kSiteStep,
            variable + " has quotation marks in its value and names " + shown(path) + ", which is no directory.",
            "Let it name the site's directory, without quotation marks, or unset it.");
    }

    /// A variable whose file or directory may lie in another product's tree.
    void addTreeAround(const char* step, const std::string& variable, const std::string& path) {
        const std::string tree = installationAround(path);
        if (!tree.empty() && !isSameDirectory(tree, root_)) {
            addOtherProduct(step, variable, tree);
        }
    }

    void addEnvironment() {
        const SearchStep& step = diagnosis_.step(kEnvironmentStep);
        if (step.result.empty()) {
            add(Kind::NotSpellable, kEnvironmentStep, "HOMEDRIVE and HOMEPATH together are no path.",
                "Set them to the drive and the directory of the user's home.");
            return;
        }
        addHome(Path(step.result).Parent());
    }

    /// Notes a home that may not be the one that is meant.
    void addHome(const Path& home) {
        const std::string drive = seenIn(kEnvironmentStep, "HOMEDRIVE");
        const bool hasDrive = !drive.empty();
        const bool hasPath = !seenIn(kEnvironmentStep, "HOMEPATH").empty();
        constexpr char kAdvice[] = "Set HOMEDRIVE and HOMEPATH to the drive and the directory of the user's home.";
        const std::string place = ", so the user's files are looked for ";
        if (!hasDrive && !hasPath) {
            addNoHome("HOMEDRIVE and HOMEPATH are not set" + place + "in the current directory.", kAdvice);
        } else if (!hasPath) {
            addNoHome("HOMEPATH is not set" + place + "on the drive " + drive + " itself.", kAdvice);
        } else if (platform::namesFile(home) && !home.IsDirectory()) {
            addNoHome(home.Exists() ? "The user's home " + shown(libraryText(home)) + " is no directory."
                                    : "The user's home directory " + shown(libraryText(home)) + " is not there.",
                      std::string("See whether HOMEDRIVE and HOMEPATH name the right one") +
                          (canSaveMakeIt() ? "; a save makes it." : "; a save cannot make it."));
        }
    }

    /// Returns whether the directories of the user's file can be made.
    bool canSaveMakeIt() const {
        const SearchStep& step = diagnosis_.step(kUserFileWrittenStep);
        return step.file->kind == FileState::Kind::Missing && step.file->writeable && blockerOf(step.result).empty();
    }

    /// Returns the value that a step has seen of a variable; empty for none.
    std::string seenIn(const char* step, std::string_view variable) const {
        for (const Candidate& candidate : diagnosis_.step(step).candidates) {
            if (candidate.variable == variable) {
                return candidate.seen;
            }
        }
        return {};
    }

    void addNoHome(std::string text, std::string advice) {
        add(Kind::NoHome, kEnvironmentStep, std::move(text), std::move(advice), Severity::Note);
    }

    // --- Files ------------------------------------------------------------------------------------------------------

    void addDefaultsVariable() {
        const SearchStep& step = diagnosis_.step(kDefaultsStep);
        for (const Candidate& candidate : step.candidates) {
            if (candidate.source == Candidate::Source::Variable && candidate.verdict == Verdict::Taken) {
                addTreeAround(kDefaultsStep, candidate.variable, candidate.seen);
            }
        }
    }

    void addFile(const SearchStep& step) {
        addShadowed(step);
        addState(step);
        for (const FileState::Remark& section : step.file->repeatedSections) {
            addAbout(Kind::SectionTwice, step, "has more than one section \"" + printable(section.text) + "\".",
                     "Join the sections of one path into one.");
            place(section);
        }
    }

    void addShadowed(const SearchStep& step) {
        for (const Candidate& candidate : step.candidates) {
            if (candidate.verdict == Verdict::Shadowed && Path(candidate.seen).Exists()) {
                add(Kind::Shadowed, step.name,
                    "The file " + shown(candidate.seen) + " is there too, but " + shown(step.result) +
                        " comes before it.",
                    "", Severity::Note);
            }
        }
    }

    void addState(const SearchStep& step) {
        const bool isShipped = isShippedFile(step);
        switch (step.file->kind) {
            case FileState::Kind::InQuotes:
                return addAbout(Kind::Blank, step, "is not read or written, because its path has a blank.",
                                "Use a path without blanks, or an application that opens paths with blanks (the option "
                                "--paths-with-blanks shows them so).");
            case FileState::Kind::NotSpellable:
                return addNotSpellable(step);
            case FileState::Kind::NoPath:
                // Without an installation, that is said already; without a home too.
                if (isShipped && diagnosis_.hasInstallation) {
                    addMissing(step);
                }
                return;
            case FileState::Kind::Missing:
                if (isShipped) {
                    addMissing(step);
                }
                return;
            case FileState::Kind::Directory:
                return addAbout(Kind::IsDirectory, step, "is a directory.",
                                isNamedByVariable(step) ? "Let the variable name the file itself."
                                                        : "Move the directory away, or give it another name.");
            case FileState::Kind::TooLarge:
                return addAbout(Kind::TooLarge, step, "is larger than 64 MiB, so it is not read.", "Make it smaller.");
            case FileState::Kind::NotRegular:
                return addAbout(Kind::NotRegular, step, "is no regular file, so it is not read.",
                                "Put a file in its place.");
            case FileState::Kind::LinkCircle:
                return addAbout(
                    Kind::LinkCircle, step,
                    "is out of reach, because the link \"" + printable(step.file->link) + "\" leads round in a circle.",
                    "Remove the link, or have it lead to what is meant.");
            case FileState::Kind::DeadLink:
                return addDeadLink(step);
            case FileState::Kind::NameTooLong:
                return addAbout(Kind::NameTooLong, step,
                                "can neither be read nor made, because " + wordsOnLength(*step.file) + '.',
                                "Use a path with shorter names.");
            case FileState::Kind::Unreadable:
                return addUnreadable(step);
            case FileState::Kind::Malformed:
                return addMalformed(step);
            case FileState::Kind::Fine:
                return addContent(step);
        }
    }

    /// Adds what is wrong with a file that is read.
    void addContent(const SearchStep& step) {
        constexpr char kAdvice[] = "Put the file there that the product ships.";
        if (isStep(step, kDefaultsStep) && step.file->lacksDefaults) {
            addAbout(Kind::NoSettings, step, "has no default settings, so there are no settings.", kAdvice);
        }
        if (isStep(step, kFacetsStep) && step.file->lacksGroups) {
            addAbout(Kind::NoFacets, step, "has no array \"meta\" with groups of facets, so there are no facets.",
                     kAdvice);
        }
        if (!isShippedFile(step)) {
            addUsersContent(step);
        }
        if (step.file->notUtf8) {
            addAbout(Kind::NotUtf8, step,
                     "is not in UTF-8, so that some of its texts are not what they seem. " + step.file->notUtf8->text,
                     "Save the file in UTF-8.");
            place(*step.file->notUtf8);
        }
    }

    /// Returns whether it is known what a save leaves out of the file: of the one that is read, where there are
    /// settings.
    bool isSaveKnown(const SearchStep& step) const {
        const FileState& defaults = *diagnosis_.step(kDefaultsStep).file;
        return isStep(step, kUserFileReadStep) && defaults.kind == FileState::Kind::Fine && !defaults.lacksDefaults;
    }

    void addUsersContent(const SearchStep& step) {
        if (step.file->holdsNoSection) {
            const char* const save = step.file->leftOut.empty()
                                         ? " A save adds settings to what it holds, which stays without an effect."
                                         : " A save writes it anew and keeps a copy of it.";
            addAbout(
                Kind::NoEffect, step, "is JSON, but nothing in it counts, because it holds no section.",
                std::string("Put the user's own file there, or remove this one.") + (isSaveKnown(step) ? save : ""));
            return;
        }
        for (const std::string& part : step.file->leftOut) {
            addAbout(Kind::LeftOut, step,
                     "holds something that has no effect and that a save leaves out: " + printable(part) + '.',
                     "Correct or remove it. The save keeps a copy of the file, whose name ends in .bad.");
        }
    }

    static bool isStep(const SearchStep& step, std::string_view name) { return step.name == name; }

    static bool isShippedFile(const SearchStep& step) {
        return isStep(step, kDefaultsStep) || isStep(step, kFacetsStep);
    }

    static bool isNamedByVariable(const SearchStep& step) {
        return !step.candidates.empty() && step.candidates.front().source == Candidate::Source::Variable &&
               step.candidates.front().verdict == Verdict::Taken;
    }

    void addMissing(const SearchStep& step) {
        const Candidate& first = step.candidates.front();
        const bool isNamed = isNamedByVariable(step);
        const std::string file = "The file " + shown(isNamed ? first.seen : step.candidates.back().seen);
        const std::string why =
            isNamed ? ", which the variable " + first.variable + " names, is missing" : " is missing";
        add(Kind::Missing, step.name,
            file + why + ", so there are no " + (isStep(step, kDefaultsStep) ? "settings." : "facets."),
            isNamed ? "Let " + first.variable + " name the file of the settings, or unset it."
                    : "Install the product anew, or put the file there.");
    }

    void addDeadLink(const SearchStep& step) {
        const FileState& state = *step.file;
        const std::string users =
            state.writeable ? "; a save makes it" : ", so that nothing is read there and nothing can be saved";
        addAbout(Kind::DeadLink, step,
                 "is not there, because the link \"" + printable(state.link) + "\" leads to \"" +
                     printable(state.linkTarget) + "\", which is not there" + (isShippedFile(step) ? "" : users) + '.',
                 "Bring back what the link leads to, have it lead to what is meant, or remove it.");
    }

    void addNotSpellable(const SearchStep& step) {
        if (hasUnknownDrive(step.result)) {
            addAbout(Kind::NotSpellable, step,
                     "cannot be opened, because there is no drive " + step.result.substr(0, 2) + " on this system.",
                     kOnlyDrive);
        } else {
            addAbout(Kind::NotSpellable, step, "cannot be opened, because its path cannot be spelled.",
                     "Use a path with the characters of file names only.");
        }
    }

    void addUnreadable(const SearchStep& step) {
        const std::string& shut = step.file->shutDirectory;
        if (!step.file->reason.empty()) {
            addAbout(Kind::Unreadable, step, "cannot be looked at: " + step.file->reason + '.',
                     "See whether the disk or the server that has it is well.");
        } else if (shut.empty()) {
            addAbout(Kind::Unreadable, step, "cannot be read.", "Give the user the right to read it.");
        } else {
            addAbout(Kind::Unreadable, step,
                     "is out of reach, because the directory \"" + printable(shut) + "\" may not be entered.",
                     "Give the user the right to enter that directory.");
        }
    }

    void addMalformed(const SearchStep& step) {
        addAbout(Kind::NotJson, step, "has no effect. " + printable(step.file->malformed->text),
                 "Correct it at that place.");
        place(*step.file->malformed);
    }

    /// Returns whether it is said of the file already why it is not written.
    static bool isOutOfReachByItself(const FileState& state) {
        switch (state.kind) {
            case FileState::Kind::Directory:
            case FileState::Kind::NotRegular:
            case FileState::Kind::LinkCircle:
            case FileState::Kind::DeadLink:
            case FileState::Kind::NameTooLong:
                return true;
            default:
                return !state.reason.empty();
        }
    }

    /// The file that saves write.
    void addWriting(const SearchStep& step) {
        const FileState& state = *step.file;
        const bool isToldOtherwise = state.kind == FileState::Kind::Missing || isOutOfReachByItself(state);
        if (!state.writeable && state.shutDirectory.empty() && !isToldOtherwise) {
            addAbout(Kind::ReadOnly, step, "is read-only, so that nothing can be saved.",
                     "Give the user the right to write it.");
        }
        const bool isHere = step.candidates.back().source == Candidate::Source::CurrentDirectory;
        if (isHere && state.kind == FileState::Kind::NoPath) {
            add(Kind::NotSpellable, step.name, "The current directory, in which a save writes, is no path.",
                "Start the application in another directory, or unset regression_testing.");
        }
        const std::string blocker = state.kind == FileState::Kind::Missing ? blockerOf(step.result) : "";
        if (!blocker.empty()) {
            addAbout(Kind::Blocked, step, "cannot be written, because \"" + printable(blocker) + "\" is no directory.",
                     "Remove it or give it another name.");
        }
        if (state.kind == FileState::Kind::Missing && !state.shutDirectory.empty()) {
            addAbout(Kind::Blocked, step,
                     "cannot be made, because nothing may be made in the directory \"" +
                         printable(state.shutDirectory) + "\".",
                     "Give the user the right to write into that directory.");
        }
        for (const std::string& copy : state.keptCopies) {
            addBeside(Kind::KeptCopy, step, copy,
                      "is a copy of an earlier user's file, kept because a save could not read all of it or left "
                      "something of it out.",
                      "See whether it has settings to bring back, then remove it.");
        }
        for (const std::string& leftover : state.leftovers) {
            addBeside(
                Kind::Leftover, step, leftover, "was left by a save that was ended in the middle.",
                "The next save removes it, unless the user's file is missing: then it may hold the user's settings.");
        }
    }

    void addBeside(Kind kind, const SearchStep& step, const std::string& file, const std::string& what,
                   std::string advice) {
        add(kind, step.name, "The file \"" + printable(file) + "\" " + what, std::move(advice));
        symptoms_.back().finding.place = Place{file, {}, {}};
    }

    const Diagnosis& diagnosis_;
    const std::string root_;
    std::vector<Symptom> symptoms_;
};

}  // namespace

const char* nameOf(Symptom::Kind kind) {
    switch (kind) {
        case Kind::NoInstallation:
            return "no-installation";
        case Kind::OtherProduct:
            return "other-product";
        case Kind::NoProduct:
            return "no-product";
        case Kind::NoSite:
            return "no-site";
        case Kind::NoHome:
            return "no-home";
        case Kind::CommonLibraryLacks:
            return "common-library-lacks";
        case Kind::NotReady:
            return "not-ready";
        case Kind::Blank:
            return "blank";
        case Kind::NotSpellable:
            return "not-spellable";
        case Kind::Missing:
            return "missing";
        case Kind::IsDirectory:
            return "is-directory";
        case Kind::TooLarge:
            return "too-large";
        case Kind::NotRegular:
            return "not-regular";
        case Kind::LinkCircle:
            return "link-circle";
        case Kind::DeadLink:
            return "dead-link";
        case Kind::NameTooLong:
            return "name-too-long";
        case Kind::Unreadable:
            return "unreadable";
        case Kind::NotJson:
            return "not-json";
        case Kind::NotUtf8:
            return "not-utf8";
        case Kind::NoSettings:
            return "no-settings";
        case Kind::NoFacets:
            return "no-facets";
        case Kind::NoEffect:
            return "no-effect";
        case Kind::LeftOut:
            return "left-out";
        case Kind::ReadOnly:
            return "read-only";
        case Kind::Blocked:
            return "blocked";
        case Kind::KeptCopy:
            return "kept-copy";
        case Kind::Leftover:
            return "leftover";
        case Kind::SectionTwice:
            return "section-twice";
        case Kind::Shadowed:
            return "shadowed";
    }
    return "";
}

namespace {

bool keepsFromSaving(const Symptom& symptom, const FileState& written) {
    switch (symptom.kind) {
        case Kind::Blank:
        case Kind::NotSpellable:
        case Kind::IsDirectory:
        case Kind::NotRegular:
        case Kind::LinkCircle:
        case Kind::NameTooLong:
        case Kind::Unreadable:
        case Kind::ReadOnly:
        case Kind::Blocked:
            return true;
        case Kind::DeadLink:
            return !written.writeable;
        default:
            return false;
    }
}

}  // namespace

std::optional<Finding> obstacleToSaving(const Diagnosis& diagnosis) {
    const SearchStep& written = diagnosis.step(kUserFileWrittenStep);
    const bool isRead = written.result == diagnosis.step(kUserFileReadStep).result;
    for (const Symptom& symptom : diagnosis.symptoms) {
        const bool isOfFile = symptom.step == kUserFileWrittenStep || (isRead && symptom.step == kUserFileReadStep);
        if (isOfFile && keepsFromSaving(symptom, *written.file)) {
            return symptom.finding;
        }
    }
    return std::nullopt;
}

std::vector<Symptom> symptomsOf(const Diagnosis& diagnosis) { return Symptoms(diagnosis).run(); }

}  // namespace zelutil::command
