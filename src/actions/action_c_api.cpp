#include <zelutil/actions/action_manager.h>
#include <zelutil/c_api.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace {

/// As strncpy: cut at the end of the buffer, without a zero then; else filled up with zeros.
void copyText(char* buffer, std::size_t size, const std::string& text) {
    const std::size_t length = std::min(std::strlen(text.c_str()), size);
    std::memcpy(buffer, text.data(), length);
    std::memset(buffer + length, 0, size - length);
}

/// Calls a C function for an observer. Its handle is the object itself.
class UCPActionObserverCStyle final : public IUCPActionObserver {
public:
    explicit UCPActionObserverCStyle(ucp_action_shortcut_callback callback) : callback_(callback) {}

    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        copyText(oldShortcut_.data(), oldShortcut_.size(), oldShortcut);
        copyText(newShortcut_.data(), newShortcut_.size(), newShortcut);
        callback_(actionId, oldShortcut_.data(), newShortcut_.data());
    }

    /// Kept deliberately: C hosts are not told of menu flags; their callback has no place for one.
    void onRMBMenuChanged(int, bool) override {}

private:
    ucp_action_shortcut_callback callback_;
    std::array<char, 64> oldShortcut_{};
    std::array<char, 64> newShortcut_{};
};

}  // namespace

void ucp_action_manager_get_shortcut(int id, char* buffer, int length) {
    if (length > 0) {
        copyText(buffer, static_cast<std::size_t>(length), UCPActionManager::instance().getShortcut(id));
    }
}

void* ucp_action_manager_observer_attach(int id, ucp_action_shortcut_callback callback) {
    // Kept deliberately: a null callback is accepted, and called at the first change.
    auto observer = std::make_unique<UCPActionObserverCStyle>(callback);
    return UCPActionManager::instance().attachObserver(id, observer.get()) ? observer.release() : nullptr;
}

void ucp_action_manager_observer_detach(void* handle) {
    const std::unique_ptr<UCPActionObserverCStyle> observer(static_cast<UCPActionObserverCStyle*>(handle));
    UCPActionManager::instance().detachObserver(observer.get());
}
