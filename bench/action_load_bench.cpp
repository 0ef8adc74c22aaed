// Loading a catalogue of actions, against parsing its text alone.
#include <zelutil/actions/action_manager.h>

#include <string>

#include "action_corpus.h"
#include "peers/plain_json_peer.h"
#include "support/comparison.h"

void zelutil::bench::addComparisons() {
    static const std::string text = actionText(makeActions(20, 500));
    Comparison("load 10000 actions", 1)
        .zelutil([] {
            UCPActionManager& manager = UCPActionManager::instance();
            manager.load(text, "");
            return std::uint64_t{manager.getShortcut(10'000).size()};
        })
        .peer("RapidJSON, parse alone", [] { return peers::parseActionsAlone(text); });
}
