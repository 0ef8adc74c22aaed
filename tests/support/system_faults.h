#ifndef ZELUTIL_TESTS_SUPPORT_SYSTEM_FAULTS_H
#define ZELUTIL_TESTS_SUPPORT_SYSTEM_FAULTS_H

#include <cstddef>
#include <functional>
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

/// Calls a function of the test just before the `occurrence`-th call of that name (from 1), which then goes its way.
/// One at a time, until the end of its scope.
class CallHook {
public:
    CallHook(std::string call, std::size_t occurrence, std::function<void()> function);
    CallHook(const CallHook&) = delete;
    CallHook& operator=(const CallHook&) = delete;
    ~CallHook();

    bool happened() const;
};

/// Writes down the names of the wrapped calls until the end of its scope, but for those of a `CallHook`. One at a time.
class CallLog {
public:
    CallLog();
    CallLog(const CallLog&) = delete;
    CallLog& operator=(const CallLog&) = delete;
    ~CallLog();

    const std::vector<std::string>& calls() const { return calls_; }
    std::ptrdiff_t count(const std::string& call) const;

private:
    std::vector<std::string> calls_;
};

/// Until the end of its scope locks are as over NFS: an exclusive one needs a file that is open for writing, a shared
/// one a file that is open for reading.
class NfsLocks {
public:
    NfsLocks();
    NfsLocks(const NfsLocks&) = delete;
    NfsLocks& operator=(const NfsLocks&) = delete;
    ~NfsLocks();
};

/// Until the end of its scope the file system is a simple one, as one that a program mounts often is: it cannot rename
/// to a free name only, and it refuses second links with the error.
class SimpleFileSystem {
public:
    explicit SimpleFileSystem(int linkError);
    SimpleFileSystem(const SimpleFileSystem&) = delete;
    SimpleFileSystem& operator=(const SimpleFileSystem&) = delete;
    ~SimpleFileSystem();
};

}  // namespace zelutil::test

#endif
