#include <zelutil/file/hierarchy.h>

#include <string>
#include <string_view>

#include "platform/environment.h"

namespace ZelU::File {
namespace {

constexpr std::string_view kSiteShare = "share/local";
constexpr std::string_view kExecutableSuffix = ".exe";

Path existing(const Path& candidate) { return candidate.Exists() ? candidate : Path(); }

/// The file in the site directory: below it as below the site's share, or in the directory itself.
Path findInSite(const char* name, std::string_view dir) {
    const auto site = zelutil::platform::environmentPath("QTX_SITE");
    if (!site || dir.substr(0, kSiteShare.size()) != kSiteShare) {
        return Path();
    }
    Path directory(*site);
    if (dir.size() > kSiteShare.size()) {
        // Kept deliberately: only the beginning is compared, so the character after it, a separator or not, is dropped.
        directory += std::string(dir.substr(kSiteShare.size() + 1));
    }
    const Path below = existing(directory + name);
    return below.Empty() ? existing(Path(*site) + name) : below;
}

/// Kept deliberately: a directory that may be entered counts too; the status is all that is looked at.
Path executable(const Path& candidate) { return candidate.IsExecutable() ? candidate : Path(); }

/// The other spelling of a program's name: without its ".exe" and all that follows, or with one.
std::string withSuffixToggled(const std::string& name) {
    const std::size_t suffix = name.find(kExecutableSuffix);
    return suffix == std::string::npos ? name + std::string(kExecutableSuffix) : name.substr(0, suffix);
}

/// Kept deliberately: a `dir` that is no path makes this the empty path, and what is joined to that lies below the
/// current directory. No join knows more than the text on its left.
Path belowRoot(const char* dir) { return Hierarchy::GetRoot() + dir; }

}  // namespace

Path Hierarchy::FindFile(const char* name, const char* dir) {
    if (name == nullptr || dir == nullptr) {
        return Path();
    }
    const Path inSite = findInSite(name, dir);
    return inSite.Empty() ? existing(belowRoot(dir) + name) : inSite;
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
    for (const Path& directory : {base, base + "bin", base + "lib", base + "lib" + "64bit"}) {
        for (const char* const suffix : {"64.dll", ".dll"}) {
            Path candidate = directory + (baseName + suffix);
            if (candidate.Exists()) {
                return candidate;
            }
        }
    }
    return Path();
}

}  // namespace ZelU::File
