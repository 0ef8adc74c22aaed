#ifndef ZELUTIL_BENCH_SUPPORT_TABLE_H
#define ZELUTIL_BENCH_SUPPORT_TABLE_H

#include <string>
#include <vector>

/// Shows as a text what a run of comparisons has measured.
namespace zelutil::bench {

/// The side of a comparison that is the library's.
extern const char* const kSubject;

/// One repetition of one side.
struct Sample {
    std::string comparison;
    std::string side;
    double nanosecondsPerCall;
    double allocationsPerCall;
};

/// The middle value; of an even number of values the mean of the two in the middle. There is at least one.
double median(std::vector<double> values);

/// A table of the comparisons, in the order of their first samples, with one row for each peer: the medians of the
/// library's side and of the peer's, how far the middle half of the repetitions lies apart, allocations, and the
/// library's median divided by the peer's, so that less than 1 means that the library is faster. A comparison without
/// peers has one row; one without the library's side has none.
std::string comparisonTable(const std::vector<Sample>& samples);

}  // namespace zelutil::bench

#endif
