#ifndef ZELUTIL_TESTS_HOST_SHARE_OF_CASES_H
#define ZELUTIL_TESTS_HOST_SHARE_OF_CASES_H

#include <algorithm>
#include <cstdlib>

namespace zelutil::test {

/// One of the parts into which random cases are divided, each with a process of its own. The environment variables
/// ZELUTIL_TWIN_SEED and ZELUTIL_TWIN_CASES, the first seed and the number of all cases, go before what the test says.
struct ShareOfCases {
    static constexpr unsigned kShares = 4;

    ShareOfCases(unsigned share, unsigned seed, unsigned cases)
        : count(std::max(numberFrom("ZELUTIL_TWIN_CASES", cases) / kShares, 1U)),
          first(numberFrom("ZELUTIL_TWIN_SEED", seed) + share * count) {}

    unsigned count;
    unsigned first;

private:
    static unsigned numberFrom(const char* variable, unsigned otherwise) {
        const char* const text = std::getenv(variable);
        return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
    }
};

}  // namespace zelutil::test

#endif
