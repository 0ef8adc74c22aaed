// Saves, byte for byte. Each folder of golden/ is a case: the defaults file, the user's file before (or none), what a
// host hands over, the user's file afterwards (none: it is not touched), and what the observers are told.
#include <gtest/gtest.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using Type = UserPreferenceManager::SubManagerType;

std::vector<std::string> goldenCases() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(ZELUTIL_TEST_DATA) / "golden")) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string textOr(const fs::path& file, const std::string& otherwise) {
    return fs::exists(file) ? readTextFile(file) : otherwise;
}

/// \n, \t, \\ and \xHH stand for what they stand for in C.
std::string unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        const char kind = text.at(++i);
        if (kind == 'x') {
            result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            result += kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
        }
    }
    return result;
}

/// Notes in the form of notifications.txt what it is told.
class Log : public ZelU::Marl::IUserPreferenceObserver, public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    Log() {
        auto& server = ZelU::Marl::UserPreferenceServer::getInstance();
        server.attach(static_cast<IUserPreferenceObserver*>(this));
        server.attach(static_cast<IUserPreferenceSubManagerObserver*>(this));
    }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    ~Log() {
        auto& server = ZelU::Marl::UserPreferenceServer::getInstance();
        server.detach(static_cast<IUserPreferenceObserver*>(this));
        server.detach(static_cast<IUserPreferenceSubManagerObserver*>(this));
    }

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        text_ += "settings:";
        for (const std::string& name : changedNames) {
            text_ += (name == *changedNames.begin() ? " " : ", ") + name;
        }
        text_ += "\n";
    }

    void onSubManagerSettingsChanged(const std::map<Type, std::string>& changedTexts) override {
        text_ += "texts:";
        for (const auto& [type, text] : changedTexts) {
            text_ += (type == changedTexts.begin()->first ? " " : "; ") + std::to_string(static_cast<int>(type)) +
                     " = " + text;
        }
        text_ += "\n";
    }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// Does what edits.txt says: "set NAME = VALUE" and "text ID = JSON" collect what the next "save" hands over.
void apply(const std::string& edits) {
    std::map<std::string, std::string> settings;
    std::map<Type, std::string> texts;
    std::istringstream lines(edits);
    for (std::string line; std::getline(lines, line);) {
        if (line == "save") {
            UserPreferenceManager::GetInstance().updateUserPrefSettings(settings, texts);
            settings.clear();
            texts.clear();
            continue;
        }
        const std::size_t space = line.find(' ');
        const std::size_t equals = line.find(" = ", space);
        if (equals == std::string::npos) {
            throw std::runtime_error("not understood: " + line);
        }
        const std::string kind = line.substr(0, space);
        const std::string subject = line.substr(space + 1, std::max(equals, space + 1) - (space + 1));
        const std::string object = line.substr(equals + 3);
        if (kind == "set") {
            settings[subject] = unescaped(object);
        } else {
            texts[Type{std::stoi(subject)}] = object;
        }
    }
}

class GoldenSave : public testing::TestWithParam<std::string> {
protected:
    GoldenSave() {
        world_.writeDefaults(readTextFile(folder() / "defaults.cfg"));
        if (fs::exists(folder() / "user.cfg")) {
            world_.writeUser(readTextFile(folder() / "user.cfg"));
            fs::last_write_time(world_.userFile(), longAgo_);
        }
    }

    fs::path folder() const { return fs::path(ZELUTIL_TEST_DATA) / "golden" / GetParam(); }

    void expectUserFileUntouched() const {
        ASSERT_EQ(fs::exists(world_.userFile()), fs::exists(folder() / "user.cfg"));
        if (fs::exists(world_.userFile())) {
            EXPECT_EQ(readTextFile(world_.userFile()), readTextFile(folder() / "user.cfg"));
            EXPECT_EQ(fs::last_write_time(world_.userFile()), longAgo_);
        }
    }

    PreferenceWorld world_;
    fs::file_time_type longAgo_ = fs::last_write_time(world_.home().path()) - std::chrono::hours(1000);
};

TEST_P(GoldenSave, WritesAndTellsWhatIsExpected) {
    UserPreferenceManager::GetInstance();
    const Log log;
    apply(readTextFile(folder() / "edits.txt"));
    EXPECT_EQ(log.text(), readTextFile(folder() / "notifications.txt"));
    if (fs::exists(folder() / "expected.cfg")) {
        EXPECT_EQ(readTextFile(world_.userFile()), readTextFile(folder() / "expected.cfg"));
    } else {
        expectUserFileUntouched();
    }
    EXPECT_EQ(textOr(world_.userFile().string() + ".bad", "(none)"), textOr(folder() / "expected.bad", "(none)"));
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenSave, testing::ValuesIn(goldenCases()),
                         [](const auto& instance) { return instance.param; });

}  // namespace
}  // namespace zelutil::test
