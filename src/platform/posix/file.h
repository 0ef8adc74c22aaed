#ifndef ZELUTIL_PLATFORM_POSIX_FILE_H
#define ZELUTIL_PLATFORM_POSIX_FILE_H

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

/// Descriptors and paths, for the sources of the POSIX seam only.
namespace zelutil::platform::posix {

inline constexpr mode_t kNewFileMode = 0666;

/// The system's path of a Windows text, or nothing when it names no file; null is the empty text.
std::optional<std::string> spelledPath(const char* text);

/// The same, where the machine has the file while a `World` is in force.
std::optional<std::string> systemPath(const char* text);

/// An open file descriptor, closed at the end of its scope.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    /// Takes another descriptor; the one it had must be closed.
    void reset(int number) { number_ = number; }

    /// Closes now and tells whether the system kept what was written.
    bool close();

private:
    int number_;
};

/// As open, begun again when a signal interrupts it; the descriptor does not pass to child programs.
int openRetrying(const char* path, int flags, mode_t mode = 0);

/// False, with errno set, when not every byte could be written.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace zelutil::platform::posix

#endif
