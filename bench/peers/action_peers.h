#ifndef ZELUTIL_BENCH_PEERS_ACTION_PEERS_H
#define ZELUTIL_BENCH_PEERS_ACTION_PEERS_H

#include <cstdint>
#include <string>

/// These load a text of actions as a host without the library would; each returns the length of the last action's
/// shortcut.
namespace zelutil::bench::peers {

/// nlohmann::json, and four maps: actions by id, children by parent, and by context the first action of a command and
/// the holder of a shortcut.
std::uint64_t loadByNlohmann(const std::string& text);

/// simdjson, and one map: actions by id.
std::uint64_t loadBySimdjson(const std::string& text);

/// RapidJSON with vector instructions in a copy of the text: a document and nothing else.
std::uint64_t parseInSitu(const std::string& text);

}  // namespace zelutil::bench::peers

#endif
