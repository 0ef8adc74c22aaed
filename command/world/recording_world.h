#ifndef ZELUTIL_COMMAND_WORLD_RECORDING_WORLD_H
#define ZELUTIL_COMMAND_WORLD_RECORDING_WORLD_H

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "command/world/manifest.h"
#include "platform/world.h"

namespace zelutil::command::world {

/// The machine itself, or the bundled one that was in force before, with a note of everything that it is asked. It is
/// in force for its lifetime.
class RecordingWorld final : public platform::World {
public:
    RecordingWorld() : below_(platform::worldInForce) { platform::worldInForce = this; }
    RecordingWorld(const RecordingWorld&) = delete;
    RecordingWorld& operator=(const RecordingWorld&) = delete;
    ~RecordingWorld() { platform::worldInForce = below_; }

    std::optional<std::string> variable(const char* name, std::optional<std::string> own) override;
    platform::NativeText directory(platform::NativeText own) override;
    platform::NativeText file(platform::NativeText path) override;
    bool mayRead(platform::NativeText path) override;
    std::string modulePath(std::string own) override;
    std::optional<void*> openModule(const char* baseName, std::vector<platform::ModulePlace>* places) override;
    std::optional<void*> moduleFunction(void* module, const char* name) override;
    bool mayWrite(platform::NativeText path, bool own) override;
    std::errc hiddenBy(platform::NativeText path, std::errc own) override;

    /// The variables that were asked for and are defined.
    const std::map<std::string, std::string>& variables() const { return variables_; }
    /// The paths of the files that were asked for, as they were spelled.
    const std::set<std::filesystem::path>& files() const { return files_; }
    /// Tell of the files that were asked for whether the user may write them, and what may hide them.
    const Rights& writeable() const { return writeable_; }
    const Reasons& hidden() const { return hidden_; }

private:
    platform::World* below_;
    std::map<std::string, std::string> variables_;
    std::set<std::filesystem::path> files_;
    Rights writeable_;
    Reasons hidden_;
};

}  // namespace zelutil::command::world

#endif
