#ifndef ZELUTIL_TESTS_PREFS_RANDOM_PREFERENCES_H
#define ZELUTIL_TESTS_PREFS_RANDOM_PREFERENCES_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "support/random_text.h"

/// Random preference files and saves, made of few names so that they collide, with something wrong here and there.
namespace zelutil::test {

inline const std::vector<std::string> kRandomNames = {
    "x", "x", "y", "X", "", "a::x", "A::X", "a::b::x", "::x", "b::a::x", "a::", "::", "x::", ":", "\xC3\x84",
};

class RandomPreferences {
public:
    explicit RandomPreferences(unsigned seed) : random_(seed) {}

    std::string defaultsText() { return text(Kind::Defaults); }
    std::string userText() { return text(Kind::User); }

    /// Names in full, bare, in other case and unknown, with values.
    std::map<std::string, std::string> settings(const std::vector<std::string>& known) {
        std::map<std::string, std::string> result;
        for (std::size_t i = random_.below(6); i > 0; --i) {
            std::string name = !known.empty() && random_.below(4) != 0 ? pick(known) : pick(kRandomNames);
            result[oneIn(4) ? inAnotherCase(std::move(name)) : name] = value();
        }
        return result;
    }

    std::map<std::int32_t, std::string> subManagerTexts() {
        static const std::vector<std::int32_t> kTypes = {100, 100, 100, 101, 102, -5, 0};
        std::map<std::int32_t, std::string> result;
        for (std::size_t i = oneIn(2) ? 0 : random_.below(4); i > 0; --i) {
            result[pick(kTypes)] = handedOver();
        }
        return result;
    }

    std::string inAnotherCase(std::string name) {
        for (char& c : name) {
            const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            c = static_cast<char>(isLetter && oneIn(2) ? c ^ 0x20 : c);
        }
        return name;
    }

    std::size_t below(std::size_t limit) { return random_.below(limit); }
    bool oneIn(std::size_t count) { return random_.below(count) == 0; }

private:
    enum class Kind { Defaults, User };

    template <typename T>
    const T& pick(const std::vector<T>& values) {
        return values[random_.below(values.size())];
    }

    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }

    /// White space, now and then.
    std::string blank() {
        static const std::vector<std::string> kBlanks = {" ", "\n", "\r\n\t"};
        return oneIn(12) ? pick(kBlanks) : "";
    }

    std::string value() {
        static const std::vector<std::string> kValues = {"0", "1", "2", "0", "1", "", "\xC3\xA4\xFF", "two words"};
        return oneIn(100) ? std::string(1000 + random_.below(2000), 'v') : pick(kValues);
    }

    /// The value as a JSON text may spell it.
    std::string spelledValue() {
        static const std::vector<std::string> kSpelled = {R"("\u0031")", R"("\"\\\/\b\f\n\r\t")",
                                                          R"("\u0000\u001f\u007F")", R"("\u00e4\u20AC\ud83d\ude00")",
                                                          R"("a\u0000b")"};
        return oneIn(12) ? pick(kSpelled) : quoted(value());
    }

    /// A value of any type.
    std::string anything() {
        static const std::vector<std::string> kAny = {"null",
                                                      "true",
                                                      "false",
                                                      "0",
                                                      "-7",
                                                      "100",
                                                      "100.0",
                                                      "1.250",
                                                      "12345678901",
                                                      "-0",
                                                      "-0.0",
                                                      "[]",
                                                      "{}",
                                                      "[[]]",
                                                      "[0]",
                                                      R"("")",
                                                      R"({"a":[1,"x"]})",
                                                      R"([{"x":"1"},{"y":"2","y":"3"}])"};
        return pick(kAny);
    }

    std::string subManagerValue() {
        const std::string id = std::to_string(1 + random_.below(3));
        const std::string list =
            R"({"actions": [ {"id":)" + id + R"(,"context":"c","command":"new","shortcut":")" + pick(kKeys) + "\"} ] }";
        switch (random_.below(5)) {
            case 0:
                return anything();
            case 1:
                return "[" + list + ",\"" + std::string(oneIn(4) ? random_.below(3000) : 0, 'w') + "\"]";
            case 2:
                return list;
            default:
                return "[" + list + "]";
        }
    }

    std::string handedOver() {
        static const std::vector<std::string> kNoJson = {"", "{", "[1,]", "text", "[] []", "\xEF\xBB\xBF", "'a'"};
        return oneIn(5) ? pick(kNoJson) : blank() + subManagerValue() + blank();
    }

    std::string attribute() {
        static const std::vector<std::string> kAttributes = {"a", "a", "b", "A", "", "a::b", "::", "a::", "::a", "b"};
        return pick(kAttributes);
    }

    std::string setting() {
        std::vector<std::string> members;
        members.push_back("\"name\":" + blank() + (oneIn(20) ? anything() : quoted(pick(kRandomNames))));
        members.push_back("\"value\":" + blank() + (oneIn(20) ? anything() : spelledValue()));
        spoil(members);
        return object(members);
    }

    std::string overridden() {
        std::vector<std::string> members;
        for (std::size_t i = random_.below(4); i > 0; --i) {
            members.push_back(quoted(pick(kRandomNames)) + ":" + (oneIn(15) ? anything() : spelledValue()));
        }
        return object(members);
    }

    /// Drops a member, writes one twice, or changes the order, now and then.
    void spoil(std::vector<std::string>& members) {
        if (oneIn(25) && !members.empty()) {
            members.erase(members.begin() + static_cast<std::ptrdiff_t>(random_.below(members.size())));
        }
        if (oneIn(25) && !members.empty()) {
            members.push_back(pick(members));
        }
        if (oneIn(4) && !members.empty()) {
            std::swap(members[random_.below(members.size())], members[random_.below(members.size())]);
        }
    }

    std::string array(const std::vector<std::string>& elements) { return "[" + list(elements) + blank() + "]"; }
    std::string object(const std::vector<std::string>& members) { return "{" + list(members) + blank() + "}"; }

    std::string list(const std::vector<std::string>& elements) {
        std::string result;
        for (const std::string& element : elements) {
            result += result.empty() ? "" : ",";
            result += blank() + element;
        }
        return result;
    }

    std::string subManagerId() {
        static const std::vector<std::string> kIds = {"100",  "100",   "100",         "102",        "101",
                                                      "-5",   "100.0", R"("100")",    "4294967396", "0",
                                                      "null", "true",  "-2147483648", "2147483648", "[100]"};
        return pick(kIds);
    }

    std::string values(Kind kind, bool isSubManager) {
        if (isSubManager ? !oneIn(10) : oneIn(20)) {
            return oneIn(4) ? anything() : subManagerValue();
        }
        std::vector<std::string> elements;
        for (std::size_t i = random_.below(4); i > 0; --i) {
            elements.push_back(oneIn(25) ? anything() : kind == Kind::Defaults ? setting() : overridden());
        }
        return array(elements);
    }

    std::string section(Kind kind, std::size_t levels) {
        static const std::vector<std::string> kHeaders = {"H", "G", "", "H::G"};
        const bool isSubManager = oneIn(5);
        std::vector<std::string> members;
        members.push_back("\"header\":" + (oneIn(40) ? anything() : quoted(pick(kHeaders))));
        members.push_back("\"attribute\":" + (oneIn(40) ? anything() : quoted(attribute())));
        if (isSubManager || oneIn(20)) {
            members.push_back("\"submanagerId\":" + subManagerId());
        }
        if (oneIn(3)) {
            static const std::vector<std::string> kUnique = {"true", "false", "false", "\"true\"", "1", "null"};
            members.push_back("\"unique\":" + pick(kUnique));
        }
        if (kind == Kind::Defaults ? !oneIn(5) : oneIn(40)) {
            members.push_back("\"tclCommand\":" + (oneIn(25) ? anything() : quoted("t")));
        }
        if (kind == Kind::Defaults ? !oneIn(6) : oneIn(40)) {
            members.push_back("\"defaultsettings\":" + values(Kind::Defaults, isSubManager));
        }
        if (kind == Kind::User ? !oneIn(6) : oneIn(25)) {
            members.push_back("\"overriddensettings\":" + values(Kind::User, isSubManager));
        }
        if (levels > 0 && oneIn(2)) {
            members.push_back("\"children\":" + (oneIn(20) ? anything() : sections(kind, levels - 1)));
        }
        if (oneIn(10)) {
            members.push_back("\"more\":" + anything());
        }
        spoil(members);
        return object(members);
    }

    std::string sections(Kind kind, std::size_t levels) {
        std::vector<std::string> elements;
        for (std::size_t i = random_.below(4); i > 0; --i) {
            elements.push_back(oneIn(30) ? anything() : section(kind, levels));
        }
        return array(elements);
    }

    std::string text(Kind kind) {
        if (oneIn(30)) {
            static const std::vector<std::string> kUseless = {"", " ", "{", "null", "[]", "\"meta\"", "7", "{}"};
            return pick(kUseless);
        }
        std::vector<std::string> members = {"\"meta\":" + (oneIn(60) ? anything() : sections(kind, 2))};
        for (std::size_t i = oneIn(4) ? random_.below(3) : 0; i > 0; --i) {
            const std::string name = oneIn(6) ? "meta" : "version";
            members.insert(members.begin() + static_cast<std::ptrdiff_t>(random_.below(members.size() + 1)),
                           quoted(name) + ":" + (oneIn(3) ? sections(kind, 1) : anything()));
        }
        std::string result = (oneIn(30) ? "\xEF\xBB\xBF" : "") + blank() + object(members) + blank();
        if (oneIn(60)) {
            result.resize(random_.below(result.size() + 1));
        }
        return result;
    }

    static inline const std::vector<std::string> kKeys = {"F1", "F2", "Ctrl+A"};

    RandomText random_;
};

}  // namespace zelutil::test

#endif
