// Reading both preference files and building the catalogue from them, against parsing the same texts and against other
// stores. The catalogue is the static form's: the manager itself is made once in a process.
#include <QSettings>
#include <QString>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <unordered_map>

#include "peers/plain_json_peer.h"
#include "prefs/preferences.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::SettingsCorpus;

constexpr std::size_t kCount = 10'000;
/// More files than QSettings keeps parsed.
constexpr std::size_t kIniFiles = 64;

using Flat = std::unordered_map<std::string, std::string>;

void flatten(const nlohmann::json& sections, const std::string& parent, Flat& flat) {
    for (const auto& section : sections) {
        const std::string path =
            (parent.empty() ? "" : parent + "::") + section.at("attribute").get_ref<const std::string&>();
        if (section.contains("defaultsettings")) {
            for (const auto& setting : section["defaultsettings"]) {
                flat[path + "::" + setting.at("name").get_ref<const std::string&>()] =
                    setting.at("value").get_ref<const std::string&>();
            }
        }
        if (section.contains("overriddensettings")) {
            for (const auto& object : section["overriddensettings"]) {
                for (const auto& [name, value] : object.items()) {
                    flat[path + "::" + name] = value.get_ref<const std::string&>();
                }
            }
        }
        if (section.contains("children")) {
            flatten(section["children"], path, flat);
        }
    }
}

std::string iniKey(std::string name) {
    for (std::size_t at = 0; (at = name.find("::", at)) != std::string::npos;) {
        name.replace(at, 2, "/");
    }
    return name;
}

std::string iniName(const std::string& directory, std::size_t i) {
    return directory + "/settings" + std::to_string(i) + ".ini";
}

void writeIniFiles(const SettingsCorpus& corpus, const std::string& directory) {
    {
        QSettings settings(QString::fromStdString(iniName(directory, 0)), QSettings::IniFormat);
        for (const auto& setting : corpus.settings()) {
            settings.setValue(QString::fromStdString(iniKey(setting.fullName)),
                              QString::fromStdString(setting.value()));
        }
    }
    for (std::size_t i = 1; i < kIniFiles; ++i) {
        std::filesystem::copy_file(iniName(directory, 0), iniName(directory, i));
    }
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const SettingsCorpus corpus(kCount);
    static const PreferenceDirectory files(corpus);
    static const std::string& directory = files.path();
    static const std::string& last = corpus.settings().back().fullName;
    writeIniFiles(corpus, directory);

    Comparison("read, parse and build 10000 settings", 1)
        .zelutil([] {
            prefs::UserSettingsFile userFile;
            return std::uint64_t{
                prefs::readPreferenceFiles(prefs::defaultsFilePath(), userFile).find(last)->valueInForce().size()};
        })
        .peer("RapidJSON, parse alone", [] { return peers::parseAlone(corpus.defaultsText(), corpus.userText()); })
        .peer("nlohmann::json, flattened",
              [] {
                  Flat flat;
                  for (const std::string* const text : {&corpus.defaultsText(), &corpus.userText()}) {
                      flatten(nlohmann::json::parse(*text)["meta"], "", flat);
                  }
                  return std::uint64_t{flat.find(last)->second.size()};
              })
        .peer("QSettings", [next = std::size_t{0}]() mutable {
            const QSettings settings(QString::fromStdString(iniName(directory, next++ % kIniFiles)),
                                     QSettings::IniFormat);
            // A section is parsed when it is first asked for; this asks for all.
            const bool complete = settings.allKeys().size() == static_cast<int>(kCount);
            const QString value = settings.value(QString::fromStdString(iniKey(last))).toString();
            return complete ? static_cast<std::uint64_t>(value.size()) : 0;
        });
}
