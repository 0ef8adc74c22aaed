// Looking settings up by name, against what a host would keep them in instead. ZELUTIL_BENCH_SETTINGS is their number:
// the preferences are read once in a process, so each number has a program of its own.
#include <zelutil/c_api.h>

#include <QSettings>
#include <QString>
#include <boost/property_tree/ptree.hpp>
#include <cctype>
#include <cstring>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using zelutil::bench::SettingsCorpus;

using TreePath = boost::property_tree::ptree::path_type;

constexpr std::size_t kCount = ZELUTIL_BENCH_SETTINGS;
constexpr std::size_t kHot = 16;

std::string folded(std::string name) {
    for (char& c : name) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
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

/// The names a round asks for. The peers that fold no case and have another separator get theirs ready, as text too.
struct Questions {
    std::vector<std::string> names;
    std::vector<std::string> paths;
};

struct Peers {
    std::unordered_map<std::string, std::string> hashed;
    std::map<std::string, std::string> ordered;
    boost::property_tree::ptree tree;
    std::unique_ptr<QSettings> settings;
};

Peers makePeers(const SettingsCorpus& corpus, const std::string& directory) {
    Peers peers;
    peers.settings =
        std::make_unique<QSettings>(QString::fromStdString(directory + "/settings.ini"), QSettings::IniFormat);
    for (const auto& setting : corpus.settings()) {
        for (const std::string& name : {setting.fullName, setting.bareName}) {
            peers.hashed.emplace(folded(name), setting.value());
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

void compare(const std::string& task, const Questions& questions, Peers& peers) {
    Comparison(task, questions.names.size())
        .zelutil(asking(questions.names,
                        [](const std::string& name) { return std::strlen(get_user_setting(name.c_str())); }))
        .peer("unordered_map, folded copy",
              asking(questions.names,
                     [&](const std::string& name) { return peers.hashed.find(folded(name))->second.size(); }))
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

}  // namespace

void zelutil::bench::addComparisons() {
    static const SettingsCorpus corpus(kCount);
    static const PreferenceDirectory files(corpus);
    static const std::string& directory = files.path();
    static Peers peers = makePeers(corpus, directory);
    static std::vector<Questions> asked;
    asked.reserve(4);
    const std::vector<std::size_t> all = randomOrder(kCount);
    const std::vector<std::size_t> hot(all.begin(), all.begin() + kHot);
    for (const bool bare : {false, true}) {
        for (const auto& [label, order] : {std::pair("hot", hot), std::pair("random order", all)}) {
            asked.push_back(ask(corpus, order, bare));
            compare(std::to_string(kCount) + " settings, " + (bare ? "bare" : "full") + " names, " + label,
                    asked.back(), peers);
        }
    }
}
