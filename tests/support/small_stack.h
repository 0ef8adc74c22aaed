#ifndef ZELUTIL_TESTS_SUPPORT_SMALL_STACK_H
#define ZELUTIL_TESTS_SUPPORT_SMALL_STACK_H

#include <functional>

namespace zelutil::test {

/// Runs `work` to its end on a thread with a stack of 1 MiB, the size a Windows thread gets. What it throws is thrown
/// here.
void runOnSmallStack(const std::function<void()>& work);

}  // namespace zelutil::test

#endif
