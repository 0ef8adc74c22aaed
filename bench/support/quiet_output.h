#ifndef ZELUTIL_BENCH_SUPPORT_QUIET_OUTPUT_H
#define ZELUTIL_BENCH_SUPPORT_QUIET_OUTPUT_H

namespace zelutil::bench {

/// While one lives, what is printed on standard output is lost. One at a time.
class QuietOutput {
public:
    QuietOutput();
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;
    ~QuietOutput();

private:
    int output_;
};

}  // namespace zelutil::bench

#endif
