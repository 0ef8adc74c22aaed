#ifndef ZELUTIL_PREFS_USER_SETTINGS_FILE_H
#define ZELUTIL_PREFS_USER_SETTINGS_FILE_H

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace zelutil::prefs {

/// The user's file, read once and then written at each save.
///
/// A file that could not be read may hold somebody's settings with one comma too many, or it was out of reach for a
/// moment only. So a copy is kept, as `path` and ".bad" or the first free numbered name, before the file is
/// overwritten, and where that fails the file stays. This concerns a file that is no JSON when it is to be overwritten,
/// and one that was there at the start and could not be read or parsed then, whatever it holds by now. An empty file is
/// never kept.
///
/// A path does not tell whether its file is the one of the start, for one file has many. So after a start with an
/// unread file, the first one met at each path counts as that one: a copy too many does no harm.
class UserSettingsFile {
public:
    UserSettingsFile() = default;
    UserSettingsFile(const UserSettingsFile&) = delete;
    UserSettingsFile& operator=(const UserSettingsFile&) = delete;

    /// Makes the directory for the file at `path`, where that is possible.
    static void makeDirectoryOf(const std::string& path);

    /// Returns whether the text is JSON.
    using Parse = std::function<bool(std::string_view text)>;

    /// Reads the file at `path` and has it parsed. Without a file, or when it cannot be read, `parse` is not called.
    void read(const std::string& path, const Parse& parse);

    enum class Written {
        Yes,
        /// The path is empty or can name no file.
        NoPath,
        /// No copy of the file that is there could be kept, so it stays.
        NotKept,
        /// The old file stays.
        No,
        /// It failed in the middle: see `platform::Replaced::Torn`.
        Torn,
    };

    struct WriteResult {
        Written written = Written::No;
        /// The copy that this writing, or a failed one before it, kept of the old file; empty for none.
        std::string keptCopy;
    };

    /// Replaces the file at `path`, which need not be the one that was read, by one with this text, making its
    /// directory first. Whatever fails, lack of memory too, fails quietly. It takes the text over:
    /// a copy would be made where nobody catches a lack of memory.
    WriteResult write(const std::string& path, std::string&& text) { return write(path, std::move(text), Seen::Yes); }

    /// Whether whoever made the text knows what the file held just now.
    enum class Seen {
        Yes,
        /// It could not be read, though it may be there, so that it may hold what another process wrote: it is kept.
        No,
    };
    WriteResult write(const std::string& path, std::string&& text, Seen seen);

    /// Returns the path that was read at the start, whatever was there.
    const std::string& pathAtStart() const { return pathAtStart_; }

    /// Returns whether the file that was read, written or kept last has these contents.
    bool knows(std::string_view contents) const {
        return writtenText_ ? *writtenText_ == contents : knownContents_ == Fingerprint(contents);
    }

    /// Returns whether the directory for the file at `path` is there.
    static bool hasDirectoryOf(const std::string& path);

    /// Returns the path of a file that was there at the start and could not be read or was no JSON; nothing where there
    /// was none.
    const std::optional<std::string>& unreadAtStart() const { return unreadAtStart_; }

    /// Returns whether a directory had the path of the start then. It holds nothing of the user's to be kept.
    bool wasDirectoryAtStart() const { return directoryAtStart_; }

private:
    /// Tells contents apart without holding them.
    struct Fingerprint {
        explicit Fingerprint(std::string_view bytes);
        bool operator==(const Fingerprint& other) const;

        std::size_t size;
        std::size_t hash;
    };

    void writeOrThrow(const std::string& path, std::string text, Seen seen, WriteResult& result);
    bool mayBeOverwritten(const std::string& path, std::string& keptCopy);
    bool mayBeOverwrittenUnread(const std::string& path, std::string& keptCopy);
    bool mayBeOverwrittenUnseen(const std::string& path, std::string& keptCopy);
    bool nameLastCopyOf(const std::string& path, const std::string& bytes, std::string& keptCopy) const;
    bool mayBeTheUnread(const std::string& path) const;
    bool keep(const std::string& path, std::optional<Fingerprint> contents, std::string& keptCopy);
    void know(const std::string& path, std::optional<Fingerprint> contents, std::optional<std::string> written = {});

    std::string pathAtStart_;
    std::optional<std::string> unreadAtStart_;
    bool directoryAtStart_ = false;
    /// Paths whose file is kept or was replaced since such a start.
    std::set<std::string> settledPaths_;
    /// Path and contents of the file that was read, written or kept last. What was written here is held whole: the rows
    /// of later saves of bench/save_bench.cpp compare it, which takes a fifth of the time of two fingerprints.
    std::string knownPath_;
    std::optional<Fingerprint> knownContents_;
    std::optional<std::string> writtenText_;
    /// Path of the file that was kept last and has not been replaced since, and of the copy.
    std::string lastCopied_;
    std::string lastCopy_;
};

}  // namespace zelutil::prefs

#endif
