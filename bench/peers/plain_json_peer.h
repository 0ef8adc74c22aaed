#ifndef ZELUTIL_BENCH_PEERS_PLAIN_JSON_PEER_H
#define ZELUTIL_BENCH_PEERS_PLAIN_JSON_PEER_H

#include <cstdint>
#include <string>

/// RapidJSON as it comes, by itself.
namespace zelutil::bench::peers {

/// Parses both preference texts into documents; answers the length of the last default value.
std::uint64_t parseAlone(const std::string& defaultsText, const std::string& userText);

/// Parses an action text; answers the length of the last shortcut.
std::uint64_t parseActionsAlone(const std::string& text);

/// The text parsed and written again with 4 blanks a level.
std::string parseAndWrite(const std::string& text);

}  // namespace zelutil::bench::peers

#endif
