#include "host/save_depth.h"

#include <zelutil/host/result.h>

namespace zelutil::host {
namespace {

int inProgress = 0;
bool isTooDeep = false;

}  // namespace

SaveDepth::SaveDepth() noexcept {
    isTooDeep = inProgress > 0 && (isTooDeep || inProgress == kMaximumSaveDepth);
    ++inProgress;
    admitted_ = !isTooDeep;
}

SaveDepth::~SaveDepth() { --inProgress; }

}  // namespace zelutil::host
