#include "command/world/recording_world.h"

#include <system_error>
#include <utility>

namespace zelutil::command::world {

using platform::NativeText;

std::optional<std::string> RecordingWorld::variable(const char* name, std::optional<std::string> own) {
    auto value = below_ == nullptr ? std::move(own) : below_->variable(name, std::move(own));
    if (value) {
        variables_.emplace(name, *value);
    }
    return value;
}

NativeText RecordingWorld::directory(NativeText own) {
    if (below_ != nullptr) {
        return below_->directory(std::move(own));
    }
    std::error_code ignored;
    return own.empty() ? std::filesystem::current_path(ignored).native() : own;
}

NativeText RecordingWorld::file(NativeText path) {
    files_.emplace(path);
    return below_ == nullptr ? path : below_->file(std::move(path));
}

bool RecordingWorld::mayRead(NativeText path) { return below_ == nullptr || below_->mayRead(std::move(path)); }

std::string RecordingWorld::modulePath(std::string own) {
    return below_ == nullptr ? own : below_->modulePath(std::move(own));
}

std::optional<void*> RecordingWorld::openModule(const char* baseName, std::vector<platform::ModulePlace>* places) {
    return below_ == nullptr ? std::nullopt : below_->openModule(baseName, places);
}

std::optional<void*> RecordingWorld::moduleFunction(void* module, const char* name) {
    return below_ == nullptr ? std::nullopt : below_->moduleFunction(module, name);
}

bool RecordingWorld::mayWrite(NativeText path, bool own) {
    const bool may = below_ == nullptr ? own : below_->mayWrite(path, own);
    return writeable_[std::move(path)] = may;
}

std::errc RecordingWorld::hiddenBy(NativeText path, std::errc own) {
    const std::errc reason = below_ == nullptr ? own : below_->hiddenBy(path, own);
    return hidden_[std::move(path)] = reason;
}

}  // namespace zelutil::command::world
