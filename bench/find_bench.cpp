// A library that is nowhere: its eight candidates looked for below the installation root, against the same questions to
// the standard library and to Boost, and against the system calls alone.
#include <sys/stat.h>
#include <zelutil/file/hierarchy.h>

#include <boost/filesystem.hpp>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "run_directory.h"
#include "support/comparison.h"

namespace {

using ZelU::File::Hierarchy;

constexpr const char* kDirectories[] = {"", "bin", "lib", "lib/64bit"};
constexpr const char* kSuffixes[] = {"64.dll", ".dll"};

/// An installation that the search for the root finds.
class Installation {
public:
    Installation() {
        directory_.write("share/pcb/zelmgr/zeldict.l", "");
        directory_.write("tools/bin/libzelutil.so", "");
        directory_.write("tools/lib/64bit/other.dll", "");
        ::setenv("QTXROOT", directory_.path().c_str(), 1);
    }

    const std::string& path() const { return directory_.path(); }

private:
    zelutil::bench::RunDirectory directory_;
};

/// Asks for each candidate as a host would with a library of paths. Returns how many exist.
template <typename Path, typename Exists>
std::uint64_t countExisting(const std::string& root, const std::string& name, Exists exists) {
    const Path base = Path(root) / "tools";
    std::uint64_t found = 0;
    for (const char* const directory : kDirectories) {
        for (const char* const suffix : kSuffixes) {
            found += exists(base / directory / (name + suffix)) ? 1 : 0;
        }
    }
    return found;
}

std::vector<std::string> candidatesBelow(const std::string& root, const std::string& name) {
    std::vector<std::string> candidates;
    for (const char* const directory : kDirectories) {
        for (const char* const suffix : kSuffixes) {
            candidates.push_back((std::filesystem::path(root) / "tools" / directory / (name + suffix)).string());
        }
    }
    return candidates;
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Installation installation;
    const std::string root = installation.path();
    Comparison("file not found over eight candidates", 1)
        .zelutil([] { return Hierarchy::FindDll("router", "tools").Empty() ? 0U : 1U; })
        .peer("filesystem::exists",
              [root] {
                  return countExisting<std::filesystem::path>(
                      root, "router", [](const std::filesystem::path& path) { return std::filesystem::exists(path); });
              })
        .peer("boost::filesystem::exists",
              [root] {
                  return countExisting<boost::filesystem::path>(
                      root, "router",
                      [](const boost::filesystem::path& path) { return boost::filesystem::exists(path); });
              })
        .peer("limit: stat", [candidates = candidatesBelow(root, "router")] {
            std::uint64_t found = 0;
            for (const std::string& candidate : candidates) {
                struct stat status {};
                found += ::stat(candidate.c_str(), &status) == 0 ? 1 : 0;
            }
            return found;
        });
}
