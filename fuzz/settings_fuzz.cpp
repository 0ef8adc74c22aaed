// Whatever the texts, a process that starts after a save for hosts has every setting as it was, but for those that the
// save names, and saving again changes nothing. The input is parted by lines of three dashes: the defaults, the user's
// file at the start, then in turn the file as it is at a save, and that save. A line of a save is a setting's name, "="
// and its value, or "-" and the name of one to be reset.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings_process.h"

namespace {

using zelutil::test::catalogueOfTexts;
using zelutil::test::FileText;
using zelutil::test::fullNames;
using zelutil::test::Names;
using zelutil::test::SettingsProcess;
using zelutil::test::userValuesOf;
using zelutil::test::Values;

constexpr std::size_t kMostSaves = 4;

std::vector<std::string> parted(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + separator.size());
    }
}

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

zelutil::host::SettingsPlan save(SettingsProcess& process, FileText& file, const std::string& lines) {
    Values values;
    Names resets;
    for (const std::string& line : parted(lines, "\n")) {
        const std::size_t equals = line.find('=');
        if (!line.empty() && line[0] == '-') {
            resets.push_back(line.substr(1));
        } else if (equals != std::string::npos) {
            values[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return process.save(file, values, resets);
}

void requireRestored(const std::string& defaults, const SettingsProcess& process, const std::string& file,
                     const zelutil::host::SettingsPlan& plan) {
    std::set<std::string> named(plan.settingsOfOthers.begin(), plan.settingsOfOthers.end());
    for (const auto& one : plan.notRestored) {
        named.insert(one.setting);
    }
    const auto names = fullNames(process.catalogue());
    const auto before = process.userValues();
    const auto after = userValuesOf(catalogueOfTexts(defaults, file));
    for (std::size_t number = 0; number < names.size(); ++number) {
        require(before[number] == after[number] || named.count(names[number]) != 0, "a setting came back otherwise");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 13;
    if (size > kLargestInput) {
        return 0;
    }
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> parts = parted(input, "\n---\n");
    SettingsProcess process(parts[0], parts.size() > 1 ? FileText(parts[1]) : FileText());
    for (std::size_t i = 3; i < parts.size() && i < 3 + 2 * kMostSaves; i += 2) {
        FileText file = parts[i - 1];
        const auto plan = save(process, file, parts[i]);
        if (!plan.hasSections || !zelutil::json::Document(file.value()).valid()) {
            continue;
        }
        requireRestored(parts[0], process, *file, plan);
        const FileText first = file;
        const auto again = process.save(file, {});
        require(file == first, "a second save wrote something else");
        require(again.conflicts.empty() && again.changedSettings.empty(), "a second save found something to do");
    }
    return 0;
}
