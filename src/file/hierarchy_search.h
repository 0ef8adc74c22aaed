#ifndef ZELUTIL_FILE_HIERARCHY_SEARCH_H
#define ZELUTIL_FILE_HIERARCHY_SEARCH_H

#include <zelutil/file/path.h>

#include <optional>
#include <string>

#include "platform/environment.h"
#include "text/search_trace.h"

/// The searches of `Hierarchy` with a trace of what they look at. `Hierarchy` calls them with `text::NoTrace`.
namespace zelutil::file {

/// Returns the value of a variable, empty for none, and tells of it.
template <typename Trace>
std::string tracedVariable(const char* name, Trace& trace) {
    const auto value = platform::environment(name);
    using Verdict = text::Candidate::Verdict;
    trace.tell(text::Candidate::Source::Variable, value ? Verdict::Noted : Verdict::NotDefined,
               value ? value->c_str() : "", "", name);
    return value.value_or("");
}

/// Returns the user's environment directory by the variables as they are now; empty where they make no path.
///
/// Kept deliberately: a text that begins with a single separator has the current directory put in front as it stands,
/// so that without a drive two separators meet there. Systems read them as one.
template <typename Trace>
ZelU::File::Path locateUserEnvironment(Trace& trace) {
    const std::string drive = tracedVariable("HOMEDRIVE", trace);
    ZelU::File::Path directory(drive + tracedVariable("HOMEPATH", trace) + "/pcbenv");
    using Verdict = text::Candidate::Verdict;
    trace.tell(text::Candidate::Source::UserEnvironment, directory.Empty() ? Verdict::NoPath : Verdict::Taken,
               directory);
    return directory;
}

/// Returns the candidate where it is there, and tells of it; otherwise the empty path.
template <typename Trace>
ZelU::File::Path tracedExisting(const ZelU::File::Path& candidate, text::Candidate::Source source, const char* variable,
                                Trace& trace) {
    using Verdict = text::Candidate::Verdict;
    if (!candidate.Exists()) {
        trace.tell(source, candidate.Empty() ? Verdict::NoPath : Verdict::NotThere, candidate, "", variable);
        return {};
    }
    trace.tell(source, Verdict::Taken, candidate, "", variable);
    return candidate;
}

/// Returns the file `name` in the directory `dir` below a root.
template <typename Trace>
ZelU::File::Path findBelowRoot(const ZelU::File::Path& root, const char* name, const char* dir, Trace& trace) {
    // Kept deliberately: a `dir` that is no path makes the directory the empty path, and what is joined to that lies
    // below the current directory. No join knows more than the text on its left.
    return tracedExisting(root + dir + name, text::Candidate::Source::Installation, "", trace);
}

/// The variable that names the site.
inline constexpr char kSiteVariable[] = "QTX_SITE";

/// Returns the site as its variable has it; nothing where that is not defined.
template <typename Trace>
std::optional<std::string> siteText(Trace& trace) {
    auto site = platform::environmentPath(kSiteVariable);
    using Verdict = text::Candidate::Verdict;
    trace.tell(text::Candidate::Source::Variable, site ? Verdict::Taken : Verdict::NotDefined,
               site ? site->c_str() : "", "", kSiteVariable);
    return site;
}

/// Returns the file in the site directory where `dir` is in the share of sites: below the site as below that share, or
/// in the site itself. Otherwise the empty path.
ZelU::File::Path findInSite(const char* name, const char* dir, text::NoTrace& trace);
ZelU::File::Path findInSite(const char* name, const char* dir, text::SearchTrace& trace);

/// Finds what `Hierarchy::FindFile` finds, with the installation in `root`; null for none, where that throws.
ZelU::File::Path findFile(const char* name, const char* dir, const ZelU::File::Path* root, text::SearchTrace& trace);

}  // namespace zelutil::file

#endif
