#ifndef ZELUTIL_TESTS_SUPPORT_PREFS_SUBJECT_H
#define ZELUTIL_TESTS_SUPPORT_PREFS_SUBJECT_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "support/prefs_twin.h"

namespace zelutil::test {

/// The library's preferences of two texts, as their twin shows itself: no files, no observers.
class PrefsSubject {
public:
    PrefsSubject(const std::string& defaultsText, const std::string& userText);
    PrefsSubject(const PrefsSubject&) = delete;
    PrefsSubject& operator=(const PrefsSubject&) = delete;
    ~PrefsSubject();

    /// Null for an unknown name.
    const std::string* value(const std::string& name) const;
    const std::string* defaultValue(const std::string& name) const;
    std::map<std::string, TwinSection> sections() const;

    /// Loads the sub-managers, and tells whether the action manager is registered then.
    bool initializeSubManagers();

    PrefsSaved save(const std::map<std::string, std::string>& settings,
                    const std::map<std::int32_t, std::string>& subManagerTexts);

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace zelutil::test

#endif
