#include "command/world/mirror.h"

#include <string>
#include <utility>

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;

/// Returns the name of a drive or a server as that of a directory, which dots alone would not be.
std::string directoryNameOf(const fs::path& rootName) {
    std::string name;
    for (const char c : rootName.u8string()) {
        name += c == '/' || c == '\\' || c == ':' ? "" : std::string(1, c);
    }
    return name.find_first_not_of('.') == std::string::npos ? '_' + name : name;
}

}  // namespace

Mirror::Mirror(fs::path files, fs::path directory, Links links)
    : files_(std::move(files)), directory_(std::move(directory)), links_(std::move(links)) {}

fs::path Mirror::resolved(const fs::path& path) const {
    const fs::path absolute = directory_ / path;
    fs::path place = absolute.root_path();
    for (const fs::path& component : absolute.relative_path()) {
        if (component == "..") {
            place = place.parent_path();
        } else if (!component.empty() && component != ".") {
            // A drive within a path, which a component tells only as a path of its own, would replace all before it.
            place /= fs::path(component.native()).has_root_name() ? fs::u8path(directoryNameOf(component)) : component;
            const auto link = links_.find(place);
            place = link == links_.end() ? place : link->second;
        }
    }
    return place;
}

fs::path Mirror::placeOfResolved(const fs::path& path) const {
    fs::path place = files_;
    if (path.has_root_name()) {
        place /= fs::u8path(directoryNameOf(path.root_name()));
    }
    return path.has_relative_path() ? place / path.relative_path() : place;
}

}  // namespace zelutil::command::world
