#ifndef ZELUTIL_HOST_SETTINGS_WISHES_H
#define ZELUTIL_HOST_SETTINGS_WISHES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/settings_plan.h"
#include "prefs/catalogue.h"

namespace zelutil::host {

/// Holds what a host asks for, by setting. The values are the host's own texts.
class SettingsWishes {
public:
    SettingsWishes(const prefs::Catalogue& catalogue, const SettingsRequest& request);

    /// The new value of the user, or none where it is to be taken back. Null when nothing is asked.
    using Wish = std::optional<std::string_view>;
    const Wish* find(const prefs::Setting& setting) const;

    /// Returns the names that no setting has, values first.
    const std::vector<std::string>& unknownNames() const { return unknownNames_; }

private:
    void add(const prefs::Catalogue& catalogue, const std::string& name, Wish wish);

    /// By the numbers of the records.
    std::unordered_map<std::uint32_t, Wish> wishes_;
    std::vector<std::string> unknownNames_;
};

}  // namespace zelutil::host

#endif
