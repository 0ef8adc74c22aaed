// Loading a catalogue of actions in a new process. The arguments are the number of the last action and the path of the
// text.
#include <zelutil/actions/action_manager.h>

#include <cstdlib>
#include <utility>

#include "start/child.h"

int main(int argc, char** argv) {
    const std::string text = zelutil::bench::start::read(argc > 2 ? argv[2] : "");
    return zelutil::bench::start::run(argc, argv, [&text](const std::string& last) {
        UCPActionManager::instance().load(text, "");
        return std::pair(0, UCPActionManager::instance().getShortcut(std::atoi(last.c_str())).size());
    });
}
