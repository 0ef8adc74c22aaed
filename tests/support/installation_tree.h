#ifndef ZELUTIL_TESTS_SUPPORT_INSTALLATION_TREE_H
#define ZELUTIL_TESTS_SUPPORT_INSTALLATION_TREE_H

#include <filesystem>
#include <string>

#include "support/temp_directory.h"

namespace zelutil::test {

/// File name of the library under test: "libzelutil.so", "zelutil.dll".
std::string libraryFileName();

/// Makes the two files that tell a directory of libraries in an installation tree: the library in `programs` and
/// share/pcb/zelmgr/zeldict.l below `root`. Both are empty.
void makeInstallation(const std::filesystem::path& root, const std::string& programs = "tools/bin");

/// An installation tree of the test's own.
class InstallationTree {
public:
    InstallationTree() { makeInstallation(root()); }

    /// The tree's root. What lies beside it belongs to the test too.
    std::filesystem::path root() const { return directory_ / "product"; }
    std::filesystem::path operator/(const std::string& relative) const { return root() / relative; }

    /// Has the variable "QTXROOT" name this tree, for this process.
    void nameInEnvironment() const;

private:
    TempDirectory directory_;
};

}  // namespace zelutil::test

#endif
