#include "peers/save_peers.h"

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <KConfig>
#include <KConfigGroup>
#include <QSettings>
#include <QString>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <utility>

namespace zelutil::bench::peers {
namespace {

using Settings = std::vector<const CorpusSetting*>;

std::string sectionOf(const CorpusSetting& setting) {
    return setting.fullName.substr(0, setting.fullName.size() - setting.bareName.size() - 2);
}

template <typename Set>
void setUserValues(const SettingsCorpus& corpus, Set set) {
    for (const CorpusSetting& setting : corpus.settings()) {
        if (!setting.userValue.empty()) {
            set(setting, setting.userValue);
        }
    }
}

class NlohmannStore final : public SettingsStore {
public:
    NlohmannStore(const std::string& userText, std::string path)
        : path_(std::move(path)), document_(nlohmann::json::parse(userText)) {
        collect(document_["meta"]);
    }

    bool save(const Settings& settings, const std::string& value) override {
        for (const CorpusSetting* const setting : settings) {
            *entries_.at(setting->bareName) = value;
        }
        std::ofstream file(path_, std::ios::binary);
        file << document_.dump(4);
        return static_cast<bool>(file.flush());
    }

private:
    /// Bare names are unique in a corpus. A file has them, or the full names.
    void collect(nlohmann::json& sections) {
        for (nlohmann::json& section : sections) {
            for (nlohmann::json& entry : section["overriddensettings"]) {
                for (auto member = entry.begin(); member != entry.end(); ++member) {
                    const std::string& name = member.key();
                    entries_[name.substr(name.rfind(':') + 1)] = &member.value();
                }
            }
            if (section.contains("children")) {
                collect(section["children"]);
            }
        }
    }

    std::string path_;
    nlohmann::json document_;
    std::unordered_map<std::string, nlohmann::json*> entries_;
};

class GlibStore final : public SettingsStore {
public:
    GlibStore(const SettingsCorpus& corpus, std::string path) : path_(std::move(path)) {
        setUserValues(corpus, [this](const CorpusSetting& setting, const std::string& value) { set(setting, value); });
    }
    ~GlibStore() override { g_key_file_free(file_); }

    bool save(const Settings& settings, const std::string& value) override {
        for (const CorpusSetting* const setting : settings) {
            set(*setting, value);
        }
        return g_key_file_save_to_file(file_, path_.c_str(), nullptr) != FALSE;
    }

private:
    void set(const CorpusSetting& setting, const std::string& value) {
        g_key_file_set_string(file_, sectionOf(setting).c_str(), setting.bareName.c_str(), value.c_str());
    }

    std::string path_;
    GKeyFile* file_ = g_key_file_new();
};

class QtStore final : public SettingsStore {
public:
    QtStore(const SettingsCorpus& corpus, const std::string& path)
        : settings_(QString::fromStdString(path), QSettings::IniFormat) {
        setUserValues(corpus, [this](const CorpusSetting& setting, const std::string& value) { set(setting, value); });
    }

    bool save(const Settings& settings, const std::string& value) override {
        for (const CorpusSetting* const setting : settings) {
            set(*setting, value);
        }
        settings_.sync();
        return settings_.status() == QSettings::NoError;
    }

private:
    void set(const CorpusSetting& setting, const std::string& value) {
        settings_.setValue(QString::fromStdString(sectionOf(setting) + "/" + setting.bareName),
                           QString::fromStdString(value));
    }

    QSettings settings_;
};

class KdeStore final : public SettingsStore {
public:
    KdeStore(const SettingsCorpus& corpus, const std::string& path)
        : config_(QString::fromStdString(path), KConfig::SimpleConfig) {
        setUserValues(corpus, [this](const CorpusSetting& setting, const std::string& value) { set(setting, value); });
    }

    bool save(const Settings& settings, const std::string& value) override {
        for (const CorpusSetting* const setting : settings) {
            set(*setting, value);
        }
        return config_.sync();
    }

private:
    void set(const CorpusSetting& setting, const std::string& value) {
        config_.group(QString::fromStdString(sectionOf(setting)))
            .writeEntry(QString::fromStdString(setting.bareName), QString::fromStdString(value));
    }

    KConfig config_;
};

class TextStore final : public SettingsStore {
public:
    TextStore(std::string text, std::string path) : text_(std::move(text)), path_(std::move(path)) {}

    bool save(const Settings&, const std::string&) override {
        const std::string beside = path_ + ".new";
        const int file = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        const bool isWritten = write(file, text_.data(), text_.size()) == static_cast<ssize_t>(text_.size());
        const bool isOnDisk = fsync(file) == 0;
        close(file);
        return isWritten && isOnDisk && std::rename(beside.c_str(), path_.c_str()) == 0;
    }

private:
    std::string text_;
    std::string path_;
};

}  // namespace

StorePointer nlohmannStore(const std::string& userText, const std::string& path) {
    return std::make_unique<NlohmannStore>(userText, path);
}

StorePointer glibStore(const SettingsCorpus& corpus, const std::string& path) {
    return std::make_unique<GlibStore>(corpus, path);
}

StorePointer qtStore(const SettingsCorpus& corpus, const std::string& path) {
    return std::make_unique<QtStore>(corpus, path);
}

StorePointer kdeStore(const SettingsCorpus& corpus, const std::string& path) {
    return std::make_unique<KdeStore>(corpus, path);
}

StorePointer textStore(std::string text, const std::string& path) {
    return std::make_unique<TextStore>(std::move(text), path);
}

}  // namespace zelutil::bench::peers
