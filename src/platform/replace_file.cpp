// Gives a file new contents. The order of the steps, and what is done when one of them fails, is the same on all
// systems; the steps themselves are the system's.
//
//     make a file beside the target, give it the target's rights, write, flush, put it in the target's place
//     where that is refused: lock the target, reserve the space, write into it, cut it, flush
#include "platform/replace_file.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <utility>

#include "platform/replacement_plan.h"
#include "platform/replacement_primitives.h"
#include "platform/world.h"

namespace zelutil::platform {

using namespace replacement;

namespace {

constexpr int kMaximumNamesTried = 100;
constexpr int kMaximumAttempts = 10;
constexpr std::size_t kCopyBufferSize = 65'536;
constexpr std::size_t kLeastBufferSize = 4'096;

/// Many times what a user's file can be.
constexpr std::uint64_t kLargestFilePutBack = std::uint64_t{64} << 20;

struct Patience {
    int retries;
    std::chrono::milliseconds delay;
};

/// Virus scanners and indexers hold a file for some milliseconds after it was written.
constexpr Patience kWhileHeld{5, std::chrono::milliseconds(20)};

constexpr Patience kNotAtAll{0, std::chrono::milliseconds(0)};

/// Another process writes into the file for some milliseconds, or for seconds where the device is slow.
constexpr Patience kWhileLocked{100, std::chrono::milliseconds(20)};

template <typename Step>
StepResult retryingWhileBusy(Patience patience, Step step) {
    for (int retries = patience.retries;; --retries) {
        const StepResult result = step();
        if (result != StepResult::Busy || retries == 0) {
            return result;
        }
        std::this_thread::sleep_for(patience.delay);
    }
}

NativeText besideOf(const NativeText& path, const NativeText& name) { return path.substr(0, nameStart(path)) + name; }

/// Gives the file the first free name of those for kept copies and returns it without the directory. Nothing when there
/// is none to be had.
std::optional<NativeText> keepUnderFreeName(OpenFile& file, const NativeText& path, const NativeText& target) {
    const NativeText targetName = target.substr(nameStart(target));
    for (std::uint32_t number = 1; number <= kMaximumKeptNames; ++number) {
        const NativeText name = keptName(targetName, number);
        const NativeText kept = besideOf(target, name);
        const StepResult result = retryingWhileBusy(kWhileHeld, [&] { return putUnderFreeName(file, path, kept); });
        if (result != StepResult::Taken) {
            return result == StepResult::Done ? std::optional<NativeText>(name) : std::nullopt;
        }
    }
    return std::nullopt;
}

/// A new file beside the target, removed again unless it was given another name or is left.
class NewFile {
public:
    NewFile(const NativeText& target, bool replaces) {
        const NativeText targetName = target.substr(nameStart(target));
        for (int i = 0; i < kMaximumNamesTried && created_ == StepResult::Taken; ++i) {
            path_ = besideOf(target, replacementName(targetName, processNumber(), nextReplacementCall()));
            created_ = createBeside(path_, replaces, file_);
        }
        isOurs_ = created_ == StepResult::Done;
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (isOurs_) {
            discard(file_, path_);
        }
    }

    StepResult created() const { return created_; }
    bool isOpen() const { return isOurs_; }

    bool takeOver(const NativeText& from) { return replacement::takeOver(file_, path_, from); }
    bool makePrivate() { return replacement::makePrivate(file_, path_); }

    bool fill(std::string_view bytes) { return writeBytes(file_, bytes) && flushToDisk(file_); }

    /// Fills it from where `source` stands to its end.
    bool fillFrom(const OpenFile& source) {
        std::string buffer(kCopyBufferSize, '\0');
        for (;;) {
            const auto size = readBytes(source, buffer);
            if (!size) {
                return false;
            }
            if (*size == 0) {
                return flushToDisk(file_);
            }
            if (!writeBytes(file_, std::string_view(buffer).substr(0, *size))) {
                return false;
            }
        }
    }

    StepResult putInPlaceOf(const NativeText& target, bool replaces) {
        return settle(retryingWhileBusy(kWhileHeld, [&] { return putInPlace(file_, path_, target, replaces); }));
    }

    StepResult exchangeWith(const NativeText& target, bool mustKeepAll) {
        // If a move was tried first, it has waited already.
        return settle(retryingWhileBusy(mustKeepAll ? kWhileHeld : kNotAtAll,
                                        [&] { return exchange(file_, path_, target, mustKeepAll); }));
    }

    /// Returns the name under which it is kept.
    std::optional<NativeText> keepFor(const NativeText& target) {
        auto name = keepUnderFreeName(file_, path_, target);
        isOurs_ = !name;
        return name;
    }

    /// Leaves the file where it is, for the next replacement to keep.
    void leave() { isOurs_ = false; }

private:
    StepResult settle(StepResult put) {
        isOurs_ = put != StepResult::Done;
        return put;
    }

    NativeText path_;
    OpenFile file_;
    StepResult created_ = StepResult::Taken;
    bool isOurs_ = false;
};

/// The result of an attempt to write beside the target.
enum class WriteBesideResult {
    Done,
    Failed,
    /// Nothing can be put in the target's place.
    Impossible,
    /// The target is not the one that was looked at; nothing was done to it.
    Changed,
    /// The target is gone, and the new file could not be put there. It lies beside.
    Lost,
};

WriteBesideResult afterStep(StepResult result) {
    switch (result) {
        case StepResult::Done:
            return WriteBesideResult::Done;
        case StepResult::Gone:
            return WriteBesideResult::Changed;
        case StepResult::Failed:
            return WriteBesideResult::Failed;
        case StepResult::Busy:
        case StepResult::Taken:
        case StepResult::Refused:
            break;
    }
    return WriteBesideResult::Impossible;
}

WriteBesideResult exchangeFor(NewFile& file, const NativeText& target, bool mustKeepAll) {
    const StepResult exchanged = file.exchangeWith(target, mustKeepAll);
    if (exchanged != StepResult::Gone) {
        return afterStep(exchanged);
    }
    // The system gave up half-way, with the old file already gone.
    const StepResult put = file.putInPlaceOf(target, false);
    if (put == StepResult::Done || put == StepResult::Gone) {
        return afterStep(put);
    }
    file.leave();
    return WriteBesideResult::Lost;
}

/// `found` is null where there is no target yet.
WriteBesideResult putInPlaceOf(NewFile& file, const NativeText& target, const Target* found, bool hasTurn) {
    const bool mustKeepAll = found != nullptr && wayToReplace(*found) == WayToReplace::Exchange;
    if (!mustKeepAll) {
        const WriteBesideResult moved = afterStep(file.putInPlaceOf(target, found != nullptr));
        if (moved != WriteBesideResult::Impossible) {
            return moved;
        }
    }
    return found != nullptr && hasTurn ? exchangeFor(file, target, mustKeepAll) : WriteBesideResult::Impossible;
}

WriteBesideResult writeBeside(const NativeText& target, const Target* found, std::string_view bytes, bool hasTurn) {
    if (found != nullptr && wayToReplace(*found) == WayToReplace::WriteInto) {
        return WriteBesideResult::Impossible;
    }
    NewFile file(target, found != nullptr);
    if (!file.isOpen()) {
        return file.created() == StepResult::Refused ? WriteBesideResult::Impossible : WriteBesideResult::Failed;
    }
    if (found != nullptr && !file.takeOver(target)) {
        return WriteBesideResult::Impossible;
    }
    if (!file.fill(bytes)) {
        return WriteBesideResult::Failed;
    }
    return putInPlaceOf(file, target, found, hasTurn);
}

/// Reads from the beginning of the file, which has about `size` bytes, to its end. Nothing when that fails.
std::optional<std::string> readToEnd(const OpenFile& file, std::uint64_t size) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(size));
    // A small file is read at every start: a buffer for a large one would cost more than the reading. Some file systems
    // call a file empty that has bytes.
    const auto wanted = std::clamp<std::uint64_t>(size + 1, kLeastBufferSize, kCopyBufferSize);
    std::string buffer(static_cast<std::size_t>(wanted), '\0');
    for (;;) {
        const auto count = readBytes(file, buffer);
        if (!count) {
            return std::nullopt;
        }
        if (*count == 0) {
            return bytes;
        }
        bytes.append(buffer, 0, *count);
    }
}

/// Returns what the file holds; nothing when it cannot be read or is too large to be held for a moment.
std::optional<std::string> bytesOf(const NativeText& path, std::uint64_t size) {
    OpenFile file;
    const bool isReadable = size <= kLargestFilePutBack && openForReading(path, file) == StepResult::Done;
    return isReadable ? readToEnd(file, size) : std::nullopt;
}

/// Undoes a writing that failed in the middle, under its lock. Where the file must not be as long as it is, its end
/// cannot be written, but that is untouched. Returns whether the file holds the old bytes and is on disk.
bool putBack(const NativeText& target, const std::string& oldBytes) {
    OpenFile file;
    if (openForWriting(target, file) != StepResult::Done) {
        return false;
    }
    writeBytes(file, oldBytes);
    return truncate(file, oldBytes.size()) && flushToDisk(file) && bytesOf(target, oldBytes.size()) == oldBytes;
}

/// Returns nothing when the target is not the one that was looked at.
std::optional<Replaced> writeInto(const NativeText& target, std::string_view bytes) {
    OpenFile file;
    StepResult ready = retryingWhileBusy(kWhileHeld, [&] { return openForWriting(target, file); });
    if (ready == StepResult::Done) {
        ready = retryingWhileBusy(kWhileLocked, [&] { return lockForWriting(file); });
    }
    if (ready == StepResult::Gone || (ready == StepResult::Done && !isStillThere(file, target))) {
        return std::nullopt;
    }
    const auto oldSize = ready == StepResult::Done ? sizeOf(file) : std::nullopt;
    const auto oldBytes = oldSize ? bytesOf(target, *oldSize) : std::nullopt;
    if (!oldSize || !reserve(file, *oldSize, bytes.size())) {
        return Replaced::No;
    }
    const bool isWritten = writeBytes(file, bytes) && truncate(file, bytes.size()) && flushToDisk(file);
    if (!isWritten && oldBytes && putBack(target, *oldBytes)) {
        return Replaced::No;
    }
    return file.close() && isWritten ? Replaced::Yes : Replaced::Torn;
}

void clearLeftovers(const NativeText& target, bool isTargetMissing) {
    const NativeText targetName = target.substr(nameStart(target));
    for (const NativeText& name : namesBeside(target)) {
        const NativeText path = besideOf(target, name);
        OpenFile file;
        if (!isReplacementName(name, targetName) || openLeftover(path, file) != StepResult::Done) {
            continue;
        }
        // Without its target a leftover may be all that there is of the user's values.
        if (isTargetMissing && sizeOf(file) != 0) {
            keepUnderFreeName(file, path, target);
        } else {
            discard(file, path);
        }
    }
}

/// Writes beside the target where that can be done, and clears up. `exists` is told whether there is a target.
WriteBesideResult tryBeside(const NativeText& target, std::string_view bytes, bool& exists) {
    const Turn turn;
    Target found;
    const StepResult probed = retryingWhileBusy(kWhileHeld, [&] { return probeTarget(target, found); });
    exists = probed == StepResult::Done;
    if (!exists && probed != StepResult::Gone) {
        return WriteBesideResult::Failed;
    }
    if (turn.isTaken()) {
        clearLeftovers(target, !exists);
    }
    return writeBeside(target, exists ? &found : nullptr, bytes, turn.isTaken());
}

/// Returns nothing when the target is not the one that was looked at.
std::optional<Replaced> replaceOnce(const NativeText& target, std::string_view bytes) {
    bool exists = false;
    switch (tryBeside(target, bytes, exists)) {
        case WriteBesideResult::Done:
            return Replaced::Yes;
        case WriteBesideResult::Failed:
            return Replaced::No;
        case WriteBesideResult::Changed:
            return std::nullopt;
        case WriteBesideResult::Lost:
            return Replaced::Torn;
        case WriteBesideResult::Impossible:
            break;
    }
    return exists ? writeInto(target, bytes) : Replaced::No;
}

StepResult readOnce(const NativeText& path, std::uint64_t maximumSize, std::optional<std::string>& bytes) {
    OpenFile file;
    const StepResult opened = openForReading(path, file);
    if (opened != StepResult::Done) {
        return opened;
    }
    // Without the lock the bytes may be half of what is to be there, which is better than nothing.
    const StepResult locked = retryingWhileBusy(kWhileLocked, [&] { return lockForReading(file); });
    const auto size = sizeOf(file);
    if (!size || *size > maximumSize) {
        return StepResult::Refused;
    }
    bytes = readToEnd(file, *size);
    if (bytes) {
        return StepResult::Done;
    }
    // Some systems tell only now that somebody holds the file. The lock was waited for long enough.
    return locked == StepResult::Busy ? StepResult::Refused : StepResult::Busy;
}

/// Returns the text of the path beside `path` that ends in that name.
std::string textBeside(std::string_view path, const NativeText& name) {
    return std::string(path.substr(0, path.find_last_of("\\/:") + 1)) + textOfName(name);
}

}  // namespace

Replaced replaceFile(const char* path, std::string_view bytes) {
    const auto named = nativePath(path);
    const auto target = named ? resolveLinks(*named) : std::nullopt;
    for (int attempt = 0; target && attempt < kMaximumAttempts; ++attempt) {
        if (const auto replaced = replaceOnce(*target, bytes)) {
            return *replaced;
        }
    }
    return Replaced::No;
}

std::optional<std::string> keepCopy(const char* path) {
    const auto target = nativePath(path);
    if (!target) {
        return std::nullopt;
    }
    const Turn turn;
    OpenFile source;
    StepResult ready = retryingWhileBusy(kWhileHeld, [&] { return openForReading(*target, source); });
    if (ready == StepResult::Done) {
        ready = retryingWhileBusy(kWhileLocked, [&] { return lockForReading(source); });
    }
    if (ready != StepResult::Done) {
        return std::nullopt;
    }
    NewFile copy(*target, true);
    // A copy of another user's file cannot be given to that user. It is worth more than none.
    if (!copy.isOpen() || !(copy.takeOver(*target) || copy.makePrivate()) || !copy.fillFrom(source)) {
        return std::nullopt;
    }
    const auto name = copy.keepFor(*target);
    return name ? std::optional<std::string>(textBeside(path, *name)) : std::nullopt;
}

WholeFile readWhole(const char* path, std::uint64_t maximumSize) {
    const auto target = nativePath(path);
    if (!target) {
        return {std::nullopt, false};
    }
    if (!mayReadInWorld(path)) {
        return {std::nullopt, true};
    }
    std::optional<std::string> bytes;
    const StepResult result = retryingWhileBusy(kWhileHeld, [&] { return readOnce(*target, maximumSize, bytes); });
    return {std::move(bytes), result != StepResult::Gone};
}

}  // namespace zelutil::platform
