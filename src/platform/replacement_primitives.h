#ifndef ZELUTIL_PLATFORM_REPLACEMENT_PRIMITIVES_H
#define ZELUTIL_PLATFORM_REPLACEMENT_PRIMITIVES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/replacement_name.h"

/// The single steps of replacing and keeping files. replace_file.cpp puts them in order, once for all systems; the
/// replace_file.cpp of each system's folder defines them, in this order. No step waits or tries again.
namespace zelutil::platform::replacement {

/// The result of a step.
enum class StepResult {
    Done,
    /// Somebody holds the file or its lock: worth another try in a moment.
    Busy,
    /// The name is somebody else's: worth a try under another.
    Taken,
    /// The file, or the directory it was to be in, is not there, or no longer the one that it was.
    Gone,
    /// The system does not allow this step; another way may be open.
    Refused,
    /// Space is short or the device fails: another way would only do harm.
    Failed,
};

/// An open file, closed at the end of its scope together with the lock on it.
class OpenFile {
public:
    OpenFile() = default;
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile();

    bool isOpen() const { return native_ != kNone; }
    /// The system's descriptor or handle.
    std::intptr_t native() const { return native_; }
    /// Takes another one; the one it had is closed.
    void reset(std::intptr_t native);
    /// Closes now and returns whether the system kept what was written. One that is closed already has kept it.
    bool close();

private:
    static constexpr std::intptr_t kNone = -1;

    std::intptr_t native_ = kNone;
};

/// The right to take several steps of which another process must not see a part. It is there from the beginning where
/// the system has a single step for each of them; elsewhere all processes take turns, and nobody waits for ever.
class Turn {
public:
    Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    // NOLINTNEXTLINE(performance-trivially-destructible): not on every system.
    ~Turn();

    bool isTaken() const { return isTaken_; }

private:
    [[maybe_unused]] std::intptr_t native_ = 0;
    bool isTaken_ = true;
};

// --- Paths ----------------------------------------------------------------------------------------------------------

/// Returns the system's path of a Windows text, such that longer names beside it can be used; nothing when it names no
/// file.
std::optional<NativeText> nativePath(const char* text);

/// Returns the file behind any symbolic links, also where the last of them points to nothing yet; nothing when that
/// cannot be told.
std::optional<NativeText> resolveLinks(NativeText path);

/// Returns the index in `path` of the name without directories.
std::size_t nameStart(const NativeText& path);

/// Returns the text of a name without directories that only adds ASCII to one that came as a text.
std::string textOfName(const NativeText& name);

/// Returns the number that goes into the names of this process.
std::uint32_t processNumber();

// --- The target -----------------------------------------------------------------------------------------------------

/// The facts about a target that decide how it is replaced.
struct Target {
    bool hasOtherLinks = false;
    /// No other file can be made to be like it in this.
    bool isSparse = false;
    /// The system can give these to another file while it replaces one.
    bool isEncryptedOrCompressed = false;
    bool hasNamedStreams = false;
};

/// Looks at the target. Gone when there is none; refused when it is no regular file or may not be written.
StepResult probeTarget(const NativeText& path, Target& target);

// --- A new file beside it -------------------------------------------------------------------------------------------

/// Creates the file `path`, exclusively, and keeps other processes from taking it for a leftover. Taken also when
/// another process has the lock. A file that is to replace another is nobody else's to read until it takes over.
StepResult createBeside(const NativeText& path, bool replaces, OpenFile& file);

/// Gives the new file the owner, attributes and access rights of the file `from`. False when it cannot have them all.
bool takeOver(const OpenFile& file, const NativeText& path, const NativeText& from);

/// Leaves the new file to this user: nobody else has more rights than the directory hands down on Windows, and none
/// elsewhere.
bool makePrivate(const OpenFile& file, const NativeText& path);

/// Writes at the current place. Returns false when any byte could not be written.
bool writeBytes(const OpenFile& file, std::string_view bytes);

/// Waits until all bytes are on disk. Returns false when they are not.
bool flushToDisk(const OpenFile& file);

/// Puts the new file in the target's place in one step and closes it. `replaces` tells whether there is to be a target.
/// Gone when the new file is, or when the target came to be or went meanwhile.
StepResult putInPlace(OpenFile& file, const NativeText& path, const NativeText& target, bool replaces);

/// Does the same to a target that is there by what may be several steps of the system, during a `Turn`. It keeps more:
/// with `mustKeepAll` it is refused where anything of the target would be lost. Gone when the target went in the
/// middle; the new file is then still there.
StepResult exchange(OpenFile& file, const NativeText& path, const NativeText& target, bool mustKeepAll);

/// Gives the file another name that is free, and closes it.
StepResult putUnderFreeName(OpenFile& file, const NativeText& path, const NativeText& name);

/// Removes the file, which this process made or holds locked, and closes it.
void discard(OpenFile& file, const NativeText& path);

// --- Writing into the target ----------------------------------------------------------------------------------------

StepResult openForWriting(const NativeText& path, OpenFile& file);

/// Shuts out other processes, and other calls of this one, that lock the file.
StepResult lockForWriting(const OpenFile& file);

/// Returns whether the open file is the one that `path` names now.
bool isStillThere(const OpenFile& file, const NativeText& path);

/// Returns the size in bytes, or nothing when the system does not tell.
std::optional<std::uint64_t> sizeOf(const OpenFile& file);

/// Makes sure that the file can grow to `size` before any of its bytes is touched. On failure it is as before.
bool reserve(const OpenFile& file, std::uint64_t oldSize, std::uint64_t size);

/// Cuts the file.
bool truncate(const OpenFile& file, std::uint64_t size);

// --- Reading it whole ------------------------------------------------------------------------------------------------

/// Opens a regular file; anything else is refused.
StepResult openForReading(const NativeText& path, OpenFile& file);

/// Shuts out those that lock the file for writing.
StepResult lockForReading(const OpenFile& file);

/// Fills the buffer and returns how much of it was filled: 0 at the end of the file. Nothing when reading fails.
std::optional<std::size_t> readBytes(const OpenFile& file, std::string& buffer);

// --- Leftovers ------------------------------------------------------------------------------------------------------

/// Returns names, without directories, of files beside `path`: all that could be leftovers of its replacement, perhaps
/// others.
std::vector<NativeText> namesBeside(const NativeText& path);

/// Opens a leftover and locks it. Not done while its maker lives, and when it is no file that a replacement makes.
StepResult openLeftover(const NativeText& path, OpenFile& file);

}  // namespace zelutil::platform::replacement

#endif
