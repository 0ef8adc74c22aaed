#include "support/table.h"

#include <gtest/gtest.h>

namespace zelutil::bench {
namespace {

TEST(BenchTable, TheMedianIsTheMiddleOrTheMeanOfTheTwoInTheMiddle) {
    EXPECT_EQ(median({3}), 3);
    EXPECT_EQ(median({9, 1, 4}), 4);
    EXPECT_EQ(median({8, 1, 2, 100}), 5);
}

TEST(BenchTable, EachPeerHasARowWithTheRatioOfTheMedians) {
    const std::vector<Sample> samples = {
        {"find", "zelutil", 10, 0},  {"find", "std::map", 30, 1},    {"find", "scan", 8, 0},
        {"find", "zelutil", 12, 0},  {"find", "std::map", 48, 1},    {"find", "scan", 8, 0},
        {"find", "zelutil", 900, 0}, {"find", "std::map", 40, 1.25}, {"find", "scan", 8, 0},
        {"insert", "zelutil", 5, 2}, {"insert", "std::map", 5, 2},
    };
    EXPECT_EQ(comparisonTable(samples),
              "comparison     ns  spread  allocs  peer         ns  spread  allocs  ratio\n"
              "find        12.00   7417%    0.00  std::map  40.00     45%    1.00   0.30\n"
              "find        12.00   7417%    0.00  scan       8.00      0%    0.00   1.50\n"
              "insert       5.00      0%    2.00  std::map   5.00      0%    2.00   1.00\n");
}

TEST(BenchTable, TheSpreadIsTheWidthOfTheMiddleHalf) {
    const std::vector<Sample> samples = {
        {"a", "zelutil", 100, 0}, {"a", "zelutil", 90, 0},  {"a", "zelutil", 110, 0}, {"a", "zelutil", 1, 0},
        {"a", "zelutil", 999, 0}, {"a", "zelutil", 100, 0}, {"a", "zelutil", 100, 0}, {"a", "zelutil", 100, 0},
    };
    EXPECT_EQ(comparisonTable(samples),
              "comparison      ns  spread  allocs  peer  ns  spread  allocs  ratio\n"
              "a           100.00      0%    0.00\n");
}

TEST(BenchTable, AComparisonWithoutTheLibrarysSideHasNoRow) {
    EXPECT_EQ(comparisonTable({{"a", "std::map", 1, 0}}),
              "comparison  ns  spread  allocs  peer  ns  spread  allocs  ratio\n");
    EXPECT_EQ(comparisonTable({}), "comparison  ns  spread  allocs  peer  ns  spread  allocs  ratio\n");
}

}  // namespace
}  // namespace zelutil::bench
