#ifndef ZELUTIL_TESTS_SUPPORT_PREFS_PAIR_H
#define ZELUTIL_TESTS_SUPPORT_PREFS_PAIR_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "support/prefs_subject.h"
#include "support/prefs_twin.h"

namespace zelutil::test {

/// The library's preferences and their twin, given the same texts and saves. Each comparison returns a description of
/// a difference, or the empty string.
class PrefsPair {
public:
    PrefsPair(const std::string& defaultsText, const std::string& userText)
        : subject_(defaultsText, userText), twin_(defaultsText, userText) {}

    const PrefsTwin& twin() const { return twin_; }

    std::string compareSections() const;

    /// Loads the action manager of this process with the texts of the one and of the other.
    std::string compareActions();

    /// Values in force and defaults, by these names and by those of `twin()`, bare and in full.
    std::string compareValues(const std::vector<std::string>& names) const;

    /// Saves on both sides; `saved` is then what the twin made of it.
    std::string compareSave(const std::map<std::string, std::string>& settings,
                            const std::map<std::int32_t, std::string>& subManagerTexts, PrefsSaved& saved);

private:
    std::string compareValue(const std::string& name) const;

    PrefsSubject subject_;
    PrefsTwin twin_;
};

}  // namespace zelutil::test

#endif
