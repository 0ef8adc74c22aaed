#ifndef ZELUTIL_COMMAND_WORLD_BUNDLED_WORLD_H
#define ZELUTIL_COMMAND_WORLD_BUNDLED_WORLD_H

#include <map>
#include <optional>
#include <string>

#include "command/world/manifest.h"
#include "platform/world.h"

namespace zelutil::command::world {

/// The names of what a bundle holds.
inline constexpr char kManifestName[] = "world.json";
inline constexpr char kFilesName[] = "files";

/// The machine that a bundle was made on: its variables, its current directory and its files, of which those that a
/// save writes are written into the bundle.
class BundledWorld final : public platform::World {
public:
    BundledWorld(const std::filesystem::path& bundle, Manifest manifest);

    std::optional<std::string> variable(const char* name, std::optional<std::string> own) override;
    platform::NativeText directory(platform::NativeText own) override;
    platform::NativeText file(platform::NativeText path) override;
    bool mayRead(platform::NativeText path) override;
    std::string modulePath(std::string own) override;
    std::optional<void*> openModule(const char* baseName, std::vector<platform::ModulePlace>* places) override;
    std::optional<void*> moduleFunction(void* module, const char* name) override;
    bool mayWrite(platform::NativeText path, bool own) override;
    std::errc hiddenBy(platform::NativeText path, std::errc own) override;

    /// Returns whether the path is a link that led round in a circle.
    bool leadsRound(const std::filesystem::path& path) const;

    /// Returns where a link leads that led to nothing and still does; nothing for anything else.
    std::optional<std::filesystem::path> targetOfDeadLink(const std::filesystem::path& path) const;

    const Manifest& manifest() const { return manifest_; }

private:
    bool isCircle(const std::filesystem::path& resolved) const;
    bool isBehindDeadLink(const std::filesystem::path& resolved) const;
    template <typename Answer>
    Answer recordedOr(const std::map<std::filesystem::path, Answer>& answers, const platform::NativeText& path,
                      Answer own) const;

    Manifest manifest_;
    Mirror mirror_;
    std::filesystem::path nowhere_;
};

/// Says in a sentence why something cannot be done, and in another one what to do next. Both are empty where it is
/// done.
struct Obstacle {
    std::string text;
    std::string advice;

    explicit operator bool() const { return !text.empty(); }
};

/// Puts the machine of a bundle in force for the rest of the process, before anything has asked the seam. Returns why
/// that cannot be done.
Obstacle enterWorld(const std::filesystem::path& bundle);

/// Returns what the bundle in force says of its machine; null where none is in force.
const Manifest* manifestInForce();

/// Returns the directory of the bundle in force, as it was named; empty where none is in force.
std::filesystem::path directoryOfBundleInForce();

/// Returns whether the machine in force has a link there that leads round in a circle, or one on the way.
bool leadsRound(const std::filesystem::path& path);

/// Returns where a link leads, without the links behind it, if there is nothing; nothing for anything else. The way to
/// the link itself is open.
std::optional<std::filesystem::path> targetOfDeadLink(const std::filesystem::path& path);

/// The file that an argument names, where this machine has it: in the bundle where that has it, and otherwise where the
/// argument says.
struct ArgumentPlace {
    std::filesystem::path path;
    /// Whether a bundle is in force and lacks the file.
    bool isBesideBundle = false;
};

ArgumentPlace placeOfArgument(const std::filesystem::path& path);

}  // namespace zelutil::command::world

#endif
