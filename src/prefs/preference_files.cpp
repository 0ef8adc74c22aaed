#include "prefs/preference_files.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>

#include <atomic>
#include <optional>
#include <utility>

#include "common_library/common_library.h"
#include "file/installed_file.h"
#include "file/path_form.h"
#include "platform/platform.h"

namespace zelutil::prefs {
namespace {

using ZelU::File::Hierarchy;
using ZelU::File::Path;
using Source = text::Candidate::Source;
using Verdict = text::Candidate::Verdict;

constexpr char kDefaultsVariable[] = "tessel_settings";
constexpr char kUserFileOnSetupPath[] = "pcbenv/tessel/tessel_settings.cfg";
constexpr char kRegressionVariable[] = "regression_testing";
constexpr char kUserFileInEnvironment[] = "/tessel/tessel_settings.cfg";
constexpr char kUserFileInRegressionTest[] = "/tessel_settings.cfg";

std::atomic<bool> searchInProgress{false};

class SearchInProgress {
public:
    SearchInProgress() { searchInProgress = true; }
    SearchInProgress(const SearchInProgress&) = delete;
    SearchInProgress& operator=(const SearchInProgress&) = delete;
    ~SearchInProgress() { searchInProgress = false; }
};

std::optional<std::string> findOnSetupPath() {
    const auto search = common_library::SetupPathSearch::prepare();
    if (!search) {
        return std::nullopt;
    }
    const SearchInProgress mark;
    return search->find(kUserFileOnSetupPath);
}

/// Returns the verdict on a file that is taken whether it is there or not.
Verdict verdictOf(const std::string& path) { return path.empty() ? Verdict::NoPath : Verdict::Taken; }

/// Returns the variable's value or else what `installed` returns. A trace may have it look for that too.
template <typename Trace, typename Installed>
std::string findDefaults(Trace& trace, Installed installed) {
    auto named = namedDefaultsFile();
    trace.tell(Source::Variable, named ? Verdict::Taken : Verdict::NotDefined, named ? named->c_str() : "", "",
               kDefaultsVariable);
    if (named && !trace.goesOn()) {
        return std::move(*named);
    }
    std::string below = installed();
    if (named) {
        return std::move(*named);
    }
    return below;
}

/// The file's path as it is opened. A directory that is no path holds no file: the text would name one of the root.
std::string fileIn(const Path& directory, const char* name) {
    const std::string text = file::textToOpen(directory);
    return text.empty() ? text : text + name;
}

template <typename Trace>
std::string findUserFile(Trace& trace) {
    file::settlePathForm();
    auto found = findOnSetupPath();
    trace.tell(Source::SetupPath, found ? Verdict::Taken : Verdict::Unknown, found ? found->c_str() : "");
    if (found && !trace.goesOn()) {
        return std::move(*found);
    }
    // Kept deliberately: the path comes in double quotes when it has a blank, as the shipped file's does, unless a host
    // asked for plain ones; nothing is then read or written.
    std::string below = fileIn(Hierarchy::GetPcbEnv(), kUserFileInEnvironment);
    trace.tell(Source::UserEnvironment, verdictOf(below), below.c_str());
    if (found) {
        return std::move(*found);
    }
    return below;
}

template <typename Trace>
std::string findWrittenUserFile(Trace& trace) {
    const bool redirected = isWrittenUserFileRedirected();
    trace.tell(Source::Variable, redirected ? Verdict::Noted : Verdict::NotDefined, "", "", kRegressionVariable);
    if (!redirected) {
        return findUserFile(trace);
    }
    std::string here = fileIn(Path(Path::GetCWD()), kUserFileInRegressionTest);
    trace.tell(Source::CurrentDirectory, verdictOf(here), here.c_str());
    return here;
}

}  // namespace

std::optional<std::string> namedDefaultsFile() { return platform::environmentPath(kDefaultsVariable); }

std::string defaultsFilePath() {
    text::NoTrace trace;
    return findDefaults(trace, [] { return file::installedSettingsFile(kSettingsFileName); });
}

std::string defaultsFilePath(const Path* root, text::SearchTrace& trace) {
    return findDefaults(trace, [&] { return file::installedSettingsFile(kSettingsFileName, root, trace); });
}

std::string userFilePath() {
    text::NoTrace trace;
    return findUserFile(trace);
}

std::string userFilePath(text::SearchTrace& trace) { return findUserFile(trace); }

bool isWrittenUserFileRedirected() {
    static const bool regressionTesting = platform::environment(kRegressionVariable).has_value();
    return regressionTesting;
}

std::string writtenUserFilePath() {
    text::NoTrace trace;
    return findWrittenUserFile(trace);
}

std::string writtenUserFilePath(text::SearchTrace& trace) { return findWrittenUserFile(trace); }

bool isUserFileSearchInProgress() { return searchInProgress; }

}  // namespace zelutil::prefs
