#ifndef ZELUTIL_BENCH_SUPPORT_COMPARISON_H
#define ZELUTIL_BENCH_SUPPORT_COMPARISON_H

#include "support/allocation_count.h"
#include "support/table.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace zelutil::bench {

/// Defined by each benchmark program: makes its comparisons.
void addComparisons();

/// One task done by the library and by named peers, all measured in the same run:
///
///     Comparison("panel control by name", names.size())
///         .zelutil([&names] { ... })
///         .peer("std::map", [&names] { ... });
///
/// A round, which is what gets measured, does the task `callsPerRound` times on inputs of its own choice and answers a
/// digest of the results. The digests of all sides must be equal, so that no side is fast by doing something else.
class Comparison {
public:
    Comparison(std::string name, std::size_t callsPerRound) : name_(std::move(name)), callsPerRound_(callsPerRound) {}

    template <typename Round>
    Comparison& zelutil(Round round) {
        return side(kSubject, std::move(round));
    }

    /// Does `prepare` before each round, unmeasured.
    template <typename Prepare, typename Round>
    Comparison& zelutil(Prepare prepare, Round round) {
        return side(kSubject, std::move(round), std::move(prepare));
    }

    template <typename Round>
    Comparison& peer(const char* name, Round round) {
        return side(name, std::move(round));
    }

private:
    struct Unprepared {};

    template <typename Round, typename Prepare = Unprepared>
    Comparison& side(const char* side, Round round, Prepare prepare = {}) {
        if constexpr (!std::is_same_v<Prepare, Unprepared>) {
            prepare();
        }
        checkDigest(side, round());
        const double calls = static_cast<double>(callsPerRound_);
        benchmark::RegisterBenchmark((name_ + "/" + side).c_str(), [=](benchmark::State& state) mutable {
            std::uint64_t allocations = 0;
            for (auto _ : state) {
                if constexpr (!std::is_same_v<Prepare, Unprepared>) {
                    state.PauseTiming();
                    prepare();
                    state.ResumeTiming();
                }
                const std::uint64_t before = allocationCount();
                std::uint64_t digest = round();
                benchmark::DoNotOptimize(digest);
                allocations += allocationCount() - before;
            }
            state.counters["calls"] = calls;
            state.counters["allocations"] =
                static_cast<double>(allocations) / (static_cast<double>(state.iterations()) * calls);
        });
        return *this;
    }

    /// Ends the program with a message when the digest is not that of the sides before.
    void checkDigest(const char* side, std::uint64_t digest);

    std::string name_;
    std::size_t callsPerRound_;
    bool hasDigest_ = false;
    std::uint64_t digest_ = 0;
};

/// Runs the comparisons and prints their table. The arguments are Google Benchmark's, over defaults that suit a
/// comparison. Answers what main answers.
int runComparisons(int argc, char** argv);

}  // namespace zelutil::bench

#endif
