// The library's start: the first look-up of a setting reads both files.
#include <zelutil/c_api.h>

#include <cstring>
#include <utility>

#include "start/child.h"

int main(int argc, char** argv) {
    return zelutil::bench::start::run(
        argc, argv, [](const std::string& name) { return std::pair(0, std::strlen(get_user_setting(name.c_str()))); });
}
