#ifndef ZELUTIL_HOST_SETTINGS_H
#define ZELUTIL_HOST_SETTINGS_H

#include <zelutil/export.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// All settings, and their values as numbers and truth values.
namespace zelutil::host {

/// One setting, as it is now.
struct SettingInfo {
    /// Attributes of the sections around it and its own name, joined by "::", as the defaults write them.
    std::string fullName;
    /// The names without "::" parts in front by which it is found; empty where it is found in full only.
    std::vector<std::string> bareNames;
    /// Attribute path of its section, a key of `UserPreferenceManager::getAllUserPrefUISettings`.
    std::string section;
    /// The shipped value.
    std::string defaultValue;
    /// The value in force.
    std::string value;
    /// Whether the user set it, perhaps to the default.
    bool setByUser = false;
    /// False where `fullName` means another setting, which was read first.
    bool foundByFullName = true;
};

/// Returns every setting that some name finds, in the order of the defaults file; one that is defined twice only once.
ZELUTIL_API std::vector<SettingInfo> settings();

/// Returns the setting of that name, bare or in full, in any case; nothing for an unknown one.
ZELUTIL_API std::optional<SettingInfo> setting(std::string_view name);

/// Returns the attribute paths of all sections that have settings or belong to a sub-manager, in the order of the
/// defaults file.
ZELUTIL_API std::vector<std::string> sectionsInFileOrder();

/// Returns the value in force as a `T`, or nothing when there is no such setting or its value is no `T`. Blanks and
/// tabs around the value do not matter, and neither does the locale of the process.
///
///     bool         true, yes, on, 1, false, no, off, 0, in any case
///     int          decimal digits with an optional sign, within the range of int: 42, +42, -7
///     double       decimal digits with an optional sign, a point before, among or behind them and an optional
///                  exponent: 5, 0.5, .5, 5., 1e-3; neither larger than a double can be nor smaller, as 1e400 and
///                  1e-400 are
///     std::string  the value as it stands, blanks included
template <typename T>
std::optional<T> read(std::string_view name) = delete;

template <>
ZELUTIL_API std::optional<bool> read<bool>(std::string_view name);
template <>
ZELUTIL_API std::optional<int> read<int>(std::string_view name);
template <>
ZELUTIL_API std::optional<double> read<double>(std::string_view name);
template <>
ZELUTIL_API std::optional<std::string> read<std::string>(std::string_view name);

/// Returns what `read` returns, or `fallback` where that is nothing.
template <typename T>
T get(std::string_view name, T fallback) {
    const std::optional<T> value = read<T>(name);
    return value ? *value : fallback;
}

/// The same for a text in double quotes; null counts as "".
inline std::string get(std::string_view name, const char* fallback) {
    return get<std::string>(name, fallback == nullptr ? "" : fallback);
}

/// Returns the text of a value, as `read` reads it back: a double with as many digits as that takes. The empty text for
/// a double that is infinite or no number.
ZELUTIL_API std::string textOf(bool value);
/// The same for a number without a fraction.
ZELUTIL_API std::string textOf(int value);
/// The same for a number with a fraction.
ZELUTIL_API std::string textOf(double value);

}  // namespace zelutil::host

#endif
