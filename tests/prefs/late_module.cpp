// A module that a program loads before the library, so that it goes after it: its last words come when the library's
// objects are gone already.
#include <cstdio>

#include "support/module_export.h"

namespace {

using Function = const char* (*)(const char* name);

class LastWords {
public:
    ~LastWords() {
        if (function != nullptr && throwingFunction != nullptr) {
            std::fprintf(stderr, "user %s, default %s\n", answer(function), answer(throwingFunction));
            std::fflush(stderr);
        }
    }

    Function function = nullptr;
    Function throwingFunction = nullptr;

private:
    static const char* answer(Function asked) {
        try {
            const char* const value = asked("s::value");
            return value == nullptr ? "null" : value;
        } catch (bool thrown) {
            return thrown ? "threw true" : "threw false";
        }
    }
};

LastWords lastWords;

}  // namespace

/// Has both functions asked for the setting "s::value" at the very end, and the answers printed on standard error.
ZELUTIL_TEST_EXPORT void askLast(Function function, Function throwingFunction) {
    lastWords.function = function;
    lastWords.throwingFunction = throwingFunction;
}
