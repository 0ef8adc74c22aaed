// A thread and the object that started it may end in any order, so neither may rely on the other. Both know a link
// block, which knows the object until that is destroyed, and how many threads still know the block.
#include <zelutil/util/thread.h>

#include <cstdint>
#include <memory>

#include "platform/kill_shield.h"
#include "platform/thread_lock.h"
#include "platform/threads.h"

namespace Smart::AssociationExceptions {

Base::~Base() = default;

InitializationFailure::~InitializationFailure() = default;

}  // namespace Smart::AssociationExceptions

namespace ZelU::Thrd {

namespace platform = zelutil::platform;

namespace {

// Kept deliberately: what the system calls the current thread is not the name of any thread, so a thread that joins or
// kills itself is never found out.
bool isAnother(unsigned id, unsigned currentThread) { return id != 0 && id != currentThread; }

}  // namespace

/// Guarded, as `Thread::link_` is, by the `ThreadLock`.
struct Thread::LinkBlock {
    /// Threads that know this block.
    std::uint32_t count;
    /// Null once the object has been destroyed.
    Thread* owner;

    /// The block of `owner`, now known to one more thread. Throws when there is none.
    static LinkBlock* join(Thread& owner) {
        // Made before it is known to be needed, so that no memory is asked for under the lock.
        auto fresh = std::make_unique<LinkBlock>(LinkBlock{0, &owner});
        const platform::ThreadLock lock;
        if (owner.link_ == nullptr) {
            owner.link_ = fresh.release();
        }
        LinkBlock* const link = owner.link_;
        if (link == nullptr) {
            throw Smart::AssociationExceptions::InitializationFailure();
        }
        ++link->count;
        return link;
    }

    /// Has the block of an object that is being destroyed know no object any more.
    static void forget(Thread& owner) noexcept {
        const platform::KillShield shield;
        const platform::ThreadLock lock;
        LinkBlock* const link = owner.link_;
        if (link == nullptr) {
            return;
        }
        link->owner = nullptr;
        if (link->count == 0) {
            delete link;
        }
    }

    // The rest is called under the lock.

    /// A thread that was killed too late to be stopped must not speak for the one that its owner has started since.
    void tellOwner(unsigned thread) const {
        if (owner != nullptr && owner->id_ == thread) {
            owner->onDone();
        }
    }

    /// Drops one thread's hold on this block; returns the block, to be freed, when that was the last.
    std::unique_ptr<LinkBlock> leave() {
        --count;
        if (count > 0) {
            return nullptr;
        }
        if (owner != nullptr) {
            owner->link_ = nullptr;
        }
        return std::unique_ptr<LinkBlock>(this);
    }
};

namespace {

/// A started thread's own: what it is to do, and its hold on the link block. It destroys itself.
class Started final : public platform::ThreadBody {
public:
    Started(ThreadFunction function, void* argument, int delay)
        : function_(function), argument_(argument), delay_(delay < 0 ? 0 : static_cast<std::uint32_t>(delay)) {}
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;
    ~Started() {
        // Freed after the lock: a thread that was killed while it asked for memory may wait here for ever.
        std::unique_ptr<Thread::LinkBlock> unused;
        if (link_ != nullptr) {
            const platform::ThreadLock lock;
            unused = link_->leave();
        }
    }

    void joinLinkOf(Thread& owner) { link_ = Thread::LinkBlock::join(owner); }

    void run() override {
        // Frees this object when the thread is killed by unwinding.
        std::unique_ptr<Started> own(this);
        platform::sleepKillable(delay_);
        platform::callKillable(function_, argument_);
        static_cast<void>(own.release());
    }

    void finish(unsigned self) override {
        // All under the lock, so that `Kill` cannot strike while the memory is being freed.
        const platform::ThreadLock lock;
        link_->tellOwner(self);
        link_->leave().reset();
        link_ = nullptr;
        delete this;
    }

private:
    Thread::LinkBlock* link_ = nullptr;
    ThreadFunction function_;
    void* argument_;
    std::uint32_t delay_;
};

}  // namespace

Thread::Thread(ThreadFunction function, void* argument) { Start(function, argument); }

// Kept deliberately: a copy has no link block, so nobody tells it when the thread ends.
Thread::Thread(const Thread& other) : id_(other.id_.load()) {}

Thread::Thread(Thread&& other) noexcept : id_(other.id_.load()) {}

// Nothing here may throw: a function that catches or cleans up does not survive it when a kill strikes at any of its
// instructions. The ending thread touches the object no more once it has taken the link away.
Thread::~Thread() {
    if (link_ != nullptr) {
        LinkBlock::forget(*this);
    }
}

void Thread::Start(ThreadFunction function, void* argument, int delay) {
    if (IsRunning() || function == nullptr) {
        return;
    }
    platform::KillShield shield;
    auto started = std::make_unique<Started>(function, argument, delay);
    started->joinLinkOf(*this);
    if (platform::startThread(*started, id_)) {
        static_cast<void>(started.release());
    }
    started.reset();
    shield.lift();
}

bool Thread::IsRunning() const { return id_ != 0; }

void Thread::Join() {
    const unsigned id = id_;
    if (isAnother(id, currentThreadID())) {
        platform::joinThread(id);
    }
    id_ = 0;
}

void Thread::Kill() {
    const unsigned id = id_;
    if (platform::isCurrentThread(id)) {
        // Does not return, so the lock must not be held.
        platform::killThread(id);
    }
    platform::KillShield shield;
    {
        // Read again: a thread that ended meanwhile has said so under the lock, and its name may already be another's.
        const platform::ThreadLock lock;
        const unsigned still = id_;
        if (isAnother(still, currentThreadID())) {
            platform::killThread(still);
        }
        id_ = 0;
    }
    shield.lift();
}

unsigned Thread::currentThreadID() { return platform::currentThreadHandle(); }

void Thread::onDone() { id_ = 0; }

}  // namespace ZelU::Thrd
