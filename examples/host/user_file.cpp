#include "user_file.h"

#include <fstream>
#include <iterator>

#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>

namespace {

/// The library's paths are Windows texts on every system; elsewhere the drive "Z:" is the root directory.
std::string systemName(const ZelU::File::Path& path) {
    std::string name = static_cast<const char*>(path);
#ifndef _WIN32
    name.erase(0, 2);
    for (char& c : name) {
        c = c == '\\' ? '/' : c;
    }
#endif
    return name;
}

}  // namespace

std::string readUserFile() {
    const ZelU::File::Path path = ZelU::File::Hierarchy::GetPcbEnv() + "tessel" + "tessel_settings.cfg";
    std::ifstream stream(systemName(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}
