// Says what was looked for where, by calling the functions with which the library looks.
#include <zelutil/file/hierarchy.h>
#include <zelutil/host/start.h>

#include <optional>
#include <string>
#include <vector>

#include "common_library/common_library.h"
#include "facet/facet_groups.h"
#include "file/hierarchy_root.h"
#include "file/installed_file.h"
#include "file/path_form.h"
#include "host/current_preferences.h"
#include "json/document.h"
#include "platform/platform.h"
#include "prefs/preference_files.h"
#include "text/search_trace.h"

namespace zelutil::host {
namespace {

using text::Candidate;
using ZelU::File::Hierarchy;
using ZelU::File::Path;

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string quoted(const Path& path) { return quoted(std::string(static_cast<const char*>(path))); }

/// Collects lines under headings.
class Report {
public:
    void heading(const std::string& text) { text_ += text + '\n'; }
    void line(const std::string& text) { text_ += "    " + text + '\n'; }
    std::string take() { return std::move(text_); }

private:
    std::string text_;
};

// --- Files ----------------------------------------------------------------------------------------------------------

std::string stateOfFile(const std::string& path) {
    if (path.empty()) {
        return "there is no path for it";
    }
    if (path.front() == '"') {
        return "not opened, because its path has a blank and so stands in double quotes (see Options::pathsWithBlanks)";
    }
    const auto status = platform::fileStatus(path.c_str());
    if (!status) {
        return platform::namesFile(path.c_str()) ? "not there" : "the text names no file";
    }
    if (status->directory) {
        return "a directory";
    }
    const bool readable = platform::readFile(path.c_str(), json::kMaximumTextSize).has_value();
    return std::to_string(status->size) + (readable ? " bytes" : " bytes, which cannot be read");
}

std::string fileLine(const std::string& path) { return quoted(path) + ": " + stateOfFile(path) + '.'; }

/// Returns the path of a shipped file, as it is opened; empty without an installation.
std::string shippedFile(const char* name) {
    const Path* const root = file::rootInForce();
    return root == nullptr ? std::string() : file::textToOpen(file::placeOfSettingsFile(*root, name));
}

// --- The installation -----------------------------------------------------------------------------------------------

std::string lineOf(const Candidate& candidate) {
    const std::string library = platform::libraryFileName();
    const bool taken = candidate.verdict == Candidate::Verdict::Taken;
    switch (candidate.source) {
        case Candidate::Source::CommonLibrary:
            return taken ? "The common library names the tools directory " + quoted(candidate.seen) + '.'
                         : "The common library names no tools directory.";
        case Candidate::Source::OwnFile:
            return "This library's file " + quoted(candidate.seen) +
                   (taken ? " is in a directory tools*/bin*." : " is not in a directory tools*/bin*.");
        case Candidate::Source::Variable:
            return candidate.variable + " puts " + quoted(candidate.seen) + " before the PATH.";
        case Candidate::Source::SearchList:
            return "In the PATH:";
        default:
            break;
    }
    if (candidate.verdict == Candidate::Verdict::NoLibrary) {
        return quoted(candidate.seen) + " has no " + library + '.';
    }
    return quoted(candidate.seen) + " has " + library + ", and its tree " + (taken ? "has " : "has no ") +
           file::kMarkerOfTree + '.';
}

struct RootSearch {
    bool found = false;
    /// The root, or the directory that was tried last.
    Path root;
    std::vector<std::string> lines;
};

std::string lineOfUnsetVariables() {
    std::string line = "No variable names an installation:";
    for (const char* const name : file::kRootVariables) {
        line += std::string(" ") + name;
    }
    return line + " are not set.";
}

RootSearch searchRoot() {
    RootSearch search;
    text::SearchTrace trace(text::SearchTrace::Until::Found);
    search.found = file::locateRoot(search.root, trace);
    bool variable = false;
    for (const Candidate& candidate : trace.candidates()) {
        const bool isVariable = candidate.source == Candidate::Source::Variable;
        variable = variable || (isVariable && candidate.verdict == Candidate::Verdict::Noted);
        if (candidate.source == Candidate::Source::SearchList && !variable) {
            search.lines.push_back(lineOfUnsetVariables());
        }
        if (candidate.verdict != Candidate::Verdict::NotDefined) {
            search.lines.push_back(lineOf(candidate));
        }
    }
    return search;
}

std::string rootHeading(const RootSearch& search, const Path* inForce) {
    const std::string heading = "Installation: ";
    if (inForce == nullptr) {
        return heading + "none";
    }
    if (!search.found) {
        return heading + quoted(*inForce) + ", though a search finds none; a directory tried last stands in for one";
    }
    return heading + quoted(*inForce) +
           (search.root == *inForce ? "" : ", though a search now finds " + quoted(search.root));
}

void addInstallation(Report& report) {
    const RootSearch search = searchRoot();
    if (search.found && file::rootInForce() == nullptr) {
        try {
            Hierarchy::GetRoot();
        } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
            // It went in this moment.
        }
    }
    report.heading(rootHeading(search, file::rootInForce()));
    for (const std::string& line : search.lines) {
        report.line(line);
    }
}

// --- The rest -------------------------------------------------------------------------------------------------------

void addCommonLibrary(Report& report) {
    const auto missing = common_library::missingFunctions();
    report.heading(std::string("Common library: ") + (missing ? "there" : "not there"));
    for (const std::string& name : missing.value_or(std::vector<std::string>())) {
        report.line("Its function " + name + " is missing.");
    }
    if (!common_library::initDone()) {
        report.line("It is not initialised yet, so the installation may still change.");
    }
}

void addHome(Report& report) {
    report.heading("User environment: " + quoted(Hierarchy::GetPcbEnv()));
    report.line(Hierarchy::GetPcbEnv().Exists() ? "It is there." : "It is not there.");
    for (const char* const name : {"HOMEDRIVE", "HOMEPATH"}) {
        const auto value = platform::environment(name);
        report.line(std::string(name) + (value ? " is " + quoted(*value) : " is not set") + '.');
    }
}

bool isMalformed(const std::string& path) {
    const auto text = platform::readFile(path.c_str(), json::kMaximumTextSize);
    return text && !json::Document(*text).valid();
}

/// The environment may have changed since the preferences were made.
void addDefaults(Report& report, const prefs::Preferences* preferences) {
    const auto named = prefs::namedDefaultsFile();
    const std::string now = named ? *named : shippedFile(prefs::kSettingsFileName);
    const std::string path = preferences == nullptr ? now : preferences->defaultsFile;
    report.heading("Shipped defaults");
    if (named && now == path) {
        report.line("The variable tessel_settings names them.");
    }
    report.line(fileLine(path));
    if (isMalformed(path)) {
        report.line("They are no JSON, so nothing of them counts.");
    }
    if (now != path) {
        report.line("A process that starts now looks for them elsewhere: " + fileLine(now));
    }
    if (preferences != nullptr) {
        const std::size_t sections = preferences->catalogue.sections().size();
        report.line("Sections in force: " + std::to_string(sections) + '.');
    }
}

void addUserFile(Report& report, const prefs::Preferences* preferences) {
    const std::string read = prefs::userFilePath();
    const std::string written = prefs::writtenUserFilePath();
    report.heading("User's file");
    report.line(fileLine(read));
    if (written != read) {
        report.line("A save writes another one, because regression_testing was set: " + fileLine(written));
    }
    if (preferences != nullptr && preferences->userFile->unreadAtStart()) {
        report.line(quoted(*preferences->userFile->unreadAtStart()) +
                    " could not be read at the start, or was no JSON.");
    }
}

}  // namespace

std::string diagnose() {
    // While the user's file is being searched for, by a call of the common library that has led here, the preferences
    // are being made and nothing may ask them.
    const bool searching = prefs::isUserFileSearchInProgress();
    const prefs::Preferences* const preferences = searching ? nullptr : currentPreferences();
    Report report;
    addInstallation(report);
    addCommonLibrary(report);
    addHome(report);
    addDefaults(report, preferences);
    if (searching) {
        report.heading("User's file: being searched for");
    } else {
        addUserFile(report, preferences);
    }
    report.heading("Facets");
    report.line(fileLine(shippedFile(facet::kFacetFileName)));
    return report.take();
}

}  // namespace zelutil::host
