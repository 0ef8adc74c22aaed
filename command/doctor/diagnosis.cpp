// The searches, one step each.
#include "command/doctor/diagnosis.h"

#include <zelutil/file/hierarchy.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "command/doctor/file_state.h"
#include "command/doctor/left_out.h"
#include "command/text.h"
#include "common_library/common_library.h"
#include "facet/facet_groups.h"
#include "file/hierarchy_root.h"
#include "file/hierarchy_search.h"
#include "file/installed_file.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

using text::SearchTrace;
using ZelU::File::Path;

SearchStep commonLibraryStep() {
    SearchTrace trace;
    common_library::locate(trace);
    SearchStep step{kCommonLibraryStep, "Common library", "", trace.candidates(), std::nullopt};
    for (const text::Candidate& candidate : step.candidates) {
        if (candidate.verdict == text::Candidate::Verdict::Taken) {
            step.result = candidate.seen;
        }
    }
    return step;
}

/// Returns a step whose file is still to be looked at.
SearchStep fileStep(const char* name, const char* title, const std::string& path, const SearchTrace& trace) {
    return {name, title, path, trace.candidates(), FileState()};
}

bool isUsers(const SearchStep& step) {
    return step.name == std::string_view(kUserFileReadStep) || step.name == std::string_view(kUserFileWrittenStep);
}

class Examination {
public:
    Diagnosis run() {
        // Its module is looked for once in a process, by whoever needs it first.
        SearchStep commonLibrary = commonLibraryStep();
        diagnosis_.missingFunctions = common_library::missingFunctions();
        findRoot();
        findSite();
        findEnvironment();
        diagnosis_.steps.push_back(std::move(commonLibrary));
        findFiles();
        diagnosis_.isReady = common_library::initDone();
        diagnosis_.symptoms = symptomsOf(diagnosis_);
        return std::move(diagnosis_);
    }

private:
    void findRoot() {
        SearchTrace trace;
        diagnosis_.hasInstallation = file::locateRoot(root_, trace);
        (diagnosis_.hasInstallation ? rootResult_ : diagnosis_.standIn) = libraryText(root_);
        diagnosis_.steps.push_back({kRootStep, "Installation", rootResult_, trace.candidates(), std::nullopt});
    }

    void findSite() {
        SearchTrace trace;
        const std::string site = libraryText(Path(file::siteText(trace).value_or("")));
        diagnosis_.steps.push_back({kSiteStep, "Site directory", site, trace.candidates(), std::nullopt});
    }

    void findEnvironment() {
        SearchTrace trace;
        const std::string directory = libraryText(file::locateUserEnvironment(trace));
        diagnosis_.steps.push_back({kEnvironmentStep, "User environment", directory, trace.candidates(), std::nullopt});
    }

    void findFiles() {
        const Path* const root = diagnosis_.hasInstallation ? &root_ : nullptr;
        SearchTrace defaults;
        const std::string defaultsFile = prefs::defaultsFilePath(root, defaults);
        diagnosis_.steps.push_back(fileStep(kDefaultsStep, "Shipped defaults", defaultsFile, defaults));
        SearchTrace read;
        const std::string readFile = prefs::userFilePath(read);
        diagnosis_.steps.push_back(fileStep(kUserFileReadStep, "User's file, as it is read", readFile, read));
        SearchTrace written;
        const std::string writtenFile = prefs::writtenUserFilePath(written);
        diagnosis_.steps.push_back(
            fileStep(kUserFileWrittenStep, "User's file, as a save writes it", writtenFile, written));
        SearchTrace facets;
        const std::string facetFile = file::installedSettingsFile(facet::kFacetFileName, root, facets);
        diagnosis_.steps.push_back(fileStep(kFacetsStep, "Facets", facetFile, facets));
        lookAtFiles(diagnosis_);
    }

    Diagnosis diagnosis_;
    Path root_;
    std::string rootResult_;
};

}  // namespace

void lookAtFiles(Diagnosis& diagnosis) {
    const SearchStep& defaults = diagnosis.step(kDefaultsStep);
    const SearchStep& read = diagnosis.step(kUserFileReadStep);
    std::unique_ptr<const ReadFile> shipped;
    for (SearchStep& step : diagnosis.steps) {
        if (!step.file) {
            continue;
        }
        if (&step != &read && isUsers(step) && step.result == read.result) {
            // It was looked at already: mostly a save writes the file that a start reads.
            step.file = read.file;
            continue;
        }
        FileLook look = lookAtFile(step.result, isUsers(step) ? FileUse::Users : FileUse::Shipped);
        step.file = std::move(look.state);
        if (look.read) {
            const SectionOwners owners(isUsers(step) && shipped ? shipped->document.root() : json::View());
            step.file->repeatedSections = repeatedSectionsIn(*look.read, owners);
        }
        if (&step == &defaults) {
            shipped = std::move(look.read);
        } else if (&step == &read && shipped && look.read) {
            step.file->leftOut = leftOutBySave(*shipped, *look.read);
        }
    }
}

const SearchStep& Diagnosis::step(const char* name) const {
    return *std::find_if(steps.begin(), steps.end(),
                         [name](const SearchStep& step) { return std::string_view(step.name) == name; });
}

Diagnosis diagnose() { return Examination().run(); }

}  // namespace zelutil::command
