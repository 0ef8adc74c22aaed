#include <zelutil/file/hierarchy.h>

#include <string>
#include <string_view>

#include "file/hierarchy_search.h"

namespace zelutil::file {
namespace {

using ZelU::File::Path;
using Source = text::Candidate::Source;

constexpr std::string_view kSiteShare = "share/local";

template <typename Trace>
Path findInSiteTraced(const char* name, std::string_view dir, Trace& trace) {
    text::NoTrace noTrace;
    const auto site = siteText(noTrace);
    if (!site || dir.substr(0, kSiteShare.size()) != kSiteShare) {
        return Path();
    }
    Path directory(*site);
    if (dir.size() > kSiteShare.size()) {
        // Kept deliberately: only the beginning is compared, so the character after it, a separator or not, is dropped.
        directory += std::string(dir.substr(kSiteShare.size() + 1));
    }
    Path below = tracedExisting(directory + name, Source::SiteDirectory, kSiteVariable, trace);
    if (!below.Empty() && !trace.goesOn()) {
        return below;
    }
    Path itself = tracedExisting(Path(*site) + name, Source::Site, kSiteVariable, trace);
    if (!below.Empty()) {
        return below;
    }
    return itself;
}

}  // namespace

Path findInSite(const char* name, const char* dir, text::NoTrace& trace) { return findInSiteTraced(name, dir, trace); }

Path findInSite(const char* name, const char* dir, text::SearchTrace& trace) {
    return findInSiteTraced(name, dir, trace);
}

Path findFile(const char* name, const char* dir, const Path* root, text::SearchTrace& trace) {
    const Path inSite = findInSite(name, dir, trace);
    const bool found = !inSite.Empty();
    if (root == nullptr || (found && !trace.goesOn())) {
        return inSite;
    }
    const Path below = findBelowRoot(*root, name, dir, trace);
    return found ? inSite : below;
}

}  // namespace zelutil::file

namespace ZelU::File {
namespace {

constexpr std::string_view kExecutableSuffix = ".exe";

/// Kept deliberately: a directory that may be entered counts too; the status is all that is looked at.
Path executable(const Path& candidate) { return candidate.IsExecutable() ? candidate : Path(); }

/// The other spelling of a program's name: without its ".exe" and all that follows, or with one.
std::string withSuffixToggled(const std::string& name) {
    const std::size_t suffix = name.find(kExecutableSuffix);
    return suffix == std::string::npos ? name + std::string(kExecutableSuffix) : name.substr(0, suffix);
}

/// Kept deliberately: as for a file, a `dir` that is no path makes this the empty path.
Path belowRoot(const char* dir) { return Hierarchy::GetRoot() + dir; }

}  // namespace

Path Hierarchy::FindFile(const char* name, const char* dir) {
    if (name == nullptr || dir == nullptr) {
        return Path();
    }
    zelutil::text::NoTrace trace;
    const Path inSite = zelutil::file::findInSite(name, dir, trace);
    return inSite.Empty() ? zelutil::file::findBelowRoot(Hierarchy::GetRoot(), name, dir, trace) : inSite;
}

Path Hierarchy::FindExe(const char* name, const char* dir) {
    if (name == nullptr) {
        return Path();
    }
    const Path base = belowRoot(dir);
    const Path asWritten = executable(base + name);
    return asWritten.Empty() ? executable(base + withSuffixToggled(name)) : asWritten;
}

Path Hierarchy::FindDll(const char* name, const char* dir) {
    if (name == nullptr) {
        return Path();
    }
    const Path base = belowRoot(dir);
    const std::string baseName(name);
    const std::string names[] = {baseName + "64.dll", baseName + ".dll"};
    // One after the other, so that a directory is made only where it is looked into.
    for (const char* const below : {"", "bin", "lib", "lib/64bit"}) {
        const Path directory = *below == '\0' ? base : base + below;
        for (const std::string& file : names) {
            Path candidate = directory + file.c_str();
            if (candidate.Exists()) {
                return candidate;
            }
        }
    }
    return Path();
}

}  // namespace ZelU::File
