// Names of enumerations and their values, against hash tables, gperf's table and what reading the text alone takes.
#include "support/comparison.h"

#include <zelutil/enums/panel_enums.h>
#include <zelutil/util/ascii.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

#include "control_names.h"

using Smart::Enum::HRES;
using Smart::Enum::HRES_Impl;
using Smart::Enum::IRawMap;
using zelutil::ascii::compareIgnoringCase;
using zelutil::ascii::lowerCase;

namespace {

std::string folded(const char* text) {
    std::string result(text);
    for (char& c : result) {
        c = lowerCase(c);
    }
    return result;
}

/// The usual answer: a hash table whose keys, and each name that is asked for, are folded to lower case.
class FoldedHashMap {
public:
    explicit FoldedHashMap(const IRawMap& map) : size_(map.Size()) {
        for (int value = 0; value < size_; ++value) {
            values_.emplace(folded(map.Name(value)), value);
        }
    }

    int lookup(const char* name) const {
        const auto found = values_.find(folded(name));
        return found == values_.end() ? size_ : found->second;
    }

private:
    int size_;
    std::unordered_map<std::string, int> values_;
};

int scan(const IRawMap& map, const char* name) {
    const char* const* names = map.Names();
    const int size = map.Size();
    for (int value = 0; value < size; ++value) {
        if (compareIgnoringCase(names[value], name) == 0) {
            return value;
        }
    }
    return size;
}

using Names = std::vector<std::string>;

/// A round that asks `lookup` for each of the names.
template <typename Lookup>
auto askingFor(const Names& names, Lookup lookup) {
    return [names, lookup]() mutable {
        std::uint64_t digest = 0;
        for (const std::string& name : names) {
            digest = digest * 31 + static_cast<std::uint64_t>(lookup(name.c_str()));
        }
        return digest;
    };
}

/// A round that only measures the length of each name. The results are known.
auto lengthsAlone(const IRawMap& map, const Names& names) {
    std::vector<int> values;
    for (const std::string& name : names) {
        values.push_back(map.RawLookup(name.c_str()));
    }
    return askingFor(names, [values, next = std::size_t{0}](const char* name) mutable {
        benchmark::DoNotOptimize(std::strlen(name));
        const int value = values[next];
        next = next + 1 == values.size() ? 0 : next + 1;
        return value;
    });
}

int lookupByGperf(const char* name, int missing) {
    const ControlName* const found = ControlNames::find(name, std::strlen(name));
    return found == nullptr ? missing : found->value;
}

zelutil::bench::Comparison compareLookups(const std::string& task, const IRawMap& map, const Names& names) {
    return zelutil::bench::Comparison(task, names.size())
        .zelutil(askingFor(names, [&map](const char* name) { return map.RawLookup(name); }))
        .peer("unordered_map, folded keys",
              askingFor(names, [peer = FoldedHashMap(map)](const char* name) { return peer.lookup(name); }))
        .peer("linear scan", askingFor(names, [&map](const char* name) { return scan(map, name); }))
        .peer("limit: strlen", lengthsAlone(map, names));
}

void compareControls(const std::string& task, const IRawMap& controls, const Names& names) {
    compareLookups(task, controls, names).peer("gperf", askingFor(names, [size = controls.Size()](const char* name) {
                                                   return lookupByGperf(name, size);
                                               }));
}

/// A round that asks for the name of each value.
template <typename NameOf>
auto naming(int size, NameOf nameOf) {
    return [size, nameOf] {
        std::uint64_t digest = 0;
        for (int value = 0; value < size; ++value) {
            digest = digest * 31 + static_cast<unsigned char>(*nameOf(value));
        }
        return digest;
    };
}

const char* entryOf(const char* const* names, int value) { return names[value]; }

void compareNaming(const std::string& task, const IRawMap& map) {
    std::unordered_map<int, const char*> hashed;
    for (int value = 0; value < map.Size(); ++value) {
        hashed.emplace(value, map.Name(value));
    }
    const auto size = static_cast<std::size_t>(map.Size());
    zelutil::bench::Comparison(task, size)
        .zelutil(naming(map.Size(), [&map](int value) { return map.Name(value); }))
        .peer("unordered_map", naming(map.Size(), [hashed](int value) { return hashed.find(value)->second; }))
        .peer("limit: array behind a function", naming(map.Size(),
                                                       [names = map.Names()](int value) {
                                                           // Hosts call a map's functions by position, so that no
                                                           // compiler knows which one it is.
                                                           const char* (*function)(const char* const*, int) = entryOf;
                                                           benchmark::DoNotOptimize(function);
                                                           return function(names, value);
                                                       }))
        .peer("limit: array", naming(map.Size(), [names = map.Names()](int value) { return names[value]; }));
}

/// All names of the map, in the letter case of the table.
Names namesOf(const IRawMap& map) { return Names(map.Names(), map.Names() + map.Size()); }

Names inCapitals(Names names) {
    for (std::string& name : names) {
        for (char& c : name) {
            c = c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
        }
    }
    return names;
}

/// Texts of the same lengths that are no names.
Names missing(Names names) {
    for (std::string& name : names) {
        name.back() = '?';
    }
    return names;
}

// A table larger than any of the library's, filled before its map is made.
enum class Large : int {};
constexpr int kLargeSize = 500;
const char* largeTable[kLargeSize];

const IRawMap& largeMap() {
    static const Names names = [] {
        Names result;
        for (int value = 0; value < kLargeSize; ++value) {
            result.push_back("Constraint_" + std::to_string(value * 7919 % 1000) + "_of_net_class");
        }
        return result;
    }();
    for (int value = 0; value < kLargeSize; ++value) {
        largeTable[value] = names[static_cast<std::size_t>(value)].c_str();
    }
    static const HRES_Impl<Large, kLargeSize, largeTable> map;
    return map;
}

}  // namespace

void zelutil::bench::addComparisons() {
    const IRawMap& controls = HRES<ZelU::ZelPanel::UI>::Instance();
    const IRawMap& worksheets = HRES<ZelU::ZelPanel::ZelWorksheets>::Instance();
    const IRawMap& modes = HRES<ZelU::ZelPanel::Modes>::Instance();
    compareControls("24 controls, found", controls, namesOf(controls));
    compareControls("24 controls, in capitals", controls, inCapitals(namesOf(controls)));
    compareControls("24 controls, not found", controls, missing(namesOf(controls)));
    compareNaming("24 controls, name of a value", controls);
    compareLookups("11 worksheets, found", worksheets, namesOf(worksheets));
    compareLookups("2 modes, found", modes, namesOf(modes));
    compareLookups("500 names, found", largeMap(), namesOf(largeMap()));
    compareLookups("500 names, not found", largeMap(), missing(namesOf(largeMap())));
}
