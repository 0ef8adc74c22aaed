#ifndef ZELUTIL_BENCH_SUPPORT_COMPARISON_H
#define ZELUTIL_BENCH_SUPPORT_COMPARISON_H

#include "support/allocation_count.h"
#include "support/table.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
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

    template <typename Round>
    Comparison& peer(const char* name, Round round) {
        return side(name, std::move(round));
    }

private:
    template <typename Round>
    Comparison& side(const char* side, Round round) {
        checkDigest(side, round());
        const double calls = static_cast<double>(callsPerRound_);
        benchmark::RegisterBenchmark((name_ + "/" + side).c_str(), [round, calls](benchmark::State& state) mutable {
            const std::uint64_t before = allocationCount();
            for (auto _ : state) {
                std::uint64_t digest = round();
                benchmark::DoNotOptimize(digest);
            }
            const double allocations = static_cast<double>(allocationCount() - before);
            state.counters["calls"] = calls;
            state.counters["allocations"] = allocations / (static_cast<double>(state.iterations()) * calls);
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
