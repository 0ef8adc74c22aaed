#ifndef ZELUTIL_BENCH_SETTINGS_CORPUS_H
#define ZELUTIL_BENCH_SETTINGS_CORPUS_H

#include "run_directory.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zelutil::bench {

/// One made-up setting, "board_3::routing_1::track_width_17" by its full name.
struct CorpusSetting {
    std::string fullName;
    std::string bareName;
    std::string defaultValue;
    std::string userValue;  ///< Empty where the user changed nothing.
    bool hasBareName;       ///< Whether its section is unique.

    const std::string& value() const { return userValue.empty() ? defaultValue : userValue; }
};

/// Says what the names of a corpus are like.
enum class CorpusNames {
    Alike,   ///< All of much the same length, and all sections are unique.
    Varied,  ///< In both cases and 11 to 61 characters long in full; every other section is unique.
};

/// Settings in sections two levels deep, 20 to a section; the user changed every tenth, or as told. Bare names are
/// unique.
class SettingsCorpus {
public:
    explicit SettingsCorpus(std::size_t count, std::size_t userChangesEvery = 10,
                            CorpusNames names = CorpusNames::Alike);

    const std::vector<CorpusSetting>& settings() const { return settings_; }
    /// Texts of the two preference files, laid out as the shipped ones are.
    const std::string& defaultsText() const { return defaultsText_; }
    const std::string& userText() const { return userText_; }

private:
    std::vector<CorpusSetting> settings_;
    std::string defaultsText_;
    std::string userText_;
};

/// A directory for the run's files, with the two preference files in it where the library is told to look for them.
class PreferenceDirectory {
public:
    explicit PreferenceDirectory(const SettingsCorpus& corpus);

    const std::string& path() const { return directory_.path(); }

private:
    RunDirectory directory_;
};

/// A permutation of 0 .. count-1, the same in every run.
std::vector<std::size_t> randomOrder(std::size_t count);

}  // namespace zelutil::bench

#endif
