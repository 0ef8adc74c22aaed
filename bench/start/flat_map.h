#ifndef ZELUTIL_BENCH_START_FLAT_MAP_H
#define ZELUTIL_BENCH_START_FLAT_MAP_H

#include <zelutil/util/ascii.h>

#include <string>
#include <unordered_map>

namespace zelutil::bench::start {

using Flat = std::unordered_map<std::string, std::string>;

inline std::string folded(std::string name) {
    for (char& c : name) {
        c = ascii::lowerCase(c);
    }
    return name;
}

}  // namespace zelutil::bench::start

#endif
