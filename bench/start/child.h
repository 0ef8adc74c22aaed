#ifndef ZELUTIL_BENCH_START_CHILD_H
#define ZELUTIL_BENCH_START_CHILD_H

#include <malloc.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>

/// A program of the start benchmark: it does one side's start, once, and prints what that took.
namespace zelutil::bench::start {

inline std::uint64_t processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(time.tv_nsec);
}

/// Bytes that are allocated and not freed.
inline std::uint64_t heldBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Bytes of memory that the process has touched.
inline std::uint64_t residentBytes() {
    std::uint64_t all = 0;
    std::uint64_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

inline std::string read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

inline std::string defaultsFile() { return std::getenv("tessel_settings"); }
inline std::string userFile() { return std::getenv("HOMEPATH") + std::string("/pcbenv/tessel/tessel_settings.cfg"); }
inline std::string iniFile() { return std::getenv("HOMEPATH") + std::string("/settings.ini"); }

/// Calls `start` and prints the processor time that passed until it returned, from here and from the beginning of the
/// process, in nanoseconds; then the bytes that are held and those that were touched; and the length of the value that
/// was looked up. The result of `start` lives until all is measured.
template <typename Start>
int run(int argc, char** argv, Start start) {
    const std::string question = argc > 1 ? argv[1] : "";
    const std::uint64_t resident = residentBytes();
    const std::uint64_t held = heldBytes();
    const std::uint64_t begin = processorTime();
    const auto [state, length] = start(question);
    const std::uint64_t end = processorTime();
    std::printf("%llu %llu %llu %llu %llu\n", static_cast<unsigned long long>(end - begin),
                static_cast<unsigned long long>(end), static_cast<unsigned long long>(heldBytes() - held),
                static_cast<unsigned long long>(residentBytes() - resident), static_cast<unsigned long long>(length));
    return EXIT_SUCCESS;
}

}  // namespace zelutil::bench::start

#endif
