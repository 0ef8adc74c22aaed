#include "support/comparison.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <vector>

namespace zelutil::bench {
namespace {

/// Keeps every repetition and prints the table at the end.
class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                samples_.emplace(run.family_index, sampleOf(run));
            }
        }
    }

    void Finalize() override {
        std::vector<Sample> samples;
        for (const auto& sample : samples_) {
            samples.push_back(sample.second);
        }
        GetOutputStream() << comparisonTable(samples);
    }

private:
    // Processor time: on a machine with other work the clock on the wall measures that work too.
    static Sample sampleOf(const Run& run) {
        const std::string& name = run.run_name.function_name;
        const std::size_t end = name.rfind('/');
        const double nanoseconds = 1e9 * run.cpu_accumulated_time / static_cast<double>(run.iterations);
        return {name.substr(0, end), name.substr(end + 1), nanoseconds / run.counters.at("calls"),
                run.counters.at("allocations")};
    }

    /// By the place of their side among all that were added, because the sides take turns at random.
    std::multimap<std::int64_t, Sample> samples_;
};

}  // namespace

void Comparison::checkDigest(const char* side, std::uint64_t digest) {
    if (hasDigest_ && digest != digest_) {
        std::cerr << name_ << ": " << side << " has another result than the side before it\n";
        std::exit(EXIT_FAILURE);
    }
    hasDigest_ = true;
    digest_ = digest;
}

int runComparisons(int argc, char** argv) {
    // Repetitions of all sides take turns, so that a slow moment of the machine falls on all of them alike.
    std::string defaults[] = {"--benchmark_repetitions=15", "--benchmark_min_time=0.02",
                              "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments(argv, argv + argc);
    std::vector<char*>::iterator place = arguments.begin() + 1;
    for (std::string& option : defaults) {
        place = arguments.insert(place, option.data()) + 1;
    }

    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return EXIT_FAILURE;
    }
    addComparisons();
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}

}  // namespace zelutil::bench
