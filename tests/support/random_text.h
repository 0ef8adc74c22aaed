#ifndef ZELUTIL_TESTS_SUPPORT_RANDOM_TEXT_H
#define ZELUTIL_TESTS_SUPPORT_RANDOM_TEXT_H

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace zelutil::test {

/// Random inputs that are the same in every run and on every system.
class RandomText {
public:
    explicit RandomText(unsigned seed) : engine_(seed) {}

    /// From 0 to below `limit`.
    std::size_t below(std::size_t limit) { return engine_() % limit; }

    /// Characters of `alphabet`, at most `maximumLength`.
    std::string text(std::string_view alphabet, std::size_t maximumLength) {
        std::string result(below(maximumLength + 1), '\0');
        for (char& c : result) {
            c = alphabet[below(alphabet.size())];
        }
        return result;
    }

private:
    std::mt19937 engine_;
};

}  // namespace zelutil::test

#endif
