#ifndef ZELUTIL_TESTS_PREFS_PREFERENCE_WORLD_H
#define ZELUTIL_TESTS_PREFS_PREFERENCE_WORLD_H

#include <filesystem>
#include <string>

#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {

/// An installation and a user's home directory of the test's own, named by the environment of this process. Neither
/// holds a preference file until the test writes one.
class PreferenceWorld {
public:
    PreferenceWorld() {
        clearProductVariables();
        setVariable("PATH", "");
        product_.nameInEnvironment();
        setHome(home_.path());
    }

    void setHome(const std::filesystem::path& directory) const {
        const std::string text = windowsText(directory);
        setVariable("HOMEDRIVE", text.substr(0, 2));
        setVariable("HOMEPATH", text.substr(2));
    }

    std::filesystem::path defaultsFile() const {
        return product_ / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg";
    }
    std::filesystem::path userFile() const { return home_ / "pcbenv/tessel/tessel_settings.cfg"; }
    const InstallationTree& product() const { return product_; }
    const TempDirectory& home() const { return home_; }

    void writeDefaults(const std::string& text) const { writeTextFile(defaultsFile(), text); }
    void writeUser(const std::string& text) const { writeTextFile(userFile(), text); }

private:
    InstallationTree product_;
    TempDirectory home_;
};

/// A defaults text with the section "s", whose settings are "value", which is `value`, and "other", which is "o".
inline std::string defaultsWithValue(const std::string& value) {
    return R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":")" +
           value + R"("},{"name":"other","value":"o"}]}]})";
}

/// A user's text that sets "s::value".
inline std::string userWithValue(const std::string& value) {
    return R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":")" + value + R"("}]}]})";
}

}  // namespace zelutil::test

#endif
