#ifndef ZELUTIL_TESTS_SUPPORT_WAIT_UNTIL_H
#define ZELUTIL_TESTS_SUPPORT_WAIT_UNTIL_H

#include <chrono>
#include <thread>

namespace zelutil::test {

/// Whether `condition` came true within a time that is ample on a busy machine.
template <typename Condition>
bool waitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace zelutil::test

#endif
