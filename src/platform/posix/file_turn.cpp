// The turns of processes on POSIX systems: a lock on the directory, which needs no file of its own.
#include "platform/file_turn.h"

#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/posix/file.h"

namespace zelutil::platform {

using namespace replacement;

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::chrono::seconds kLongestWait{3};
constexpr milliseconds kLongestSleep{16};

/// The system wakes nobody up at a time of one's own choice, so the lock is asked for again and again.
bool waitForLock(const OpenFile& file) {
    const auto end = steady_clock::now() + kLongestWait;
    milliseconds sleep{1};
    for (;;) {
        const StepResult locked = lockForWriting(file);
        if (locked != StepResult::Busy || steady_clock::now() > end) {
            return locked == StepResult::Done;
        }
        std::this_thread::sleep_for(sleep);
        sleep = std::min(2 * sleep, kLongestSleep);
    }
}

}  // namespace

FileTurn::FileTurn(const char* path) {
    const auto named = nativePath(path);
    const auto target = named ? resolveLinks(*named) : std::nullopt;
    if (!target) {
        return;
    }
    const NativeText directory = target->substr(0, nameStart(*target));
    native_.reset(posix::openRetrying(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY));
    isTaken_ = native_.isOpen() && waitForLock(native_);
}

// Closing the directory releases it.
FileTurn::~FileTurn() = default;

}  // namespace zelutil::platform
