#include "settings_corpus.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <random>

namespace zelutil::bench {
namespace {

constexpr std::size_t kSettingsPerSection = 20;
constexpr std::size_t kSectionsPerGroup = 10;
constexpr const char* kStems[] = {"track_width",    "via_drill",   "show_ratsnest", "grid",     "autosave_interval",
                                  "pour_clearance", "marker_size", "cursor_shape",  "decimals", "thermal_gap"};

/// Lays out the sections; `entries` appends what the section that begins at a setting holds.
template <typename Entries>
std::string layOut(std::size_t count, Entries entries) {
    const std::size_t perGroup = kSettingsPerSection * kSectionsPerGroup;
    std::string text = "{\n    \"meta\": [\n";
    for (std::size_t group = 0; group * perGroup < count; ++group) {
        const std::string number = std::to_string(group);
        text += group == 0 ? "" : ",\n";
        text += "        {\n            \"header\": \"Board " + number + "\",\n            \"attribute\": \"board_" +
                number + "\",\n            \"children\": [\n";
        for (std::size_t section = 0; section < kSectionsPerGroup; ++section) {
            const std::size_t first = group * perGroup + section * kSettingsPerSection;
            if (first >= count) {
                break;
            }
            const std::string child = std::to_string(section);
            text += section == 0 ? "" : ",\n";
            text += "                {\n                    \"header\": \"Routing " + child +
                    "\",\n                    \"attribute\": \"routing_" + child + "\",\n";
            entries(text, first, std::min(first + kSettingsPerSection, count));
            text += "\n                    ]\n                }";
        }
        text += "\n            ]\n        }";
    }
    return text + "\n    ]\n}\n";
}

}  // namespace

SettingsCorpus::SettingsCorpus(std::size_t count, std::size_t userChangesEvery) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t section = i / kSettingsPerSection;
        const std::string path = "board_" + std::to_string(section / kSectionsPerGroup) + "::routing_" +
                                 std::to_string(section % kSectionsPerGroup);
        const std::string name = std::string(kStems[i % std::size(kStems)]) + "_" + std::to_string(i);
        const bool changed = i % userChangesEvery == 0;
        settings_.push_back({path + "::" + name, name, std::to_string(i * 37 % 1000) + ".125",
                             changed ? std::to_string(i * 41 % 1000) + ".5" : ""});
    }
    defaultsText_ = layOut(count, [this](std::string& text, std::size_t begin, std::size_t end) {
        text += "                    \"tclCommand\": \"apply_settings\",\n                    \"defaultsettings\": [";
        for (std::size_t i = begin; i < end; ++i) {
            text += i == begin ? "\n" : ",\n";
            text += "                        {\"name\": \"" + settings_[i].bareName + "\", \"value\": \"" +
                    settings_[i].defaultValue + "\"}";
        }
    });
    userText_ = layOut(count, [this](std::string& text, std::size_t begin, std::size_t end) {
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
