#ifndef ZELUTIL_TESTS_SUPPORT_THREAD_EXHAUSTION_H
#define ZELUTIL_TESTS_SUPPORT_THREAD_EXHAUSTION_H

namespace zelutil::test {

/// While one of these lives, the system gives the code under test no thread. A program that uses it is linked with
/// `zelutil_wrap_thread_creation`.
class ThreadExhaustion {
public:
    ThreadExhaustion();
    ThreadExhaustion(const ThreadExhaustion&) = delete;
    ThreadExhaustion& operator=(const ThreadExhaustion&) = delete;
    ~ThreadExhaustion();

    /// Returns how many threads were asked for.
    int refused() const;
};

}  // namespace zelutil::test

#endif
