#include <zelutil/file/hierarchy.h>

#include <string>
#include <string_view>
#include <utility>

#include "file/hierarchy_search.h"
#include "file/path_text.h"
#include "file/plain_text.h"
#include "platform/files.h"
#include "text/ascii.h"

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

/// The files of a library in some directories, for "file not found over eight candidates" of bench/find_bench.cpp:
/// nearly all are not there, so they share one text whose end is exchanged, and only the one that is there becomes a
/// path.
class LibraryFiles {
public:
    LibraryFiles(Path base, std::string_view name) : base_(std::move(base)), name_(name), text_(base_) {
        baseSize_ = text_.size();
        ((text_ += zelutil::file::kSeparator) += name) += kSuffix;
        isPlain_ = hasDrive(text_) && zelutil::file::lookAtText(text_, baseSize_).plain;
        if (isPlain_) {
            zelutil::file::convertSeparators(text_, baseSize_);
            name_ = text_.substr(baseSize_ + 1, name.size());
        }
    }

    /// Returns whether a directory below the base has the library with that suffix; of "" the base itself.
    bool exists(std::string_view below, std::string_view suffix) {
        if (!isPlain_) {
            return path(below, suffix).Exists();
        }
        text_.resize(baseSize_);
        if (!below.empty()) {
            (text_ += zelutil::file::kSeparator) += below;
        }
        ((text_ += zelutil::file::kSeparator) += name_) += suffix;
        return zelutil::platform::fileStatus(text_.c_str()).has_value();
    }

    Path path(std::string_view below, std::string_view suffix) const {
        const Path directory = below.empty() ? base_ : base_ + std::string(below);
        return directory + (name_ + std::string(suffix));
    }

    /// A file's suffix; before it may stand what says that the file is for 64 bits.
    static constexpr std::string_view kSuffix = ".dll";
    static constexpr std::string_view kSuffixOf64Bits = "64.dll";

private:
    /// A path without one may be relative.
    static bool hasDrive(const std::string& text) {
        return text.size() >= 2 && zelutil::ascii::isLetter(text[0]) && text[1] == ':';
    }

    Path base_;
    std::string name_;
    std::string text_;
    std::size_t baseSize_ = 0;
    /// Is true where the text behind the base is canonical and changes nothing before it.
    bool isPlain_ = false;
};

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
    LibraryFiles files(belowRoot(dir), name);
    for (const std::string_view below : {"", "bin", "lib", "lib\\64bit"}) {
        for (const std::string_view suffix : {LibraryFiles::kSuffixOf64Bits, LibraryFiles::kSuffix}) {
            if (files.exists(below, suffix)) {
                return files.path(below, suffix);
            }
        }
    }
    return Path();
}

}  // namespace ZelU::File
