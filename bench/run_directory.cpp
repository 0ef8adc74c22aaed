#include "run_directory.h"

#include <filesystem>
#include <fstream>
#include <random>

namespace zelutil::bench {

namespace fs = std::filesystem;

RunDirectory::RunDirectory()
    : path_((fs::temp_directory_path() / ("zelutil-bench-" + std::to_string(std::random_device{}()))).string()) {}

RunDirectory::~RunDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string RunDirectory::write(const std::string& relativePath, const std::string& text) const {
    const fs::path file = fs::path(path_) / relativePath;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

}  // namespace zelutil::bench
