#include "support/quiet_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace zelutil::bench {

QuietOutput::QuietOutput() {
    std::fflush(stdout);
    output_ = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

QuietOutput::~QuietOutput() {
    std::fflush(stdout);
    dup2(output_, STDOUT_FILENO);
    close(output_);
}

}  // namespace zelutil::bench
