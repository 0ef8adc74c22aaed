#ifndef ZELUTIL_TESTS_SUPPORT_WINDOWS_CALLS_H
#define ZELUTIL_TESTS_SUPPORT_WINDOWS_CALLS_H

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Stands between the code under test and the system. A program that uses it is linked with
/// `zelutil_wrap_windows_calls`.
namespace zelutil::test {

/// The wrapped calls, by name.
const std::vector<std::string>& wrappedWindowsCalls();

/// From its making to the end of its scope: logs the wrapped calls, and lets them fail or tell untruths as it is told.
/// One at a time.
class WindowsCalls {
public:
    WindowsCalls();
    WindowsCalls(const WindowsCalls&) = delete;
    WindowsCalls& operator=(const WindowsCalls&) = delete;
    ~WindowsCalls();

    /// Is called before each wrapped call, with its name and how many of this name there were with it; calls that it
    /// makes itself go straight to the system. Returns the error with which the call is to fail, or 0.
    std::function<DWORD(const std::string& call, std::size_t occurrence)> decide;
    /// Whether a path of 260 characters or more is none, as it usually is, unless it has the extended form.
    bool areLongPathsRefused = false;
    /// Attributes that every file seems to have.
    DWORD addedAttributes = 0;
    /// Whether every file seems to have a second stream.
    bool haveStreams = false;

    std::size_t count(const std::string& call) const;
    /// The names of the calls so far that are among `wanted`.
    std::vector<std::string> only(const std::vector<std::string>& wanted) const;

    bool refuses(LPCWSTR path) const;

    /// Logs the call and returns whether it is to fail; the error is set then.
    bool fails(const char* call);

private:
    std::vector<std::string> log_;
    bool isDeciding_ = false;
};

}  // namespace zelutil::test

#endif
