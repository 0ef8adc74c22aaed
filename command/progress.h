#ifndef ZELUTIL_COMMAND_PROGRESS_H
#define ZELUTIL_COMMAND_PROGRESS_H

#include <atomic>
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

/// Holds where the line is shown, and the clock; tests have their own.
struct ProgressPlace {
    Progress::Write write;
    std::function<Progress::Time()> now;
};

/// Does the work, in a thread of its own where the line may be shown meanwhile. The work counts its steps up, and each
/// of the `total` things has that many. What it throws is thrown on.
void workWithProgress(std::size_t total, std::size_t stepsOfEach, const ProgressPlace& place,
                      const std::function<void(std::atomic<std::size_t>&)>& work);

/// Returns standard error and the clock of this process, where standard error is a terminal; nowhere else is anything
/// shown.
ProgressPlace progressOnTerminal();

}  // namespace zelutil::command

#endif
