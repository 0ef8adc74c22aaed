#include "support/letter_case.h"

#include <utility>

namespace zelutil::test {
namespace {

const std::string kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string kSmalls = "abcdefghijklmnopqrstuvwxyz";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (char& c : text) {
        const std::string::size_type letter = from.find(c);
        if (letter != std::string::npos) {
            c = to[letter];
        }
    }
    return text;
}

}  // namespace

std::string lowered(std::string text) { return replaced(std::move(text), kCapitals, kSmalls); }

std::string raised(std::string text) { return replaced(std::move(text), kSmalls, kCapitals); }

}  // namespace zelutil::test
