#ifndef ZELUTIL_TESTS_JSON_RANDOM_JSON_H
#define ZELUTIL_TESTS_JSON_RANDOM_JSON_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "json/document.h"
#include "support/random_text.h"

namespace zelutil::test {

/// A value that a test has written, and where.
struct Written {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t key = 0;
    bool isMember = false;
    std::vector<Written> inside;
};

/// Writes random values with any white space between them and remembers where each stands.
class RandomJson {
public:
    explicit RandomJson(unsigned seed) : random_(seed) {}

    std::string text;

    Written document() {
        if (random_.below(4) == 0) {
            text += json::kByteOrderMark;
        }
        space();
        Written root = value(0);
        space();
        return root;
    }

private:
    void space() {
        constexpr std::string_view kSpaces[] = {"", "", " ", "\n", "\r\n", "\t", "\r", "  \r\n\r\n "};
        text += kSpaces[random_.below(std::size(kSpaces))];
    }

    void string() {
        constexpr std::string_view kParts[] = {"a",
                                               "grid",
                                               "\xC3\xA4",
                                               "\xE2\x82\xAC",
                                               "{",
                                               "]",
                                               ",",
                                               "\xF0\x9F\x98\x80",
                                               ":",
                                               "\\\"",
                                               "\\\\",
                                               "\\n",
                                               "//",
                                               "\\u00e4",
                                               "\\ud83d\\ude00",
                                               "\\/",
                                               "\xFF",
                                               "0123456789abcdef0123456789"};
        text += '"';
        for (std::size_t left = random_.below(7); left > 0; --left) {
            text += kParts[random_.below(std::size(kParts))];
        }
        text += '"';
    }

    Written value(int depth) {
        Written written;
        written.begin = text.size();
        const std::size_t kind = random_.below(depth > 5 ? 2 : 5);
        if (kind == 0) {
            string();
        } else if (kind == 1) {
            constexpr std::string_view kScalars[] = {"null", "true",  "false", "0",          "-1",
                                                     "12",   "1.5e3", "-0.25", "4294967296", "1e-99999999999"};
            text += kScalars[random_.below(std::size(kScalars))];
        } else {
            container(written, kind == 2, depth);
        }
        written.end = text.size();
        return written;
    }

    void container(Written& written, bool isArray, int depth) {
        text += isArray ? '[' : '{';
        space();
        const std::size_t count = random_.below(5);
        for (std::size_t i = 0; i < count; ++i) {
            written.inside.push_back(isArray ? value(depth + 1) : member(depth));
            space();
            text += i + 1 < count ? "," : "";
            space();
        }
        text += isArray ? ']' : '}';
    }

    Written member(int depth) {
        const std::size_t key = text.size();
        string();
        space();
        text += ':';
        space();
        Written written = value(depth + 1);
        written.key = key;
        written.isMember = true;
        return written;
    }

    RandomText random_;
};

}  // namespace zelutil::test

#endif
