#include "command/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <future>
#include <system_error>
#include <utility>

#include "command/system/console.h"

namespace zelutil::command {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

constexpr milliseconds kBeforeTheFirst{1000};
constexpr milliseconds kBetween{100};
constexpr milliseconds kBetweenLooks{50};
constexpr std::size_t kWidth = 40;

std::string barLine(std::size_t done, std::size_t total, milliseconds elapsed) {
    const std::size_t filled = kWidth * done / total;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::string head = fmt::format("[{}] {:3} %  {} of {}", bar, 100 * done / total, done, total);
    if (done == 0) {
        return head;
    }
    const auto left = static_cast<std::size_t>(elapsed.count()) * (total - done) / done;
    return head + fmt::format(", {} s left", (left + 999) / 1000);
}

}  // namespace

Progress::Progress(std::size_t total, Time start, Write write)
    : total_(total), start_(start), next_(start + kBeforeTheFirst), write_(std::move(write)) {}

Progress::~Progress() { finish(); }

void Progress::update(std::size_t done, Time now) {
    if (!write_ || total_ == 0 || now < next_) {
        return;
    }
    next_ = now + kBetween;
    std::string line = barLine(std::min(done, total_), total_, duration_cast<milliseconds>(now - start_));
    const std::size_t length = line.size();
    // Blanks cover the rest of a longer line.
    line.resize(std::max(length, shownLength_), ' ');
    shownLength_ = length;
    write_('\r' + line);
}

void Progress::finish() {
    if (shownLength_ != 0) {
        write_('\r' + std::string(shownLength_, ' ') + '\r');
        shownLength_ = 0;
    }
}

void workWithProgress(std::size_t total, std::size_t stepsOfEach, const ProgressPlace& place,
                      const std::function<void(std::atomic<std::size_t>&)>& work) {
    std::atomic<std::size_t> steps{0};
    std::future<void> done;
    try {
        done = place.write ? std::async(std::launch::async, [&] { work(steps); }) : std::future<void>();
    } catch (const std::system_error&) {
        // The system lets the process have no further thread.
    }
    if (!done.valid()) {
        work(steps);
        return;
    }
    Progress progress(total, place.now(), place.write);
    while (done.wait_for(kBetweenLooks) != std::future_status::ready) {
        progress.update(steps / stepsOfEach, place.now());
    }
    progress.finish();
    done.get();
}

ProgressPlace progressOnTerminal() {
    if (!isTerminal(Stream::Error)) {
        return {};
    }
    return {[](std::string_view text) { write(Stream::Error, text); }, std::chrono::steady_clock::now};
}

}  // namespace zelutil::command
