#ifndef ZELUTIL_COMMAND_PROGRESS_H
#define ZELUTIL_COMMAND_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace zelutil::command {

/// A line on a terminal that shows how far work has come. It appears when the work has taken more than a second, is
/// written anew ten times a second at most, and is taken away at the end. It knows no clock, so that tests have theirs.
///
///     [##########..............................]  26 %  260 of 1000, 3 s left
class Progress {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// Writes to the terminal; null where there is none, and nothing is shown.
    using Write = std::function<void(std::string_view)>;

    Progress(std::size_t total, Time start, Write write);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Says how much is done by now.
    void update(std::size_t done, Time now);

    /// Takes the line away.
    void finish();

private:
    std::size_t total_;
    Time start_;
    Time next_;
    Write write_;
    std::size_t shownLength_ = 0;
};

/// Returns what writes to standard error where that is a terminal; null elsewhere.
Progress::Write writeOfTerminal();

}  // namespace zelutil::command

#endif
