#ifndef ZELUTIL_COMMAND_WORLD_MIRROR_H
#define ZELUTIL_COMMAND_WORLD_MIRROR_H

#include <filesystem>
#include <map>

/// Places of the files of a bundle's machine in the bundle. Pure text: nothing here looks at a file.
///
///     /home/ann/f => FILES/home/ann/f    C:\home\ann\f => FILES\C\home\ann\f    \\server\share\f =>
///     FILES\server\share\f
namespace zelutil::command::world {

/// Symbolic links of that machine: the path of the link, whose directory has no link in it, and what it leads to.
using Links = std::map<std::filesystem::path, std::filesystem::path>;

class Mirror {
public:
    Mirror() = default;

    /// `files` is the bundle's directory for files, `directory` the current directory of its machine.
    Mirror(std::filesystem::path files, std::filesystem::path directory, Links links = {});

    const std::filesystem::path& directory() const { return directory_; }
    const Links& links() const { return links_; }
    void addLink(const std::filesystem::path& from, const std::filesystem::path& to) { links_[from] = to; }

    /// Returns the path as an absolute one without links, "." and "..".
    std::filesystem::path resolved(const std::filesystem::path& path) const;

    /// Returns where the bundle has the file with a path that is resolved.
    std::filesystem::path placeOfResolved(const std::filesystem::path& path) const;

    std::filesystem::path placeOf(const std::filesystem::path& path) const { return placeOfResolved(resolved(path)); }

private:
    std::filesystem::path files_;
    std::filesystem::path directory_;
    Links links_;
};

}  // namespace zelutil::command::world

#endif
