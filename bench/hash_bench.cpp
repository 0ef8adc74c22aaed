// The hash table of entries beside std::unordered_map, with the same entries, the same hash and the same comparison.
#include <zelutil/util/ascii.h>
#include <zelutil/util/hash.h>

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "support/comparison.h"
#include "support/quiet_output.h"
#include "util/folded_murmur.h"

namespace {

using Table = ZelU::Hash::Hash<const char*>;
using Keys = std::vector<std::string>;

/// Holds a copy of its key, as most hosts' entries do.
class Net : public Table::IEntry {
public:
    explicit Net(const char* key) : key_(key), pins_(key_.size()) {}
    const char* Key() const override { return key_.c_str(); }
    std::uint64_t pins() const { return pins_; }

private:
    std::string key_;
    std::uint64_t pins_;
};

class NetFactory : public Table::IEntry::IFactory {
public:
    Table::IEntry* NewEntry(const char* key) override { return new Net(key); }
};

struct FoldedHash {
    std::size_t operator()(const char* key) const { return zelutil::hash::foldedMurmur(key); }
};

struct FoldedEqual {
    bool operator()(const char* a, const char* b) const { return zelutil::ascii::compareIgnoringCase(a, b) == 0; }
};

using FlatMap = boost::unordered_flat_map<const char*, std::unique_ptr<Net>, FoldedHash, FoldedEqual>;
using PeerMap = std::unordered_map<const char*, std::unique_ptr<Net>, FoldedHash, FoldedEqual>;

const Net& acquire(PeerMap& map, const char* key) {
    const auto found = map.find(key);
    if (found != map.end()) {
        return *found->second;
    }
    auto net = std::make_unique<Net>(key);
    const char* const own = net->Key();
    return *map.emplace(own, std::move(net)).first->second;
}

NetFactory factory;

Smart::Pointer<Table> filledTable(const Keys& keys, std::size_t size) {
    const zelutil::bench::QuietOutput quiet;
    Smart::Pointer<Table> table = Table::Create(size, &factory, true);
    for (const std::string& key : keys) {
        table->Acquire(key.c_str());
    }
    return table;
}

PeerMap filledMap(const Keys& keys, std::size_t size) {
    PeerMap map;
    map.reserve(size);
    for (const std::string& key : keys) {
        acquire(map, key.c_str());
    }
    return map;
}

/// Both are filled from empty and destroyed again.
void compareFilling(const std::string& task, const Keys& keys, std::size_t size) {
    zelutil::bench::Comparison(task, keys.size())
        .zelutil([&keys, size] { return filledTable(keys, size)->Find(keys[0].c_str()) != nullptr ? 1U : 0U; })
        .peer("unordered_map",
              [&keys, size] { return static_cast<unsigned>(filledMap(keys, size).count(keys[0].c_str())); });
}

/// Both are full and asked for each of the keys.
void compareAsking(const std::string& label, const Keys& keys, const Keys& present, const Keys& absent) {
    const Smart::Pointer<Table> table = filledTable(keys, 0);
    const auto map = std::make_shared<PeerMap>(filledMap(keys, 0));
    const auto flat = std::make_shared<FlatMap>();
    for (const std::string& key : keys) {
        auto net = std::make_unique<Net>(key.c_str());
        const char* const own = net->Key();
        flat->emplace(own, std::move(net));
    }
    std::vector<const Net*> nets;
    for (const std::string& key : present) {
        nets.push_back(map->find(key.c_str())->second.get());
    }
    zelutil::bench::Comparison(label + ", found", present.size())
        .zelutil([&present, table] {
            std::uint64_t pins = 0;
            for (const std::string& key : present) {
                pins += static_cast<Net*>(table->Find(key.c_str()))->pins();
            }
            return pins;
        })
        .peer("unordered_map",
              [&present, map] {
                  std::uint64_t pins = 0;
                  for (const std::string& key : present) {
                      pins += map->find(key.c_str())->second->pins();
                  }
                  return pins;
              })
        .peer("flat map",
              [&present, flat] {
                  std::uint64_t pins = 0;
                  for (const std::string& key : present) {
                      pins += flat->find(key.c_str())->second->pins();
                  }
                  return pins;
              })
        .peer("limit: hash and one comparison", [&present, nets] {
            std::uint64_t pins = 0;
            for (std::size_t i = 0; i < nets.size(); ++i) {
                const char* const key = present[i].c_str();
                benchmark::DoNotOptimize(zelutil::hash::foldedMurmur(key));
                pins += FoldedEqual()(key, nets[i]->Key()) ? nets[i]->pins() : 0;
            }
            return pins;
        });
    zelutil::bench::Comparison(label + ", acquired again", present.size())
        .zelutil([&present, table] {
            std::uint64_t pins = 0;
            for (const std::string& key : present) {
                pins += static_cast<Net&>(table->Acquire(key.c_str())).pins();
            }
            return pins;
        })
        .peer("unordered_map", [&present, map] {
            std::uint64_t pins = 0;
            for (const std::string& key : present) {
                pins += acquire(*map, key.c_str()).pins();
            }
            return pins;
        });
    zelutil::bench::Comparison(label + ", not found", absent.size())
        .zelutil([&absent, table] {
            std::uint64_t found = 0;
            for (const std::string& key : absent) {
                found += table->Find(key.c_str()) != nullptr ? 1U : 0U;
            }
            return found;
        })
        .peer("unordered_map", [&absent, map] {
            std::uint64_t found = 0;
            for (const std::string& key : absent) {
                found += map->count(key.c_str());
            }
            return found;
        });
}

/// Holds the keys that a host's own tables hold and are asked for.
struct Data {
    explicit Data(int count) {
        for (int i = 0; i < count; ++i) {
            keys.push_back("Board/Net_" + std::to_string(i * 7919LL % 1'000'003));
        }
        present = keys;
        std::shuffle(present.begin(), present.end(), std::mt19937(1));
        for (const std::string& key : present) {
            absent.push_back(key + "'");
        }
    }

    Keys keys;
    Keys present;
    Keys absent;
};

}  // namespace

void zelutil::bench::addComparisons() {
    static const Data data[] = {Data(1'000), Data(100'000), Data(1'000'000)};
    for (const Data& some : data) {
        const std::string label = some.keys.size() == 1'000     ? "1,000 keys"
                                  : some.keys.size() == 100'000 ? "100,000 keys"
                                                                : "1,000,000 keys";
        compareFilling(label + ", filled", some.keys, 0);
        compareFilling(label + ", filled, size given", some.keys, some.keys.size());
        compareAsking(label, some.keys, some.present, some.absent);
    }
}
