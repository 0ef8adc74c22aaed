#include "host/save_state.h"

#include "util/process_wide.h"

namespace zelutil::host {

SaveState& saveState() {
    static ProcessWide<SaveState> state([] { return new SaveState; });
    return state.get();
}

}  // namespace zelutil::host
