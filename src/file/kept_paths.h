#ifndef ZELUTIL_FILE_KEPT_PATHS_H
#define ZELUTIL_FILE_KEPT_PATHS_H

#include <zelutil/file/path.h>

#include <set>
#include <utility>

#include "platform/critical_section.h"

namespace zelutil::file {

/// Holds a critical section for its scope.
class CriticalScope {
public:
    explicit CriticalScope(platform::CriticalSection* section) : section_(section) {
        platform::enterCriticalSection(section_);
    }
    CriticalScope(const CriticalScope&) = delete;
    CriticalScope& operator=(const CriticalScope&) = delete;
    ~CriticalScope() { platform::leaveCriticalSection(section_); }

private:
    platform::CriticalSection* section_;
};

/// Paths that hosts hold references to: each stays where it is, whole and unchanged, as long as this object. Several
/// threads may call at once.
class KeptPaths {
public:
    KeptPaths() : section_(platform::createCriticalSection()) {}
    KeptPaths(const KeptPaths&) = delete;
    KeptPaths& operator=(const KeptPaths&) = delete;
    ~KeptPaths() { platform::destroyCriticalSection(section_); }

    /// An equal path that is kept already, or else this one.
    const ZelU::File::Path& keep(ZelU::File::Path path) {
        const CriticalScope scope(section_);
        return *paths_.insert(std::move(path)).first;
    }

private:
    platform::CriticalSection* section_;
    std::set<ZelU::File::Path> paths_;
};

}  // namespace zelutil::file

#endif
