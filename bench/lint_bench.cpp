// Checking files of 10 MB without a fault against parsing the same text: `zelutil lint` parses it too, with places.
#include <string>

#include "action_corpus.h"
#include "command/lint/lint.h"
#include "peers/plain_json_peer.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::SettingsCorpus;

constexpr std::size_t kSettings = 138'000;
constexpr std::size_t kContexts = 165;
constexpr std::size_t kActionsPerContext = 600;

/// Returns the digest of the parse alone where nothing is found.
std::uint64_t digestOf(const std::string& text, std::size_t length) {
    const zelutil::lint::Source source(text);
    return zelutil::lint::lint(source).empty() ? length : 0;
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const SettingsCorpus corpus(kSettings);
    static const std::string& defaults = corpus.defaultsText();
    static const auto actions = makeActions(kContexts, kActionsPerContext);
    static const std::string actionsText = actionText(actions);

    Comparison("lint of a 10 MB file of defaults", 1)
        .zelutil([] { return digestOf(defaults, corpus.settings().back().defaultValue.size()); })
        .peer("RapidJSON, parse alone", [] { return peers::parseAlone(defaults, "null"); });
    Comparison("lint of a 10 MB file of actions", 1)
        .zelutil([] { return digestOf(actionsText, actions.back().shortcut.size()); })
        .peer("RapidJSON, parse alone", [] { return peers::parseActionsAlone(actionsText); });
}
