#ifndef ZELUTIL_BENCH_SAVE_PEERS_H
#define ZELUTIL_BENCH_SAVE_PEERS_H

#include <memory>
#include <string>
#include <vector>

#include "settings_corpus.h"

/// Stores that hold the user's values of a corpus and write them to a file of their own.
namespace zelutil::bench::peers {

class SettingsStore {
public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    virtual ~SettingsStore() = default;

    /// Gives each of these settings the value and writes all to the file. Returns whether that succeeded.
    virtual bool save(const std::vector<const CorpusSetting*>& settings, const std::string& value) = 0;
};

using StorePointer = std::unique_ptr<SettingsStore>;

/// The store of a row's reference: nlohmann::json holds a user's file, writes it out with 4 blanks a level and
/// overwrites the file.
StorePointer nlohmannStore(const std::string& userText, const std::string& path);

StorePointer glibStore(const SettingsCorpus& corpus, const std::string& path);
StorePointer qtStore(const SettingsCorpus& corpus, const std::string& path);
StorePointer kdeStore(const SettingsCorpus& corpus, const std::string& path);

/// Writes a text, which it takes as it is, beside the file, flushes it to disk and renames it: what remains of a save
/// once the text is there.
StorePointer textStore(std::string text, const std::string& path);

}  // namespace zelutil::bench::peers

#endif
