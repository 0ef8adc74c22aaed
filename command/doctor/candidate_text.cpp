#include "command/doctor/candidate_text.h"

#include <zelutil/file/path.h>

#include <algorithm>
#include <string_view>

#include "command/text.h"
#include "file/hierarchy_root.h"
#include "platform/environment.h"
#include "platform/modules.h"

namespace zelutil::command {
namespace {

using text::Candidate;
using Source = Candidate::Source;
using Verdict = Candidate::Verdict;

struct SourceWords {
    Source source;
    const char* name;
    const char* words;
};

constexpr SourceWords kSources[] = {
    {Source::CommonLibrary, "common-library", "the tools directory of the common library"},
    {Source::OwnFile, "own-file", "this library's own file"},
    {Source::Variable, "variable", "the variable"},
    {Source::SearchList, "search-list", "the search through directories begins"},
    {Source::ListEntry, "list-entry", "a directory of"},
    {Source::SiteDirectory, "site-directory", "the site's directory"},
    {Source::Site, "site", "the site itself"},
    {Source::Installation, "installation", "the installation"},
    {Source::SetupPath, "setup-path", "the setup path, which the common library searches"},
    {Source::UserEnvironment, "user-environment", "the user environment"},
    {Source::CurrentDirectory, "current-directory", "the current directory"},
    {Source::Process, "process", "the modules of the process"},
    {Source::BesideLibrary, "beside-library", "beside this library"},
    {Source::Loader, "loader", "where the loader looks"},
};

struct VerdictWords {
    Verdict verdict;
    const char* name;
    const char* words;
};

constexpr VerdictWords kVerdicts[] = {
    {Verdict::Taken, "taken", "taken"},
    {Verdict::Shadowed, "shadowed", "would be taken, but an earlier one is"},
    {Verdict::Noted, "noted", ""},
    {Verdict::Hidden, "hidden", "does not count, because an earlier variable is set"},
    {Verdict::NotDefined, "not-defined", "not set"},
    {Verdict::Unknown, "unknown", "knows none"},
    {Verdict::NoPath, "no-path", "is no path"},
    {Verdict::NotThere, "not-there", "not there"},
    {Verdict::NoPrograms, "no-programs", "is not in a directory tools*/bin*"},
    {Verdict::NoLibrary, "no-library", "has no"},
    {Verdict::NoMarker, "no-marker", "its tree has no"},
};

const SourceWords& wordsOf(Source source) {
    return *std::find_if(std::begin(kSources), std::end(kSources),
                         [=](const auto& row) { return row.source == source; });
}

const VerdictWords& wordsOf(Verdict verdict) {
    return *std::find_if(std::begin(kVerdicts), std::end(kVerdicts),
                         [=](const auto& row) { return row.verdict == verdict; });
}

/// Returns whether a text begins as a whole path does, perhaps in quotes. Else it is part of one, as a variable has it.
bool isWholePath(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('"'), text.size()));
    return text.size() > 2 && text[1] == ':' && (text[2] == '\\' || text[2] == '/');
}

/// Returns whether this is a variable that names a product. The search joins the directory of the programs to its
/// value.
bool isRootVariable(const Candidate& candidate) {
    const auto& names = file::kRootVariables;
    return candidate.source == Source::Variable && candidate.verdict != Verdict::NotDefined &&
           std::find(names.begin(), names.end(), candidate.variable) != names.end();
}

std::string reasonOf(const Candidate& candidate) {
    std::string reason = wordsOf(candidate.verdict).words;
    switch (candidate.verdict) {
        case Verdict::NoLibrary:
            return reason + ' ' + platform::libraryFileName();
        case Verdict::NoMarker:
            return reason + ' ' + file::kMarkerOfTree;
        case Verdict::Taken:
        case Verdict::Shadowed:
            return candidate.found.empty() ? reason
                                           : reason + ", leads to \"" + nativeOrAsItStands(candidate.found) + '"';
        default:
            return reason;
    }
}

}  // namespace

bool holdsNoPath(const std::string& variable) {
    const auto value = platform::environmentPath(variable.c_str());
    return value && !value->empty() && ZelU::File::Path(*value).Empty();
}

std::string lineOf(const Candidate& candidate) {
    std::string line = wordsOf(candidate.source).words;
    if (!candidate.variable.empty()) {
        line += ' ' + candidate.variable;
    }
    if (isRootVariable(candidate)) {
        const char* const why = platform::environment(candidate.variable.c_str()).value_or("").empty()
                                    ? ", which is set but empty"
                                : holdsNoPath(candidate.variable) ? ", whose value is no path"
                                                                  : "";
        line +=
            *why == '\0' ? ", whose programs are in" : why + std::string(": the current directory's programs are in");
    }
    if (!candidate.seen.empty()) {
        line += " \"" + (isWholePath(candidate.seen) ? nativeOrAsItStands(candidate.seen) : candidate.seen) + '"';
    }
    const std::string reason = reasonOf(candidate);
    return reason.empty() ? line : line + ": " + reason;
}

std::string wordsOnLength(const FileState& file) {
    constexpr std::size_t kMostShownOfName = 40;
    return file.longName.empty() ? "its path is too long for the system"
                                 : "the name \"" + printable(beginningOf(file.longName, kMostShownOfName)) +
                                       "...\" in its path is too long";
}

std::string lineOf(const FileState& file) {
    switch (file.kind) {
        case FileState::Kind::NoPath:
            return "There is no path for it.";
        case FileState::Kind::InQuotes:
            return "It is not opened, because its path has a blank.";
        case FileState::Kind::NotSpellable:
            return "The text names no file.";
        case FileState::Kind::Missing:
            return file.writeable ? "It is not there." : "It is not there, and cannot be made.";
        case FileState::Kind::Directory:
            return "It is a directory.";
        case FileState::Kind::TooLarge:
            return "It is too large to be read: " + std::to_string(file.size) + " bytes.";
        case FileState::Kind::NotRegular:
            return "It is no regular file.";
        case FileState::Kind::LinkCircle:
            return "It is out of reach: the link \"" + file.link + "\" leads round in a circle.";
        case FileState::Kind::DeadLink:
            return "It is not there: the link \"" + file.link + "\" leads to \"" + file.linkTarget +
                   "\", which is not there" + (file.writeable ? "." : ", and cannot be made.");
        case FileState::Kind::NameTooLong:
            return "It cannot be there, because " + wordsOnLength(file) + '.';
        case FileState::Kind::Unreadable:
            if (!file.reason.empty()) {
                return "It cannot be looked at: " + file.reason + '.';
            }
            return file.shutDirectory.empty()
                       ? "It cannot be read."
                       : "It is out of reach: \"" + file.shutDirectory + "\" may not be entered.";
        case FileState::Kind::Malformed:
        case FileState::Kind::Fine:
            break;
    }
    return std::to_string(file.size) + " bytes" + (file.writeable ? "." : ", read-only.");
}

const char* nameOf(Source source) { return wordsOf(source).name; }

const char* nameOf(Verdict verdict) { return wordsOf(verdict).name; }

const char* nameOf(FileState::Kind kind) {
    switch (kind) {
        case FileState::Kind::NoPath:
            return "no-path";
        case FileState::Kind::InQuotes:
            return "in-quotes";
        case FileState::Kind::NotSpellable:
            return "not-spellable";
        case FileState::Kind::Missing:
            return "missing";
        case FileState::Kind::Directory:
            return "directory";
        case FileState::Kind::TooLarge:
            return "too-large";
        case FileState::Kind::NotRegular:
            return "not-regular";
        case FileState::Kind::LinkCircle:
            return "link-circle";
        case FileState::Kind::DeadLink:
            return "dead-link";
        case FileState::Kind::NameTooLong:
            return "name-too-long";
        case FileState::Kind::Unreadable:
            return "unreadable";
        case FileState::Kind::Malformed:
            return "malformed";
        case FileState::Kind::Fine:
            break;
    }
    return "fine";
}

}  // namespace zelutil::command
