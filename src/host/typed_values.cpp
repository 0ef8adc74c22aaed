#include "host/typed_values.h"

#include <zelutil/host/settings.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "host/current_preferences.h"
#include "text/ascii.h"
#include "text/from_chars.h"

namespace zelutil::host {
namespace {

constexpr char kBlanks[] = " \t";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// Returns the text without a plus sign, which the standard functions do not read. One that another sign follows stays.
std::string_view withoutPlus(std::string_view text) {
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return plus ? text.substr(1) : text;
}

/// Returns what the whole text says.
template <typename Number>
std::optional<Number> numberOf(std::string_view text) {
    const std::string_view digits = withoutPlus(trimmed(text));
    const char* const end = digits.data() + digits.size();
    Number number{};
    const auto [parsed, error] = text::fromChars(digits.data(), end, number);
    if (error != std::errc() || parsed != end) {
        return std::nullopt;
    }
    return number;
}

template <typename Number>
std::string shortestText(Number number) {
    // The longest is that of the double -2.2250738585072014e-308, which has 24 characters.
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    return std::string(text.data(), end);
}

const prefs::Setting* settingNamed(std::string_view name) {
    const prefs::Preferences* const preferences = currentPreferences();
    return preferences == nullptr ? nullptr : preferences->catalogue.find(name);
}

template <typename Parse>
auto readAs(std::string_view name, Parse parse) {
    const prefs::Setting* const setting = settingNamed(name);
    return setting == nullptr ? std::nullopt : parse(setting->valueInForce());
}

}  // namespace

std::optional<bool> boolOf(std::string_view text) {
    std::string word(trimmed(text));
    std::transform(word.begin(), word.end(), word.begin(), ascii::lowerCase);
    if (word == "true" || word == "yes" || word == "on" || word == "1") {
        return true;
    }
    if (word == "false" || word == "no" || word == "off" || word == "0") {
        return false;
    }
    return std::nullopt;
}

std::optional<int> intOf(std::string_view text) { return numberOf<int>(text); }

std::optional<double> doubleOf(std::string_view text) {
    const auto number = numberOf<double>(text);
    // The standard function also reads words for what is not finite.
    return number && std::isfinite(*number) ? number : std::nullopt;
}

template <>
std::optional<bool> read<bool>(std::string_view name) {
    return readAs(name, boolOf);
}

template <>
std::optional<int> read<int>(std::string_view name) {
    return readAs(name, intOf);
}

template <>
std::optional<double> read<double>(std::string_view name) {
    return readAs(name, doubleOf);
}

template <>
std::optional<std::string> read<std::string>(std::string_view name) {
    return readAs(name, [](const std::string& value) { return std::optional<std::string>(value); });
}

std::string textOf(bool value) { return value ? "true" : "false"; }

std::string textOf(int value) { return shortestText(value); }

std::string textOf(double value) { return std::isfinite(value) ? shortestText(value) : std::string(); }

}  // namespace zelutil::host
