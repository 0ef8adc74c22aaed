#include "platform/posix/file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/kill_shield.h"
#include "platform/posix/drive_text.h"
#include "platform/world.h"

namespace zelutil::platform::posix {

std::optional<std::string> spelledPath(const char* text) {
    return systemPathFromText(text == nullptr ? std::string_view() : std::string_view(text));
}

std::optional<std::string> systemPath(const char* text) {
    auto path = spelledPath(text);
    return path && worldInForce != nullptr ? worldInForce->file(*std::move(path)) : path;
}

Descriptor::~Descriptor() {
    if (isOpen()) {
        close();
    }
}

bool Descriptor::close() {
    // A thread may be killed in the system's close, and a destructor may not be unwound.
    const KillShield shield;
    const int number = number_;
    number_ = -1;
    return ::close(number) == 0;
}

int openRetrying(const char* path, int flags, mode_t mode) {
    int number = -1;
    do {
        number = ::open(path, flags | O_CLOEXEC, mode);
    } while (number < 0 && errno == EINTR);
    return number;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace zelutil::platform::posix
