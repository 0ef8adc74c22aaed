#include "settings_corpus.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string_view>

namespace zelutil::bench {
namespace {

constexpr std::size_t kSettingsPerSection = 20;
constexpr std::size_t kSectionsPerGroup = 10;
constexpr const char* kStems[] = {"track_width",    "via_drill",   "show_ratsnest", "grid",     "autosave_interval",
                                  "pour_clearance", "marker_size", "cursor_shape",  "decimals", "thermal_gap"};

/// Names the sections and settings of a corpus, and says which sections are unique.
class Naming {
public:
    explicit Naming(CorpusNames names) : varied_(names == CorpusNames::Varied) {}

    std::string group(std::size_t number) const {
        return varied_ ? word(number, 3 + number % 15) : "board_" + std::to_string(number);
    }
    std::string section(std::size_t number) const {
        return varied_ ? word(number % kSectionsPerGroup, 2 + number * 7 % 17)
                       : "routing_" + std::to_string(number % kSectionsPerGroup);
    }
    std::string setting(std::size_t number) const {
        return varied_ ? word(number, 2 + number * 13 % 21)
                       : std::string(kStems[number % std::size(kStems)]) + "_" + std::to_string(number);
    }
    bool isUnique(std::size_t section) const { return !varied_ || section % 2 == 0; }

private:
    /// Returns a name for each number; one that is too short for it is longer than asked for.
    static std::string word(std::size_t number, std::size_t length) {
        constexpr std::string_view kDigits = "0123456789aBcDeFgHiJkLmNoPqRsTuVwXyZ";
        constexpr std::string_view kLetters = "_Clearance_Of_Track_And_Via";
        std::string name;
        for (; name.size() < 2 || number != 0; number /= kDigits.size()) {
            name += kDigits[number % kDigits.size()];
        }
        return name + std::string(kLetters.substr(0, length - std::min(length, name.size())));
    }

    bool varied_;
};

/// Lays out the sections; `entries` appends what the section that begins at a setting holds.
template <typename Entries>
std::string layOut(std::size_t count, const Naming& naming, Entries entries) {
    const std::size_t perGroup = kSettingsPerSection * kSectionsPerGroup;
    std::string text = "{\n    \"meta\": [\n";
    for (std::size_t group = 0; group * perGroup < count; ++group) {
        text += group == 0 ? "" : ",\n";
        text += "        {\n            \"header\": \"Board " + std::to_string(group) +
                "\",\n            \"attribute\": \"" + naming.group(group) + "\",\n            \"children\": [\n";
        for (std::size_t child = 0; child < kSectionsPerGroup; ++child) {
            const std::size_t section = group * kSectionsPerGroup + child;
            const std::size_t first = section * kSettingsPerSection;
            if (first >= count) {
                break;
            }
            text += child == 0 ? "" : ",\n";
            text += "                {\n                    \"header\": \"Routing " + std::to_string(child) +
                    "\",\n                    \"attribute\": \"" + naming.section(section) + "\",\n";
            text += naming.isUnique(section) ? "" : "                    \"unique\": false,\n";
            entries(text, first, std::min(first + kSettingsPerSection, count));
            text += "\n                    ]\n                }";
        }
        text += "\n            ]\n        }";
    }
    return text + "\n    ]\n}\n";
}

}  // namespace

SettingsCorpus::SettingsCorpus(std::size_t count, std::size_t userChangesEvery, CorpusNames names) {
    const Naming naming(names);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t section = i / kSettingsPerSection;
        const std::string path = naming.group(section / kSectionsPerGroup) + "::" + naming.section(section);
        const std::string name = naming.setting(i);
        const bool changed = i % userChangesEvery == 0;
        settings_.push_back({path + "::" + name, name, std::to_string(i * 37 % 1000) + ".125",
                             changed ? std::to_string(i * 41 % 1000) + ".5" : "", naming.isUnique(section)});
    }
    defaultsText_ = layOut(count, naming, [this](std::string& text, std::size_t begin, std::size_t end) {
        text += "                    \"tclCommand\": \"apply_settings\",\n                    \"defaultsettings\": [";
        for (std::size_t i = begin; i < end; ++i) {
            text += i == begin ? "\n" : ",\n";
            text += "                        {\"name\": \"" + settings_[i].bareName + "\", \"value\": \"" +
                    settings_[i].defaultValue + "\"}";
        }
    });
    userText_ = layOut(count, naming, [this](std::string& text, std::size_t begin, std::size_t end) {
        text += "                    \"overriddensettings\": [";
        const char* separator = "\n";
        for (std::size_t i = begin; i < end; ++i) {
            if (!settings_[i].userValue.empty()) {
                text += separator;
                text +=
                    "                        {\"" + settings_[i].bareName + "\": \"" + settings_[i].userValue + "\"}";
                separator = ",\n";
            }
        }
    });
}

PreferenceDirectory::PreferenceDirectory(const SettingsCorpus& corpus) {
    directory_.write("pcbenv/tessel/tessel_settings.cfg", corpus.userText());
    setenv("tessel_settings", directory_.write("defaults.cfg", corpus.defaultsText()).c_str(), 1);
    setenv("HOMEDRIVE", "Z:", 1);
    setenv("HOMEPATH", path().c_str(), 1);
}

std::vector<std::size_t> randomOrder(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::shuffle(order.begin(), order.end(), std::mt19937(1234));
    return order;
}

}  // namespace zelutil::bench
