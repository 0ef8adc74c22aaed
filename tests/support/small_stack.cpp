#include "support/small_stack.h"

#include <exception>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace zelutil::test {
namespace {

constexpr std::size_t kStackSize = std::size_t{1} << 20;

struct Job {
    const std::function<void()>& work;
    std::exception_ptr failure;

    void run() {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    }
};

#ifdef _WIN32
DWORD WINAPI runJob(LPVOID job) {
    static_cast<Job*>(job)->run();
    return 0;
}

void runOnThread(Job& job) {
    const HANDLE thread = CreateThread(nullptr, kStackSize, runJob, &job, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        throw std::runtime_error("no thread");
    }
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}
#else
void* runJob(void* job) {
    static_cast<Job*>(job)->run();
    return nullptr;
}

void runOnThread(Job& job) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    pthread_t thread{};
    const int error = pthread_create(&thread, &attributes, runJob, &job);
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("no thread");
    }
    pthread_join(thread, nullptr);
}
#endif

}  // namespace

void runOnSmallStack(const std::function<void()>& work) {
    Job job{work, nullptr};
    runOnThread(job);
    if (job.failure) {
        std::rethrow_exception(job.failure);
    }
}

}  // namespace zelutil::test
