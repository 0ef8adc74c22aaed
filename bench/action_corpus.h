#ifndef ZELUTIL_BENCH_ACTION_CORPUS_H
#define ZELUTIL_BENCH_ACTION_CORPUS_H

#include <cstddef>
#include <string>
#include <vector>

namespace zelutil::bench {

/// One made-up action, "Ctrl+Alt+K" in "editor_3".
struct CorpusAction {
    int id;
    std::string context;
    std::string shortcut;
    std::string command;
};

/// Actions with ids from 1 on, context by context; each has a shortcut of its own in its context. At most 610 a
/// context.
std::vector<CorpusAction> makeActions(std::size_t contexts, std::size_t actionsPerContext);

/// The default action text that defines them, laid out as the shipped one is.
std::string actionText(const std::vector<CorpusAction>& actions);

}  // namespace zelutil::bench

#endif
