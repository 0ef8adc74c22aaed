// Saves of one and of a tenth of 10,000 settings, of which the user has set a tenth, beside other stores of the same
// values: the first save of a process and the later ones. What is measured is processor time: waiting for the disk, on
// which a save insists, is not in it. The catalogue is the static form's: the manager itself is made once in a process.
#include <zelutil/host/save.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "peers/save_peers.h"
#include "prefs/preferences.h"
#include "prefs/save.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::CorpusSetting;
using zelutil::bench::PreferenceDirectory;
using zelutil::bench::SettingsCorpus;
using zelutil::prefs::Preferences;
namespace peers = zelutil::bench::peers;

constexpr std::size_t kCount = 10'000;
constexpr std::size_t kUsersEvery = 10;

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

using Settings = std::vector<const CorpusSetting*>;

/// Settings that the user has set.
Settings usersSettings(const SettingsCorpus& corpus, std::size_t count) {
    Settings settings;
    for (std::size_t i = 0; i < count; ++i) {
        settings.push_back(&corpus.settings()[(kCount / 2 + i * kUsersEvery) % kCount]);
    }
    return settings;
}

using Values = std::map<std::string, std::string>;

Values valuesOf(const Settings& settings, const std::string& value) {
    Values values;
    for (const CorpusSetting* const setting : settings) {
        values.emplace(setting->fullName, value);
    }
    return values;
}

std::string read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::uint64_t saveIn(Preferences& preferences, const Values& values) {
    zelutil::prefs::save(preferences.catalogue, *preferences.userFile, {values, {}});
    return kDone;
}

/// A RAM disk where there is one and the row is not for the other.
const char* chosenPlace() {
#ifdef ZELUTIL_BENCH_ON_DISK
    return "disk";
#else
    setenv("TMPDIR", "/dev/shm", 1);
    return "RAM disk";
#endif
}

/// One row: saves of so many settings, first or later ones.
class Row {
public:
    Row(const SettingsCorpus& corpus, const std::string& directory, std::size_t count)
        : corpus_(corpus), directory_(directory), settings_(usersSettings(corpus, count)) {}

    template <typename Save>
    void addLater(const std::string& name, Save save) {
        Comparison comparison(name, 1);
        addPeers(comparison.zelutil(
            [this, save, values = Alternating()]() mutable { return save(valuesOf(settings_, values.next())); }));
    }

    void addFirst(const std::string& name) {
        Comparison comparison(name, 1);
        addPeers(comparison.zelutil([this] { preferences_ = std::make_unique<Preferences>(); },
                                    [this, values = Alternating()]() mutable {
                                        return saveIn(*preferences_, valuesOf(settings_, values.next()));
                                    }));
    }

private:
    void addPeers(Comparison& comparison) {
        const std::string userFile = read(directory_ + "/pcbenv/tessel/tessel_settings.cfg");
        addStore(comparison, "nlohmann::json, dump and write",
                 [&](auto path) { return peers::nlohmannStore(userFile, path); });
        addStore(comparison, "GKeyFile", [&](auto path) { return peers::glibStore(corpus_, path); });
        addStore(comparison, "QSettings", [&](auto path) { return peers::qtStore(corpus_, path); });
        addStore(comparison, "KConfig", [&](auto path) { return peers::kdeStore(corpus_, path); });
        addStore(comparison, "limit: write, flush and rename",
                 [&](auto path) { return peers::textStore(userFile, path); });
    }

    template <typename Make>
    void addStore(Comparison& comparison, const char* name, Make make) {
        std::shared_ptr<peers::SettingsStore> store = make(directory_ + "/store" + std::to_string(++stores_));
        comparison.peer(name, [this, store, values = Alternating()]() mutable {
            return store->save(settings_, values.next()) ? kDone : 0;
        });
    }

    const SettingsCorpus& corpus_;
    const std::string& directory_;
    Settings settings_;
    std::unique_ptr<Preferences> preferences_;
    /// Each store has a file of its own.
    static inline int stores_ = 0;
};

}  // namespace

void zelutil::bench::addComparisons() {
    static const std::string place = chosenPlace();
    static const SettingsCorpus corpus(kCount);
    static const PreferenceDirectory files(corpus);
    static Preferences preferences;
    saveIn(preferences, valuesOf(usersSettings(corpus, 1), "a first save"));

    static Row one(corpus, files.path(), 1);
    static Row tenth(corpus, files.path(), kCount / kUsersEvery);
    const auto later = [](const Values& values) { return saveIn(preferences, values); };
    one.addFirst("save one of 10000 to " + place + ", first");
    one.addLater("save one of 10000 to " + place, later);
    tenth.addFirst("save a tenth of 10000 to " + place + ", first");
    tenth.addLater("save a tenth of 10000 to " + place, later);
    one.addLater("host::save one of 10000 to " + place,
                 [](const Values& values) { return host::save(values).ok() ? kDone : 0; });
}
