#include "support/temp_directory.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace zelutil::test {

namespace fs = std::filesystem;

TempDirectory::TempDirectory() : TempDirectory(fs::canonical(fs::temp_directory_path())) {}

TempDirectory::TempDirectory(const fs::path& parent) {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path candidate = parent / ("zelutil-test-" + std::to_string(random()));
        if (fs::create_directory(candidate)) {
            path_ = candidate;
            return;
        }
    }
    throw std::runtime_error("no temporary directory for the test");
}

TempDirectory::~TempDirectory() {
    std::error_code ignored;
    // A test may have left the process standing in it.
    const fs::path here = fs::current_path(ignored).lexically_relative(path_);
    if (!here.empty() && *here.begin() != "..") {
        fs::current_path(path_.parent_path(), ignored);
    }
    fs::remove_all(path_, ignored);
}

std::string windowsText(const fs::path& path) {
    std::string text = path.string();
    std::replace(text.begin(), text.end(), '/', '\\');
#ifndef _WIN32
    if (!text.empty() && text.front() == '\\') {
        text.insert(0, "Z:");
    }
#endif
    return text;
}

#ifdef _WIN32
fs::path fileOfText(const std::string& windowsText) { return windowsText; }

std::string fixedTemporaryDirectory() { return "C:\\Temp"; }
#else
fs::path fileOfText(const std::string& windowsText) {
    const bool onDrive = windowsText.compare(0, 2, "Z:") == 0;
    std::string text = onDrive ? windowsText.substr(2) : windowsText;
    std::replace(text.begin(), text.end(), '\\', '/');
    return text.empty() ? "/" : text;
}

std::string fixedTemporaryDirectory() { return "Z:\\tmp"; }
#endif

std::string systemText(const fs::path& path) { return path.string(); }

}  // namespace zelutil::test
