// Whatever the texts, preferences are read and saved as their slow twin does it. The input is parted by lines of three
// dashes: the defaults file, the user's file, then saves. A line of a save is a setting's name, "=" and its value, or
// "#", a sub-manager's type, "=" and its text.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/prefs_pair.h"

namespace {

using zelutil::test::hasPlainNumbersOnly;
using zelutil::test::PrefsPair;
using zelutil::test::PrefsSaved;
using zelutil::test::PrefsSubject;

constexpr std::size_t kMostSaves = 4;

struct Save {
    std::map<std::string, std::string> settings;
    std::map<std::int32_t, std::string> texts;
};

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

Save saveOf(const std::string& text) {
    Save save;
    for (const std::string& line : parted(text, "\n")) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) {
            continue;
        }
        const std::string value = line.substr(equals + 1);
        if (line[0] == '#') {
            save.texts[static_cast<std::int32_t>(std::strtol(line.c_str() + 1, nullptr, 10))] = value;
        } else {
            save.settings[line.substr(0, equals)] = value;
        }
    }
    return save;
}

void require(const std::string& difference) {
    if (!difference.empty()) {
        std::fprintf(stderr, "%s\n", difference.c_str());
        std::abort();
    }
}

void compare(const std::string& defaults, std::string& user, const std::vector<Save>& saves) {
    PrefsPair pair(defaults, user);
    std::vector<std::string> names;
    for (const Save& save : saves) {
        for (const auto& [name, value] : save.settings) {
            names.push_back(name);
        }
    }
    require(pair.compareSections());
    require(pair.compareActions());
    require(pair.compareValues(names));
    for (const Save& save : saves) {
        PrefsSaved saved;
        require(pair.compareSave(save.settings, save.texts, saved));
        require(pair.compareValues(names));
        user = saved.text.value_or(user);
    }
}

/// The twin knows plain numbers only; others must do no harm.
void exercise(const std::string& defaults, const std::string& user, const std::vector<Save>& saves) {
    PrefsSubject subject(defaults, user);
    for (const Save& save : saves) {
        subject.save(save.settings, save.texts);
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
    const std::string& defaults = parts[0];
    std::string user = parts.size() > 1 ? parts[1] : "";
    std::vector<Save> saves;
    for (std::size_t i = 2; i < parts.size() && saves.size() < kMostSaves; ++i) {
        saves.push_back(saveOf(parts[i]));
    }
    if (!hasPlainNumbersOnly(input)) {
        exercise(defaults, user, saves);
        return 0;
    }
    compare(defaults, user, saves);
    // The text that was written is read again.
    compare(defaults, user, saves);
    return 0;
}
