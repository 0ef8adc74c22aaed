#ifndef ZELUTIL_TESTS_SUPPORT_SYSTEM_FAULTS_H
#define ZELUTIL_TESTS_SUPPORT_SYSTEM_FAULTS_H

#include <cstddef>
#include <string>
#include <vector>

/// Makes chosen system calls of the code under test fail. A program that uses it is linked with
/// `zelutil_wrap_system_calls`, which puts these functions between the library and the system.
namespace zelutil::test {

/// The wrapped calls, by name.
const std::vector<std::string>& wrappedCalls();

/// One call that is to fail: the `occurrence`-th of its name (from 1), with `error` as errno. The call `write` can also
/// be cut short: it then writes half and succeeds, and every later one fails.
struct Fault {
    std::string call;
    std::size_t occurrence;
    int error;
    bool writesHalfFirst = false;
};

/// Injects the fault until the end of its scope. One at a time.
class FaultInjection {
public:
    explicit FaultInjection(const Fault& fault);
    FaultInjection(const FaultInjection&) = delete;
    FaultInjection& operator=(const FaultInjection&) = delete;
    ~FaultInjection();

    /// Whether the call came and was made to fail.
    bool happened() const;
};

}  // namespace zelutil::test

#endif
