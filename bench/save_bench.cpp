// A save that changes one of 10,000 settings, all of which the user had set before. What is measured is processor time:
// waiting for the disk, on which a save insists, is not in it.
#include <zelutil/prefs/user_preference_manager.h>

#include <QSettings>
#include <QString>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "peers/plain_json_peer.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::PreferenceDirectory;
using zelutil::bench::SettingsCorpus;

constexpr std::size_t kCount = 10'000;

/// Each round answers this when it has done what it should.
constexpr std::uint64_t kDone = 1;

/// A value that differs from the one before.
class Alternating {
public:
    std::string next() {
        first_ = !first_;
        return first_ ? "0.125" : "0.25";
    }

private:
    bool first_ = false;
};

std::string read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const SettingsCorpus corpus(kCount, 1);
    static const PreferenceDirectory files(corpus);
    static const std::string& name = corpus.settings()[kCount / 2].fullName;
    static QSettings settings(QString::fromStdString(files.path() + "/settings.ini"), QSettings::IniFormat);
    for (const auto& setting : corpus.settings()) {
        settings.setValue(QString::fromStdString(setting.bareName), QString::fromStdString(setting.value()));
    }
    UserPreferenceManager::GetInstance().updateUserPrefSettings({{name, "a first save"}}, {});
    static const std::string saved = read(files.path() + "/pcbenv/tessel/tessel_settings.cfg");

    Comparison("save one change of 10000 settings", 1)
        .zelutil([values = Alternating()]() mutable {
            UserPreferenceManager::GetInstance().updateUserPrefSettings({{name, values.next()}}, {});
            return kDone;
        })
        .peer("RapidJSON, parse and write a file",
              [] {
                  const std::string written = peers::parseAndWrite(saved);
                  std::ofstream(files.path() + "/peer.cfg", std::ios::binary) << written;
                  return written.size() == saved.size() ? kDone : 0;
              })
        .peer("QSettings::sync", [values = Alternating()]() mutable {
            settings.setValue(QString::fromStdString(corpus.settings()[kCount / 2].bareName),
                              QString::fromStdString(values.next()));
            settings.sync();
            return settings.status() == QSettings::NoError ? kDone : 0;
        });
}
