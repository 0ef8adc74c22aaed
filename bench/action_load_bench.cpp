// Loading a catalogue of actions, against what a host would load it with instead and against parsing its text alone.
#include <zelutil/actions/action_manager.h>

#include <string>

#include "action_corpus.h"
#include "peers/action_peers.h"
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
        .peer("nlohmann::json, four maps", [] { return peers::loadByNlohmann(text); })
        .peer("simdjson, one map", [] { return peers::loadBySimdjson(text); })
        .peer("RapidJSON, parse alone", [] { return peers::parseActionsAlone(text); })
        .peer("limit: RapidJSON in situ, parse alone", [] { return peers::parseInSitu(text); });
}
