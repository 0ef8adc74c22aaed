#include "util/process_wide.h"

namespace zelutil {

/// The objects there are, as a stack.
class ProcessWideObjects {
public:
    static void enter(ProcessWideBase& object) noexcept {
        object.enteredBefore_ = newest;
        while (!newest.compare_exchange_weak(object.enteredBefore_, &object)) {
        }
    }

    static void destroyAll() noexcept {
        // One that the destructor of another makes is destroyed next.
        while (ProcessWideBase* const object = newest) {
            newest = object->enteredBefore_;
            object->destroy();
        }
    }

private:
    // It needs no destructor, and so it is there as long as anybody can ask.
    static std::atomic<ProcessWideBase*> newest;
};

std::atomic<ProcessWideBase*> ProcessWideObjects::newest{nullptr};

namespace {

/// Made while the library is being loaded, which is what makes its destructor come late.
struct LibraryEnd {
    LibraryEnd() = default;
    LibraryEnd(const LibraryEnd&) = delete;
    LibraryEnd& operator=(const LibraryEnd&) = delete;
    ~LibraryEnd() { ProcessWideObjects::destroyAll(); }
};

const LibraryEnd libraryEnd;

}  // namespace

void ProcessWideBase::enter() noexcept { ProcessWideObjects::enter(*this); }

}  // namespace zelutil
