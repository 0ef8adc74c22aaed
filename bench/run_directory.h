#ifndef ZELUTIL_BENCH_RUN_DIRECTORY_H
#define ZELUTIL_BENCH_RUN_DIRECTORY_H

#include <string>

namespace zelutil::bench {

/// A directory for the run's files. It goes, with all that is in it, at the end of its scope.
class RunDirectory {
public:
    RunDirectory();
    RunDirectory(const RunDirectory&) = delete;
    RunDirectory& operator=(const RunDirectory&) = delete;
    ~RunDirectory();

    const std::string& path() const { return path_; }

    /// Writes a file, and makes the directories to it. Answers the file's full path.
    std::string write(const std::string& relativePath, const std::string& text) const;

private:
    std::string path_;
};

}  // namespace zelutil::bench

#endif
