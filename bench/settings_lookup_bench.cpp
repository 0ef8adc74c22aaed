// Looking settings up by name, against what a host would keep them in instead. ZELUTIL_BENCH_SETTINGS is their number:
// the preferences are read once in a process, so each number has a program of its own.
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/util/ascii.h>

#include <QSettings>
#include <QString>
#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::CorpusSetting;
using zelutil::bench::SettingsCorpus;

using TreePath = boost::property_tree::ptree::path_type;

constexpr std::size_t kCount = ZELUTIL_BENCH_SETTINGS;
constexpr std::size_t kHot = 16;

std::string folded(std::string name) {
    for (char& c : name) {
        c = zelutil::ascii::lowerCase(c);
    }
    return name;
}

std::string replaced(const std::string& name, const char* separator) {
    std::string result = name;
    for (std::size_t at = 0; (at = result.find("::", at)) != std::string::npos;) {
        result.replace(at, 2, separator);
    }
    return result;
}

/// The hash by which settings are found: FNV-1a over the name in lower case.
std::uint64_t foldingHash(std::string_view name) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(zelutil::ascii::lowerCase(c))) * 0x100000001b3;
    }
    return hash;
}

struct FoldingHash {
    using is_transparent = void;
    using is_avalanching = void;
    std::size_t operator()(std::string_view name) const { return foldingHash(name); }
};

struct FoldingEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char left, char right) {
                   return zelutil::ascii::lowerCase(left) == zelutil::ascii::lowerCase(right);
               });
    }
};

/// The names a round asks for. The peers that fold no case and have another separator get theirs ready, as text too.
struct Questions {
    std::vector<std::string> names;
    std::vector<std::string> paths;
};

struct Peers {
    std::unordered_map<std::string, std::string> hashed;
    boost::unordered_flat_map<std::string, std::string, FoldingHash, FoldingEqual> flat;
    std::map<std::string, std::string> ordered;
    boost::property_tree::ptree tree;
    std::unique_ptr<QSettings> settings;
};

std::vector<std::string> namesOf(const CorpusSetting& setting) {
    return setting.hasBareName ? std::vector<std::string>{setting.fullName, setting.bareName}
                               : std::vector<std::string>{setting.fullName};
}

Peers makePeers(const SettingsCorpus& corpus, const std::string& directory) {
    Peers peers;
    peers.settings =
        std::make_unique<QSettings>(QString::fromStdString(directory + "/settings.ini"), QSettings::IniFormat);
    for (const auto& setting : corpus.settings()) {
        for (const std::string& name : namesOf(setting)) {
            peers.hashed.emplace(folded(name), setting.value());
            peers.flat.emplace(name, setting.value());
            peers.ordered.emplace(folded(name), setting.value());
            peers.tree.put(TreePath(replaced(folded(name), "/"), '/'), setting.value());
            peers.settings->setValue(QString::fromStdString(replaced(folded(name), "/")),
                                     QString::fromStdString(setting.value()));
        }
    }
    peers.settings->sync();
    return peers;
}

Questions ask(const SettingsCorpus& corpus, const std::vector<std::size_t>& order, bool bare) {
    Questions questions;
    for (const std::size_t i : order) {
        const auto& setting = corpus.settings()[i];
        if (bare && !setting.hasBareName) {
            continue;
        }
        const std::string& name = bare ? setting.bareName : setting.fullName;
        questions.names.push_back(name);
        questions.paths.push_back(replaced(folded(name), "/"));
    }
    return questions;
}

/// A round over all of `questions`; `length` answers the length of the value for one.
template <typename Length>
auto asking(const std::vector<std::string>& questions, Length length) {
    return [&questions, length] {
        std::uint64_t digest = 0;
        for (const std::string& question : questions) {
            digest = digest * 31 + static_cast<std::uint64_t>(length(question));
        }
        return digest;
    };
}

std::uint64_t lengthOf(const std::string& name) { return std::strlen(get_user_setting(name.c_str())); }

std::uint64_t memberLengthOf(const std::string& name) {
    return UserPreferenceManager::GetInstance().getUserPrefSetting(name).size();
}

/// The library's side and the peers that get the names as the library gets them.
Comparison& compareMaps(Comparison& comparison, const Questions& questions, Peers& peers,
                        std::uint64_t (*lengthOfValue)(const std::string&)) {
    return comparison.zelutil(asking(questions.names, lengthOfValue))
        .peer("unordered_map, folded copy",
              asking(questions.names,
                     [&](const std::string& name) { return peers.hashed.find(folded(name))->second.size(); }))
        .peer("boost flat map, folding",
              asking(questions.names, [&](const std::string& name) { return peers.flat.find(name)->second.size(); }));
}

void compare(const std::string& task, const Questions& questions, Peers& peers) {
    Comparison comparison(task, questions.names.size());
    compareMaps(comparison, questions, peers, lengthOf)
        .peer("map, folded copy",
              asking(questions.names,
                     [&](const std::string& name) { return peers.ordered.find(folded(name))->second.size(); }))
        .peer("property_tree",
              asking(questions.paths,
                     [&](const std::string& path) { return peers.tree.get_child(TreePath(path, '/')).data().size(); }))
        .peer("QSettings", asking(questions.paths, [&](const std::string& path) {
                  return static_cast<std::size_t>(peers.settings->value(path.c_str()).toString().size());
              }));
}

/// Measures what no look-up by this hash can do without. The values are dealt out beforehand, in the order of the
/// questions.
void compareLimits(const std::string& task, const Questions& questions, Peers& peers) {
    static std::vector<std::size_t> lengths;
    for (const std::string& name : questions.names) {
        lengths.push_back(lengthOf(name));
    }
    const auto limit = [&questions](auto hash) {
        return [&questions, hash, next = std::size_t{0}]() mutable {
            return asking(questions.names, [&](const std::string& name) {
                benchmark::DoNotOptimize(hash(name));
                return lengths[next++ % lengths.size()];
            })();
        };
    };
    Comparison byName(task, questions.names.size());
    compareMaps(byName, questions, peers, lengthOf).peer("limit: the hash alone", limit(foldingHash));
    Comparison byMember(task + ", by the member function", questions.names.size());
    compareMaps(byMember, questions, peers, memberLengthOf)
        .peer("limit: hash of a copy alone", limit([](std::string name) { return foldingHash(name); }));
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const SettingsCorpus corpus(kCount, 10, CorpusNames::Varied);
    static const PreferenceDirectory files(corpus);
    static const std::string& directory = files.path();
    static Peers peers = makePeers(corpus, directory);
    static std::vector<Questions> asked;
    asked.reserve(4);
    const std::vector<std::size_t> all = randomOrder(kCount);
    const std::vector<std::size_t> hot(all.begin(), all.begin() + kHot);
    const std::string settings = std::to_string(kCount) + " settings, ";
    for (const bool bare : {false, true}) {
        for (const auto& [label, order] : {std::pair("hot", hot), std::pair("random order", all)}) {
            asked.push_back(ask(corpus, order, bare));
            compare(settings + (bare ? "bare" : "full") + " names, " + label, asked.back(), peers);
        }
    }
    compareLimits(settings + "full names, random order, limits", asked[1], peers);
}
