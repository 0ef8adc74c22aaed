// Tests do less where sanitizers watch them: they take about ten times as long, and the other platform's build, which
// has none, runs the same cases in full.
#ifndef ZELUTIL_TESTS_SUPPORT_SANITIZED_H
#define ZELUTIL_TESTS_SUPPORT_SANITIZED_H

namespace zelutil::test {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif

/// Returns `some` in a program that was compiled with the address or thread sanitizer of gcc, else `all`.
template <typename Count>
constexpr Count casesInTime(Count all, Count some) {
    return kIsSanitized ? some : all;
}

}  // namespace zelutil::test

#endif
