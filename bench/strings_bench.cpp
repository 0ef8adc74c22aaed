// The helpers for narrow texts, against what one writes with the standard library alone.
#include <strings.h>

#include <zelutil/util/strutl.h>

#include <cctype>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using Texts = std::vector<std::string>;

std::string withoutTrailingZeros(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    std::string number = first == std::string::npos ? "" : text.substr(first);
    if (number.find('.') == std::string::npos || number.find('e') != std::string::npos) {
        return number;
    }
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') {
        number.pop_back();
    }
    return number;
}

template <typename Strip>
auto stripping(const Texts& texts, Strip strip) {
    return [&texts, strip] {
        std::uint64_t digest = 0;
        for (const std::string& text : texts) {
            const std::string result = strip(text);
            digest = digest * 31 + result.size() + (result.empty() ? 0U : static_cast<unsigned char>(result.back()));
        }
        return digest;
    };
}

void compareStripping(const char* task, const Texts& texts) {
    Comparison(task, texts.size())
        .zelutil(stripping(texts, [](const std::string& text) { return ZelU::STRUTL::RemoveTrailingZeros(text); }))
        .peer("find_last_not_of", stripping(texts, [](const std::string& text) { return withoutTrailingZeros(text); }));
}

struct Pair {
    std::string left;
    std::string right;
};

using Pairs = std::vector<Pair>;

int signOf(int value) { return (value > 0) - (value < 0); }

std::string lowerCase(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

template <typename Order>
auto ordering(const Pairs& pairs, Order order) {
    return [&pairs, order] {
        std::uint64_t digest = 0;
        for (const Pair& pair : pairs) {
            digest = digest * 31 + static_cast<std::uint64_t>(signOf(order(pair)) + 1);
        }
        return digest;
    };
}

void compareOrdering(const char* task, const Pairs& pairs) {
    Comparison(task, pairs.size())
        .zelutil(
            ordering(pairs, [](const Pair& pair) { return ZelU::STRUTL::StrNoCaseCompare(pair.left, pair.right); }))
        .peer("lower case, compare",
              ordering(pairs, [](const Pair& pair) { return lowerCase(pair.left).compare(lowerCase(pair.right)); }))
        .peer("strcasecmp",
              ordering(pairs, [](const Pair& pair) { return strcasecmp(pair.left.c_str(), pair.right.c_str()); }));
}

/// The same texts on both sides, the right ones as `change` makes them.
template <typename Change>
Pairs pairsOf(const Texts& texts, Change change) {
    Pairs pairs;
    for (const std::string& text : texts) {
        pairs.push_back({text, change(text)});
    }
    return pairs;
}

std::string asItIs(const std::string& text) { return text; }

std::string inCapitals(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string otherEnd(std::string text) {
    text.back() = '~';
    return text;
}

std::string otherBegin(std::string text) {
    text.front() = '~';
    return text;
}

Texts makeLong() {
    Texts texts;
    for (int i = 0; i < 8; ++i) {
        texts.push_back("c:/vorn/marl/projects/router/boards/main/revision_" + std::to_string(i) +
                        "/constraints/differential_pairs/phase_tolerance.cfg");
    }
    return texts;
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Texts fractions = {"1.500", "2.000", "0.2500", "-17.100", "100.0", "3.14000", "5.", "0.000"};
    static const Texts asTheyAre = {"1.5", "2.25", "0.125", "-17.1", "3.14159", "99.999", "1.0e10", "2.5e-7"};
    static const Texts integers = {"1", "20", "100", "-1500", "123456", "7000000", "0", "300"};
    static const Texts blanks = {"  1.500", "\t2.000", "   0.2500", " -17.100"};
    static const Texts printed = {"1.50000000000000000000", "2.00000000000000000000", "12345.67890000000000000",
                                  "-0.00000000000000000001", "98765432109876543210.5"};
    compareStripping("zeros at the end", fractions);
    compareStripping("nothing to remove", asTheyAre);
    compareStripping("integers", integers);
    compareStripping("blanks in front", blanks);
    compareStripping("numbers of 22 characters", printed);

    static const Texts names = {"Net", "Layer", "Length", "Via count", "Topology", "Gap", "Delay", "Region"};
    static const Texts longNames = makeLong();
    static const Pairs same = pairsOf(names, asItIs);
    static const Pairs capitals = pairsOf(names, inCapitals);
    static const Pairs end = pairsOf(names, otherEnd);
    static const Pairs begin = pairsOf(names, otherBegin);
    static const Pairs longSame = pairsOf(longNames, asItIs);
    static const Pairs longCapitals = pairsOf(longNames, inCapitals);
    static const Pairs longEnd = pairsOf(longNames, otherEnd);
    static const Pairs longBegin = pairsOf(longNames, otherBegin);
    compareOrdering("names, equal", same);
    compareOrdering("names, in capitals", capitals);
    compareOrdering("names, another last letter", end);
    compareOrdering("names, another first letter", begin);
    compareOrdering("paths, equal", longSame);
    compareOrdering("paths, in capitals", longCapitals);
    compareOrdering("paths, another last letter", longEnd);
    compareOrdering("paths, another first letter", longBegin);
}
