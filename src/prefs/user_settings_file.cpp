#include "prefs/user_settings_file.h"

#include <cstdint>
#include <new>
#include <utility>

#include "json/document.h"
#include "platform/files.h"
#include "platform/replace_file.h"

namespace zelutil::prefs {
namespace {

/// Many times what a user's file can be. A larger one cannot be kept.
constexpr std::uint64_t kLargestFileKept = json::kMaximumTextSize * 4;

constexpr char kSeparators[] = "\\/";

/// The path without the file's name and the separators before it.
std::string directoryOf(const std::string& path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == std::string::npos) {
        return {};
    }
    return path.substr(0, path.find_last_not_of(kSeparators, separator) + 1);
}

UserSettingsFile::Written writtenBy(platform::Replaced replaced) {
    switch (replaced) {
        case platform::Replaced::Yes:
            return UserSettingsFile::Written::Yes;
        case platform::Replaced::Torn:
            return UserSettingsFile::Written::Torn;
        case platform::Replaced::No:
            break;
    }
    return UserSettingsFile::Written::No;
}

bool isDirectory(const std::string& path) {
    const auto status = platform::fileStatus(path.c_str());
    return status && status->directory;
}

}  // namespace

UserSettingsFile::Fingerprint::Fingerprint(std::string_view bytes)
    : size(bytes.size()), hash(std::hash<std::string_view>()(bytes)) {}

bool UserSettingsFile::Fingerprint::operator==(const Fingerprint& other) const {
    return size == other.size && hash == other.hash;
}

void UserSettingsFile::makeDirectoryOf(const std::string& path) {
    if (platform::namesFile(path.c_str())) {
        platform::makeDirectories(directoryOf(path).c_str());
    }
}

bool UserSettingsFile::hasDirectoryOf(const std::string& path) {
    const std::string directory = directoryOf(path);
    return directory.empty() || isDirectory(directory);
}

void UserSettingsFile::read(const std::string& path, const Parse& parse) {
    pathAtStart_ = path;
    const auto file = platform::readWhole(path.c_str(), json::kMaximumTextSize);
    if (file.bytes && parse(*file.bytes)) {
        know(path, Fingerprint(*file.bytes));
        return;
    }
    directoryAtStart_ = file.mayBeThere && isDirectory(path);
    if (file.mayBeThere && !directoryAtStart_) {
        unreadAtStart_ = path;
    }
}

UserSettingsFile::WriteResult UserSettingsFile::write(const std::string& path, std::string&& text, Seen seen) {
    WriteResult result;
    try {
        writeOrThrow(path, std::move(text), seen, result);
    } catch (const std::bad_alloc&) {
        // The file could not be written: without memory for it as without room on the disk.
    }
    return result;
}

void UserSettingsFile::writeOrThrow(const std::string& path, std::string text, Seen seen, WriteResult& result) {
    if (!platform::namesFile(path.c_str())) {
        result.written = Written::NoPath;
        return;
    }
    makeDirectoryOf(path);
    const bool isFree =
        seen == Seen::Yes ? mayBeOverwritten(path, result.keptCopy) : mayBeOverwrittenUnread(path, result.keptCopy);
    if (!isFree) {
        result.written = Written::NotKept;
        return;
    }
    result.written = writtenBy(platform::replaceFile(path.c_str(), text));
    if (result.written == Written::Yes) {
        know(path, std::nullopt, std::move(text));
        lastCopied_.clear();
    }
}

/// Keeps the file first where that is necessary.
bool UserSettingsFile::mayBeOverwritten(const std::string& path, std::string& keptCopy) {
    const auto file = platform::readWhole(path.c_str(), kLargestFileKept);
    if (!file.bytes) {
        return !file.mayBeThere || mayBeOverwrittenUnseen(path, keptCopy);
    }
    if (file.bytes->empty() || knows(*file.bytes)) {
        nameLastCopyOf(path, *file.bytes, keptCopy);
        return true;
    }
    const bool nothingIsLost = !mayBeTheUnread(path) && json::Document(*file.bytes).valid();
    return nothingIsLost || keep(path, Fingerprint(*file.bytes), keptCopy);
}

/// It may be readable again by now, but then the text was made without it.
bool UserSettingsFile::mayBeOverwrittenUnread(const std::string& path, std::string& keptCopy) {
    const auto file = platform::readWhole(path.c_str(), kLargestFileKept);
    if (!file.mayBeThere || (file.bytes && file.bytes->empty())) {
        return true;
    }
    if (file.bytes && nameLastCopyOf(path, *file.bytes, keptCopy)) {
        return true;
    }
    return keep(path, std::nullopt, keptCopy);
}

/// Returns whether an earlier writing, which failed, has kept these bytes already, and says where.
bool UserSettingsFile::nameLastCopyOf(const std::string& path, const std::string& bytes, std::string& keptCopy) const {
    if (path != lastCopied_ || platform::readWhole(lastCopy_.c_str(), kLargestFileKept).bytes != bytes) {
        return false;
    }
    keptCopy = lastCopy_;
    return true;
}

/// A file that was read or written here holds nothing unknown. The replacing will find out whether it can be replaced
/// although somebody shuts others out of it now.
bool UserSettingsFile::mayBeOverwrittenUnseen(const std::string& path, std::string& keptCopy) {
    const auto status = platform::fileStatus(path.c_str());
    if (status && status->size == 0) {
        return true;
    }
    if (status && static_cast<std::uint64_t>(status->size) > kLargestFileKept) {
        return false;
    }
    return path == knownPath_ || keep(path, std::nullopt, keptCopy);
}

bool UserSettingsFile::mayBeTheUnread(const std::string& path) const {
    return unreadAtStart_ && settledPaths_.count(path) == 0;
}

bool UserSettingsFile::keep(const std::string& path, std::optional<Fingerprint> contents, std::string& keptCopy) {
    auto copy = platform::keepCopy(path.c_str());
    if (!copy) {
        return false;
    }
    lastCopied_ = path;
    lastCopy_ = *copy;
    keptCopy = std::move(*copy);
    // A file that cannot be overwritten in spite of that is not to be kept at every save.
    know(path, contents);
    return true;
}

void UserSettingsFile::know(const std::string& path, std::optional<Fingerprint> contents,
                            std::optional<std::string> written) {
    knownPath_ = path;
    knownContents_ = contents;
    writtenText_ = std::move(written);
    if (unreadAtStart_) {
        settledPaths_.insert(path);
    }
}

}  // namespace zelutil::prefs
