// A host in small: for each of its arguments, the name of a setting, it prints a line with what the library returns.
// The fields are in hexadecimal digits and separated by blanks; one for nothing is "-".
#include <zelutil/c_api.h>
#include <zelutil/host/settings.h>

#include <cstdio>
#include <optional>
#include <string>

namespace {

namespace host = zelutil::host;

std::string field(const std::optional<std::string>& text) {
    std::string digits = text ? "x" : "-";
    for (const char c : text.value_or("")) {
        constexpr char kDigits[] = "0123456789abcdef";
        digits += kDigits[static_cast<unsigned char>(c) / 16];
        digits += kDigits[static_cast<unsigned char>(c) % 16];
    }
    return digits + ' ';
}

std::optional<std::string> orNothing(const char* text) {
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

template <typename T>
std::optional<std::string> typed(const std::string& name) {
    const auto value = host::read<T>(name);
    return value ? std::optional(host::textOf(*value)) : std::nullopt;
}

std::string lineOf(const char* name) {
    std::string line = field(orNothing(get_user_setting(name))) + field(orNothing(get_default_user_setting(name))) +
                       field(typed<bool>(name)) + field(typed<int>(name)) + field(typed<double>(name));
    const auto setting = host::setting(name);
    if (!setting) {
        return line + field(std::nullopt);
    }
    line += field(setting->fullName) + field(setting->section) + field(setting->defaultValue) + field(setting->value);
    line += field(setting->setByUser ? "true" : "false") + field(setting->foundByFullName ? "true" : "false");
    for (const std::string& bare : setting->bareNames) {
        line += field(bare);
    }
    return line;
}

}  // namespace

int main(int, char** arguments) {
    for (char** name = arguments + 1; *name != nullptr; ++name) {
        std::puts(lineOf(*name).c_str());
    }
    return 0;
}
