#ifndef ZELUTIL_TESTS_HOST_DENSE_PREFERENCES_H
#define ZELUTIL_TESTS_HOST_DENSE_PREFERENCES_H

#include <string>
#include <vector>

#include "prefs/random_preferences.h"

/// Random preference files without mistakes, but with many settings under few names: bare names that several sections
/// share, names that look like paths, sections that are defined twice, that only group others, that lend no bare names,
/// and that belong to sub-managers.
namespace zelutil::test {

class DensePreferences {
public:
    explicit DensePreferences(RandomPreferences& random) : random_(random) {}

    std::string defaultsText() { return R"({"meta":)" + sections(1 + random_.below(3), 2) + "}"; }

    /// Sets settings of these names, in full or by the last part, in some section.
    std::string userText(const std::vector<std::string>& names) {
        std::string text;
        for (std::size_t i = 1 + random_.below(4); i > 0; --i) {
            text += (text.empty() ? "" : ",") + std::string(R"({"header":"H","attribute":")") + pathOfSome(names) +
                    R"(","overriddensettings":)" + entries(names) + "}";
        }
        return R"({"meta":[)" + text + "]}";
    }

private:
    static std::string lastPart(const std::string& name) {
        const std::size_t separator = name.rfind("::");
        return separator == std::string::npos ? name : name.substr(separator + 2);
    }

    std::string pathOfSome(const std::vector<std::string>& names) {
        if (names.empty() || random_.oneIn(6)) {
            return random_.oneIn(2) ? "gone" : "gone::too";
        }
        const std::string& name = names[random_.below(names.size())];
        return name.substr(0, name.rfind("::"));
    }

    std::string entries(const std::vector<std::string>& names) {
        std::string text;
        for (std::size_t i = random_.below(5); i > 0; --i) {
            const bool isUnknown = names.empty() || random_.oneIn(8);
            const std::string full = isUnknown ? "obsolete" : names[random_.below(names.size())];
            text += (text.empty() ? "" : ",") + std::string("{\"") + (random_.oneIn(3) ? full : lastPart(full)) +
                    "\":\"" + std::to_string(random_.below(4)) + "\"}";
        }
        return "[" + text + "]";
    }

    std::string settings() {
        static const std::vector<std::string> kNames = {"x", "y", "z", "X", "x", "y", "", "a::x", "b::y", "b::a::x"};
        std::string text;
        for (std::size_t i = random_.below(6); i > 0; --i) {
            text += (text.empty() ? "" : ",") + std::string(R"({"name":")") + kNames[random_.below(kNames.size())] +
                    R"(","value":")" + std::to_string(random_.below(3)) + "\"}";
        }
        return "[" + text + "]";
    }

    std::string section(std::size_t levels) {
        static const std::vector<std::string> kAttributes = {"a", "b", "c", "a", "b", "A", "", "a::b"};
        std::string text = R"({"header":"H","attribute":")" + kAttributes[random_.below(kAttributes.size())] + "\"";
        if (!random_.oneIn(6)) {
            text += R"(,"tclCommand":"t","defaultsettings":)" + settings();
        }
        text += random_.oneIn(4) ? R"(,"unique":false)" : "";
        text += random_.oneIn(8) ? R"(,"submanagerId":)" + std::string(random_.oneIn(2) ? "100" : "102") : "";
        if (levels > 0 && random_.oneIn(2)) {
            text += R"(,"children":)" + sections(random_.below(3), levels - 1);
        }
        return text + "}";
    }

    std::string sections(std::size_t count, std::size_t levels) {
        std::string text;
        for (; count > 0; --count) {
            text += (text.empty() ? "" : ",") + section(levels);
        }
        return "[" + text + "]";
    }

    RandomPreferences& random_;
};

}  // namespace zelutil::test

#endif
