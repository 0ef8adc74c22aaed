#include "support/installation_tree.h"

#include "support/environment.h"
#include "support/text_file.h"

namespace zelutil::test {

std::string libraryFileName() { return ZELUTIL_TEST_LIBRARY_FILE_NAME; }

void makeInstallation(const std::filesystem::path& root, const std::string& programs) {
    writeTextFile(root / programs / libraryFileName(), "");
    writeTextFile(root / "share/pcb/zelmgr/zeldict.l", "");
}

void InstallationTree::nameInEnvironment() const { setVariable("QTXROOT", systemText(root())); }

}  // namespace zelutil::test
