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

    const std::string& value() const { return userValue.empty() ? defaultValue : userValue; }
};

/// Settings in sections two levels deep, 20 to a section; the user changed every tenth, or as told. Bare names are
/// unique.
class SettingsCorpus {
public:
    explicit SettingsCorpus(std::size_t count, std::size_t userChangesEvery = 10);

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
